// The page on which a wheels file is edited: a tree of wheels and their
// functions, the selected function's fields and step sequence, and a
// preview of the selected wheel. "Aktywuj" hands the saved file to the engine.
// The tree, the file and the preview are implemented here; the selected
// function's fields in wheel_editor_fields.cpp, its step sequence in
// wheel_editor_steps.cpp and the selected wheel's programs in
// wheel_editor_programs.cpp.
#pragma once

#include <QWidget>

#include "frontend/open_programs_dialog.h"
#include "frontend/wheel_document.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;
class QSplitter;
class QStackedWidget;
class QTreeWidget;

namespace zirvel::frontend {

class WheelPreview;

class WheelEditorPage : public QWidget {
    Q_OBJECT

public:
    explicit WheelEditorPage(QWidget* parent = nullptr);

    // Reads the file and shows it; a file that cannot be read is reported
    // and the page keeps what it had.
    void loadFile(const QString& path);
    void refreshPreview();

    const WheelDocument& document() const { return document_; }
    QString filePath() const { return filePath_; }
    bool isLoaded() const { return loaded_; }
    bool isModified() const { return modified_; }
    int currentWheel() const { return currentWheel_; }
    int currentFunction() const { return currentFunction_; }
    // Its object name is the style sheets' "Primary", so it is found here.
    QPushButton* activateButton() const { return activateButton_; }
    // Where "Wybierz z otwartych okien…" gets the open windows' programs.
    void setProgramLister(OpenProgramsDialog::Lister lister) { programLister_ = std::move(lister); }

public slots:
    // The order of these slots is part of the page's meta-object interface.
    void openFile();
    void saveFile(bool saveAs);
    void activateOnEngine();
    void onTreeSelection();
    void addWheel();
    void removeSelected();
    void addAction();
    void onStepSelection();
    void stepAdd();
    void stepReplace();
    void stepRemove();
    void stepMove(int delta);

private:
    QLayout* buildToolRow();
    QWidget* buildTreeColumn();
    QWidget* buildFunctionPanel();
    QLayout* buildFieldsRow();
    QLayout* buildStepEditorRow();
    QLayout* buildStepButtonsRow();
    QLayout* buildStepMoveColumn();
    QLayout* buildPreview();
    QLayout* buildProgramsRow();
    void setTabOrderAndNames();

    void rebuildTree(int wheel, int function);
    void showFunction();
    void showColour(const QColor& colour);
    void showIcon(const QString& icon);
    void markModified();
    void onFieldsEdited();
    void pickIcon();
    void pickColor();
    void onActionKindChanged(int index);
    void showPrograms();
    void setPrograms(QStringList programs);
    void onProgramsEditingFinished();
    void pickPrograms();
    QString wheelLabel(const Wheel& wheel) const;
    QString tooManyPrograms() const;
    Step stepFromFields() const;
    bool hasCurrentWheel() const;
    // The selected function, or null.
    const WheelFunction* selectedFunction() const;
    WheelFunction* selectedFunction();
    bool hasStepRow() const;
    // Icons in the file are relative to the file's own directory.
    QString fileDirectory() const;
    void warn(const QString& text);

    QString filePath_;
    WheelDocument document_;
    bool loaded_ = false;
    bool modified_ = false;
    // Set while the page fills its own widgets, so their signals are not
    // taken for the user's edits.
    bool updating_ = false;
    int currentWheel_ = -1;
    int currentFunction_ = -1;

    QPushButton* openButton_ = nullptr;
    QPushButton* saveButton_ = nullptr;
    QPushButton* saveAsButton_ = nullptr;
    QPushButton* activateButton_ = nullptr;
    QLabel* pathLabel_ = nullptr;
    QSplitter* columns_ = nullptr;
    QTreeWidget* tree_ = nullptr;
    QPushButton* addWheelButton_ = nullptr;
    QPushButton* addFunctionButton_ = nullptr;
    QPushButton* removeButton_ = nullptr;
    QWidget* functionPanel_ = nullptr;
    QLineEdit* nameEdit_ = nullptr;
    QLineEdit* voiceEdit_ = nullptr;
    QLabel* iconImage_ = nullptr;
    QPushButton* iconButton_ = nullptr;
    QPushButton* colorButton_ = nullptr;
    QSpinBox* delaySpin_ = nullptr;
    QListWidget* stepsList_ = nullptr;
    QComboBox* actionCombo_ = nullptr;
    QStackedWidget* stepStack_ = nullptr;
    QComboBox* keyCombo_ = nullptr;
    QSpinBox* amountSpin_ = nullptr;
    QLineEdit* targetEdit_ = nullptr;
    QPushButton* stepAddButton_ = nullptr;
    QPushButton* stepReplaceButton_ = nullptr;
    QPushButton* stepRemoveButton_ = nullptr;
    QPushButton* stepUpButton_ = nullptr;
    QPushButton* stepDownButton_ = nullptr;
    QLineEdit* programsEdit_ = nullptr;
    QPushButton* pickProgramsButton_ = nullptr;
    OpenProgramsDialog::Lister programLister_ = ListOpenPrograms;
    QLabel* wheelCaption_ = nullptr;
    WheelPreview* preview_ = nullptr;
};

}  // namespace zirvel::frontend
