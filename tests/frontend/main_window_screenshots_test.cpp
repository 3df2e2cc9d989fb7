// Every page of the main window in every theme as Windows (here Wine) draws
// it, with its own window system rather than offscreen: the screenshots go
// to screenshots/ in this build directory, beside the program's.
#include "support/frontend_test_main.h"
#include "support/page_screenshots.h"

class MainWindowScreenshotsTest : public QObject {
    Q_OBJECT

private slots:
    void everyPageInEveryTheme() {
        zirvel_test::ScreenshotEveryPageInEveryTheme(QStringLiteral(ZIRVEL_SCREENSHOT_DIRECTORY));
    }
};

int main(int argc, char** argv) {
    // Chosen here: Wine hands no QT_* variable of the environment to the program.
    qputenv("QT_QPA_PLATFORM", "windows");
    return zirvel_test::RunFrontendTest<MainWindowScreenshotsTest>(argc, argv);
}

#include "main_window_screenshots_test.moc"
