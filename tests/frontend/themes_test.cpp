// The theme table, the fallback to "fluent" and applying style sheets.
#include <QApplication>
#include <QDir>
#include <QTest>

#include "frontend/themes.h"
#include "support/frontend_test_main.h"
#include "support/program_files.h"

using zirvel::frontend::applyTheme;
using zirvel::frontend::currentThemeId;
using zirvel::frontend::themeById;
using zirvel::frontend::themes;
using zirvel_test::ProgramFileGuard;
using zirvel_test::ReadProgramFile;
using zirvel_test::WriteProgramFile;

class ThemesTest : public QObject {
    Q_OBJECT

private slots:
    void init() { QDir().mkpath(zirvel_test::ProgramFile(QStringLiteral("themes"))); }
    void cleanup() { applyTheme(QStringLiteral("fluent")); }

    void tableHasThreeThemesInOrder() {
        QCOMPARE(themes().size(), 3);
        QCOMPARE(themes()[0].id, QStringLiteral("fluent"));
        QCOMPARE(themes()[0].label, QStringLiteral("Fluent (jasny)"));
        QCOMPARE(themes()[1].id, QStringLiteral("neon"));
        QCOMPARE(themes()[1].label, QStringLiteral("Neon (gaming)"));
        QCOMPARE(themes()[2].id, QStringLiteral("pro"));
        QCOMPARE(themes()[2].label, QStringLiteral("Pro studio (grafit)"));
    }

    void coloursAreTheTableValues() {
        QCOMPARE(themeById(QStringLiteral("fluent")).colours[0], QColor(QStringLiteral("#185FA5")));
        QCOMPARE(themeById(QStringLiteral("fluent")).colours[5], QColor(QStringLiteral("#1B2433")));
        QCOMPARE(themeById(QStringLiteral("neon")).colours[1], QColor(QStringLiteral("#1B2340")));
        QCOMPARE(themeById(QStringLiteral("neon")).colours[4], QColor(QStringLiteral("#39D5C9")));
        QCOMPARE(themeById(QStringLiteral("pro")).colours[2], QColor(QStringLiteral("#BA7517")));
        QCOMPARE(themeById(QStringLiteral("pro")).colours[3], QColor(QStringLiteral("#1D1F24")));
    }

    void startsWithFluent() { QCOMPARE(currentThemeId(), QStringLiteral("fluent")); }

    void unknownIdsFallBackToFluent_data() {
        QTest::addColumn<QString>("id");
        QTest::newRow("unknown") << QStringLiteral("unknown");
        QTest::newRow("upper case") << QStringLiteral("NEON");
        QTest::newRow("empty") << QString();
    }
    void unknownIdsFallBackToFluent() {
        QFETCH(QString, id);
        applyTheme(QStringLiteral("pro"));
        QCOMPARE(currentThemeId(), QStringLiteral("pro"));
        applyTheme(id);
        QCOMPARE(currentThemeId(), QStringLiteral("fluent"));
        QCOMPARE(themeById(id).id, QStringLiteral("fluent"));
    }

    void appliesTheSheetVerbatim() {
        for (const auto& theme : themes()) {
            applyTheme(theme.id);
            const QByteArray sheet = ReadProgramFile(QStringLiteral("themes/") + theme.id + QStringLiteral(".qss"));
            QVERIFY2(!sheet.isEmpty(), qPrintable(theme.id));
            QCOMPARE(qApp->styleSheet(), QString::fromUtf8(sheet));
        }
    }

    void readsPolishLettersAsUtf8() {
        ProgramFileGuard guard(QStringLiteral("themes/neon.qss"));
        const QString text = QStringLiteral("/* Motyw próbny: zażółć gęślą jaźń */\nQWidget { color: #E8ECFF; }\n");
        QVERIFY(WriteProgramFile(QStringLiteral("themes/neon.qss"), text.toUtf8()));
        applyTheme(QStringLiteral("neon"));
        QCOMPARE(qApp->styleSheet(), text);
    }

    void missingSheetLeavesTheDefaultLookButKeepsTheColours() {
        applyTheme(QStringLiteral("fluent"));
        QVERIFY(!qApp->styleSheet().isEmpty());
        ProgramFileGuard guard(QStringLiteral("themes/pro.qss"));
        QVERIFY(QFile::remove(zirvel_test::ProgramFile(QStringLiteral("themes/pro.qss"))));
        applyTheme(QStringLiteral("pro"));
        QCOMPARE(qApp->styleSheet(), QString());
        QCOMPARE(currentThemeId(), QStringLiteral("pro"));
        QCOMPARE(themeById(currentThemeId()).colours[0], QColor(QStringLiteral("#EFA02F")));
    }
};

ZIRVEL_FRONTEND_TEST_MAIN(ThemesTest)
#include "themes_test.moc"
