// The main window with the engine live on a private X server: screenshots
// of every page in every theme, the start page's button showing the real
// wheel, and the engine's hot key still working once the window is closed.
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>

#include <X11/keysym.h>

#include "app/x11_engine_host.h"
#include "frontend/main_window.h"
#include "frontend/open_programs_dialog.h"
#include "support/frontend_test_main.h"
#include "support/page_screenshots.h"
#include "x_session.h"

using zirvel::frontend::MainWindow;

namespace {

std::string displayName;

}  // namespace

class MainWindowLiveTest : public QObject {
    Q_OBJECT

private slots:
    void screenshotsOfEveryPageInEveryTheme() {
        zirvel_test::ScreenshotEveryPageInEveryTheme(QStringLiteral(ZIRVEL_SCREENSHOT_DIRECTORY));
    }

    void thePrimaryButtonShowsTheRealWheel() {
        MainWindow window;
        window.move(0, 0);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.sidebar()->setCurrentRow(0);
        auto* primary = window.pages()->widget(0)->findChild<QPushButton*>(QStringLiteral("Primary"));
        QTest::qWait(100);
        const QPoint centre = primary->mapToGlobal(primary->rect().center());
        zirvel_test::XConnection user(displayName);
        user.MoveMouseTo(centre.x(), centre.y());
        user.ClickButton(1);
        QTRY_VERIFY_WITH_TIMEOUT(OverlayIsWheelVisible(), 3000);
        OverlayToggleWheel();
        QVERIFY(!OverlayIsWheelVisible());
    }

    // "Wybierz z otwartych okien…" as the user meets it: the programs of the
    // windows on the X server, the names a wheel can list.
    void thePickerListsTheProgramsOfTheOpenWindows() {
        zirvel_test::TestApplication editor(displayName, 900, 100, 200, 200);
        editor.NameProgram("edytor-testowy", "EdytorTestowy");
        zirvel::frontend::OpenProgramsDialog dialog(nullptr);
        dialog.show();
        QTRY_VERIFY_WITH_TIMEOUT(dialog.programList()->count() > 0, 5000);
        QStringList names;
        QStringList texts;
        for (int i = 0; i < dialog.programList()->count(); ++i) {
            names.append(dialog.programList()->item(i)->data(Qt::UserRole).toString());
            texts.append(dialog.programList()->item(i)->text());
        }
        // The window's class names, and its process's executable: this test.
        QVERIFY2(names.contains(QStringLiteral("edytor-testowy")), qPrintable(names.join(QLatin1Char(' '))));
        QVERIFY2(names.contains(QStringLiteral("EdytorTestowy")), qPrintable(names.join(QLatin1Char(' '))));
        QVERIFY(names.contains(QFileInfo(QCoreApplication::applicationFilePath()).fileName()));
        QVERIFY(texts.contains(QStringLiteral("edytor-testowy — Zirvel test application")));
        QCOMPARE(names.removeDuplicates(), 0);
    }

    void afterClosingTheWindowTheHotKeyStillShowsTheWheel() {
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(window.close() == false);
        QTRY_VERIFY_WITH_TIMEOUT(!window.isVisible(), 2000);
        zirvel_test::XConnection user(displayName);
        user.PressKey(XK_x);
        QTRY_VERIFY_WITH_TIMEOUT(OverlayIsWheelVisible(), 3000);
        user.PressKey(XK_x);
        QTRY_VERIFY_WITH_TIMEOUT(!OverlayIsWheelVisible(), 3000);
    }
};

int main(int argc, char** argv) {
    zirvel_test::PrivateXServer server(1280, 800);
    if (!server.Running()) {
        std::fprintf(stderr, "Xvfb did not start\n");
        return 1;
    }
    displayName = server.Name();
    qputenv("DISPLAY", QByteArray::fromStdString(displayName));
    qputenv("QT_QPA_PLATFORM", "xcb");
    zirvel_test::PrivateSettingsHome settingsHome;
    if (!zirvel::x11::X11Platform::PrepareProcess()) return 1;
    QApplication application(argc, argv);
    zirvel_test::PrepareApplication();
    zirvel::app::X11EngineHost engine(QCoreApplication::applicationDirPath());
    if (!engine.Ready()) return 1;
    engine.Start();
    MainWindowLiveTest test;
    const int result = QTest::qExec(&test, argc, argv);
    engine.Stop();
    return result;
}

#include "main_window_live_test.moc"
