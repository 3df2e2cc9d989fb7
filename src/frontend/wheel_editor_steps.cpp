// The wheel editor page's step sequence: the selected function's steps,
// the row that edits one step, and the buttons that add, replace, remove
// and reorder them.
#include "frontend/wheel_editor_page.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "frontend/editor_widgets.h"
#include "frontend/step_key_names.h"

namespace zirvel::frontend {

QLayout* WheelEditorPage::buildStepEditorRow() {
    QWidget* panel = functionPanel_;
    actionCombo_ = new QComboBox(panel);
    actionCombo_->setObjectName(QStringLiteral("actionCombo"));
    // Item index = StepKind.
    actionCombo_->addItems({tr("klik"), tr("przytrzymaj"), tr("puść"), tr("otwórz")});

    stepStack_ = new QStackedWidget(panel);
    stepStack_->setObjectName(QStringLiteral("stepStack"));
    stepStack_->setFixedHeight(34);
    auto* keyPage = new QWidget(stepStack_);
    keyCombo_ = new QComboBox(keyPage);
    keyCombo_->setObjectName(QStringLiteral("keyCombo"));
    keyCombo_->setEditable(true);
    keyCombo_->addItems(stepKeyNames());
    // Narrower than the longest key name, so that the row fits the
    // function's column in the window's first size; wider when there is room.
    keyCombo_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    keyCombo_->setMinimumContentsLength(5);
    amountSpin_ = new QSpinBox(keyPage);
    amountSpin_->setObjectName(QStringLiteral("amountSpin"));
    amountSpin_->setRange(0, 60000);
    amountSpin_->setValue(1);
    auto* keyRow = new QHBoxLayout(keyPage);
    keyRow->setContentsMargins(0, 0, 0, 0);
    keyRow->addWidget(keyCombo_);
    keyRow->addWidget(amountSpin_);
    targetEdit_ = new QLineEdit(stepStack_);
    targetEdit_->setObjectName(QStringLiteral("targetEdit"));
    targetEdit_->setPlaceholderText(QStringLiteral("https://… albo program.exe"));
    stepStack_->addWidget(keyPage);
    stepStack_->addWidget(targetEdit_);
    connect(actionCombo_, &QComboBox::currentIndexChanged, this, &WheelEditorPage::onActionKindChanged);

    auto* row = new QHBoxLayout;
    row->addWidget(actionCombo_);
    row->addWidget(stepStack_, 1);
    return row;
}

QLayout* WheelEditorPage::buildStepButtonsRow() {
    QWidget* panel = functionPanel_;
    stepAddButton_ = MakeButton(tr("Dodaj krok"), QStringLiteral("stepAddButton"), panel);
    stepReplaceButton_ = MakeButton(tr("Zamień"), QStringLiteral("stepReplaceButton"), panel);
    stepRemoveButton_ = MakeButton(tr("Usuń krok"), QStringLiteral("stepRemoveButton"), panel);
    connect(stepAddButton_, &QPushButton::clicked, this, &WheelEditorPage::stepAdd);
    connect(stepReplaceButton_, &QPushButton::clicked, this, &WheelEditorPage::stepReplace);
    connect(stepRemoveButton_, &QPushButton::clicked, this, &WheelEditorPage::stepRemove);

    auto* row = new QHBoxLayout;
    row->addWidget(stepAddButton_);
    row->addWidget(stepReplaceButton_);
    row->addWidget(stepRemoveButton_);
    row->addStretch();
    return row;
}

QLayout* WheelEditorPage::buildStepMoveColumn() {
    QWidget* panel = functionPanel_;
    stepUpButton_ = MakeButton(QStringLiteral("▲"), QStringLiteral("stepUpButton"), panel);
    stepDownButton_ = MakeButton(QStringLiteral("▼"), QStringLiteral("stepDownButton"), panel);
    stepUpButton_->setFixedWidth(36);
    stepDownButton_->setFixedWidth(36);
    connect(stepUpButton_, &QPushButton::clicked, this, [this] { stepMove(-1); });
    connect(stepDownButton_, &QPushButton::clicked, this, [this] { stepMove(1); });

    auto* column = new QVBoxLayout;
    column->addWidget(stepUpButton_);
    column->addWidget(stepDownButton_);
    column->addStretch();
    return column;
}

bool WheelEditorPage::hasStepRow() const {
    const WheelFunction* function = selectedFunction();
    const int row = stepsList_->currentRow();
    return function && row >= 0 && row < function->steps.size();
}

void WheelEditorPage::onActionKindChanged(int index) {
    stepStack_->setCurrentIndex(index == int(StepKind::Open) ? 1 : 0);
    amountSpin_->setEnabled(index == int(StepKind::Click) || index == int(StepKind::Hold));
}

void WheelEditorPage::onStepSelection() {
    if (updating_ || !hasStepRow()) return;
    const Step& step = selectedFunction()->steps[stepsList_->currentRow()];
    QScopedValueRollback<bool> quiet(updating_, true);
    actionCombo_->setCurrentIndex(int(step.kind));
    if (step.kind == StepKind::Open) {
        targetEdit_->setText(step.target);
    } else {
        keyCombo_->setCurrentText(step.key);
        amountSpin_->setValue(step.value);
    }
}

Step WheelEditorPage::stepFromFields() const {
    Step step;
    step.kind = static_cast<StepKind>(actionCombo_->currentIndex());
    if (step.kind == StepKind::Open) {
        step.target = targetEdit_->text().trimmed();
        return step;
    }
    step.key = keyCombo_->currentText().trimmed();
    if (step.kind == StepKind::Click) step.value = std::clamp(amountSpin_->value(), 1, 100);
    if (step.kind == StepKind::Hold) step.value = amountSpin_->value();
    return step;
}

void WheelEditorPage::stepAdd() {
    WheelFunction* function = selectedFunction();
    if (!function) return;
    const Step step = stepFromFields();
    if (step.kind == StepKind::Open ? step.target.isEmpty() : step.key.isEmpty()) return;
    function->steps.append(step);
    markModified();
    showFunction();
    stepsList_->setCurrentRow(static_cast<int>(function->steps.size()) - 1);
}

void WheelEditorPage::stepReplace() {
    if (!hasStepRow()) return;
    const int row = stepsList_->currentRow();
    selectedFunction()->steps[row] = stepFromFields();
    markModified();
    showFunction();
    stepsList_->setCurrentRow(row);
}

void WheelEditorPage::stepRemove() {
    if (!hasStepRow()) return;
    selectedFunction()->steps.removeAt(stepsList_->currentRow());
    markModified();
    showFunction();
    stepsList_->setCurrentRow(-1);
}

void WheelEditorPage::stepMove(int delta) {
    if (!hasStepRow()) return;
    const int row = stepsList_->currentRow();
    const int target = row + delta;
    QList<Step>& steps = selectedFunction()->steps;
    if (target < 0 || target >= steps.size()) return;
    steps.swapItemsAt(row, target);
    markModified();
    showFunction();
    stepsList_->setCurrentRow(target);
}

}  // namespace zirvel::frontend
