// The modal dialog in which a field's icon is chosen from the PNG files of
// an icons directory.
#pragma once

#include <QDialog>

class QListWidget;

namespace zirvel::frontend {

class IconPickerDialog : public QDialog {
    Q_OBJECT

public:
    IconPickerDialog(const QString& iconsDirectory, QWidget* parent);
    // The PNG files of several directories, a name in an earlier one
    // hiding the same name in a later one.
    IconPickerDialog(const QStringList& iconsDirectories, QWidget* parent);

    // What to store as the field's icon: "icons/" + file name, or empty for
    // "(bez ikony)" and when no item is current.
    QString chosenIcon() const;
    QListWidget* iconList() const { return list_; }

private:
    QListWidget* list_;
};

}  // namespace zirvel::frontend
