// The start of the desktop program: the application's names, the message a
// second instance shows, and the saved theme applied at start.
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>

#include "frontend/application_start.h"
#include "frontend/frontend_identity.h"
#include "frontend/themes.h"
#include "support/frontend_test_main.h"
#include "support/modal_driver.h"

using namespace zirvel::frontend;

class ApplicationStartTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() {
        QSettings(kOrganisationName, kSettingsScope).remove(kThemeKey);
        applyTheme(QStringLiteral("fluent"));
    }

    void namesTheApplicationAndKeepsItRunningWithoutWindows() {
        QCoreApplication::setOrganizationName(QString());
        QCoreApplication::setApplicationName(QString());
        QApplication::setQuitOnLastWindowClosed(true);
        PrepareApplication();
        QCOMPARE(QCoreApplication::organizationName(), QStringLiteral("Zirvel"));
        QCOMPARE(QCoreApplication::applicationName(), QStringLiteral("Zirvel"));
        QVERIFY(!QApplication::quitOnLastWindowClosed());
        QVERIFY(!QApplication::windowIcon().isNull());
    }

    void aSecondInstanceShowsOneInformationBoxWithOk() {
        zirvel_test::ModalDriver driver;
        QMessageBox::StandardButtons buttons;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QString title;
        QString text;
        bool parentless = false;
        driver.Next([&](QWidget* widget) {
            auto* box = qobject_cast<QMessageBox*>(widget);
            if (!box) return;
            buttons = box->standardButtons();
            icon = box->icon();
            title = box->windowTitle();
            text = box->text();
            parentless = box->parentWidget() == nullptr;
            box->button(QMessageBox::Ok)->click();
        });
        ShowAlreadyRunningMessage();  // returns once the box is dismissed
        QVERIFY(driver.Handled());
        QCOMPARE(title, QStringLiteral("Zirvel"));
        QCOMPARE(text, QStringLiteral("Zirvel już działa — sprawdź ikonę w zasobniku systemowym."));
        QCOMPARE(icon, QMessageBox::Information);
        QCOMPARE(buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        QVERIFY(parentless);
    }

    void theSavedThemeApplies_data() {
        QTest::addColumn<QString>("saved");
        QTest::addColumn<QString>("applied");
        QTest::newRow("neon") << QStringLiteral("neon") << QStringLiteral("neon");
        QTest::newRow("pro") << QStringLiteral("pro") << QStringLiteral("pro");
        QTest::newRow("unknown") << QStringLiteral("unknown") << QStringLiteral("fluent");
        QTest::newRow("none") << QString() << QStringLiteral("fluent");
    }

    void theSavedThemeApplies() {
        QFETCH(QString, saved);
        QFETCH(QString, applied);
        applyTheme(QStringLiteral("pro") == applied ? QStringLiteral("neon") : QStringLiteral("pro"));
        if (!saved.isNull()) QSettings(kOrganisationName, kSettingsScope).setValue(kThemeKey, saved);
        ApplySavedTheme();
        QCOMPARE(currentThemeId(), applied);
    }
};

ZIRVEL_FRONTEND_TEST_MAIN(ApplicationStartTest)

#include "application_start_test.moc"
