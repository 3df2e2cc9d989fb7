// A splitter whose division the user sets once: it comes back in the next
// session.
#pragma once

#include <QString>

class QSplitter;

namespace zirvel::frontend {

// Restores the division saved under `settingsKey` in the front-end's
// settings, and saves it again each time the user lets go of a handle.
void RememberDivision(QSplitter* splitter, const QString& settingsKey);

}  // namespace zirvel::frontend
