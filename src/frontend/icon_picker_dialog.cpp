#include "frontend/icon_picker_dialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QListWidget>
#include <QVBoxLayout>

namespace zirvel::frontend {

IconPickerDialog::IconPickerDialog(const QString& iconsDirectory, QWidget* parent)
    : IconPickerDialog(QStringList{iconsDirectory}, parent) {}

IconPickerDialog::IconPickerDialog(const QStringList& iconsDirectories, QWidget* parent)
    : QDialog(parent), list_(new QListWidget(this)) {
    setWindowTitle(tr("Wybierz ikonę"));
    resize(520, 420);
    auto* layout = new QVBoxLayout(this);

    list_->setAccessibleName(tr("Ikony"));
    list_->setViewMode(QListView::IconMode);
    list_->setIconSize(QSize(48, 48));
    list_->setGridSize(QSize(86, 78));
    list_->setResizeMode(QListView::Adjust);
    list_->setMovement(QListView::Static);

    // "(bez ikony)" leads whatever the file names sort as; it stores no path.
    auto* none = new QListWidgetItem(tr("(bez ikony)"), list_);
    none->setData(Qt::UserRole, QString());
    QStringList listed;
    for (const QString& directory : iconsDirectories) {
        const QFileInfoList files =
            QDir(directory).entryInfoList(QStringList{QStringLiteral("*.png")}, QDir::Files, QDir::Name);
        for (const QFileInfo& file : files) {
            if (listed.contains(file.fileName())) continue;
            listed << file.fileName();
            auto* item = new QListWidgetItem(QIcon(file.absoluteFilePath()), file.completeBaseName(), list_);
            item->setData(Qt::UserRole, QStringLiteral("icons/") + file.fileName());
        }
    }
    // Through the view, not the selection model, so the view knows the
    // empty current item is deliberate and keeps it when it gains focus
    // by keyboard instead of making the first item current.
    list_->setCurrentIndex(QModelIndex());
    layout->addWidget(list_);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    layout->addWidget(buttons);
}

QString IconPickerDialog::chosenIcon() const {
    const QListWidgetItem* item = list_->currentItem();
    return item ? item->data(Qt::UserRole).toString() : QString();
}

}  // namespace zirvel::frontend
