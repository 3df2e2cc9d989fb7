// The icon picker: what it lists from an icons directory and in which
// order, what it stores for the choice, and how it is closed by mouse and
// by keyboard.
#include <QDialogButtonBox>
#include <QDir>
#include <QImage>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "frontend/icon_picker_dialog.h"
#include "support/frontend_test_main.h"
#include "support/modal_driver.h"

using zirvel::frontend::IconPickerDialog;

namespace {

bool WritePng(const QString& path) {
    QImage image(8, 8, QImage::Format_ARGB32);
    image.fill(Qt::darkCyan);
    return image.save(path, "PNG");
}

QStringList Texts(const QListWidget& list) {
    QStringList texts;
    for (int row = 0; row < list.count(); ++row) texts << list.item(row)->text();
    return texts;
}

QStringList StoredStrings(const QListWidget& list) {
    QStringList stored;
    for (int row = 0; row < list.count(); ++row) stored << list.item(row)->data(Qt::UserRole).toString();
    return stored;
}

QPushButton* Button(const IconPickerDialog& dialog, QDialogButtonBox::StandardButton which) {
    auto* box = dialog.findChild<QDialogButtonBox*>();
    return box ? box->button(which) : nullptr;
}

// Closes a dialog that the simulated user failed to close, with a result
// that is neither Accepted nor Rejected, so the test fails instead of hanging.
void EndIfStillOpen(QDialog& dialog) {
    constexpr int kStillOpen = 2;
    if (dialog.isVisible()) dialog.done(kStillOpen);
}

}  // namespace

class IconPickerDialogTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QVERIFY(icons_.isValid());
        // Names that sort before "(bez ikony)", one with two dots, and
        // entries that are no PNG files.
        for (const char* name : {"heal.png", "(a).png", "0.png", "aaa.png", "two.parts.png"})
            QVERIFY(WritePng(icons_.filePath(QString::fromLatin1(name))));
        QFile notes(icons_.filePath(QStringLiteral("notes.txt")));
        QVERIFY(notes.open(QIODevice::WriteOnly));
        notes.write("not an icon");
        notes.close();
        QVERIFY(QDir(icons_.path()).mkdir(QStringLiteral("x.png")));
        QVERIFY(WritePng(icons_.filePath(QStringLiteral("x.png/inner.png"))));
    }

    void looksLikeAnIconGrid() {
        IconPickerDialog dialog(icons_.path(), nullptr);
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Wybierz ikonę"));
        QCOMPARE(dialog.size(), QSize(520, 420));
        QListWidget* list = dialog.iconList();
        QCOMPARE(list->accessibleName(), QStringLiteral("Ikony"));
        QCOMPARE(list->viewMode(), QListView::IconMode);
        QCOMPARE(list->iconSize(), QSize(48, 48));
        QCOMPARE(list->gridSize(), QSize(86, 78));
        QCOMPARE(list->resizeMode(), QListView::Adjust);
        QCOMPARE(list->movement(), QListView::Static);
        QVERIFY(Button(dialog, QDialogButtonBox::Ok));
        QVERIFY(Button(dialog, QDialogButtonBox::Cancel));
    }

    void listsNoIconFirstThenThePngFilesByName() {
        IconPickerDialog dialog(icons_.path(), nullptr);
        const QListWidget& list = *dialog.iconList();
        QCOMPARE(Texts(list), (QStringList{QStringLiteral("(bez ikony)"), QStringLiteral("(a)"), QStringLiteral("0"),
                                           QStringLiteral("aaa"), QStringLiteral("heal"), QStringLiteral("two.parts")}));
        QCOMPARE(StoredStrings(list),
                 (QStringList{QString(), QStringLiteral("icons/(a).png"), QStringLiteral("icons/0.png"),
                              QStringLiteral("icons/aaa.png"), QStringLiteral("icons/heal.png"),
                              QStringLiteral("icons/two.parts.png")}));
        QVERIFY(list.item(0)->icon().isNull());
        for (int row = 1; row < list.count(); ++row) QVERIFY2(!list.item(row)->icon().isNull(), qPrintable(list.item(row)->text()));
    }

    // The user's own icons first, then those the program ships; a shipped
    // icon of the same name is hidden by the user's.
    void severalDirectoriesListEachNameOnce() {
        QTemporaryDir shipped;
        for (const char* name : {"heal.png", "arrow.png"}) QVERIFY(WritePng(shipped.filePath(QString::fromLatin1(name))));
        IconPickerDialog dialog(QStringList{icons_.path(), shipped.path()}, nullptr);
        const QListWidget& list = *dialog.iconList();
        QCOMPARE(Texts(list), (QStringList{QStringLiteral("(bez ikony)"), QStringLiteral("(a)"), QStringLiteral("0"),
                                           QStringLiteral("aaa"), QStringLiteral("heal"), QStringLiteral("two.parts"),
                                           QStringLiteral("arrow")}));
        QCOMPARE(StoredStrings(list).last(), QStringLiteral("icons/arrow.png"));
    }

    void missingDirectoryOffersOnlyNoIcon() {
        IconPickerDialog dialog(icons_.filePath(QStringLiteral("missing")), nullptr);
        QCOMPARE(Texts(*dialog.iconList()), QStringList{QStringLiteral("(bez ikony)")});
        QCOMPARE(dialog.chosenIcon(), QString());
    }

    void nothingIsChosenUntilTheUserPicks() {
        IconPickerDialog dialog(icons_.path(), nullptr);
        QListWidget* list = dialog.iconList();
        QCOMPARE(list->currentItem(), nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        // Gaining focus by keyboard must not make the first item current either.
        list->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(list->hasFocus());
        QCOMPARE(list->currentItem(), nullptr);
        QVERIFY(list->selectedItems().isEmpty());
        QCOMPARE(dialog.chosenIcon(), QString());
    }

    void choiceIsTheCurrentItemsStoredString() {
        IconPickerDialog dialog(icons_.path(), nullptr);
        QListWidget* list = dialog.iconList();
        list->setCurrentRow(4);
        QCOMPARE(dialog.chosenIcon(), QStringLiteral("icons/heal.png"));
        list->setCurrentRow(0);
        QCOMPARE(dialog.chosenIcon(), QString());
        list->setCurrentRow(5);
        QCOMPARE(dialog.chosenIcon(), QStringLiteral("icons/two.parts.png"));
    }

    void doubleClickAcceptsThatItem() {
        IconPickerDialog dialog(icons_.path(), nullptr);
        zirvel_test::ModalDriver driver;
        driver.Next([&dialog](QWidget*) {
            QListWidget* list = dialog.iconList();
            const QPoint at = list->visualItemRect(list->item(3)).center();
            // The events of a real double click: a click, then the second press
            // as a double click and its release.
            QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
            QTest::mouseRelease(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
            EndIfStillOpen(dialog);
        });
        QCOMPARE(dialog.exec(), static_cast<int>(QDialog::Accepted));
        QVERIFY(driver.Handled());
        QCOMPARE(dialog.chosenIcon(), QStringLiteral("icons/aaa.png"));
    }

    void okAcceptsAndCancelRejects_data() {
        QTest::addColumn<int>("button");
        QTest::addColumn<int>("result");
        QTest::newRow("ok") << static_cast<int>(QDialogButtonBox::Ok) << static_cast<int>(QDialog::Accepted);
        QTest::newRow("cancel") << static_cast<int>(QDialogButtonBox::Cancel) << static_cast<int>(QDialog::Rejected);
    }
    void okAcceptsAndCancelRejects() {
        QFETCH(int, button);
        QFETCH(int, result);
        IconPickerDialog dialog(icons_.path(), nullptr);
        dialog.iconList()->setCurrentRow(2);
        zirvel_test::ModalDriver driver;
        driver.Next([&dialog, button](QWidget*) {
            QPushButton* push = Button(dialog, static_cast<QDialogButtonBox::StandardButton>(button));
            if (push) QTest::mouseClick(push, Qt::LeftButton);
            EndIfStillOpen(dialog);
        });
        QCOMPARE(dialog.exec(), result);
        QVERIFY(driver.Handled());
        QCOMPARE(dialog.chosenIcon(), QStringLiteral("icons/0.png"));
    }

    void tabReachesTheListAndBothButtons() {
        IconPickerDialog dialog(icons_.path(), nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QListWidget* list = dialog.iconList();
        list->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(list->hasFocus());
        QWidget* const expected[] = {Button(dialog, QDialogButtonBox::Ok), Button(dialog, QDialogButtonBox::Cancel), list};
        for (QWidget* next : expected) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), next);
        }
    }

    void arrowKeysPickAndEnterAccepts() {
        IconPickerDialog dialog(icons_.path(), nullptr);
        zirvel_test::ModalDriver driver;
        driver.Next([&dialog](QWidget*) {
            QListWidget* list = dialog.iconList();
            list->setFocus(Qt::TabFocusReason);
            // The first arrow key makes the first item current, the next ones move on.
            QTest::keyClick(list, Qt::Key_Right);
            QTest::keyClick(list, Qt::Key_Right);
            QTest::keyClick(list, Qt::Key_Right);
            QTest::keyClick(list, Qt::Key_Return);
            EndIfStillOpen(dialog);
        });
        QCOMPARE(dialog.exec(), static_cast<int>(QDialog::Accepted));
        QVERIFY(driver.Handled());
        QCOMPARE(dialog.chosenIcon(), QStringLiteral("icons/0.png"));
    }

    void escapeRejects() {
        IconPickerDialog dialog(icons_.path(), nullptr);
        zirvel_test::ModalDriver driver;
        driver.Next([&dialog](QWidget*) {
            QTest::keyClick(dialog.iconList(), Qt::Key_Escape);
            EndIfStillOpen(dialog);
        });
        QCOMPARE(dialog.exec(), static_cast<int>(QDialog::Rejected));
        QVERIFY(driver.Handled());
    }

private:
    QTemporaryDir icons_;
};

ZIRVEL_FRONTEND_TEST_MAIN(IconPickerDialogTest)
#include "icon_picker_dialog_test.moc"
