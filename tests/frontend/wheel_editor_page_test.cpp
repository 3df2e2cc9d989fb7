// The wheel editor page: loading and saving, the tree's edits, the step
// editor, handing the file to the engine, and keyboard and screen-reader use.
#include "frontend/wheel_editor_page.h"

#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QInputDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QSplitter>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>
#include <memory>

#include "engine/overlay_exports.h"
#include "frontend/frontend_identity.h"
#include "frontend/icon_picker_dialog.h"
#include "frontend/open_programs_dialog.h"
#include "frontend/themes.h"
#include "frontend/wheel_preview.h"
#include "support/frontend_test_main.h"
#include "support/modal_driver.h"

using zirvel::frontend::IconPickerDialog;
using zirvel::frontend::OpenProgram;
using zirvel::frontend::OpenProgramsDialog;
using zirvel::frontend::StepKind;
using zirvel::frontend::WheelEditorPage;
using zirvel::frontend::WheelPreview;
using zirvel_test::ModalDriver;

namespace {

constexpr int kShortWaitMs = 200;

// Runs `action` on the next modal dialog if it is a `Dialog`.
template <typename Dialog, typename Action>
void OnNext(ModalDriver& driver, Action action, int timeoutMs = 5000) {
    driver.Next(
        [action](QWidget* widget) {
            if (auto* dialog = qobject_cast<Dialog*>(widget)) action(dialog);
        },
        timeoutMs);
}

// Arms `driver` for a short while to close any message box, for actions
// that must not show one; WaitOutDriver then lets its polling end.
void ExpectNoMessageBox(ModalDriver& driver) {
    OnNext<QMessageBox>(
        driver, [](QMessageBox* box) { box->done(QMessageBox::Ok); }, kShortWaitMs);
}

void WaitOutDriver() { QTest::qWait(kShortWaitMs * 3); }

// Accepts `path` in a file dialog as a user typing its name would. The
// name field ignores selectFile() while it has the focus, and the list,
// filled in the background, may select the start file late: a selection
// there wins over the typed name.
void ChooseFile(QFileDialog* dialog, const QString& path) {
    dialog->setDirectory(QFileInfo(path).absolutePath());
    if (auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")))
        name->setText(QFileInfo(path).fileName());
    if (auto* list = dialog->findChild<QAbstractItemView*>(QStringLiteral("listView"))) list->clearSelection();
    static_cast<QDialog*>(dialog)->accept();  // QFileDialog's own accept() is protected
}

QSettings FrontendSettings() {
    return QSettings(zirvel::frontend::kOrganisationName, zirvel::frontend::kSettingsScope);
}

QString RememberedFile() { return FrontendSettings().value(zirvel::frontend::kLastWheelFileKey).toString(); }

QStringList Words(const char* text) { return QString::fromLatin1(text).split(QLatin1Char(' ')); }

// Fixtures are written with ' for " so they read like JSON without escapes.
QByteArray Json(QByteArray text) { return text.replace('\'', '"'); }

QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// `count` wheels with one function each, which the engine accepts.
QByteArray WheelsWithFunctions(int count) {
    QJsonArray wheels;
    for (int i = 0; i < count; ++i) {
        const QJsonObject step{{QStringLiteral("key"), QStringLiteral("a")}};
        const QJsonObject function{{QStringLiteral("name"), QStringLiteral("F%1").arg(i)},
                                   {QStringLiteral("steps"), QJsonArray{step}}};
        wheels.append(QJsonObject{{QStringLiteral("name"), QStringLiteral("W%1").arg(i)},
                                  {QStringLiteral("actions"), QJsonArray{function}}});
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("wheels"), wheels}}).toJson();
}

const QByteArray kTwoWheels = Json(
    "{'wheels': [{'name': 'A', 'actions': ["
    "{'name': 'Atak', 'steps': [{'key': 'q'}, {'key': 'w', 'action': 'hold', 'value': 500}, {'open': 'calc.exe'}]},"
    "{'name': '', 'color': '#3498db'}]},"
    "{'name': 'B', 'actions': []}]}");

}  // namespace

class WheelEditorPageTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<WheelEditorPage> page_;

    QString Write(const QString& name, const QByteArray& content) {
        const QString path = dir_->filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) qFatal("cannot write");
        return path;
    }

    template <typename T>
    T* Child(const char* name) const {
        T* child = page_->findChild<T*>(QLatin1String(name));
        if (!child) qFatal("no child named %s", name);
        return child;
    }
    QPushButton* Button(const char* name) const { return Child<QPushButton>(name); }
    QTreeWidget* Tree() const { return Child<QTreeWidget>("tree"); }
    QListWidget* Steps() const { return Child<QListWidget>("stepsList"); }
    QStringList PreviewLabels() const { return Child<WheelPreview>("preview")->labels(); }

    // A page showing `content`, loaded through loadFile.
    QString Open(const QByteArray& content, const QString& name = QStringLiteral("wheels.json")) {
        const QString path = Write(name, content);
        page_->loadFile(path);
        return path;
    }

    void SelectFunction(int wheel, int function) {
        Tree()->setCurrentItem(Tree()->topLevelItem(wheel)->child(function));
    }

    // Fills the step editor as the user would.
    void EnterStep(StepKind kind, const QString& keyOrTarget, int amount) {
        Child<QComboBox>("actionCombo")->setCurrentIndex(int(kind));
        if (kind == StepKind::Open) {
            Child<QLineEdit>("targetEdit")->setText(keyOrTarget);
        } else {
            Child<QComboBox>("keyCombo")->setEditText(keyOrTarget);
            Child<QSpinBox>("amountSpin")->setValue(amount);
        }
    }

    void AddStep(StepKind kind, const QString& keyOrTarget, int amount) {
        EnterStep(kind, keyOrTarget, amount);
        Button("stepAddButton")->click();
    }

    const zirvel::frontend::WheelFunction& Function(int wheel, int function) const {
        return page_->document().wheels[wheel].functions[function];
    }

private slots:
    void init() {
        FrontendSettings().remove(zirvel::frontend::kLastWheelFileKey);
        FrontendSettings().remove(zirvel::frontend::kEditorColumnsKey);
        dir_ = std::make_unique<QTemporaryDir>();
        QVERIFY(dir_->isValid());
        page_ = std::make_unique<WheelEditorPage>();
        page_->show();
    }
    void cleanup() {
        page_.reset();
        dir_.reset();
    }

    void startsUnloaded() {
        QVERIFY(!page_->isLoaded());
        QCOMPARE(Child<QLabel>("pathLabel")->text(), QStringLiteral("(nie wczytano pliku)"));
        QVERIFY(!Child<QWidget>("functionPanel")->isEnabled());
        QCOMPARE(page_->activateButton()->objectName(), QStringLiteral("Primary"));
        QCOMPARE(page_->activateButton()->text(), QStringLiteral("Aktywuj"));
        QCOMPARE(Child<QComboBox>("keyCombo")->count(), 80);
        auto* keys = Child<QComboBox>("keyCombo");
        const QStringList expected{QStringLiteral("1"), QStringLiteral("0"), QStringLiteral("q"), QStringLiteral("m"),
                                   QStringLiteral("F1"), QStringLiteral("F12"), QStringLiteral("space"),
                                   QStringLiteral("capslock"), QStringLiteral("printscreen"), QStringLiteral("mb5")};
        const QList<int> rows{0, 9, 10, 35, 36, 47, 48, 57, 68, 79};
        for (int i = 0; i < rows.size(); ++i) QCOMPARE(keys->itemText(rows[i]), expected[i]);
    }

    void slotsAreDeclaredInTheirOrder() {
        const QMetaObject* meta = page_->metaObject();
        QStringList names;
        for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
            if (meta->method(i).methodType() == QMetaMethod::Slot)
                names.append(QString::fromLatin1(meta->method(i).name()));
        }
        QCOMPARE(names, Words("openFile saveFile activateOnEngine onTreeSelection addWheel "
                              "removeSelected addAction onStepSelection stepAdd stepReplace "
                              "stepRemove stepMove"));
    }

    void loadShowsTheTreeAndRemembersTheFile() {
        const QString path = Open(kTwoWheels);
        QVERIFY(page_->isLoaded());
        QVERIFY(!page_->isModified());
        QCOMPARE(page_->filePath(), path);
        QCOMPARE(Child<QLabel>("pathLabel")->text(), path);
        QCOMPARE(RememberedFile(), path);
        QCOMPARE(Tree()->topLevelItemCount(), 2);
        QCOMPARE(Tree()->topLevelItem(0)->text(0), QStringLiteral("A"));
        QCOMPARE(Tree()->topLevelItem(0)->child(0)->text(0), QStringLiteral("Atak"));
        QCOMPARE(Tree()->topLevelItem(0)->child(1)->text(0), QStringLiteral("(bez nazwy)"));
        QCOMPARE(Tree()->topLevelItem(0)->child(1)->data(0, Qt::UserRole).toInt(), 0);
        QCOMPARE(Tree()->topLevelItem(0)->child(1)->data(0, Qt::UserRole + 1).toInt(), 1);
        QCOMPARE(Tree()->topLevelItem(1)->data(0, Qt::UserRole + 1).toInt(), -1);
        // The first function is selected and shown.
        QCOMPARE(page_->currentWheel(), 0);
        QCOMPARE(page_->currentFunction(), 0);
        QVERIFY(Child<QWidget>("functionPanel")->isEnabled());
        QCOMPARE(Child<QLineEdit>("nameEdit")->text(), QStringLiteral("Atak"));
        QCOMPARE(Steps()->count(), 3);
        QCOMPARE(Steps()->item(1)->text(), QStringLiteral("przytrzymaj 500 ms:  w"));
        QCOMPARE(PreviewLabels(), (QStringList{QStringLiteral("Atak"), QStringLiteral("2")}));
        QCOMPARE(Child<WheelPreview>("preview")->highlighted(), 0);
        QCOMPARE(Child<QLabel>("wheelCaption")->text(), QStringLiteral("A"));
    }

    void wheelWithoutFunctionsSelectsItsRow() {
        Open(Json("{'wheels': [{'name': ''}]}"));
        QCOMPARE(Tree()->topLevelItem(0)->text(0), QStringLiteral("(koło bez nazwy)"));
        QCOMPARE(page_->currentWheel(), 0);
        QCOMPARE(page_->currentFunction(), -1);
        QVERIFY(!Child<QWidget>("functionPanel")->isEnabled());
        QVERIFY(PreviewLabels().isEmpty());
    }

    void rememberedFileIsOpenedByTheNextPage() {
        const QString path = Open(kTwoWheels);
        page_ = std::make_unique<WheelEditorPage>();
        QVERIFY(page_->isLoaded());
        QCOMPARE(page_->filePath(), path);
    }

    void rememberedFileThatIsGoneIsIgnoredSilently() {
        FrontendSettings().setValue(zirvel::frontend::kLastWheelFileKey, dir_->filePath(QStringLiteral("gone.json")));
        ModalDriver driver;
        ExpectNoMessageBox(driver);
        page_ = std::make_unique<WheelEditorPage>();
        WaitOutDriver();
        QVERIFY(!driver.Handled());
        QVERIFY(!page_->isLoaded());
        QCOMPARE(Child<QLabel>("pathLabel")->text(), QStringLiteral("(nie wczytano pliku)"));
    }

    void loadFailureWarnsAndKeepsTheDocument() {
        const QString path = Open(kTwoWheels);
        const QString bad = Write(QStringLiteral("bad.json"), "[1]");
        ModalDriver driver;
        driver.AnswerMessageBox(QMessageBox::Ok);
        page_->loadFile(bad);
        QVERIFY(driver.Handled());
        QCOMPARE(driver.Title(), QStringLiteral("Edytor kół"));
        QVERIFY2(driver.Text().startsWith(QStringLiteral("Błąd JSON: ")), qPrintable(driver.Text()));
        QCOMPARE(driver.Icon(), QMessageBox::Warning);
        QCOMPARE(page_->filePath(), path);
        QCOMPARE(page_->document().wheels.size(), 2);
        QCOMPARE(RememberedFile(), path);
        QCOMPARE(Tree()->topLevelItemCount(), 2);

        driver.AnswerMessageBox(QMessageBox::Ok);
        page_->loadFile(dir_->filePath(QStringLiteral("missing.json")));
        QVERIFY(driver.Handled());
        QCOMPARE(driver.Text(),
                 QStringLiteral("Nie można otworzyć pliku ") + dir_->filePath(QStringLiteral("missing.json")));
        QCOMPARE(page_->filePath(), path);
    }

    void openFileStartsInTheFilesDirectory() {
        const QString first = Open(kTwoWheels);
        const QString second = Write(QStringLiteral("second.json"), Json("{'actions': [{'name': 'Z'}]}"));
        ModalDriver driver;
        QString shownDirectory;
        QString title;
        OnNext<QFileDialog>(driver, [&](QFileDialog* dialog) {
            shownDirectory = dialog->directory().absolutePath();
            title = dialog->windowTitle();
            ChooseFile(dialog, second);
        });
        Button("openButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(title, QStringLiteral("Otwórz plik kół"));
        QCOMPARE(shownDirectory, QFileInfo(first).absolutePath());
        QCOMPARE(page_->filePath(), second);
        QCOMPARE(Child<QLineEdit>("nameEdit")->text(), QStringLiteral("Z"));
    }

    void onlyWheelCannotBeRemoved() {
        Open(Json("{'actions': []}"));
        QCOMPARE(page_->currentFunction(), -1);
        ModalDriver driver;
        driver.AnswerMessageBox(QMessageBox::Ok);
        Button("removeButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(driver.Title(), QStringLiteral("Edytor kół"));
        QCOMPARE(driver.Text(), QStringLiteral("Musi zostać przynajmniej jedno koło."));
        QCOMPARE(driver.Icon(), QMessageBox::Information);
        QCOMPARE(page_->document().wheels.size(), 1);
        QVERIFY(!page_->isModified());
    }

    void functionIsRemovedWithoutAsking() {
        const QString path = Open(kTwoWheels);
        SelectFunction(0, 1);
        ModalDriver driver;
        ExpectNoMessageBox(driver);
        Button("removeButton")->click();
        WaitOutDriver();
        QVERIFY(!driver.Handled());
        QCOMPARE(page_->document().wheels[0].functions.size(), 1);
        QCOMPARE(Function(0, 0).name, QStringLiteral("Atak"));
        QVERIFY(page_->isModified());
        QCOMPARE(Child<QLabel>("pathLabel")->text(), path + QStringLiteral(" *"));
        QCOMPARE(page_->currentWheel(), 0);
        QCOMPARE(page_->currentFunction(), -1);
    }

    void wheelIsRemovedOnlyAfterYes() {
        Open(kTwoWheels);
        Tree()->setCurrentItem(Tree()->topLevelItem(1));
        QCOMPARE(page_->currentWheel(), 1);
        ModalDriver driver;
        driver.AnswerMessageBox(QMessageBox::No);
        Button("removeButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(driver.Text(), QStringLiteral("Usunąć koło \"B\" wraz z funkcjami?"));
        QCOMPARE(driver.Title(), QStringLiteral("Edytor kół"));
        QCOMPARE(page_->document().wheels.size(), 2);
        QVERIFY(!page_->isModified());

        driver.AnswerMessageBox(QMessageBox::Yes);
        Button("removeButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(page_->document().wheels.size(), 1);
        QCOMPARE(page_->document().wheels[0].name, QStringLiteral("A"));
        QVERIFY(page_->isModified());
        QCOMPARE(Tree()->currentItem(), Tree()->topLevelItem(0));
        QCOMPARE(page_->currentFunction(), -1);
    }

    void addWheelProposesTheNextNumber() {
        const QString path = Open(Json("{'actions': [{'name': 'F'}]}"));
        QVERIFY(!page_->document().multiWheel);
        ModalDriver driver;
        QString proposal;
        OnNext<QInputDialog>(driver, [&](QInputDialog* dialog) {
            proposal = dialog->textValue();
            dialog->reject();
        });
        Button("addWheelButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(proposal, QStringLiteral("Koło 2"));
        QCOMPARE(page_->document().wheels.size(), 1);
        QVERIFY(!page_->isModified());

        OnNext<QInputDialog>(driver, [](QInputDialog* dialog) {
            dialog->setTextValue(QStringLiteral("Magia"));
            dialog->accept();
        });
        Button("addWheelButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(page_->document().wheels.size(), 2);
        QCOMPARE(page_->document().wheels[1].name, QStringLiteral("Magia"));
        QVERIFY(page_->document().multiWheel);
        QVERIFY(page_->isModified());
        QCOMPARE(page_->currentWheel(), 1);
        QCOMPARE(page_->currentFunction(), -1);
        QCOMPARE(Tree()->currentItem()->text(0), QStringLiteral("Magia"));

        Button("saveButton")->click();
        const QJsonObject saved = QJsonDocument::fromJson(ReadFile(path)).object();
        QCOMPARE(saved.value(QLatin1String("wheels")).toArray().size(), 2);
        QVERIFY(!saved.contains(QLatin1String("actions")));
    }

    void programsFieldEditsSavesAndReloads() {
        const QString path = Open(kTwoWheels);
        auto* programs = Child<QLineEdit>("programsEdit");
        QCOMPARE(programs->text(), QString());
        Tree()->setCurrentItem(Tree()->topLevelItem(1));
        QVERIFY(programs->isEnabled());
        QVERIFY(Button("pickProgramsButton")->isEnabled());
        programs->setFocus();
        QTest::keyClicks(programs, QStringLiteral("notepad.exe, Firefox"));
        QVERIFY(page_->isModified());
        QCOMPARE(page_->document().wheels[1].apps, (QStringList{QStringLiteral("notepad.exe"), QStringLiteral("Firefox")}));
        QVERIFY(page_->document().wheels[0].apps.isEmpty());
        // The tree and the preview say whose wheel it is.
        QCOMPARE(Tree()->topLevelItem(1)->text(0), QStringLiteral("B — dla: notepad.exe, Firefox"));
        QCOMPARE(Tree()->topLevelItem(0)->text(0), QStringLiteral("A"));
        QCOMPARE(Child<QLabel>("wheelCaption")->text(), QStringLiteral("B (dla: notepad.exe, Firefox)"));
        QCOMPARE(programs->text(), QStringLiteral("notepad.exe, Firefox"));

        Button("saveButton")->click();
        QVERIFY(!page_->isModified());
        const QJsonArray saved = QJsonDocument::fromJson(ReadFile(path)).object().value(QLatin1String("wheels")).toArray();
        QCOMPARE(saved[1].toObject().value(QLatin1String("apps")).toArray(),
                 (QJsonArray{QStringLiteral("notepad.exe"), QStringLiteral("Firefox")}));
        QVERIFY(!saved[0].toObject().contains(QLatin1String("apps")));

        page_ = std::make_unique<WheelEditorPage>();
        page_->show();
        page_->loadFile(path);
        QCOMPARE(Tree()->topLevelItem(1)->text(0), QStringLiteral("B — dla: notepad.exe, Firefox"));
        // A function shows its wheel's programs.
        SelectFunction(0, 0);
        QCOMPARE(Child<QLineEdit>("programsEdit")->text(), QString());
        Tree()->setCurrentItem(Tree()->topLevelItem(1));
        QCOMPARE(Child<QLineEdit>("programsEdit")->text(), QStringLiteral("notepad.exe, Firefox"));
        QVERIFY(!page_->isModified());
    }

    void programsTurnASingleWheelFileIntoTheWheelsForm() {
        const QString path = Open(Json("{'actions': [{'name': 'F', 'steps': [{'key': 'a'}]}]}"));
        QVERIFY(!page_->document().multiWheel);
        Child<QLineEdit>("programsEdit")->setFocus();
        QTest::keyClicks(Child<QLineEdit>("programsEdit"), QStringLiteral("gra.exe"));
        Button("saveButton")->click();
        const QJsonObject saved = QJsonDocument::fromJson(ReadFile(path)).object();
        QCOMPARE(saved.value(QLatin1String("wheels")).toArray()[0].toObject().value(QLatin1String("apps")).toArray(),
                 QJsonArray{QStringLiteral("gra.exe")});
    }

    void moreThanSixtyFourProgramsAreCutWithAWarning() {
        Open(kTwoWheels);
        auto* programs = Child<QLineEdit>("programsEdit");
        QStringList names;
        for (int i = 0; i < 70; ++i) names.append(QStringLiteral("p%1").arg(i));
        programs->setFocus();
        QTest::keyClicks(programs, names.join(QLatin1Char(',')));
        QCOMPARE(page_->document().wheels[0].apps.size(), 64);
        ModalDriver driver;
        driver.AnswerMessageBox(QMessageBox::Ok);
        QTest::keyClick(programs, Qt::Key_Return);
        QVERIFY(driver.Handled());
        QCOMPARE(driver.Text(), QStringLiteral("Koło może należeć najwyżej do 64 programów — zostaje pierwszych 64."));
        QCOMPARE(programs->text(), names.mid(0, 64).join(QStringLiteral(", ")));
    }

    void thePickerListsTheOpenWindowsProgramsAndAddsTheTickedOnce() {
        Open(kTwoWheels);
        page_->setProgramLister([] {
            return QList<OpenProgram>{{QStringLiteral("gra.exe"), QStringLiteral("Gra — poziom 1")},
                                      {QStringLiteral("firefox"), QStringLiteral("Mozilla Firefox")},
                                      {QStringLiteral("Navigator"), QString()}};
        });
        auto* programs = Child<QLineEdit>("programsEdit");
        programs->setFocus();
        QTest::keyClicks(programs, QStringLiteral("GRA.EXE"));

        ModalDriver driver;
        QStringList listed;
        OnNext<OpenProgramsDialog>(driver, [&](OpenProgramsDialog* dialog) {
            QTRY_COMPARE(dialog->programList()->count(), 3);
            for (int i = 0; i < dialog->programList()->count(); ++i) listed.append(dialog->programList()->item(i)->text());
            dialog->programList()->item(0)->setCheckState(Qt::Checked);
            dialog->programList()->item(1)->setCheckState(Qt::Checked);
            dialog->accept();
        });
        Button("pickProgramsButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(listed, (QStringList{QStringLiteral("gra.exe — Gra — poziom 1"),
                                      QStringLiteral("firefox — Mozilla Firefox"), QStringLiteral("Navigator")}));
        QCOMPARE(page_->document().wheels[0].apps, (QStringList{QStringLiteral("GRA.EXE"), QStringLiteral("firefox")}));
        QCOMPARE(programs->text(), QStringLiteral("GRA.EXE, firefox"));

        // Cancelled: nothing changes.
        OnNext<OpenProgramsDialog>(driver, [](OpenProgramsDialog* dialog) {
            QTRY_COMPARE(dialog->programList()->count(), 3);
            dialog->programList()->item(2)->setCheckState(Qt::Checked);
            dialog->reject();
        });
        Button("pickProgramsButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(page_->document().wheels[0].apps.size(), 2);
    }

    void addFunctionWithNothingSelectedGoesToTheFirstWheel() {
        Button("addFunctionButton")->click();
        QVERIFY(!page_->isModified());

        Open(kTwoWheels);
        Tree()->setCurrentItem(nullptr);
        QCOMPARE(page_->currentWheel(), -1);
        Button("addFunctionButton")->click();
        QCOMPARE(page_->document().wheels[0].functions.size(), 3);
        QCOMPARE(Function(0, 2).name, QStringLiteral("Nowa funkcja"));
        QVERIFY(!Function(0, 2).color.isValid());
        QCOMPARE(Function(0, 2).delay, 30);
        QVERIFY(Function(0, 2).steps.isEmpty());
        QCOMPARE(page_->currentWheel(), 0);
        QCOMPARE(page_->currentFunction(), 2);
        QCOMPARE(Child<QLineEdit>("nameEdit")->text(), QStringLiteral("Nowa funkcja"));
        QVERIFY(page_->isModified());
    }

    void addFunctionGoesToTheSelectedWheel() {
        Open(kTwoWheels);
        Tree()->setCurrentItem(Tree()->topLevelItem(1));
        Button("addFunctionButton")->click();
        QCOMPARE(page_->document().wheels[1].functions.size(), 1);
        QCOMPARE(page_->currentWheel(), 1);
        QCOMPARE(page_->currentFunction(), 0);
    }

    void editingFieldsRenamesAndMarksTheFile() {
        const QString path = Open(kTwoWheels);
        auto* name = Child<QLineEdit>("nameEdit");
        name->selectAll();
        QTest::keyClicks(name, QStringLiteral("Skok"));
        QCOMPARE(Function(0, 0).name, QStringLiteral("Skok"));
        QCOMPARE(Tree()->currentItem()->text(0), QStringLiteral("Skok"));
        QCOMPARE(Child<QLabel>("pathLabel")->text(), path + QStringLiteral(" *"));
        QCOMPARE(PreviewLabels().first(), QStringLiteral("Skok"));

        name->selectAll();
        QTest::keyClick(name, Qt::Key_Backspace);
        QCOMPARE(Tree()->currentItem()->text(0), QStringLiteral("(bez nazwy)"));
        QCOMPARE(PreviewLabels().first(), QStringLiteral("1"));

        QTest::keyClicks(Child<QLineEdit>("voiceEdit"), QStringLiteral("hop"));
        QCOMPARE(Function(0, 0).voice, QStringLiteral("hop"));
        Child<QSpinBox>("delaySpin")->setValue(120);
        QCOMPARE(Function(0, 0).delay, 120);

        Button("saveButton")->click();
        QVERIFY(!page_->isModified());
        QCOMPARE(Child<QLabel>("pathLabel")->text(), path);
        const QJsonObject function = QJsonDocument::fromJson(ReadFile(path))
                                         .object()[QLatin1String("wheels")][0][QLatin1String("actions")][0]
                                         .toObject();
        QCOMPARE(function.value(QLatin1String("voice")).toString(), QStringLiteral("hop"));
        QCOMPARE(function.value(QLatin1String("delay")).toInt(), 120);
    }

    void renamingKeepsADelayBeyondTheBoxesRange() {
        Open(Json("{'actions': [{'name': 'F', 'delay': 5000}]}"));
        QCOMPARE(Child<QSpinBox>("delaySpin")->value(), 2000);
        QTest::keyClicks(Child<QLineEdit>("nameEdit"), QStringLiteral("x"));
        QCOMPARE(Function(0, 0).name, QStringLiteral("Fx"));
        QCOMPARE(Function(0, 0).delay, 5000);
        Child<QSpinBox>("delaySpin")->setValue(1500);
        QCOMPARE(Function(0, 0).delay, 1500);
    }

    void saveAsMovesToTheNewFile() {
        const QString path = Open(kTwoWheels);
        const QByteArray original = ReadFile(path);
        Button("addFunctionButton")->click();
        const QString copy = dir_->filePath(QStringLiteral("copy.json"));
        ModalDriver driver;
        OnNext<QFileDialog>(driver, [&](QFileDialog* dialog) { ChooseFile(dialog, copy); });
        Button("saveAsButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(page_->filePath(), copy);
        QCOMPARE(RememberedFile(), copy);
        QVERIFY(!page_->isModified());
        QCOMPARE(Child<QLabel>("pathLabel")->text(), copy);
        QCOMPARE(ReadFile(path), original);
        QCOMPARE(QJsonDocument::fromJson(ReadFile(copy))
                     .object()[QLatin1String("wheels")][0][QLatin1String("actions")]
                     .toArray()
                     .size(),
                 3);
    }

    void cancelledSaveAsChangesNothing() {
        const QString path = Open(kTwoWheels);
        Button("addFunctionButton")->click();
        ModalDriver driver;
        OnNext<QFileDialog>(driver, [](QFileDialog* dialog) { dialog->reject(); });
        Button("saveAsButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(page_->filePath(), path);
        QVERIFY(page_->isModified());
    }

    void clickRepetitionsAreClampedAndHoldKeepsMilliseconds() {
        Open(Json("{'actions': [{'name': 'F'}]}"));
        AddStep(StepKind::Click, QStringLiteral("a"), 0);
        AddStep(StepKind::Click, QStringLiteral("b"), 250);
        AddStep(StepKind::Hold, QStringLiteral("c"), 0);
        AddStep(StepKind::Hold, QStringLiteral("d"), 60000);
        AddStep(StepKind::Release, QStringLiteral(" d "), 7);
        const auto& steps = Function(0, 0).steps;
        QCOMPARE(steps.size(), 5);
        QCOMPARE(steps[0].value, 1);
        QCOMPARE(steps[1].value, 100);
        QCOMPARE(steps[2].kind, StepKind::Hold);
        QCOMPARE(steps[2].value, 0);
        QCOMPARE(steps[3].value, 60000);
        QCOMPARE(steps[4].kind, StepKind::Release);
        QCOMPARE(steps[4].key, QStringLiteral("d"));
        QCOMPARE(Steps()->item(1)->text(), QStringLiteral("klik \u00D7100:  b"));
        QCOMPARE(Steps()->item(2)->text(), QStringLiteral("przytrzymaj (bez puszczania):  c"));
        QCOMPARE(Steps()->currentRow(), 4);
        QVERIFY(page_->isModified());
    }

    void addingAnEmptyStepDoesNothing() {
        Open(Json("{'actions': [{'name': 'F'}]}"));
        AddStep(StepKind::Click, QStringLiteral("  "), 1);
        AddStep(StepKind::Open, QStringLiteral(" "), 1);
        QVERIFY(Function(0, 0).steps.isEmpty());
        QVERIFY(!page_->isModified());
        AddStep(StepKind::Open, QStringLiteral(" https://example.org "), 1);
        QCOMPARE(Function(0, 0).steps.size(), 1);
        QCOMPARE(Function(0, 0).steps[0].target, QStringLiteral("https://example.org"));
    }

    void replaceTakesEvenAnEmptyKey() {
        Open(kTwoWheels);
        Steps()->setCurrentRow(1);
        EnterStep(StepKind::Click, QString(), 3);
        Button("stepReplaceButton")->click();
        QCOMPARE(Function(0, 0).steps[1].kind, StepKind::Click);
        QCOMPARE(Function(0, 0).steps[1].key, QString());
        QCOMPARE(Function(0, 0).steps[1].value, 3);
        QCOMPARE(Steps()->currentRow(), 1);
        QCOMPARE(Steps()->item(1)->text(), QStringLiteral("klik \u00D73:  "));
        QVERIFY(page_->isModified());
    }

    void replaceAndRemoveNeedARow() {
        Open(kTwoWheels);
        Steps()->setCurrentRow(-1);
        Button("stepReplaceButton")->click();
        Button("stepRemoveButton")->click();
        QCOMPARE(Function(0, 0).steps.size(), 3);
        QVERIFY(!page_->isModified());
    }

    void removeStepLeavesNoRowSelected() {
        Open(kTwoWheels);
        Steps()->setCurrentRow(0);
        Button("stepRemoveButton")->click();
        QCOMPARE(Function(0, 0).steps.size(), 2);
        QCOMPARE(Function(0, 0).steps[0].key, QStringLiteral("w"));
        QCOMPARE(Steps()->count(), 2);
        QCOMPARE(Steps()->currentRow(), -1);
        QVERIFY(page_->isModified());
    }

    void movingSwapsStepsButNotPastTheEnds() {
        Open(kTwoWheels);
        Steps()->setCurrentRow(0);
        Button("stepUpButton")->click();
        QCOMPARE(Function(0, 0).steps[0].key, QStringLiteral("q"));
        QVERIFY(!page_->isModified());
        Steps()->setCurrentRow(2);
        Button("stepDownButton")->click();
        QCOMPARE(Function(0, 0).steps[2].kind, StepKind::Open);
        QVERIFY(!page_->isModified());

        Steps()->setCurrentRow(0);
        Button("stepDownButton")->click();
        QCOMPARE(Function(0, 0).steps[0].key, QStringLiteral("w"));
        QCOMPARE(Function(0, 0).steps[1].key, QStringLiteral("q"));
        QCOMPARE(Steps()->currentRow(), 1);
        QCOMPARE(Steps()->item(1)->text(), QStringLiteral("klik:  q"));
        QVERIFY(page_->isModified());
        Button("stepUpButton")->click();
        QCOMPARE(Function(0, 0).steps[0].key, QStringLiteral("q"));
        QCOMPARE(Steps()->currentRow(), 0);
    }

    void selectingAStepFillsTheEditor() {
        Open(kTwoWheels);
        Steps()->setCurrentRow(1);
        QCOMPARE(Child<QComboBox>("actionCombo")->currentIndex(), int(StepKind::Hold));
        QCOMPARE(Child<QComboBox>("keyCombo")->currentText(), QStringLiteral("w"));
        QCOMPARE(Child<QSpinBox>("amountSpin")->value(), 500);
        QVERIFY(Child<QSpinBox>("amountSpin")->isEnabled());
        QVERIFY(!page_->isModified());

        Steps()->setCurrentRow(2);
        QCOMPARE(Child<QComboBox>("actionCombo")->currentIndex(), int(StepKind::Open));
        QCOMPARE(Child<QLineEdit>("targetEdit")->text(), QStringLiteral("calc.exe"));
        QCOMPARE(Child<QStackedWidget>("stepStack")->currentIndex(), 1);
    }

    void actionKindSwitchesTheEditorPage() {
        Open(kTwoWheels);
        auto* combo = Child<QComboBox>("actionCombo");
        auto* stack = Child<QStackedWidget>("stepStack");
        auto* amount = Child<QSpinBox>("amountSpin");
        QCOMPARE(combo->count(), 4);
        QCOMPARE(combo->itemText(3), QStringLiteral("otwórz"));
        combo->setCurrentIndex(3);
        QCOMPARE(stack->currentIndex(), 1);
        QVERIFY(!amount->isEnabled());
        QVERIFY(Child<QLineEdit>("targetEdit")->isVisible());
        combo->setCurrentIndex(2);
        QCOMPARE(stack->currentIndex(), 0);
        QVERIFY(!amount->isEnabled());
        combo->setCurrentIndex(1);
        QVERIFY(amount->isEnabled());
        combo->setCurrentIndex(0);
        QVERIFY(amount->isEnabled());
    }

    void activateHandsTheFileToTheEngine() {
        const int before = OverlayWheelCount();
        Open(WheelsWithFunctions(before + 1));
        ModalDriver driver;
        ExpectNoMessageBox(driver);
        page_->activateButton()->click();
        QCOMPARE(OverlayWheelCount(), before + 1);
        WaitOutDriver();
        QVERIFY(!driver.Handled());
    }

    void activateSavesAModifiedFileFirst() {
        const int before = OverlayWheelCount();
        const QString path = Open(WheelsWithFunctions(before + 2));
        // Wheel 1 loses its only function, so the engine will leave it out.
        SelectFunction(1, 0);
        Button("removeButton")->click();
        QVERIFY(page_->isModified());
        page_->activateButton()->click();
        QVERIFY(!page_->isModified());
        const QJsonArray saved = QJsonDocument::fromJson(ReadFile(path)).object()[QLatin1String("wheels")].toArray();
        QCOMPARE(saved.size(), before + 2);
        QVERIFY(saved[1][QLatin1String("actions")].toArray().isEmpty());
        QCOMPARE(OverlayWheelCount(), before + 1);
    }

    void activateStopsWhenTheSaveFails() {
        const int before = OverlayWheelCount();
        // The engine could read this file, but no file can be saved beside
        // it: the temporary file's name would be too long. (Permissions
        // would not stop root.)
        const QString path =
            Open(WheelsWithFunctions(before + 1), QString(250, QLatin1Char('w')) + QStringLiteral(".json"));
        Button("addFunctionButton")->click();
        ModalDriver driver;
        driver.AnswerMessageBox(QMessageBox::Ok);
        page_->activateButton()->click();
        QVERIFY(driver.Handled());
        QCOMPARE(driver.Title(), QStringLiteral("Edytor kół"));
        QCOMPARE(driver.Text(), QStringLiteral("Nie można zapisać pliku ") + path);
        QCOMPARE(driver.Icon(), QMessageBox::Warning);
        QVERIFY(page_->isModified());
        QCOMPARE(OverlayWheelCount(), before);
    }

    void saveIntoARemovedDirectoryWarnsAndKeepsTheMark() {
        QTemporaryDir own;
        const QString path = own.filePath(QStringLiteral("wheels.json"));
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(kTwoWheels);
        }
        page_->loadFile(path);
        Button("addFunctionButton")->click();
        QVERIFY(own.remove());
        ModalDriver driver;
        driver.AnswerMessageBox(QMessageBox::Ok);
        Button("saveButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(driver.Text(), QStringLiteral("Nie można zapisać pliku ") + path);
        QVERIFY(page_->isModified());
        QCOMPARE(Child<QLabel>("pathLabel")->text(), path + QStringLiteral(" *"));
    }

    void activateReportsAFileTheEngineRefuses() {
        const int before = OverlayWheelCount();
        Open(Json("{'wheels': [{'name': 'A'}, {'name': 'B', 'actions': []}]}"));
        ModalDriver driver;
        driver.AnswerMessageBox(QMessageBox::Ok);
        page_->activateButton()->click();
        QVERIFY(driver.Handled());
        QCOMPARE(driver.Title(), QStringLiteral("Edytor kół"));
        QCOMPARE(driver.Text(),
                 QStringLiteral("Silnik nie przyjął konfiguracji — sprawdź, czy plik zawiera koła z funkcjami."));
        QCOMPARE(OverlayWheelCount(), before);
    }

    void activateDoesNothingWithoutAFile() {
        const int before = OverlayWheelCount();
        ModalDriver driver;
        ExpectNoMessageBox(driver);
        page_->activateButton()->click();
        Button("saveButton")->click();
        WaitOutDriver();
        QVERIFY(!driver.Handled());
        QCOMPARE(OverlayWheelCount(), before);
    }

    void chosenColourIsShownAsTextAndSwatch_data() {
        QTest::addColumn<QColor>("colour");
        QTest::addColumn<QString>("text");
        QTest::newRow("light") << QColor(QStringLiteral("#f0e68c")) << QStringLiteral("#000");
        QTest::newRow("dark") << QColor(QStringLiteral("#202840")) << QStringLiteral("#FFF");
    }
    void chosenColourIsShownAsTextAndSwatch() {
        QFETCH(QColor, colour);
        QFETCH(QString, text);
        Open(kTwoWheels);
        ModalDriver driver;
        QColor offered;
        OnNext<QColorDialog>(driver, [&](QColorDialog* dialog) {
            offered = dialog->currentColor();
            dialog->setCurrentColor(colour);
            dialog->accept();
        });
        Button("colorButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(offered, zirvel::frontend::themeById(zirvel::frontend::currentThemeId()).colours[0]);
        QCOMPARE(Function(0, 0).color, colour);
        QCOMPARE(Button("colorButton")->text(), colour.name());
        QCOMPARE(Button("colorButton")->styleSheet(),
                 QStringLiteral("background:%1; color:%2;").arg(colour.name(), text));
        QVERIFY(page_->isModified());
    }

    void cancellingTheColourDialogResetsTheColour() {
        Open(kTwoWheels);
        SelectFunction(0, 1);
        QCOMPARE(Button("colorButton")->text(), QStringLiteral("#3498db"));
        ModalDriver driver;
        QColor offered;
        OnNext<QColorDialog>(driver, [&](QColorDialog* dialog) {
            offered = dialog->currentColor();
            dialog->reject();
        });
        Button("colorButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(offered, QColor(QStringLiteral("#3498db")));
        QVERIFY(!Function(0, 1).color.isValid());
        QCOMPARE(Button("colorButton")->text(), QStringLiteral("domyślny"));
        QCOMPARE(Button("colorButton")->styleSheet(), QString());
        QVERIFY(page_->isModified());
    }

    void chosenIconUpdatesOnlyTheFunctionPanel() {
        const QString path = Open(kTwoWheels);
        QVERIFY(QDir(dir_->path()).mkpath(QStringLiteral("icons")));
        QImage image(8, 8, QImage::Format_ARGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(dir_->filePath(QStringLiteral("icons/star.png"))));
        const QStringList labelsBefore = PreviewLabels();
        ModalDriver driver;
        OnNext<IconPickerDialog>(driver, [](IconPickerDialog* dialog) {
            for (int row = 0; row < dialog->iconList()->count(); ++row) {
                dialog->iconList()->setCurrentRow(row);
                if (dialog->chosenIcon() == QStringLiteral("icons/star.png")) break;
            }
            dialog->accept();
        });
        Button("iconButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(Function(0, 0).icon, QStringLiteral("icons/star.png"));
        QCOMPARE(Button("iconButton")->text(), QStringLiteral("star"));
        QVERIFY(!Child<QLabel>("iconImage")->pixmap().isNull());
        QVERIFY(page_->isModified());
        QCOMPARE(Child<QLabel>("pathLabel")->text(), path + QStringLiteral(" *"));
        // The tree shows the new icon only after its next rebuild.
        QVERIFY(Tree()->currentItem()->icon(0).isNull());
        QCOMPARE(PreviewLabels(), labelsBefore);

        Button("addFunctionButton")->click();
        QVERIFY(!Tree()->topLevelItem(0)->child(0)->icon(0).isNull());
    }

    void noIconResetsTheButton() {
        Open(Json("{'actions': [{'name': 'F', 'icon': 'icons/x.png'}]}"));
        QCOMPARE(Button("iconButton")->text(), QStringLiteral("x"));
        ModalDriver driver;
        OnNext<IconPickerDialog>(driver, [](IconPickerDialog* dialog) {
            dialog->iconList()->setCurrentRow(-1);
            dialog->accept();
        });
        Button("iconButton")->click();
        QVERIFY(driver.Handled());
        QCOMPARE(Function(0, 0).icon, QString());
        QCOMPARE(Button("iconButton")->text(), QStringLiteral("Wybierz…"));
    }

    void cancelledIconPickerChangesNothing() {
        Open(kTwoWheels);
        ModalDriver driver;
        OnNext<IconPickerDialog>(driver, [](IconPickerDialog* dialog) { dialog->reject(); });
        Button("iconButton")->click();
        QVERIFY(driver.Handled());
        QVERIFY(!page_->isModified());
    }

    void everyControlIsReachedWithTabAndNamed() {
        Open(kTwoWheels);
        page_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(page_.get()));
        Button("openButton")->setFocus();
        QCOMPARE(QApplication::focusWidget(), Button("openButton"));

        QStringList visited;
        for (int press = 0; press < 40; ++press) {
            QWidget* focus = QApplication::focusWidget();
            QVERIFY(focus);
            // An editable box or spin box gives the keyboard to its inner line edit.
            QWidget* control = focus;
            if (qobject_cast<QComboBox*>(focus->parentWidget()) ||
                qobject_cast<QAbstractSpinBox*>(focus->parentWidget()))
                control = focus->parentWidget();
            const auto* button = qobject_cast<QAbstractButton*>(control);
            const bool named = !control->accessibleName().isEmpty() || (button && !button->text().isEmpty());
            QVERIFY2(named, qPrintable(control->objectName()));
            if (!visited.isEmpty() && control->objectName() == visited.first()) break;
            visited.append(control->objectName());
            QTest::keyClick(focus, Qt::Key_Tab);
        }
        QCOMPARE(visited, Words("openButton saveButton saveAsButton Primary tree addWheelButton "
                                "addFunctionButton removeButton programsEdit pickProgramsButton nameEdit voiceEdit iconButton "
                                "colorButton delaySpin stepsList stepUpButton stepDownButton actionCombo "
                                "keyCombo amountSpin stepAddButton stepReplaceButton stepRemoveButton"));
    }

    void targetFieldTakesTheAmountsPlaceInTheTabOrder() {
        Open(kTwoWheels);
        page_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(page_.get()));
        Child<QComboBox>("actionCombo")->setCurrentIndex(int(StepKind::Open));
        Child<QComboBox>("actionCombo")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), Child<QLineEdit>("targetEdit"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), Button("stepAddButton"));
    }

    void unlabelledControlsHaveAccessibleNames() {
        const char* named[] = {"tree",        "programsEdit", "nameEdit",   "voiceEdit",    "iconImage",      "iconButton",
                               "colorButton", "delaySpin",  "stepsList",    "actionCombo",    "keyCombo",
                               "amountSpin",  "targetEdit", "stepUpButton", "stepDownButton", "preview"};
        for (const char* name : named) QVERIFY2(!Child<QWidget>(name)->accessibleName().isEmpty(), name);
        QCOMPARE(Button("stepUpButton")->accessibleName(), QStringLiteral("Przesuń krok w górę"));
        QCOMPARE(Button("stepDownButton")->accessibleName(), QStringLiteral("Przesuń krok w dół"));
        QCOMPARE(Button("colorButton")->accessibleName(), QStringLiteral("Kolor pola"));
        QCOMPARE(Child<QSpinBox>("delaySpin")->accessibleName(), QStringLiteral("Odstęp między krokami [ms]"));
    }

    void theColumnsDivisionComesBackInTheNextSession() {
        // As wide as the main window, so both columns have room to give.
        const auto showAtWindowSize = [this] {
            page_->show();
            page_->resize(820, 470);
            QCoreApplication::processEvents();
        };
        showAtWindowSize();
        auto* columns = Child<QSplitter>("columns");
        const QList<int> initial = columns->sizes();
        QSplitterHandle* handle = columns->handle(1);
        const QPoint grip = handle->rect().center();
        QTest::mousePress(handle, Qt::LeftButton, {}, grip);
        // Two steps of 40 px; positions are the handle's own, and it follows.
        QTest::mouseMove(handle, grip + QPoint(40, 0));
        QTest::mouseMove(handle, grip + QPoint(40, 0));
        QVERIFY2(FrontendSettings().value(zirvel::frontend::kEditorColumnsKey).isNull(),
                 "saved before the handle was let go");
        QTest::mouseRelease(handle, Qt::LeftButton, {}, grip);
        const QList<int> dragged = columns->sizes();
        QCOMPARE(dragged[0], initial[0] + 80);

        page_ = std::make_unique<WheelEditorPage>();
        showAtWindowSize();
        QCOMPARE(Child<QSplitter>("columns")->sizes(), dragged);

        // Without a saved division, the page starts with its own.
        FrontendSettings().remove(zirvel::frontend::kEditorColumnsKey);
        page_ = std::make_unique<WheelEditorPage>();
        showAtWindowSize();
        QCOMPARE(Child<QSplitter>("columns")->sizes(), initial);
    }
};

ZIRVEL_FRONTEND_TEST_MAIN(WheelEditorPageTest)
#include "wheel_editor_page_test.moc"
