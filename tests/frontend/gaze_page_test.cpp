// The eye-tracking page: the dwell label, what it writes to config.json and
// the engine's status line.
#include <QCheckBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QSlider>
#include <QTest>

#include "frontend/gaze_page.h"
#include "support/engine_access.h"
#include "support/frontend_test_main.h"
#include "support/program_files.h"

using zirvel::frontend::GazePage;
using zirvel_test::LiveEngine;
using zirvel_test::ProgramFileGuard;
using zirvel_test::ReadProgramFile;
using zirvel_test::WriteProgramFile;

namespace {

const QString kConfig = QStringLiteral("config.json");

QJsonObject ConfigOnDisk() { return zirvel_test::ReadProgramJson(kConfig); }

// Moves the slider the way a mouse drag does: pressed, moved, let go.
void DragSlider(QSlider* slider, int value) {
    slider->setSliderDown(true);
    slider->setValue(value);
    slider->setSliderDown(false);
}

}  // namespace

class GazePageTest : public QObject {
    Q_OBJECT

    std::unique_ptr<ProgramFileGuard> config_;

private slots:
    void init() { config_ = std::make_unique<ProgramFileGuard>(kConfig); }
    void cleanup() {
        config_.reset();
        OverlayReloadConfig();
        LiveEngine().gazeStatus = 0;
    }

    void readsTheSettingsWithoutWritingThemBack() {
        const QByteArray text = "{\"gazeEnabled\": false, \"gazeDwell\": 1250, \"sendDelay\": 150}";
        QVERIFY(WriteProgramFile(kConfig, text));
        GazePage page;
        QCOMPARE(page.enabledBox()->isChecked(), false);
        QCOMPARE(page.dwellSlider()->value(), 1250);
        QCOMPARE(page.dwellLabel()->text(), QStringLiteral("1250 ms"));
        QCOMPARE(ReadProgramFile(kConfig), text);
    }

    void missingKeysMeanOnAnd900() {
        QVERIFY(WriteProgramFile(kConfig, "{}"));
        GazePage page;
        QCOMPARE(page.enabledBox()->isChecked(), true);
        QCOMPARE(page.dwellSlider()->value(), 900);
        QCOMPARE(page.dwellLabel()->text(), QStringLiteral("900 ms"));
    }

    void zeroMeansClickOnly() {
        GazePage page;
        page.dwellSlider()->setValue(0);
        QCOMPARE(page.dwellLabel()->text(), QStringLiteral("tylko kliknięcie"));
        page.dwellSlider()->setValue(950);
        QCOMPARE(page.dwellLabel()->text(), QStringLiteral("950 ms"));
    }

    void sliderStopsAt3000AndSavesThat() {
        QVERIFY(WriteProgramFile(kConfig, "{\"gazeDwell\": 5000}"));
        GazePage page;
        QCOMPARE(page.dwellSlider()->maximum(), 3000);
        QCOMPARE(page.dwellSlider()->value(), 3000);
        page.enabledBox()->setChecked(false);
        QCOMPARE(ConfigOnDisk().value(QStringLiteral("gazeDwell")).toInt(), 3000);
    }

    void releasingTheSliderSavesAndReloads() {
        QVERIFY(WriteProgramFile(kConfig, "{\"sendDelay\": 150, \"gazeDwell\": 900}"));
        OverlayReloadConfig();
        GazePage page;
        DragSlider(page.dwellSlider(), 1500);
        const QJsonObject saved = ConfigOnDisk();
        QCOMPARE(saved.value(QStringLiteral("gazeDwell")).toInt(), 1500);
        QCOMPARE(saved.value(QStringLiteral("gazeEnabled")).toBool(false), true);
        QCOMPARE(saved.value(QStringLiteral("sendDelay")).toInt(), 150);
        QCOMPARE(LiveEngine().Settings().gazeDwell, 1500);
    }

    // Keyboard users never let go of a mouse button: their changes are
    // saved too, once a run of key presses pauses.
    void keyboardChangesAreSavedOnceTheKeysRest() {
        QVERIFY(WriteProgramFile(kConfig, "{\"gazeDwell\": 900}"));
        OverlayReloadConfig();
        GazePage page;
        page.dwellSlider()->setFocus();
        for (int step = 0; step < 4; ++step) QTest::keyClick(page.dwellSlider(), Qt::Key_Right);
        QCOMPARE(page.dwellSlider()->value(), 1100);
        QCOMPARE(page.dwellLabel()->text(), QStringLiteral("1100 ms"));
        // Not one save per step: the run is still going.
        QCOMPARE(ConfigOnDisk().value(QStringLiteral("gazeDwell")).toInt(), 900);
        QTRY_COMPARE_WITH_TIMEOUT(ConfigOnDisk().value(QStringLiteral("gazeDwell")).toInt(), 1100,
                                  GazePage::kKeyboardSaveDelayMs * 5);
        QCOMPARE(LiveEngine().Settings().gazeDwell, 1100);
        QTest::keyClick(page.dwellSlider(), Qt::Key_End);
        QTRY_COMPARE_WITH_TIMEOUT(ConfigOnDisk().value(QStringLiteral("gazeDwell")).toInt(), 3000,
                                  GazePage::kKeyboardSaveDelayMs * 5);
    }

    void aKeyboardChangeIsNotLostWhenThePageCloses() {
        QVERIFY(WriteProgramFile(kConfig, "{\"gazeDwell\": 900}"));
        {
            GazePage page;
            page.dwellSlider()->setFocus();
            QTest::keyClick(page.dwellSlider(), Qt::Key_Left);
        }
        QCOMPARE(ConfigOnDisk().value(QStringLiteral("gazeDwell")).toInt(), 850);
    }

    void aDragIsSavedOnlyWhenLetGo() {
        QVERIFY(WriteProgramFile(kConfig, "{\"gazeDwell\": 900}"));
        GazePage page;
        page.dwellSlider()->setSliderDown(true);
        page.dwellSlider()->setValue(2000);
        QTest::qWait(GazePage::kKeyboardSaveDelayMs * 2);
        QCOMPARE(ConfigOnDisk().value(QStringLiteral("gazeDwell")).toInt(), 900);
        page.dwellSlider()->setSliderDown(false);
        QCOMPARE(ConfigOnDisk().value(QStringLiteral("gazeDwell")).toInt(), 2000);
    }

    void togglingWritesAndReloadsTheEngine() {
        QVERIFY(WriteProgramFile(kConfig, "{\"gazeEnabled\": true}"));
        OverlayReloadConfig();
        QVERIFY(LiveEngine().Settings().gazeEnabled);
        GazePage page;
        page.enabledBox()->setChecked(false);
        QCOMPARE(ConfigOnDisk().value(QStringLiteral("gazeEnabled")).toBool(true), false);
        QVERIFY(!LiveEngine().Settings().gazeEnabled);
    }

    void aFileThatIsNotAnObjectIsReplacedByTheTwoKeys() {
        QVERIFY(WriteProgramFile(kConfig, "[1, 2, 3]"));
        GazePage page;
        page.enabledBox()->setChecked(false);
        const QJsonObject saved = ConfigOnDisk();
        QCOMPARE(saved.keys(), (QStringList{QStringLiteral("gazeDwell"), QStringLiteral("gazeEnabled")}));
    }

    void aMissingFileIsCreatedWithTheTwoKeys() {
        QFile::remove(zirvel_test::ProgramFile(kConfig));
        GazePage page;
        QVERIFY(!QFile::exists(zirvel_test::ProgramFile(kConfig)));
        page.enabledBox()->setChecked(false);
        QCOMPARE(ConfigOnDisk().keys(), (QStringList{QStringLiteral("gazeDwell"), QStringLiteral("gazeEnabled")}));
    }

    void statusFollowsTheEngine() {
        GazePage page;
        QCOMPARE(page.statusLabel()->text(), QStringLiteral("wyłączony (gazeEnabled = false)"));
        LiveEngine().gazeStatus = 4;
        QTRY_COMPARE_WITH_TIMEOUT(page.statusLabel()->text(), QStringLiteral("aktywny"), 2500);
        LiveEngine().gazeStatus = 3;
        QTRY_COMPARE_WITH_TIMEOUT(page.statusLabel()->text(), QStringLiteral("nie wykryto urządzenia"), 2500);
    }

    void eachControlHasAnAccessibleName() {
        GazePage page;
        QVERIFY(!page.dwellSlider()->accessibleName().isEmpty());
        QCOMPARE(page.dwellSlider()->accessibleDescription(), page.dwellLabel()->text());
    }
};

ZIRVEL_FRONTEND_TEST_MAIN(GazePageTest)
#include "gaze_page_test.moc"
