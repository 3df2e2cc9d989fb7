// The switch scanning card: what it reads from and writes to config.json,
// the engine's reload, and an unknown step key.
#include <QCheckBox>
#include <QComboBox>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QTest>

#include "frontend/switch_scan_card.h"
#include "support/engine_access.h"
#include "support/frontend_test_main.h"
#include "support/program_files.h"

using zirvel::frontend::SwitchScanCard;
using zirvel_test::LiveEngine;
using zirvel_test::ProgramFileGuard;
using zirvel_test::ReadProgramFile;
using zirvel_test::WriteProgramFile;

namespace {

const QString kConfig = QStringLiteral("config.json");

QJsonObject ConfigOnDisk() { return zirvel_test::ReadProgramJson(kConfig); }

}  // namespace

class SwitchScanCardTest : public QObject {
    Q_OBJECT

    std::unique_ptr<ProgramFileGuard> config_;

private slots:
    void init() { config_ = std::make_unique<ProgramFileGuard>(kConfig); }
    void cleanup() {
        config_.reset();
        OverlayReloadConfig();
    }

    void readsTheSettingsWithoutWritingThemBack() {
        const QByteArray text = "{\"scanEnabled\": true, \"scanMode\": \"step\", \"scanInterval\": 800, "
                                "\"scanLoops\": 5, \"scanStepKey\": \"spacja\"}";
        QVERIFY(WriteProgramFile(kConfig, text));
        SwitchScanCard card;
        QCOMPARE(card.enabledBox()->isChecked(), true);
        QCOMPARE(card.modeBox()->currentIndex(), 1);
        QCOMPARE(card.intervalBox()->value(), 800);
        QCOMPARE(card.loopsBox()->value(), 5);
        QCOMPARE(card.stepKeyEdit()->text(), QStringLiteral("spacja"));
        QCOMPARE(ReadProgramFile(kConfig), text);
    }

    void missingKeysShowTheDefaults() {
        QVERIFY(WriteProgramFile(kConfig, "{}"));
        SwitchScanCard card;
        QCOMPARE(card.enabledBox()->isChecked(), false);
        QCOMPARE(card.modeBox()->currentIndex(), 0);
        QCOMPARE(card.intervalBox()->value(), 1200);
        QCOMPARE(card.loopsBox()->value(), 3);
        QCOMPARE(card.intervalBox()->minimum(), 250);
        QCOMPARE(card.intervalBox()->maximum(), 10000);
        QCOMPARE(card.loopsBox()->minimum(), 1);
        QCOMPARE(card.loopsBox()->maximum(), 20);
    }

    void changesAreSavedBesideTheOtherKeysAndTheEngineReloads() {
        QVERIFY(WriteProgramFile(kConfig, "{\"sendDelay\": 150}"));
        OverlayReloadConfig();
        SwitchScanCard card;
        card.enabledBox()->setChecked(true);
        QVERIFY(LiveEngine().Settings().scanEnabled);
        card.modeBox()->setCurrentIndex(1);
        card.intervalBox()->setValue(600);
        card.loopsBox()->setValue(7);
        card.stepKeyEdit()->setText(QStringLiteral(" F8 "));
        emit card.stepKeyEdit()->editingFinished();
        const QJsonObject saved = ConfigOnDisk();
        QCOMPARE(saved.value(QStringLiteral("scanEnabled")).toBool(), true);
        QCOMPARE(saved.value(QStringLiteral("scanMode")).toString(), QStringLiteral("step"));
        QCOMPARE(saved.value(QStringLiteral("scanInterval")).toInt(), 600);
        QCOMPARE(saved.value(QStringLiteral("scanLoops")).toInt(), 7);
        QCOMPARE(saved.value(QStringLiteral("scanStepKey")).toString(), QStringLiteral("F8"));
        QCOMPARE(saved.value(QStringLiteral("sendDelay")).toInt(), 150);
        QCOMPARE(LiveEngine().Settings().scanInterval, 600);
        QCOMPARE(LiveEngine().Settings().scanLoops, 7);
        QCOMPARE(LiveEngine().Settings().scanStepKeyCode.vk, 0x77);
        QVERIFY(card.problemLabel()->isHidden());
    }

    void anUnknownStepKeyIsNotSavedAndSaysSo() {
        QVERIFY(WriteProgramFile(kConfig, "{\"scanStepKey\": \"enter\"}"));
        SwitchScanCard card;
        card.stepKeyEdit()->setText(QStringLiteral("lmb"));
        emit card.stepKeyEdit()->editingFinished();
        QVERIFY(!card.problemLabel()->isHidden());
        QVERIFY(card.problemLabel()->text().contains(QStringLiteral("Nieznany klawisz kroku „lmb”")));
        QCOMPARE(ConfigOnDisk().value(QStringLiteral("scanStepKey")).toString(), QStringLiteral("enter"));
        card.stepKeyEdit()->setText(QString());
        emit card.stepKeyEdit()->editingFinished();
        QVERIFY(card.problemLabel()->isHidden());
        QCOMPARE(ConfigOnDisk().value(QStringLiteral("scanStepKey")).toString(QStringLiteral("?")), QString());
    }

    void typedDigitsAreSavedOnceTheBoxIsLeft() {
        QVERIFY(WriteProgramFile(kConfig, "{\"scanInterval\": 1200}"));
        SwitchScanCard card;
        card.show();
        card.intervalBox()->setFocus();
        QTest::keyClick(card.intervalBox(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(card.intervalBox(), QStringLiteral("900"));
        QCOMPARE(ConfigOnDisk().value(QStringLiteral("scanInterval")).toInt(), 1200);
        QTest::keyClick(card.intervalBox(), Qt::Key_Return);
        QCOMPARE(ConfigOnDisk().value(QStringLiteral("scanInterval")).toInt(), 900);
    }

    void everyControlHasAnAccessibleName() {
        SwitchScanCard card;
        for (QWidget* control : std::initializer_list<QWidget*>{card.modeBox(), card.intervalBox(), card.loopsBox(),
                                                                card.stepKeyEdit()}) {
            QVERIFY(!control->accessibleName().isEmpty());
        }
        QCOMPARE(card.intervalBox()->accessibleName(), QStringLiteral("Czas podświetlenia"));
    }
};

ZIRVEL_FRONTEND_TEST_MAIN(SwitchScanCardTest)
#include "switch_scan_card_test.moc"
