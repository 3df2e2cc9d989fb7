#include "frontend/wheel_editor_page.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSettings>
#include <QSpinBox>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "engine/overlay_exports.h"
#include "frontend/cards.h"
#include "frontend/editor_widgets.h"
#include "frontend/elided_label.h"
#include "frontend/frontend_identity.h"
#include "frontend/program_folders.h"
#include "frontend/remembered_division.h"
#include "frontend/wheel_preview.h"

namespace zirvel::frontend {
namespace {

constexpr int kWheelRole = Qt::UserRole;
constexpr int kFunctionRole = Qt::UserRole + 1;

void RememberWheelFile(const QString& path) {
    QSettings(kOrganisationName, kSettingsScope).setValue(kLastWheelFileKey, path);
}

}  // namespace

WheelEditorPage::WheelEditorPage(QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 14, 18, 14);
    layout->setSpacing(10);
    layout->addLayout(buildToolRow());

    // Two columns fit the window's 860 px: the wheels with their preview,
    // and the function. The user shares the width out between them, and
    // the next session keeps that; a wider window goes to the function.
    columns_ = new QSplitter(Qt::Horizontal, this);
    columns_->setObjectName(QStringLiteral("columns"));
    columns_->setChildrenCollapsible(false);
    columns_->setHandleWidth(12);
    columns_->addWidget(buildTreeColumn());
    columns_->addWidget(buildFunctionPanel());
    columns_->setStretchFactor(0, 0);
    columns_->setStretchFactor(1, 1);
    columns_->setSizes({250, 400});
    RememberDivision(columns_, kEditorColumnsKey);
    layout->addWidget(columns_, 1);

    setTabOrderAndNames();

    const QString last = QSettings(kOrganisationName, kSettingsScope).value(kLastWheelFileKey).toString();
    if (!last.isEmpty() && QFileInfo::exists(last)) loadFile(last);
}

QLayout* WheelEditorPage::buildToolRow() {
    openButton_ = MakeButton(tr("Otwórz…"), QStringLiteral("openButton"), this);
    saveButton_ = MakeButton(tr("Zapisz"), QStringLiteral("saveButton"), this);
    saveAsButton_ = MakeButton(tr("Zapisz jako…"), QStringLiteral("saveAsButton"), this);
    activateButton_ = MakeButton(tr("Aktywuj"), QStringLiteral("Primary"), this);
    pathLabel_ = new ElidedLabel(tr("(nie wczytano pliku)"), this);
    pathLabel_->setObjectName(QStringLiteral("pathLabel"));
    SetRole(pathLabel_, "cardTitle");
    connect(openButton_, &QPushButton::clicked, this, &WheelEditorPage::openFile);
    connect(saveButton_, &QPushButton::clicked, this, [this] { saveFile(false); });
    connect(saveAsButton_, &QPushButton::clicked, this, [this] { saveFile(true); });
    connect(activateButton_, &QPushButton::clicked, this, &WheelEditorPage::activateOnEngine);

    auto* row = new QHBoxLayout;
    for (QPushButton* button : {openButton_, saveButton_, saveAsButton_, activateButton_}) row->addWidget(button, 0);
    row->addSpacing(10);
    row->addWidget(pathLabel_, 1);
    return row;
}

QWidget* WheelEditorPage::buildTreeColumn() {
    auto* columnWidget = new QWidget(this);
    tree_ = new QTreeWidget(this);
    tree_->setObjectName(QStringLiteral("tree"));
    tree_->setHeaderHidden(true);
    // Long names elide: the column's width is the user's to set with the splitter.
    tree_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    addWheelButton_ = MakeButton(tr("+ koło"), QStringLiteral("addWheelButton"), this);
    addFunctionButton_ = MakeButton(tr("+ funkcja"), QStringLiteral("addFunctionButton"), this);
    removeButton_ = MakeButton(tr("Usuń"), QStringLiteral("removeButton"), this);
    connect(tree_, &QTreeWidget::currentItemChanged, this, &WheelEditorPage::onTreeSelection);
    connect(addWheelButton_, &QPushButton::clicked, this, &WheelEditorPage::addWheel);
    connect(addFunctionButton_, &QPushButton::clicked, this, &WheelEditorPage::addAction);
    connect(removeButton_, &QPushButton::clicked, this, &WheelEditorPage::removeSelected);

    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {addWheelButton_, addFunctionButton_, removeButton_}) buttons->addWidget(button);
    auto* column = new QVBoxLayout(columnWidget);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(tree_, 1);
    column->addLayout(buttons);
    column->addLayout(buildProgramsRow());
    column->addSpacing(6);
    column->addLayout(buildPreview());
    return columnWidget;
}

QWidget* WheelEditorPage::buildFunctionPanel() {
    functionPanel_ = new QWidget(this);
    functionPanel_->setObjectName(QStringLiteral("functionPanel"));
    functionPanel_->setEnabled(false);
    stepsList_ = new QListWidget(functionPanel_);
    stepsList_->setObjectName(QStringLiteral("stepsList"));
    stepsList_->setMinimumHeight(120);
    connect(stepsList_, &QListWidget::currentRowChanged, this, &WheelEditorPage::onStepSelection);

    auto* panel = new QVBoxLayout(functionPanel_);
    panel->setContentsMargins(0, 0, 0, 0);
    panel->setSpacing(8);
    panel->addLayout(buildFieldsRow());
    panel->addWidget(MakeCaption(tr("Czynności (kroki sekwencji)"), stepsList_, functionPanel_));
    // The order buttons stand beside the steps they move.
    auto* steps = new QHBoxLayout;
    steps->addWidget(stepsList_, 1);
    steps->addLayout(buildStepMoveColumn());
    panel->addLayout(steps, 1);
    panel->addLayout(buildStepEditorRow());
    panel->addLayout(buildStepButtonsRow());
    return functionPanel_;
}

QLayout* WheelEditorPage::buildPreview() {
    wheelCaption_ = new QLabel(this);
    wheelCaption_->setObjectName(QStringLiteral("wheelCaption"));
    SetRole(wheelCaption_, "value");
    wheelCaption_->setAlignment(Qt::AlignCenter);
    preview_ = new WheelPreview(this);
    preview_->setObjectName(QStringLiteral("preview"));
    // The tree takes the column's spare height; the preview keeps about
    // its own minimum size and never grows past 220 px.
    preview_->setMaximumSize(220, 220);

    auto* area = new QVBoxLayout;
    area->addWidget(wheelCaption_);
    area->addWidget(preview_, 0, Qt::AlignHCenter);
    return area;
}

// Keyboard users move through the page in reading order; screen readers
// get a name wherever the visible text alone would not say what a control is.
void WheelEditorPage::setTabOrderAndNames() {
    const QList<QWidget*> order{
        openButton_,        saveButton_,        saveAsButton_,     activateButton_, tree_,          addWheelButton_,
        addFunctionButton_, removeButton_,      programsEdit_,     pickProgramsButton_, nameEdit_,         voiceEdit_,      iconButton_,    colorButton_,
        delaySpin_,         stepsList_,         stepUpButton_,     stepDownButton_, actionCombo_,   keyCombo_,
        amountSpin_,        targetEdit_,        stepAddButton_,    stepReplaceButton_, stepRemoveButton_};
    for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);

    pathLabel_->setAccessibleName(tr("Plik kół"));
    tree_->setAccessibleName(tr("Koła i ich funkcje"));
    addWheelButton_->setAccessibleName(tr("Dodaj koło"));
    addFunctionButton_->setAccessibleName(tr("Dodaj funkcję"));
    removeButton_->setAccessibleName(tr("Usuń zaznaczone koło lub funkcję"));
    programsEdit_->setAccessibleName(tr("Programy, dla których pokazuje się to koło (oddzielone przecinkami)"));
    nameEdit_->setAccessibleName(tr("Nazwa funkcji"));
    voiceEdit_->setAccessibleName(tr("Fraza głosowa"));
    iconImage_->setAccessibleName(tr("Ikona funkcji"));
    iconButton_->setAccessibleName(tr("Wybierz ikonę"));
    colorButton_->setAccessibleName(tr("Kolor pola"));
    delaySpin_->setAccessibleName(tr("Odstęp między krokami [ms]"));
    stepsList_->setAccessibleName(tr("Czynności (kroki sekwencji)"));
    actionCombo_->setAccessibleName(tr("Rodzaj czynności"));
    keyCombo_->setAccessibleName(tr("Klawisz lub przycisk myszy"));
    amountSpin_->setAccessibleName(tr("Powtórzenia kliknięcia lub czas przytrzymania [ms]"));
    targetEdit_->setAccessibleName(tr("Adres lub program do otwarcia"));
    stepUpButton_->setAccessibleName(tr("Przesuń krok w górę"));
    stepDownButton_->setAccessibleName(tr("Przesuń krok w dół"));
    wheelCaption_->setAccessibleName(tr("Nazwa koła w podglądzie"));
}

void WheelEditorPage::loadFile(const QString& path) {
    WheelDocument loaded;
    QString error;
    if (!loaded.Load(path, error)) {
        warn(error);
        return;
    }
    filePath_ = path;
    document_ = std::move(loaded);
    loaded_ = true;
    modified_ = false;
    pathLabel_->setText(path);
    RememberWheelFile(path);
    rebuildTree(0, document_.wheels[0].functions.isEmpty() ? -1 : 0);
}

void WheelEditorPage::openFile() {
    const QString directory = filePath_.isEmpty() ? QString() : QFileInfo(filePath_).absolutePath();
    const QString path = QFileDialog::getOpenFileName(this, tr("Otwórz plik kół"), directory, tr("JSON (*.json)"));
    if (!path.isEmpty()) loadFile(path);
}

void WheelEditorPage::saveFile(bool saveAs) {
    if (!loaded_) return;
    QString target = filePath_;
    if (saveAs) {
        target = QFileDialog::getSaveFileName(this, tr("Zapisz jako"), filePath_, tr("JSON (*.json)"));
        if (target.isEmpty()) return;
    }
    QString error;
    if (!document_.Save(target, error)) {
        warn(error);
        return;
    }
    if (saveAs) {
        filePath_ = target;
        RememberWheelFile(target);
    }
    modified_ = false;
    pathLabel_->setText(filePath_);
}

void WheelEditorPage::activateOnEngine() {
    if (!loaded_) return;
    // The engine reads the file, so it must hold what the user sees.
    if (modified_) saveFile(false);
    if (modified_) return;
    if (!OverlayActivateWheelFile(filePath_.toStdU16String().c_str()))
        warn(tr("Silnik nie przyjął konfiguracji — sprawdź, czy plik zawiera koła z funkcjami."));
}

void WheelEditorPage::markModified() {
    modified_ = true;
    pathLabel_->setText(filePath_ + QStringLiteral(" *"));
}

QString WheelEditorPage::fileDirectory() const { return QFileInfo(filePath_).absolutePath(); }

void WheelEditorPage::warn(const QString& text) { QMessageBox::warning(this, tr("Edytor kół"), text, QMessageBox::Ok); }

void WheelEditorPage::rebuildTree(int wheel, int function) {
    QTreeWidgetItem* selected = nullptr;
    {
        QScopedValueRollback<bool> quiet(updating_, true);
        tree_->clear();
        const QDir directory(fileDirectory());
        for (int i = 0; i < document_.wheels.size(); ++i) {
            const Wheel& current = document_.wheels[i];
            auto* wheelItem = new QTreeWidgetItem(tree_, {wheelLabel(current)});
            if (!current.apps.isEmpty()) wheelItem->setToolTip(0, ProgramsText(current.apps));
            wheelItem->setData(0, kWheelRole, i);
            wheelItem->setData(0, kFunctionRole, -1);
            if (i == wheel) selected = wheelItem;
            for (int j = 0; j < current.functions.size(); ++j) {
                const WheelFunction& entry = current.functions[j];
                auto* item = new QTreeWidgetItem(wheelItem, {entry.name.isEmpty() ? tr("(bez nazwy)") : entry.name});
                item->setData(0, kWheelRole, i);
                item->setData(0, kFunctionRole, j);
                if (!entry.icon.isEmpty()) item->setIcon(0, QIcon(IconFile(directory.path(), entry.icon)));
                if (i == wheel && j == function) selected = item;
            }
        }
        tree_->expandAll();
        if (selected) tree_->setCurrentItem(selected);
    }
    onTreeSelection();
}

void WheelEditorPage::onTreeSelection() {
    if (updating_) return;
    const QTreeWidgetItem* item = tree_->currentItem();
    currentWheel_ = item ? item->data(0, kWheelRole).toInt() : -1;
    currentFunction_ = item ? item->data(0, kFunctionRole).toInt() : -1;
    showPrograms();
    showFunction();
    refreshPreview();
}

bool WheelEditorPage::hasCurrentWheel() const { return currentWheel_ >= 0 && currentWheel_ < document_.wheels.size(); }

const WheelFunction* WheelEditorPage::selectedFunction() const {
    if (!hasCurrentWheel()) return nullptr;
    const QList<WheelFunction>& functions = document_.wheels[currentWheel_].functions;
    if (currentFunction_ < 0 || currentFunction_ >= functions.size()) return nullptr;
    return &functions[currentFunction_];
}

WheelFunction* WheelEditorPage::selectedFunction() {
    return const_cast<WheelFunction*>(std::as_const(*this).selectedFunction());
}

void WheelEditorPage::addWheel() {
    if (!loaded_) return;
    bool accepted = false;
    const QString proposal = tr("Koło %1").arg(document_.wheels.size() + 1);
    const QString name =
        QInputDialog::getText(this, tr("Nowe koło"), tr("Nazwa koła:"), QLineEdit::Normal, proposal, &accepted);
    if (!accepted) return;
    document_.wheels.append({name, {}});
    document_.multiWheel = true;
    markModified();
    rebuildTree(static_cast<int>(document_.wheels.size()) - 1, -1);
}

void WheelEditorPage::addAction() {
    if (!hasCurrentWheel()) {
        if (!loaded_ || document_.wheels.isEmpty()) return;
        currentWheel_ = 0;
    }
    WheelFunction function;
    function.name = tr("Nowa funkcja");
    QList<WheelFunction>& functions = document_.wheels[currentWheel_].functions;
    functions.append(function);
    markModified();
    rebuildTree(currentWheel_, static_cast<int>(functions.size()) - 1);
}

void WheelEditorPage::removeSelected() {
    if (!hasCurrentWheel()) return;
    if (selectedFunction()) {
        document_.wheels[currentWheel_].functions.removeAt(currentFunction_);
    } else {
        if (document_.wheels.size() == 1) {
            QMessageBox::information(this, tr("Edytor kół"), tr("Musi zostać przynajmniej jedno koło."));
            return;
        }
        const QString question = tr("Usunąć koło \"%1\" wraz z funkcjami?").arg(document_.wheels[currentWheel_].name);
        if (QMessageBox::question(this, tr("Edytor kół"), question, QMessageBox::Yes | QMessageBox::No) !=
            QMessageBox::Yes)
            return;
        document_.wheels.removeAt(currentWheel_);
    }
    markModified();
    rebuildTree(0, -1);
}

void WheelEditorPage::refreshPreview() {
    if (!hasCurrentWheel()) {
        preview_->setLabels({});
        wheelCaption_->clear();
        return;
    }
    const Wheel& wheel = document_.wheels[currentWheel_];
    QStringList labels;
    for (int i = 0; i < wheel.functions.size(); ++i)
        labels.append(wheel.functions[i].name.isEmpty() ? QString::number(i + 1) : wheel.functions[i].name);
    preview_->setLabels(labels);
    preview_->setHighlighted(currentFunction_);
    wheelCaption_->setText(wheel.apps.isEmpty() ? wheel.name
                                                : tr("%1 (dla: %2)").arg(wheel.name, ProgramsText(wheel.apps)));
}

}  // namespace zirvel::frontend
