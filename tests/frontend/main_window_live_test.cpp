// The main window with the engine live on a private X server: screenshots
// of every page in every theme, the start page's button showing the real
// wheel, and the engine's hot key still working once the window is closed.
#include <QDir>
#include <QImage>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QTest>

#include <X11/keysym.h>

#include <map>

#include "app/x11_engine_host.h"
#include "frontend/main_window.h"
#include "frontend/themes.h"
#include "frontend/wheel_editor_page.h"
#include "support/frontend_test_main.h"
#include "support/program_files.h"
#include "x_session.h"

using zirvel::frontend::MainWindow;

namespace {

std::string displayName;

const char* const kPageNames[] = {"start", "editor", "voice", "gaze", "settings"};

// A wheels file that shows the editor with content: two wheels, the first
// with a few fields that use the program's own icons.
QString WriteSampleWheels() {
    const QStringList icons = QDir(zirvel_test::ProgramFile(QStringLiteral("icons")))
                                  .entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
    const QStringList names{QStringLiteral("Leczenie"), QStringLiteral("Przeładuj"), QStringLiteral("Skok"),
                            QStringLiteral("Mapa"), QStringLiteral("Ekwipunek"), QStringLiteral("Wycisz")};
    QString actions;
    for (int i = 0; i < names.size(); ++i) {
        const QString icon = i < icons.size() ? QStringLiteral("icons/") + icons[i] : QString();
        actions += QStringLiteral(R"(%1{"name": "%2", "voice": "%3", "icon": "%4", "steps": [{"key": "%5"}, {"key": "ctrl", "action": "hold", "value": 120}]})")
                       .arg(i ? QStringLiteral(",") : QString(), names[i], names[i].toLower(), icon,
                            QString(QChar(u'1' + i)));
    }
    const QString text = QStringLiteral(R"({"wheels": [{"name": "Gra", "actions": [%1]}, {"name": "Przeglądarka", "actions": [{"name": "Wstecz", "steps": [{"key": "alt"}]}]}]})").arg(actions);
    const QString path = zirvel_test::ProgramFile(QStringLiteral("screenshot-wheels.json"));
    zirvel_test::WriteProgramFile(QStringLiteral("screenshot-wheels.json"), text.toUtf8());
    return path;
}

// What the X server shows in the window's area, once two grabs in a row agree
// (the window may still be growing to fit a page's style).
QImage GrabSettled(QWidget& window) {
    QImage previous;
    for (int attempt = 0; attempt < 40; ++attempt) {
        QTest::qWait(50);
        const QRect area = window.frameGeometry();
        QImage current = QGuiApplication::primaryScreen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
        if (!previous.isNull() && current == previous) return current;
        previous = std::move(current);
    }
    return previous;
}

// Not blank: many colours, and no single colour covering almost everything.
bool LooksLikeAPage(const QImage& image, QString& why) {
    std::map<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y)];
    }
    int largest = 0;
    for (const auto& [colour, count] : counts) largest = std::max(largest, count);
    const double share = double(largest) / (image.width() * image.height());
    why = QStringLiteral("%1 colours, the commonest covers %2 %").arg(counts.size()).arg(share * 100, 0, 'f', 1);
    return counts.size() >= 24 && share < 0.85;
}

}  // namespace

class MainWindowLiveTest : public QObject {
    Q_OBJECT

private slots:
    void screenshotsOfEveryPageInEveryTheme() {
        MainWindow window;
        window.move(0, 0);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.editor()->loadFile(WriteSampleWheels());
        QDir().mkpath(QStringLiteral(ZIRVEL_SCREENSHOT_DIRECTORY));
        std::map<size_t, QString> seen;
        for (const auto& theme : zirvel::frontend::themes()) {
            zirvel::frontend::applyTheme(theme.id);
            for (int row = 0; row < 5; ++row) {
                window.sidebar()->setCurrentRow(row);
                const QImage shot = GrabSettled(window);
                QVERIFY2(window.width() >= window.minimumSizeHint().width(), qPrintable(theme.id));
                const QString name = theme.id + QStringLiteral("-%1-%2").arg(row).arg(QLatin1String(kPageNames[row]));
                QVERIFY(shot.save(QStringLiteral(ZIRVEL_SCREENSHOT_DIRECTORY "/") + name + QStringLiteral(".png")));
                QString why;
                QVERIFY2(LooksLikeAPage(shot, why), qPrintable(name + QStringLiteral(": ") + why));
                const size_t key = qHashBits(shot.constBits(), shot.sizeInBytes());
                QVERIFY2(!seen.count(key), qPrintable(name + QStringLiteral(" looks the same as ") + seen[key]));
                seen[key] = name;
            }
        }
        zirvel::frontend::applyTheme(QStringLiteral("fluent"));
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
