// The key and mouse-button names offered in the step editor's key box, in
// the order the user sees them. Any other name may still be typed.
#pragma once

#include <QStringList>

namespace zirvel::frontend {

const QStringList& stepKeyNames();

}  // namespace zirvel::frontend
