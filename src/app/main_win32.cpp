// Zirvel.exe: the front-end's window and the engine in one program, one
// instance per session. The engine's windows live on this thread too: Qt's
// event loop dispatches their messages.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <QApplication>
#include <QDir>
#include <QSystemTrayIcon>

#include <windows.h>

#include "app/engine_instance_win32.h"
#include "app/win32_engine_host.h"
#include "engine/overlay_exports.h"
#include "frontend/application_start.h"
#include "frontend/main_window.h"
#include "system/runtime_library.h"
#include "update/updater.h"

namespace frontend = zirvel::frontend;

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    frontend::PrepareApplication();

    if (!zirvel::app::TakeEngineInstance()) {
        frontend::ShowAlreadyRunningMessage();
        return 0;
    }

    frontend::ApplySavedTheme();
    // From here on config.json, default.json, voice.json, icons/ and themes/
    // resolve in the program directory, wherever the program was started from.
    const QString programDirectory = QCoreApplication::applicationDirPath();
    QDir::setCurrent(programDirectory);
    zirvel::app::Win32EngineHost engine(GetModuleHandleW(nullptr), zirvel::GetProgramDirectory());
    // The result is not looked at: the window opens anyway and shows what the engine reports.
    OverlayEngineStart();

    // The window's constructor already asks the engine for its status.
    frontend::MainWindow window;
    engine.Platform().SetWarningHandler([&window](const std::u16string& title, const std::u16string& text) {
        window.tray()->showMessage(QString::fromStdU16String(title), QString::fromStdU16String(text),
                                   QSystemTrayIcon::Warning);
    });
    window.show();
    zirvel::update::StartUpdater();

    const int result = QApplication::exec();
    zirvel::update::StopUpdater();
    OverlayEngineStop();
    return result;
}
