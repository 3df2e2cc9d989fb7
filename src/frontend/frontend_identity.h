// Names and numbers that identify the desktop front-end.
#pragma once

#include <QString>

namespace zirvel::frontend {

inline const QString kOrganisationName = QStringLiteral("Zirvel");
inline const QString kApplicationName = QStringLiteral("Zirvel");
// The front-end's own settings live under organisation "Zirvel", application "UI".
inline const QString kSettingsScope = QStringLiteral("UI");
inline const QString kVersion = QStringLiteral("0.9.0");

// Keys of the front-end's settings.
inline const QString kThemeKey = QStringLiteral("theme");
inline const QString kLastWheelFileKey = QStringLiteral("lastWheelFile");

}  // namespace zirvel::frontend
