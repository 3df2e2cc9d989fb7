// The wheel editor page's fields of the selected function: its name, voice
// phrase, icon, colour and the pause between its steps.
#include "frontend/wheel_editor_page.h"

#include <QColorDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmap>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "frontend/editor_widgets.h"
#include "frontend/icon_picker_dialog.h"
#include "frontend/program_folders.h"
#include "frontend/themes.h"

namespace zirvel::frontend {

QLayout* WheelEditorPage::buildFieldsRow() {
    QWidget* panel = functionPanel_;
    nameEdit_ = new QLineEdit(panel);
    nameEdit_->setObjectName(QStringLiteral("nameEdit"));
    voiceEdit_ = new QLineEdit(panel);
    voiceEdit_->setObjectName(QStringLiteral("voiceEdit"));
    voiceEdit_->setPlaceholderText(tr("np. leczenie"));
    iconImage_ = new QLabel(panel);
    iconImage_->setObjectName(QStringLiteral("iconImage"));
    iconImage_->setFixedSize(34, 34);
    iconImage_->setScaledContents(true);
    iconButton_ = MakeButton(tr("Wybierz…"), QStringLiteral("iconButton"), panel);
    colorButton_ = MakeButton(tr("domyślny"), QStringLiteral("colorButton"), panel);
    delaySpin_ = new QSpinBox(panel);
    delaySpin_->setObjectName(QStringLiteral("delaySpin"));
    delaySpin_->setRange(0, 2000);
    delaySpin_->setValue(30);
    connect(nameEdit_, &QLineEdit::textEdited, this, &WheelEditorPage::onFieldsEdited);
    connect(voiceEdit_, &QLineEdit::textEdited, this, &WheelEditorPage::onFieldsEdited);
    connect(delaySpin_, &QSpinBox::valueChanged, this, &WheelEditorPage::onFieldsEdited);
    connect(iconButton_, &QPushButton::clicked, this, &WheelEditorPage::pickIcon);
    connect(colorButton_, &QPushButton::clicked, this, &WheelEditorPage::pickColor);

    auto* texts = new QVBoxLayout;
    texts->addWidget(MakeCaption(tr("Nazwa"), nameEdit_, panel));
    texts->addWidget(nameEdit_);
    texts->addWidget(MakeCaption(tr("Fraza głosowa"), voiceEdit_, panel));
    texts->addWidget(voiceEdit_);

    auto* iconRow = new QHBoxLayout;
    iconRow->addWidget(iconImage_, 0);
    iconRow->addWidget(iconButton_, 1);
    auto* colourRow = new QHBoxLayout;
    colourRow->addWidget(colorButton_, 1);
    colourRow->addWidget(delaySpin_, 0);
    auto* looks = new QVBoxLayout;
    looks->addWidget(MakeCaption(tr("Ikona"), iconButton_, panel));
    looks->addLayout(iconRow);
    looks->addWidget(MakeCaption(tr("Kolor pola / odstęp [ms]"), colorButton_, panel));
    looks->addLayout(colourRow);

    auto* row = new QHBoxLayout;
    row->addLayout(texts, 3);
    row->addSpacing(10);
    row->addLayout(looks, 2);
    return row;
}

void WheelEditorPage::showFunction() {
    const WheelFunction* function = selectedFunction();
    functionPanel_->setEnabled(function != nullptr);
    QScopedValueRollback<bool> quiet(updating_, true);
    if (!function) {
        nameEdit_->clear();
        voiceEdit_->clear();
        stepsList_->clear();
        iconImage_->clear();
        return;
    }
    nameEdit_->setText(function->name);
    voiceEdit_->setText(function->voice);
    delaySpin_->setValue(function->delay);
    showColour(function->color);
    showIcon(function->icon);
    stepsList_->clear();
    for (const Step& step : function->steps) stepsList_->addItem(StepSummary(step));
}

void WheelEditorPage::showColour(const QColor& colour) {
    if (!colour.isValid()) {
        colorButton_->setText(tr("domyślny"));
        colorButton_->setStyleSheet(QString());
        return;
    }
    // The name stays readable on any swatch: dark text on light colours.
    const QString text = colour.lightness() > 128 ? QStringLiteral("#000") : QStringLiteral("#FFF");
    colorButton_->setText(colour.name());
    colorButton_->setStyleSheet(QStringLiteral("background:%1; color:%2;").arg(colour.name(), text));
}

void WheelEditorPage::showIcon(const QString& icon) {
    if (icon.isEmpty()) {
        iconImage_->clear();
        iconButton_->setText(tr("Wybierz…"));
        return;
    }
    iconImage_->setPixmap(QPixmap(IconFile(fileDirectory(), icon)));
    iconButton_->setText(QFileInfo(icon).completeBaseName());
}

void WheelEditorPage::onFieldsEdited() {
    if (updating_) return;
    WheelFunction* function = selectedFunction();
    if (!function) return;
    function->name = nameEdit_->text();
    function->voice = voiceEdit_->text();
    // A file may hold a delay beyond the box's range; editing the name must
    // not quietly cut it down to what the box can show.
    const int shownDelay = std::clamp(function->delay, delaySpin_->minimum(), delaySpin_->maximum());
    if (delaySpin_->value() != shownDelay) function->delay = delaySpin_->value();
    if (QTreeWidgetItem* item = tree_->currentItem())
        item->setText(0, function->name.isEmpty() ? tr("(bez nazwy)") : function->name);
    markModified();
    refreshPreview();
}

void WheelEditorPage::pickColor() {
    if (!selectedFunction()) return;
    const QColor current = selectedFunction()->color;
    const QColor start = current.isValid() ? current : themeById(currentThemeId()).colours[0];
    // Cancelling stores the invalid colour: that is how a field goes back
    // to the theme's colour ("domyślny").
    const QColor chosen = QColorDialog::getColor(start, this, tr("Kolor pola"));
    if (WheelFunction* function = selectedFunction()) function->color = chosen;
    markModified();
    showFunction();
}

void WheelEditorPage::pickIcon() {
    if (!selectedFunction()) return;
    IconPickerDialog dialog(IconFolders(fileDirectory()), this);
    if (dialog.exec() != QDialog::Accepted) return;
    if (WheelFunction* function = selectedFunction()) function->icon = dialog.chosenIcon();
    markModified();
    showFunction();
}

}  // namespace zirvel::frontend
