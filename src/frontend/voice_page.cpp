#include "frontend/voice_page.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFrame>
#include <QJsonObject>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "engine/overlay_exports.h"
#include "frontend/cards.h"
#include "frontend/config_object.h"
#include "frontend/engine_text.h"
#include "frontend/page_title.h"
#include "frontend/program_folders.h"
#include "frontend/wheel_document.h"

namespace zirvel::frontend {
namespace {

// One count for every voice page: every fourth tick (6 s) re-reads voice.json.
int sharedTicks = 0;

QString GlobalCommandsPath() { return CurrentProgramFolders().files + QStringLiteral("/voice.json"); }

QWidget* ColumnOf(int spacing) {
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return content;
}

}  // namespace

VoicePage::VoicePage(OpenInEditor openInEditor, QWidget* parent)
    : QWidget(parent), openInEditor_(std::move(openInEditor)) {
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(18, 18, 18, 18);
    page->setSpacing(10);
    page->addWidget(MakePageTitle(tr("Komendy głosowe")));

    QWidget* statusContent = ColumnOf(2);
    auto* caption = new QLabel(tr("Rozpoznawanie mowy (Vosk, offline)"));
    SetRole(caption, "cardTitle");
    status_ = new QLabel;
    status_->setObjectName(QStringLiteral("voiceStatus"));
    SetRole(status_, "ok");
    status_->setAccessibleName(tr("Stan rozpoznawania mowy"));
    statusContent->layout()->addWidget(caption);
    statusContent->layout()->addWidget(status_);
    page->addWidget(buildCard(statusContent));

    QWidget* switches = ColumnOf(8);
    enabled_ = new QCheckBox(tr("Komendy głosowe włączone"));
    enabled_->setObjectName(QStringLiteral("voiceEnabled"));
    global_ = new QCheckBox(tr("Frazy pól kół działają zawsze (nie tylko przy otwartym kole)"));
    global_->setObjectName(QStringLiteral("voiceGlobal"));
    switches->layout()->addWidget(enabled_);
    switches->layout()->addWidget(global_);
    page->addWidget(buildCard(switches));

    QWidget* globalContent = ColumnOf(8);
    auto* listCaption = new QLabel(tr("Globalne komendy (voice.json)"));
    SetRole(listCaption, "cardTitle");
    commands_ = new QListWidget;
    commands_->setObjectName(QStringLiteral("globalCommands"));
    commands_->setMinimumHeight(140);
    commands_->setAccessibleName(listCaption->text());
    edit_ = new QPushButton(tr("Edytuj w edytorze kół"));
    edit_->setObjectName(QStringLiteral("editGlobalCommands"));
    auto* globalLayout = static_cast<QVBoxLayout*>(globalContent->layout());
    globalLayout->addWidget(listCaption);
    globalLayout->addWidget(commands_, 1);
    globalLayout->addWidget(edit_);
    page->addWidget(buildCard(globalContent), 1);

    auto* builtIn = new QLabel(tr("Wbudowane: \"pokaż/schowaj koło\", \"następne/poprzednie koło\", \"pokaż/schowaj "
                                  "siatkę\", \"pokaż elementy (strony)\", \"ukryj elementy\", liczby 1–99, "
                                  "\"kliknij\", \"dwuklik\", \"prawy klik\", \"kliknij dwa razy/prawy na N\"."));
    builtIn->setWordWrap(true);
    SetRole(builtIn, "cardTitle");
    page->addWidget(builtIn);

    // Filling the widgets from the file must not write the file back.
    loading_ = true;
    const QJsonObject config = ReadConfigObject();
    enabled_->setChecked(config.value(QStringLiteral("voiceEnabled")).toBool(true));
    global_->setChecked(config.value(QStringLiteral("voiceGlobal")).toBool(true));
    loading_ = false;

    connect(enabled_, &QCheckBox::toggled, this, &VoicePage::saveVoiceSettings);
    connect(global_, &QCheckBox::toggled, this, &VoicePage::saveVoiceSettings);
    connect(edit_, &QPushButton::clicked, this, [this] {
        if (openInEditor_) openInEditor_(GlobalCommandsPath());
    });

    reloadGlobalCommands();
    refreshVoiceStatus();
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &VoicePage::onTimer);
    timer->start(1500);
}

void VoicePage::saveVoiceSettings() {
    if (loading_) return;
    QJsonObject config = ReadConfigObject();
    config.insert(QStringLiteral("voiceEnabled"), enabled_->isChecked());
    config.insert(QStringLiteral("voiceGlobal"), global_->isChecked());
    WriteConfigObject(config);
    OverlayReloadConfig();
}

void VoicePage::refreshVoiceStatus() {
    status_->setText(VoiceStatusLine());
}

void VoicePage::reloadGlobalCommands() {
    WheelDocument document;
    QString error;
    // A voice.json that cannot be read leaves the previous list on screen.
    if (!document.Load(GlobalCommandsPath(), error)) return;
    commands_->clear();
    for (const Wheel& wheel : document.wheels) {
        for (const WheelFunction& function : wheel.functions) {
            if (!function.voice.isEmpty()) commands_->addItem(tr("„%1” — %2").arg(function.voice, function.name));
        }
    }
}

void VoicePage::onTimer() {
    refreshVoiceStatus();
    if (++sharedTicks % 4 == 0) reloadGlobalCommands();
}

}  // namespace zirvel::frontend
