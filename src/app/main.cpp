// The program: the engine on the user's X display, one instance per user.
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>
#include <unistd.h>

#include "app/runtime_folder.h"
#include "app/single_instance.h"
#include "app/control_socket.h"
#include "engine/canvas_renderer.h"
#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/engine_voice_target.h"
#include "engine/overlay_exports.h"
#include "platform/x11/qt_canvas.h"
#include "platform/x11/x11_platform.h"
#include "voice/voice_dispatch.h"
#include "voice/voice_phrases.h"

namespace {

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

}  // namespace

int main(int argc, char* argv[]) {
    if (!zirvel::x11::X11Platform::PrepareProcess()) {
        std::fprintf(stderr,
                     "Zirvel needs an X11 display (DISPLAY is %s).\n"
                     "To watch it work without a desktop, run scripts/demo.sh.\n",
                     std::getenv("DISPLAY") ? std::getenv("DISPLAY") : "not set");
        return 1;
    }
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Zirvel"));
    QCoreApplication::setApplicationName(QStringLiteral("Zirvel"));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon(QCoreApplication::applicationDirPath() + QStringLiteral("/zirvel.ico")));

    const QString runtime = zirvel::app::RuntimeFolder();
    const QString instanceName = QString::fromLatin1(zirvel::app::kInstanceName);
    zirvel::app::SingleInstance instance(runtime, instanceName);
    if (!instance.Acquired()) {
        QMessageBox::information(nullptr, QStringLiteral("Zirvel"),
                                 QCoreApplication::translate("main", "Zirvel już działa — sprawdź ikonę w zasobniku systemowym."),
                                 QMessageBox::Ok, QMessageBox::NoButton);
        return 0;
    }

    const QString programDirectory = QCoreApplication::applicationDirPath();
    QDir::setCurrent(programDirectory);
    zirvel::x11::X11Platform platform;
    if (!platform.Ready()) {
        std::fprintf(stderr, "Zirvel: the X server lacks the XInputExtension 2.2 or XTEST extension.\n");
        return 1;
    }
    zirvel::ResetEngineState(platform, programDirectory.toStdU16String());
    zirvel::QtCanvasFactory canvases;
    zirvel::InstallCanvasRenderer(canvases);
    OverlayEngineStart();

    zirvel::app::ControlHandlers handlers;
    handlers.activate = [](const QString& path) { return zirvel::ActivateHandedOverWheelFile(path.toStdU16String()); };
    handlers.say = [](const QString& text) {
        zirvel::EngineState& engine = zirvel::Engine();
        return zirvel::DispatchRecognizedText(engine.phrases, zirvel::LowerVoicePhrase(text.toStdU16String()),
                                              zirvel::EngineVoiceTarget(engine));
    };
    zirvel::app::ControlServer control(zirvel::app::ControlSocketPath(), std::move(handlers));
    QuitOnTerminationSignals(application);

    const int result = QApplication::exec();
    OverlayEngineStop();
    zirvel::RemoveCanvasRenderer();
    return result;
}
