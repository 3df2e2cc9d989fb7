// The main window: sidebar and pages, the engine's status, the settings
// page's themes and version, the tray and the close button.
#include <QAbstractButton>
#include <QAction>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QDir>
#include <QEventLoop>
#include <QFrame>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleOptionButton>
#include <QSystemTrayIcon>
#include <QTest>
#include <QTimer>

#include "frontend/gaze_page.h"
#include "frontend/main_window.h"
#include "frontend/themes.h"
#include "frontend/voice_page.h"
#include "frontend/wheel_editor_page.h"
#include "frontend/wheel_preview.h"
#include "support/engine_access.h"
#include "support/frontend_test_main.h"
#include "support/program_files.h"

using zirvel::frontend::MainWindow;
using zirvel_test::ProgramFileGuard;
using zirvel_test::WriteProgramFile;

namespace {

QSettings FrontEndSettings() { return QSettings(QStringLiteral("Zirvel"), QStringLiteral("UI")); }

QString Role(const QWidget* widget) { return widget->property("role").toString(); }

QByteArray WheelsFile(int wheels) {
    QByteArray text = "{\"wheels\": [";
    for (int i = 0; i < wheels; ++i) {
        if (i) text += ',';
        text += "{\"name\": \"W" + QByteArray::number(i) + "\", \"actions\": [{\"name\": \"a\", \"steps\": [{\"key\": \"a\"}]}]}";
    }
    return text + "]}";
}

QRadioButton* ThemeButton(MainWindow& window, const char* id) {
    return window.findChild<QRadioButton*>(QStringLiteral("theme-") + QString::fromLatin1(id));
}

// Scrolls every scroll area around `widget` so that it shows, innermost first.
void ScrollIntoView(QWidget* widget) {
    for (QWidget* ancestor = widget->parentWidget(); ancestor; ancestor = ancestor->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(ancestor)) area->ensureWidgetVisible(widget, 0, 0);
    }
}

// The whole of `widget` shows: no ancestor up to the window clips it.
bool WhollyShown(QWidget* widget) {
    for (QWidget* ancestor = widget->parentWidget(); ancestor; ancestor = ancestor->parentWidget()) {
        const QRect inAncestor(widget->mapTo(ancestor, QPoint(0, 0)), widget->size());
        if (!ancestor->rect().contains(inAncestor)) return false;
        if (ancestor->isWindow()) return true;
    }
    return false;
}

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        FrontEndSettings().clear();
        zirvel::frontend::applyTheme(QStringLiteral("fluent"));
    }

    void windowTitleAndSize() {
        MainWindow window;
        QCOMPARE(window.windowTitle(), QStringLiteral("Zirvel"));
        QCOMPARE(window.size(), QSize(860, 560));
    }

    // Every theme's paddings and minimum heights still leave room for each
    // page in the window's own size, and each of a page's buttons can be
    // brought into view and clicked there.
    // The page behind the cards is the theme's page colour (colour 3), on
    // every page, not a palette grey showing through the scroll area.
    void everyPageShowsTheThemesPageColour() {
        for (const zirvel::frontend::Theme& theme : zirvel::frontend::themes()) {
            zirvel::frontend::applyTheme(theme.id);
            MainWindow window;
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            for (int row = 0; row < window.sidebar()->count(); ++row) {
                window.sidebar()->setCurrentRow(row);
                QCoreApplication::processEvents();
                const QImage picture = window.grab().toImage();
                // In the page's top-left margin, right of the sidebar.
                const QColor page = picture.pixelColor(window.sidebar()->width() + 6, 4);
                QVERIFY2(page == theme.colours[3], qPrintable(QStringLiteral("%1 page %2: %3 instead of %4")
                                                                  .arg(theme.id).arg(row)
                                                                  .arg(page.name(), theme.colours[3].name())));
            }
        }
        zirvel::frontend::applyTheme(QStringLiteral("fluent"));
    }

    void opensAt860By560AndEveryPageFitsInEveryTheme() {
        for (const char* id : {"fluent", "neon", "pro"}) {
            const QString theme = QString::fromLatin1(id);
            zirvel::frontend::applyTheme(theme);
            MainWindow window;
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            QCOMPARE(window.size(), QSize(860, 560));
            for (int row = 0; row < window.sidebar()->count(); ++row) {
                window.sidebar()->setCurrentRow(row);
                QCoreApplication::processEvents();
                const QString where = theme + QStringLiteral(" page %1").arg(row);
                QVERIFY2(window.size() == QSize(860, 560),
                         qPrintable(where + QStringLiteral(": %1 x %2").arg(window.width()).arg(window.height())));
                // Pages may scroll down, never sideways.
                auto* area = qobject_cast<QScrollArea*>(window.pages()->widget(row));
                QVERIFY2(area && area->horizontalScrollBar()->maximum() == 0,
                         qPrintable(where + QStringLiteral(" is wider than the window by %1 px")
                                                .arg(area ? area->horizontalScrollBar()->maximum() : -1)));
                int buttons = 0;
                for (QAbstractButton* button : window.pages()->widget(row)->findChildren<QAbstractButton*>()) {
                    if (!button->isVisible()) continue;
                    ++buttons;
                    ScrollIntoView(button);
                    QVERIFY2(WhollyShown(button), qPrintable(where + QStringLiteral(": ") + button->objectName() +
                                                             QStringLiteral(" \"") + button->text() +
                                                             QStringLiteral("\" cannot be shown whole")));
                }
                QVERIFY2(buttons > 0, qPrintable(where));
            }
        }
    }

    void sidebarRowsSelectThePagesInOrder() {
        MainWindow window;
        QListWidget* sidebar = window.sidebar();
        QCOMPARE(sidebar->objectName(), QStringLiteral("Sidebar"));
        QCOMPARE(sidebar->width(), 190);
        QStringList rows;
        for (int i = 0; i < sidebar->count(); ++i) rows << sidebar->item(i)->text();
        QCOMPARE(rows, (QStringList{QStringLiteral("Start"), QStringLiteral("Koła wyboru"), QStringLiteral("Komendy głosowe"),
                                    QStringLiteral("Sterowanie wzrokiem"), QStringLiteral("Ustawienia")}));
        QCOMPARE(sidebar->currentRow(), 0);
        QCOMPARE(window.pages()->currentIndex(), 0);
        // Each page shows inside its own scroll area.
        const auto shownPage = [&window] { return window.page(window.pages()->currentIndex()); };
        sidebar->setCurrentRow(3);
        QVERIFY(qobject_cast<zirvel::frontend::GazePage*>(shownPage()));
        sidebar->setCurrentRow(2);
        QVERIFY(qobject_cast<zirvel::frontend::VoicePage*>(shownPage()));
        sidebar->setCurrentRow(1);
        QCOMPARE(shownPage(), static_cast<QWidget*>(window.editor()));
        QVERIFY(window.pages()->currentWidget()->isAncestorOf(window.editor()));
    }

    void startPageShowsWhatTheEngineReports() {
        MainWindow window;
        QCOMPARE(window.gazeStatus()->text(), QStringLiteral("wyłączony (gazeEnabled = false)"));
        QCOMPARE(window.voiceStatus()->text(),
                 QStringLiteral("wyłączony (voiceEnabled = false) · %1 fraz").arg(OverlayVoicePhraseCount()));
        QCOMPARE(window.wheelsStatus()->text(), QStringLiteral("%1 koło(a)").arg(OverlayWheelCount()));
        QCOMPARE(Role(window.gazeStatus()), QStringLiteral("ok"));
        QCOMPARE(Role(window.voiceStatus()), QStringLiteral("ok"));
        QCOMPARE(Role(window.wheelsStatus()), QStringLiteral("value"));
    }

    void noWheelsShowZeroAndTwoSegments() {
        // The engine always keeps a wheel once it has loaded; none means it
        // did not start.
        zirvel_test::LiveEngine().configuration.wheels.clear();
        QCOMPARE(OverlayWheelCount(), 0);
        MainWindow window;
        QCOMPARE(window.wheelsStatus()->text(), QStringLiteral("0 koło(a)"));
        QCOMPARE(window.preview()->segmentCount(), 2);
        OverlayReloadConfig();
    }

    void thirteenWheelsFillAllTwentyFourSegmentsWithinOneRefresh() {
        ProgramFileGuard wheels(QStringLiteral("default.json"));
        MainWindow window;
        QVERIFY(WriteProgramFile(QStringLiteral("thirteen.json"), WheelsFile(13)));
        QVERIFY(OverlayActivateWheelFile(zirvel_test::ProgramFile(QStringLiteral("thirteen.json")).toStdU16String().c_str()));
        // One refresh of 1.5 s, with room for a busy machine's lateness.
        QTRY_COMPARE_WITH_TIMEOUT(window.wheelsStatus()->text(), QStringLiteral("13 koło(a)"), 2500);
        QCOMPARE(window.preview()->segmentCount(), 24);
        OverlayReloadConfig();
    }

    void statusRefreshRunsEvery1500ms() {
        MainWindow window;
        const auto timers = window.findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(timers.size(), 1);
        QCOMPARE(timers.front()->interval(), 1500);
        QVERIFY(timers.front()->isActive());
        QVERIFY(!timers.front()->isSingleShot());
    }

    void stylingHooks() {
        MainWindow window;
        const auto cards = window.findChildren<QFrame*>(QStringLiteral("Card"));
        // Three on the start page, three on settings, two on gaze, three on voice.
        QCOMPARE(cards.size(), 11);
        auto* primary = window.pages()->widget(0)->findChild<QPushButton*>(QStringLiteral("Primary"));
        QVERIFY(primary);
        QCOMPARE(primary->text(), QStringLiteral("Pokaż koło (X)"));
        // 38 px tall in every theme (a sheet's min-height replaces the
        // widget's own) and without one.
        for (const auto& theme : zirvel::frontend::themes()) {
            zirvel::frontend::applyTheme(theme.id);
            QVERIFY2(primary->minimumHeight() == 38, qPrintable(theme.id));
        }
        qApp->setStyleSheet(QString());
        MainWindow unstyled;
        QCOMPARE(unstyled.pages()->widget(0)->findChild<QPushButton*>(QStringLiteral("Primary"))->minimumHeight(), 38);
        QWidget* settings = window.pages()->widget(4);
        QStringList roles;
        for (QLabel* label : settings->findChildren<QLabel*>()) {
            if (!Role(label).isEmpty()) roles << label->text() + QLatin1Char('=') + Role(label);
        }
        QCOMPARE(roles, (QStringList{QStringLiteral("Ustawienia=pageTitle"), QStringLiteral("Motyw interfejsu=value"),
                                     QStringLiteral("Sterowanie przełącznikiem=value"),
                                     QStringLiteral("Klawisz przełączania pokazuje koło, a podświetlenie przechodzi po "
                                                    "polach, strzałkach, siatce, elementach i „zamknij”; naciśnięcie "
                                                    "wybiera podświetlone.=cardTitle"),
                                     QStringLiteral("&Tryb=cardTitle"), QStringLiteral("&Czas podświetlenia=cardTitle"),
                                     QStringLiteral("&Okrążenia bez wyboru=cardTitle"),
                                     QStringLiteral("&Klawisz kroku=cardTitle"), QStringLiteral("Aktualizacje=value"),
                                     QStringLiteral("Zainstalowana wersja: 0.9.0=cardTitle")}));
    }

    void theStepArrowsShowTheirGlyphsInEveryTheme() {
        MainWindow window;
        window.show();
        for (const auto& theme : zirvel::frontend::themes()) {
            zirvel::frontend::applyTheme(theme.id);
            for (const char* name : {"stepUpButton", "stepDownButton"}) {
                auto* arrow = window.editor()->findChild<QPushButton*>(QLatin1String(name));
                QStyleOptionButton option;
                option.initFrom(arrow);
                option.text = arrow->text();
                const QRect contents = arrow->style()->subElementRect(QStyle::SE_PushButtonContents, &option, arrow);
                QVERIFY2(contents.width() >= arrow->fontMetrics().horizontalAdvance(arrow->text()),
                         qPrintable(theme.id + QLatin1Char(' ') + QLatin1String(name)));
            }
        }
    }

    void themeSwatchesUseTheFirstAndFourthColours() {
        MainWindow window;
        QStringList sheets;
        for (QLabel* label : window.pages()->widget(4)->findChildren<QLabel*>()) {
            if (label->size() == QSize(46, 20)) sheets << label->styleSheet();
        }
        QCOMPARE(sheets, (QStringList{
                             QStringLiteral("background:#185fa5; border:1px solid #f4f6fb; border-radius:4px;"),
                             QStringLiteral("background:#39d5c9; border:1px solid #101423; border-radius:4px;"),
                             QStringLiteral("background:#efa02f; border:1px solid #1d1f24; border-radius:4px;")}));
    }

    void theCurrentThemeIsChecked() {
        zirvel::frontend::applyTheme(QStringLiteral("pro"));
        MainWindow window;
        QVERIFY(ThemeButton(window, "pro")->isChecked());
        QVERIFY(!ThemeButton(window, "fluent")->isChecked());
        QCOMPARE(ThemeButton(window, "neon")->text(), QStringLiteral("Neon (gaming)"));
    }

    void choosingTheCheckedThemeDoesNothing() {
        MainWindow window;
        QSignalSpy toggled(ThemeButton(window, "fluent"), &QRadioButton::toggled);
        ThemeButton(window, "fluent")->click();
        QCOMPARE(toggled.size(), 0);
        QVERIFY(!FrontEndSettings().contains(QStringLiteral("theme")));
    }

    void choosingAnotherThemeAppliesAndSavesIt() {
        MainWindow window;
        QSignalSpy oldButton(ThemeButton(window, "fluent"), &QRadioButton::toggled);
        QSignalSpy newButton(ThemeButton(window, "neon"), &QRadioButton::toggled);
        ThemeButton(window, "neon")->click();
        QCOMPARE(oldButton.size(), 1);
        QCOMPARE(oldButton.front().front().toBool(), false);
        QCOMPARE(newButton.size(), 1);
        QCOMPARE(zirvel::frontend::currentThemeId(), QStringLiteral("neon"));
        QCOMPARE(FrontEndSettings().value(QStringLiteral("theme")).toString(), QStringLiteral("neon"));
        QCOMPARE(qApp->styleSheet(), QString::fromUtf8(zirvel_test::ReadProgramFile(QStringLiteral("themes/neon.qss"))));
    }

    void voicePageOpensVoiceJsonInTheEditor() {
        MainWindow window;
        window.pages()->widget(2)->findChild<QPushButton*>(QStringLiteral("editGlobalCommands"))->click();
        QCOMPARE(window.sidebar()->currentRow(), 1);
        QCOMPARE(window.pages()->currentIndex(), 1);
        QCOMPARE(window.editor()->filePath(), zirvel_test::ProgramFile(QStringLiteral("voice.json")));
        QCOMPARE(FrontEndSettings().value(QStringLiteral("lastWheelFile")).toString(),
                 zirvel_test::ProgramFile(QStringLiteral("voice.json")));
    }

    void aLongFilePathDoesNotWidenTheWindow() {
        MainWindow window;
        const int before = window.minimumSizeHint().width();
        const QString folder = QStringLiteral("bardzo-dluga-nazwa-folderu-z-kolami-do-gier-").repeated(4);
        QVERIFY(QDir().mkpath(zirvel_test::ProgramFile(folder)));
        QVERIFY(WriteProgramFile(folder + QStringLiteral("/gra.json"), R"({"actions": []})"));
        window.editor()->loadFile(zirvel_test::ProgramFile(folder + QStringLiteral("/gra.json")));
        QCOMPARE(window.editor()->filePath(), zirvel_test::ProgramFile(folder + QStringLiteral("/gra.json")));
        QCOMPARE(window.minimumSizeHint().width(), before);
        QDir(zirvel_test::ProgramFile(folder)).removeRecursively();
    }

    void thePrimaryButtonTogglesTheWheel() {
        MainWindow window;
        auto* primary = window.pages()->widget(0)->findChild<QPushButton*>(QStringLiteral("Primary"));
        QVERIFY(!OverlayIsWheelVisible());
        primary->click();
        QVERIFY(OverlayIsWheelVisible());
        primary->click();
        QVERIFY(!OverlayIsWheelVisible());
    }

    void closingHidesTheWindowWhileTheTrayShows() {
        MainWindow window;
        window.show();
        QVERIFY(window.tray()->isVisible());
        QCloseEvent close;
        QApplication::sendEvent(&window, &close);
        QVERIFY(!close.isAccepted());
        QVERIFY(!window.isVisible());
    }

    void withoutATrayTheCloseButtonReallyCloses() {
        MainWindow window;
        window.show();
        window.tray()->hide();
        QCloseEvent close;
        QApplication::sendEvent(&window, &close);
        QVERIFY(close.isAccepted());
    }

    void onlyADoubleClickOnTheTrayShowsTheWindow() {
        MainWindow window;
        QVERIFY(!window.isVisible());
        for (auto reason : {QSystemTrayIcon::Trigger, QSystemTrayIcon::MiddleClick, QSystemTrayIcon::Context}) {
            emit window.tray()->activated(reason);
            QVERIFY(!window.isVisible());
        }
        emit window.tray()->activated(QSystemTrayIcon::DoubleClick);
        QVERIFY(window.isVisible());
    }

    void trayIconAndMenu() {
        MainWindow window;
        QCOMPARE(window.tray()->toolTip(), QStringLiteral("Zirvel"));
        QCOMPARE(window.tray()->parent(), &window);
        const auto actions = window.tray()->contextMenu()->actions();
        QCOMPARE(actions.size(), 4);
        QCOMPARE(actions[0]->text(), QStringLiteral("Pokaż koło"));
        QCOMPARE(actions[1]->text(), QStringLiteral("Pokaż okno"));
        QVERIFY(actions[2]->isSeparator());
        QCOMPARE(actions[3]->text(), QStringLiteral("Zakończ"));

        actions[1]->trigger();
        QVERIFY(window.isVisible());
        actions[0]->trigger();
        QVERIFY(OverlayIsWheelVisible());
        actions[0]->trigger();
        QVERIFY(!OverlayIsWheelVisible());
    }

    void updatesButtonIsThereAndHarmless() {
        MainWindow window;
        auto* check = window.findChild<QPushButton*>(QStringLiteral("checkUpdates"));
        QVERIFY(check);
        QCOMPARE(check->text(), QStringLiteral("Sprawdź aktualizacje…"));
        check->click();
        QVERIFY(check->isEnabled());
    }
    // Last: it runs and ends the application's event loop. The window
    // shows, so a quit that asks the windows to close first would be
    // refused (closing only hides it to the tray).
    void zakonczEndsTheEventLoop() {
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QSignalSpy aboutToQuit(qApp, &QCoreApplication::aboutToQuit);
        QTimer::singleShot(0, &window, [&window] { window.tray()->contextMenu()->actions().back()->trigger(); });
        // Should "Zakończ" not end it, this does, with another code.
        QTimer::singleShot(3000, qApp, [] { QCoreApplication::exit(7); });
        QCOMPARE(QApplication::exec(), 0);
        QCOMPARE(aboutToQuit.size(), 1);
    }
};

ZIRVEL_FRONTEND_TEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
