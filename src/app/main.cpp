// The program: the front-end's window and the engine on the user's X
// display, one instance per user.
#include <QApplication>
#include <QDir>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>
#include <unistd.h>

#include "app/runtime_folder.h"
#include "app/single_instance.h"
#include "app/control_socket.h"
#include "app/x11_engine_host.h"
#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/engine_voice_target.h"
#include "frontend/application_start.h"
#include "frontend/main_window.h"
#include "frontend/program_folders.h"
#include "update/updater.h"

namespace {

namespace frontend = zirvel::frontend;

int signalPipe[2] = {-1, -1};

void ForwardSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const ssize_t ignored = write(signalPipe[1], &byte, 1);
}

// SIGINT and SIGTERM end the event loop, so the engine stops in order.
void QuitOnTerminationSignals(QApplication& application) {
    if (pipe(signalPipe) != 0) return;
    auto* notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, &application);
    QObject::connect(notifier, &QSocketNotifier::activated, &application, [] { QCoreApplication::quit(); });
    struct sigaction action {};
    action.sa_handler = ForwardSignal;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

// Other processes hand over a wheels file, or a phrase as if it had been heard.
zirvel::app::ControlHandlers ControlHandlers() {
    zirvel::app::ControlHandlers handlers;
    handlers.activate = [](const QString& path) { return zirvel::ActivateHandedOverWheelFile(path.toStdU16String()); };
    handlers.say = [](const QString& text) {
        return zirvel::DispatchHandedOverPhrase(zirvel::Engine(), text.toStdU16String());
    };
    return handlers;
}

// The engine talks X11, so Qt must draw its windows there too: in a Wayland
// session Qt would pick its Wayland backend, the wheel would become an
// ordinary window that takes the focus, and the hot key's grab would never
// see the second press. A choice the user made stays. True when the
// variable was set here, to be dropped once Qt has read it, so that the
// programs a wheel starts choose for themselves.
bool ChooseQtOnX11() {
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) return false;
    qputenv("QT_QPA_PLATFORM", "xcb");
    return true;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (!zirvel::x11::X11Platform::PrepareProcess()) {
        std::fprintf(stderr,
                     "Zirvel needs an X11 display (DISPLAY is %s).\n"
                     "To watch it work without a desktop, run scripts/demo.sh.\n",
                     std::getenv("DISPLAY") ? std::getenv("DISPLAY") : "not set");
        return 1;
    }
    const bool qtOnX11Chosen = ChooseQtOnX11();
    QApplication application(argc, argv);
    if (qtOnX11Chosen) qunsetenv("QT_QPA_PLATFORM");
    const frontend::ProgramFolders folders = frontend::ProgramFoldersForThisProcess();
    if (!frontend::UseProgramFolders(folders)) {
        std::fprintf(stderr, "Zirvel: cannot create the folder %s for its files.\n", qPrintable(folders.files));
        return 1;
    }
    frontend::PrepareApplication();

    zirvel::app::SingleInstance instance(zirvel::app::RuntimeFolder(), QString::fromLatin1(zirvel::app::kInstanceName));
    if (!instance.Acquired()) {
        frontend::ShowAlreadyRunningMessage();
        return 0;
    }

    frontend::ApplySavedTheme();
    // From here on config.json, default.json, voice.json and icons/ resolve
    // in the program's files folder, wherever the program was started from.
    QDir::setCurrent(folders.files);
    zirvel::app::X11EngineHost engine(folders.files, folders.shipped == folders.files ? QString() : folders.shipped);
    if (!engine.Ready()) {
        std::fprintf(stderr, "Zirvel: the X server lacks the XInputExtension 2.2 or XTEST extension.\n");
        return 1;
    }
    engine.Start();

    // The window's constructor already asks the engine for its status.
    frontend::MainWindow window;
    window.show();
    zirvel::update::StartUpdater();

    zirvel::app::ControlServer control(zirvel::app::ControlSocketPath(), ControlHandlers());
    QuitOnTerminationSignals(application);

    const int result = QApplication::exec();
    zirvel::update::StopUpdater();
    engine.Stop();
    return result;
}
