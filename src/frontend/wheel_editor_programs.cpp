// The wheel editor page's programs of the selected wheel: in front of one
// of them, it is the wheel the hot key opens with.
#include "frontend/wheel_editor_page.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <utility>

#include "frontend/editor_widgets.h"
#include "frontend/open_programs_dialog.h"

namespace zirvel::frontend {

// The selected wheel's programs: shown in front of them, it is the wheel
// the hot key opens with.
QLayout* WheelEditorPage::buildProgramsRow() {
    programsEdit_ = new QLineEdit(this);
    programsEdit_->setObjectName(QStringLiteral("programsEdit"));
    programsEdit_->setPlaceholderText(tr("np. notepad.exe, firefox"));
    programsEdit_->setEnabled(false);
    pickProgramsButton_ = MakeButton(tr("Wybierz z otwartych okien…"), QStringLiteral("pickProgramsButton"), this);
    pickProgramsButton_->setEnabled(false);
    connect(programsEdit_, &QLineEdit::textEdited, this,
            [this](const QString& text) { setPrograms(ProgramsFromText(text)); });
    connect(programsEdit_, &QLineEdit::editingFinished, this, &WheelEditorPage::onProgramsEditingFinished);
    connect(pickProgramsButton_, &QPushButton::clicked, this, &WheelEditorPage::pickPrograms);

    auto* row = new QVBoxLayout;
    row->addWidget(MakeCaption(tr("Programy"), programsEdit_, this));
    row->addWidget(programsEdit_);
    row->addWidget(pickProgramsButton_);
    return row;
}

QString WheelEditorPage::tooManyPrograms() const {
    return tr("Koło może należeć najwyżej do %1 programów — zostaje pierwszych %1.").arg(kMaxWheelPrograms);
}

QString WheelEditorPage::wheelLabel(const Wheel& wheel) const {
    const QString name = wheel.name.isEmpty() ? tr("(koło bez nazwy)") : wheel.name;
    return wheel.apps.isEmpty() ? name : tr("%1 — dla: %2").arg(name, ProgramsText(wheel.apps));
}

void WheelEditorPage::showPrograms() {
    const bool wheel = hasCurrentWheel();
    programsEdit_->setEnabled(wheel);
    pickProgramsButton_->setEnabled(wheel);
    QScopedValueRollback<bool> quiet(updating_, true);
    programsEdit_->setText(wheel ? ProgramsText(document_.wheels[currentWheel_].apps) : QString());
}

// The model follows the field as the user types; the tree's and the
// preview's labels with it, without rebuilding the tree under the cursor.
void WheelEditorPage::setPrograms(QStringList programs) {
    if (updating_ || !hasCurrentWheel()) return;
    if (programs.size() > kMaxWheelPrograms) programs.resize(kMaxWheelPrograms);
    Wheel& wheel = document_.wheels[currentWheel_];
    if (programs == wheel.apps) return;
    wheel.apps = std::move(programs);
    // Only the "wheels" form has room for a wheel's programs.
    if (!wheel.apps.isEmpty()) document_.multiWheel = true;
    if (QTreeWidgetItem* item = tree_->topLevelItem(currentWheel_)) {
        item->setText(0, wheelLabel(wheel));
        item->setToolTip(0, ProgramsText(wheel.apps));
    }
    markModified();
    refreshPreview();
}

void WheelEditorPage::onProgramsEditingFinished() {
    if (!hasCurrentWheel()) return;
    if (ProgramsFromText(programsEdit_->text()).size() > kMaxWheelPrograms) {
        warn(tooManyPrograms());
    }
    showPrograms();
}

void WheelEditorPage::pickPrograms() {
    if (!hasCurrentWheel()) return;
    OpenProgramsDialog dialog(this, programLister_);
    if (dialog.exec() != QDialog::Accepted) return;
    QStringList programs = document_.wheels[currentWheel_].apps;
    for (const QString& chosen : dialog.chosenPrograms()) {
        if (!programs.contains(chosen, Qt::CaseInsensitive)) programs.append(chosen);
    }
    if (programs.size() > kMaxWheelPrograms) {
        warn(tooManyPrograms());
    }
    setPrograms(std::move(programs));
    showPrograms();
}

}  // namespace zirvel::frontend
