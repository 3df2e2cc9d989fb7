#include "frontend/gaze_page.h"

#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QJsonObject>
#include <QLabel>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>

#include "engine/overlay_exports.h"
#include "frontend/cards.h"
#include "frontend/config_object.h"
#include "frontend/engine_text.h"
#include "frontend/page_title.h"

namespace zirvel::frontend {

GazePage::GazePage(QWidget* parent) : QWidget(parent) {
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(18, 18, 18, 18);
    page->setSpacing(10);
    page->addWidget(MakePageTitle(tr("Sterowanie wzrokiem")));

    auto* statusContent = new QWidget;
    auto* statusLayout = new QVBoxLayout(statusContent);
    statusLayout->setContentsMargins(0, 0, 0, 0);
    statusLayout->setSpacing(2);
    auto* caption = new QLabel(tr("Tobii Eye Tracker"));
    SetRole(caption, "cardTitle");
    status_ = new QLabel;
    status_->setObjectName(QStringLiteral("gazeStatus"));
    SetRole(status_, "ok");
    status_->setAccessibleName(tr("Stan eye trackera"));
    statusLayout->addWidget(caption);
    statusLayout->addWidget(status_);
    page->addWidget(buildCard(statusContent));

    auto* settingsContent = new QWidget;
    auto* settingsLayout = new QVBoxLayout(settingsContent);
    settingsLayout->setContentsMargins(0, 0, 0, 0);
    settingsLayout->setSpacing(10);
    enabled_ = new QCheckBox(tr("Steruj wirtualnym kursorem wzrokiem, gdy koło jest otwarte"));
    enabled_->setObjectName(QStringLiteral("gazeEnabled"));
    auto* dwellCaption = new QLabel(tr("Czas wyboru spojrzeniem (dwell)"));
    SetRole(dwellCaption, "cardTitle");
    auto* dwellRow = new QHBoxLayout;
    dwell_ = new QSlider(Qt::Horizontal);
    dwell_->setObjectName(QStringLiteral("gazeDwell"));
    dwell_->setRange(0, 3000);
    dwell_->setSingleStep(50);
    dwell_->setPageStep(100);
    dwell_->setAccessibleName(dwellCaption->text());
    dwellCaption->setBuddy(dwell_);
    dwellValue_ = new QLabel;
    dwellValue_->setObjectName(QStringLiteral("gazeDwellValue"));
    SetRole(dwellValue_, "value");
    dwellValue_->setMinimumWidth(140);
    dwellRow->addWidget(dwell_, 1);
    dwellRow->addWidget(dwellValue_);
    auto* note = new QLabel(tr("Zatrzymanie wzroku na polu przez ten czas wybiera funkcję. Wartość 0 wyłącza wybór "
                               "spojrzeniem — wtedy potwierdzasz kliknięciem albo komendą \"kliknij\"."));
    note->setWordWrap(true);
    SetRole(note, "cardTitle");
    settingsLayout->addWidget(enabled_);
    settingsLayout->addWidget(dwellCaption);
    settingsLayout->addLayout(dwellRow);
    settingsLayout->addWidget(note);
    page->addWidget(buildCard(settingsContent));
    page->addStretch(1);

    // Filling the widgets from the file must not write the file back.
    loading_ = true;
    const QJsonObject config = ReadConfigObject();
    enabled_->setChecked(config.value(QStringLiteral("gazeEnabled")).toBool(true));
    dwell_->setValue(config.value(QStringLiteral("gazeDwell")).toInt(900));
    loading_ = false;
    updateDwellLabel();

    connect(dwell_, &QSlider::valueChanged, this, &GazePage::updateDwellLabel);
    // A drag is saved when the slider is let go, not on every value it
    // passes; keys and the mouse wheel (no drag) once they pause, since a
    // keyboard user never lets go of a mouse button.
    pendingSave_ = new QTimer(this);
    pendingSave_->setSingleShot(true);
    pendingSave_->setInterval(kKeyboardSaveDelayMs);
    connect(pendingSave_, &QTimer::timeout, this, &GazePage::saveGazeSettings);
    connect(dwell_, &QSlider::valueChanged, this, [this] {
        if (!loading_ && !dwell_->isSliderDown()) pendingSave_->start();
    });
    connect(dwell_, &QSlider::sliderReleased, this, &GazePage::saveGazeSettings);
    connect(enabled_, &QCheckBox::toggled, this, &GazePage::saveGazeSettings);

    refreshStatus();
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &GazePage::refreshStatus);
    timer->start(1500);
}

GazePage::~GazePage() {
    if (pendingSave_->isActive()) saveGazeSettings();
}

void GazePage::updateDwellLabel() {
    const int value = dwell_->value();
    dwellValue_->setText(value >= 1 ? tr("%1 ms").arg(value) : tr("tylko kliknięcie"));
    dwell_->setAccessibleDescription(dwellValue_->text());
}

void GazePage::saveGazeSettings() {
    if (loading_) return;
    pendingSave_->stop();
    QJsonObject config = ReadConfigObject();
    config.insert(QStringLiteral("gazeEnabled"), enabled_->isChecked());
    config.insert(QStringLiteral("gazeDwell"), dwell_->value());
    WriteConfigObject(config);
    OverlayReloadConfig();
}

void GazePage::refreshStatus() { status_->setText(EngineText(OverlayGazeStatus())); }

}  // namespace zirvel::frontend
