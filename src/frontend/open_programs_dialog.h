// "Wybierz z otwartych okien…": the programs of the open windows, to tick
// the ones a wheel belongs to. The windows are read on a worker thread, so
// a busy window system never freezes the editor.
#pragma once

#include <QDialog>

#include <functional>

#include "frontend/open_programs.h"

class QLabel;
class QListWidget;
class QPushButton;

namespace zirvel::frontend {

class OpenProgramsDialog : public QDialog {
    Q_OBJECT

public:
    using Lister = std::function<QList<OpenProgram>()>;

    // `lister` runs once, off the GUI thread; ListOpenPrograms by default.
    explicit OpenProgramsDialog(QWidget* parent, Lister lister = ListOpenPrograms);

    // The names ticked, in list order.
    QStringList chosenPrograms() const;
    QListWidget* programList() const { return list_; }

private:
    void showPrograms(const QList<OpenProgram>& programs);

    QLabel* status_;
    QListWidget* list_;
    QPushButton* addButton_;
};

}  // namespace zirvel::frontend
