// The voice page: its switches in config.json, the status line with the
// phrase count, and the global commands read from voice.json.
#include <QCheckBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <atomic>

#include "engine/engine_lifecycle.h"
#include <QElapsedTimer>
#include <QThread>
#include "frontend/voice_page.h"
#include "support/engine_access.h"
#include "support/frontend_test_main.h"
#include "support/program_files.h"

using zirvel::frontend::VoicePage;
using zirvel_test::LiveEngine;
using zirvel_test::ProgramFileGuard;
using zirvel_test::ReadProgramFile;
using zirvel_test::WriteProgramFile;

namespace {

const QString kConfig = QStringLiteral("config.json");
const QString kGlobalCommands = QStringLiteral("voice.json");

QJsonObject ConfigOnDisk() { return zirvel_test::ReadProgramJson(kConfig); }

QStringList Items(const QListWidget* list) {
    QStringList items;
    for (int i = 0; i < list->count(); ++i) items << list->item(i)->text();
    return items;
}

QByteArray GlobalCommands(const QString& phrase) {
    return QStringLiteral(R"({"actions": [
        {"name": "Leczenie", "voice": "%1", "steps": [{"key": "h"}]},
        {"name": "Bez frazy", "steps": [{"key": "j"}]}
    ]})").arg(phrase).toUtf8();
}

}  // namespace

class VoicePageTest : public QObject {
    Q_OBJECT

    std::unique_ptr<ProgramFileGuard> config_;
    std::unique_ptr<ProgramFileGuard> globalCommands_;

private slots:
    void init() {
        config_ = std::make_unique<ProgramFileGuard>(kConfig);
        globalCommands_ = std::make_unique<ProgramFileGuard>(kGlobalCommands);
    }
    void cleanup() {
        config_.reset();
        globalCommands_.reset();
        OverlayReloadConfig();
        zirvel::SetVoiceThreadBody(nullptr);
    }

    void readsTheSwitchesWithoutWritingThemBack() {
        const QByteArray text = "{\"voiceEnabled\": false, \"voiceGlobal\": true}";
        QVERIFY(WriteProgramFile(kConfig, text));
        VoicePage page(nullptr);
        QCOMPARE(page.enabledBox()->isChecked(), false);
        QCOMPARE(page.globalBox()->isChecked(), true);
        QCOMPARE(ReadProgramFile(kConfig), text);
    }

    void missingKeysMeanOn() {
        QVERIFY(WriteProgramFile(kConfig, "{}"));
        VoicePage page(nullptr);
        QVERIFY(page.enabledBox()->isChecked());
        QVERIFY(page.globalBox()->isChecked());
    }

    void statusLineNamesTheStatusAndThePhraseCount() {
        VoicePage page(nullptr);
        const int phrases = OverlayVoicePhraseCount();
        QVERIFY(phrases >= 311);
        QCOMPARE(page.statusLabel()->text(),
                 QStringLiteral("wyłączony (voiceEnabled = false) · %1 fraz").arg(phrases));
    }

    void switchingVoiceOffStopsTheRecogniserAndTheLineSaysSoWithin1500ms() {
        // A recogniser stand-in that reports "aktywny" until it is told to stop.
        zirvel::SetVoiceThreadBody([](const std::atomic<bool>& stop) {
            LiveEngine().voiceStatus = zirvel::kVoiceActive;
            while (!stop) QThread::msleep(5);
        });
        QVERIFY(WriteProgramFile(kConfig, "{\"voiceEnabled\": true}"));
        OverlayReloadConfig();
        VoicePage page(nullptr);
        QTRY_VERIFY_WITH_TIMEOUT(page.statusLabel()->text().startsWith(QStringLiteral("aktywny · ")), 2500);

        page.enabledBox()->setChecked(false);
        QCOMPARE(ConfigOnDisk().value(QStringLiteral("voiceEnabled")).toBool(true), false);
        QElapsedTimer elapsed;
        elapsed.start();
        const QString expected =
            QStringLiteral("wyłączony (voiceEnabled = false) · %1 fraz").arg(OverlayVoicePhraseCount());
        // Within one refresh of 1.5 s; its timer may wake a little late on a
        // busy machine, so half a second more is allowed.
        QTRY_COMPARE_WITH_TIMEOUT(page.statusLabel()->text(), expected, 3000);
        QVERIFY2(elapsed.elapsed() <= 2000, qPrintable(QString::number(elapsed.elapsed())));
    }

    void theSecondSwitchWritesVoiceGlobal() {
        QVERIFY(WriteProgramFile(kConfig, "{\"voiceGlobal\": true, \"keyHold\": 40}"));
        VoicePage page(nullptr);
        page.globalBox()->setChecked(false);
        const QJsonObject saved = ConfigOnDisk();
        QCOMPARE(saved.value(QStringLiteral("voiceGlobal")).toBool(true), false);
        QCOMPARE(saved.value(QStringLiteral("voiceEnabled")).toBool(false), true);
        QCOMPARE(saved.value(QStringLiteral("keyHold")).toInt(), 40);
        QVERIFY(!LiveEngine().Settings().voiceGlobal);
    }

    void listsGlobalCommandsWithPhrases() {
        QVERIFY(WriteProgramFile(kGlobalCommands, GlobalCommands(QStringLiteral("lecz"))));
        VoicePage page(nullptr);
        QCOMPARE(Items(page.commandList()), QStringList{QStringLiteral("„lecz” — Leczenie")});
    }

    void aNewPhraseIsListedWithin6Seconds() {
        QVERIFY(WriteProgramFile(kGlobalCommands, GlobalCommands(QStringLiteral("lecz"))));
        VoicePage page(nullptr);
        QVERIFY(WriteProgramFile(kGlobalCommands, GlobalCommands(QStringLiteral("apteczka"))));
        // Four refreshes of 1.5 s, and room for a busy machine's lateness.
        QTRY_COMPARE_WITH_TIMEOUT(Items(page.commandList()), QStringList{QStringLiteral("„apteczka” — Leczenie")},
                                  7500);
    }

    void anUnreadableFileKeepsThePreviousList() {
        QVERIFY(WriteProgramFile(kGlobalCommands, GlobalCommands(QStringLiteral("lecz"))));
        VoicePage page(nullptr);
        QVERIFY(WriteProgramFile(kGlobalCommands, "{ not json"));
        QTest::qWait(6200);
        QCOMPARE(Items(page.commandList()), QStringList{QStringLiteral("„lecz” — Leczenie")});
    }

    void theEditButtonOpensVoiceJsonInTheEditor() {
        QString opened;
        VoicePage page([&opened](const QString& path) { opened = path; });
        page.editButton()->click();
        QCOMPARE(opened, zirvel_test::ProgramFile(kGlobalCommands));
    }

    void withoutACallbackTheEditButtonDoesNothing() {
        VoicePage page(nullptr);
        page.editButton()->click();
        QVERIFY(page.isEnabled());
    }
};

ZIRVEL_FRONTEND_TEST_MAIN(VoicePageTest)
#include "voice_page_test.moc"
