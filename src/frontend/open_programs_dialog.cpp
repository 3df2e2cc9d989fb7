#include "frontend/open_programs_dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QThread>
#include <QVBoxLayout>

#include <memory>

namespace zirvel::frontend {

OpenProgramsDialog::OpenProgramsDialog(QWidget* parent, Lister lister) : QDialog(parent) {
    setWindowTitle(tr("Programy otwartych okien"));
    status_ = new QLabel(tr("Szukam otwartych okien…"), this);
    status_->setObjectName(QStringLiteral("status"));
    status_->setWordWrap(true);
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("programList"));
    list_->setAccessibleName(tr("Programy otwartych okien"));
    list_->setMinimumSize(360, 220);
    auto* buttons = new QDialogButtonBox(this);
    addButton_ = buttons->addButton(tr("Dodaj zaznaczone"), QDialogButtonBox::AcceptRole);
    addButton_->setObjectName(QStringLiteral("addProgramsButton"));
    addButton_->setEnabled(false);
    buttons->addButton(tr("Anuluj"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // A double click or Space ticks; the button takes what is ticked.
    connect(list_, &QListWidget::itemDoubleClicked, this, [](QListWidgetItem* item) {
        item->setCheckState(item->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(status_);
    layout->addWidget(list_, 1);
    layout->addWidget(buttons);

    // The thread outlives a dialog closed early: it answers into a shared
    // result and deletes itself, and the answer goes nowhere.
    auto result = std::make_shared<QList<OpenProgram>>();
    QThread* worker = QThread::create([lister = std::move(lister), result] { *result = lister(); });
    connect(worker, &QThread::finished, this, [this, result] { showPrograms(*result); });
    connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    worker->start();
}

void OpenProgramsDialog::showPrograms(const QList<OpenProgram>& programs) {
    list_->clear();
    for (const OpenProgram& program : programs) {
        const QString text = program.title.isEmpty() ? program.name : tr("%1 — %2").arg(program.name, program.title);
        auto* item = new QListWidgetItem(text, list_);
        item->setData(Qt::UserRole, program.name);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    status_->setText(programs.isEmpty() ? tr("Nie znaleziono okien, których program da się odczytać.")
                                        : tr("Zaznacz programy, dla których ma się pokazywać to koło:"));
    addButton_->setEnabled(!programs.isEmpty());
    if (!programs.isEmpty()) list_->setCurrentRow(0);
}

QStringList OpenProgramsDialog::chosenPrograms() const {
    QStringList chosen;
    for (int i = 0; i < list_->count(); ++i) {
        if (list_->item(i)->checkState() == Qt::Checked) chosen.append(list_->item(i)->data(Qt::UserRole).toString());
    }
    return chosen;
}

}  // namespace zirvel::frontend
