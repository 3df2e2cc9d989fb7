// The settings file beside the program, as a JSON object, for the pages
// that switch gaze and voice control.
#pragma once

#include <QJsonObject>

namespace zirvel::frontend {

// config.json in the program directory; an empty object when the file is
// missing, unreadable or not a JSON object.
QJsonObject ReadConfigObject();
// Writes the object, indented. The file is replaced atomically: a crash or a
// full disk never leaves a truncated config.json. Failures are silent.
void WriteConfigObject(const QJsonObject& object);

}  // namespace zirvel::frontend
