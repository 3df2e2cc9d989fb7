// Names and numbers that identify the desktop front-end.
#pragma once

#include <QString>

#include "update/updater.h"

namespace zirvel::frontend {

inline const QString kOrganisationName = QStringLiteral("Zirvel");
inline const QString kApplicationName = QStringLiteral("Zirvel");
// The front-end's own settings live under organisation "Zirvel", application "UI".
inline const QString kSettingsScope = QStringLiteral("UI");
// The one version number: shown on the settings page and given to the updater.
inline const QString kVersion = QString::fromLatin1(update::kVersion);

// Keys of the front-end's settings.
inline const QString kThemeKey = QStringLiteral("theme");
inline const QString kLastWheelFileKey = QStringLiteral("lastWheelFile");
inline const QString kEditorColumnsKey = QStringLiteral("editorColumns");

}  // namespace zirvel::frontend
