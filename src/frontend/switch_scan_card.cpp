#include "frontend/switch_scan_card.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

#include "config/engine_settings.h"
#include "config/key_code.h"
#include "engine/overlay_exports.h"
#include "frontend/cards.h"
#include "frontend/config_object.h"

namespace zirvel::frontend {
namespace {

const QString kAuto = QStringLiteral("auto");
const QString kStep = QStringLiteral("step");

QLabel* Caption(const QString& text, QWidget* buddy) {
    auto* label = new QLabel(text);
    SetRole(label, "cardTitle");
    label->setBuddy(buddy);
    buddy->setAccessibleName(QString(text).remove(QLatin1Char('&')));
    return label;
}

}  // namespace

SwitchScanCard::SwitchScanCard(QWidget* parent) : QFrame(parent) {
    QVBoxLayout* layout = SetUpSettingsCard(this, tr("Sterowanie przełącznikiem"));

    enabled_ = new QCheckBox(tr("Włącz skanowanie przełącznikiem"));
    enabled_->setObjectName(QStringLiteral("scanEnabled"));
    layout->addWidget(enabled_);
    auto* note = new QLabel(tr("Klawisz przełączania pokazuje koło, a podświetlenie przechodzi po polach, strzałkach, "
                               "siatce, elementach i „zamknij”; naciśnięcie wybiera podświetlone."));
    note->setWordWrap(true);
    SetRole(note, "cardTitle");
    layout->addWidget(note);

    auto* form = new QFormLayout;
    mode_ = new QComboBox;
    mode_->setObjectName(QStringLiteral("scanMode"));
    mode_->addItem(tr("samoczynne (jeden przełącznik)"), kAuto);
    mode_->addItem(tr("krokowe (dwa przełączniki)"), kStep);
    interval_ = new QSpinBox;
    interval_->setObjectName(QStringLiteral("scanInterval"));
    interval_->setRange(kMinScanInterval, kMaxScanInterval);
    interval_->setSingleStep(50);
    interval_->setSuffix(tr(" ms"));
    loops_ = new QSpinBox;
    loops_->setObjectName(QStringLiteral("scanLoops"));
    loops_->setRange(kMinScanLoops, kMaxScanLoops);
    stepKey_ = new QLineEdit;
    stepKey_->setObjectName(QStringLiteral("scanStepKey"));
    stepKey_->setPlaceholderText(tr("np. spacja, enter, F8"));
    form->addRow(Caption(tr("&Tryb"), mode_), mode_);
    form->addRow(Caption(tr("&Czas podświetlenia"), interval_), interval_);
    form->addRow(Caption(tr("&Okrążenia bez wyboru"), loops_), loops_);
    form->addRow(Caption(tr("&Klawisz kroku"), stepKey_), stepKey_);
    layout->addLayout(form);
    problem_ = new QLabel;
    problem_->setObjectName(QStringLiteral("scanProblem"));
    problem_->setWordWrap(true);
    problem_->hide();
    layout->addWidget(problem_);

    // Filling the widgets from the file must not write the file back.
    loading_ = true;
    const QJsonObject config = ReadConfigObject();
    const EngineSettings defaults;
    enabled_->setChecked(config.value(QStringLiteral("scanEnabled")).toBool(defaults.scanEnabled));
    mode_->setCurrentIndex(config.value(QStringLiteral("scanMode")).toString() == kStep ? 1 : 0);
    interval_->setValue(config.value(QStringLiteral("scanInterval")).toInt(defaults.scanInterval));
    loops_->setValue(config.value(QStringLiteral("scanLoops")).toInt(defaults.scanLoops));
    stepKey_->setText(config.value(QStringLiteral("scanStepKey")).toString());
    loading_ = false;

    connect(enabled_, &QCheckBox::toggled, this, &SwitchScanCard::save);
    connect(mode_, &QComboBox::currentIndexChanged, this, &SwitchScanCard::save);
    // Typed numbers are saved when the box is left or Enter pressed, not on
    // every digit; the arrows save each step.
    for (QSpinBox* box : {interval_, loops_}) {
        box->setKeyboardTracking(false);
        connect(box, &QSpinBox::valueChanged, this, &SwitchScanCard::save);
    }
    connect(stepKey_, &QLineEdit::editingFinished, this, &SwitchScanCard::save);
}

void SwitchScanCard::save() {
    if (loading_) return;
    const QString keyText = stepKey_->text().trimmed();
    const KeyCode key = ParseKeyName(keyText.toStdU16String());
    const bool keyUsable = keyText.isEmpty() || (key.valid && !key.isMouse);
    if (!keyUsable) {
        problem_->setText(tr("Nieznany klawisz kroku „%1” — wpisz klawisz klawiatury, np. spacja albo F8. "
                             "Pozostałe ustawienia zapisano.")
                              .arg(keyText));
    }
    problem_->setVisible(!keyUsable);
    QJsonObject config = ReadConfigObject();
    config.insert(QStringLiteral("scanEnabled"), enabled_->isChecked());
    config.insert(QStringLiteral("scanMode"), mode_->currentData().toString());
    config.insert(QStringLiteral("scanInterval"), interval_->value());
    config.insert(QStringLiteral("scanLoops"), loops_->value());
    if (keyUsable) config.insert(QStringLiteral("scanStepKey"), keyText);
    WriteConfigObject(config);
    OverlayReloadConfig();
}

}  // namespace zirvel::frontend
