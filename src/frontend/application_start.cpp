#include "frontend/application_start.h"

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <QSettings>

#include "frontend/frontend_identity.h"
#include "frontend/program_folders.h"
#include "frontend/themes.h"

namespace zirvel::frontend {

void PrepareApplication() {
    QCoreApplication::setOrganizationName(kOrganisationName);
    QCoreApplication::setApplicationName(kApplicationName);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon(CurrentProgramFolders().shipped + QStringLiteral("/zirvel.ico")));
}

void ShowAlreadyRunningMessage() {
    QMessageBox::information(nullptr, QStringLiteral("Zirvel"),
                             QCoreApplication::translate("main", "Zirvel już działa — sprawdź ikonę w zasobniku systemowym."),
                             QMessageBox::Ok, QMessageBox::NoButton);
}

void ApplySavedTheme() {
    applyTheme(QSettings(kOrganisationName, kSettingsScope).value(kThemeKey, QStringLiteral("fluent")).toString());
}

}  // namespace zirvel::frontend
