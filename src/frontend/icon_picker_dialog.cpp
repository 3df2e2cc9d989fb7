// Temporary stand-in until the real icon picker lands: a plain list of
// "(bez ikony)" and the directory's PNG files, with OK and Cancel.
#include "frontend/icon_picker_dialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QListWidget>
#include <QVBoxLayout>

namespace zirvel::frontend {

IconPickerDialog::IconPickerDialog(const QString& iconsDirectory, QWidget* parent)
    : QDialog(parent), list_(new QListWidget(this)) {
    list_->addItem(tr("(bez ikony)"));
    const QStringList files = QDir(iconsDirectory).entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
    for (const QString& file : files) {
        auto* item = new QListWidgetItem(file, list_);
        item->setData(Qt::UserRole, QStringLiteral("icons/") + file);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(list_);
    layout->addWidget(buttons);
}

QString IconPickerDialog::chosenIcon() const {
    const QListWidgetItem* item = list_->currentItem();
    return item ? item->data(Qt::UserRole).toString() : QString();
}

}  // namespace zirvel::frontend
