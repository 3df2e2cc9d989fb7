// Every page can be used with Tab alone, and a screen reader can name each
// control it reaches.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QListWidget>
#include <QStackedWidget>
#include <QTest>

#include "frontend/main_window.h"
#include "frontend/wheel_editor_page.h"
#include "frontend/wheel_preview.h"
#include "support/focus_chain.h"
#include "support/frontend_test_main.h"
#include "support/program_files.h"

using zirvel::frontend::MainWindow;
using zirvel_test::Describe;
using zirvel_test::SpokenName;
using zirvel_test::TabChain;

namespace {

bool IsControl(QWidget* widget) {
    return qobject_cast<QAbstractButton*>(widget) || qobject_cast<QLineEdit*>(widget) ||
           qobject_cast<QComboBox*>(widget) || qobject_cast<QAbstractSpinBox*>(widget) ||
           qobject_cast<QAbstractSlider*>(widget) || qobject_cast<QAbstractItemView*>(widget);
}

QStringList ObjectNames(const std::vector<QWidget*>& widgets) {
    QStringList names;
    for (QWidget* widget : widgets) names << widget->objectName();
    return names;
}

QString SampleWheels() {
    zirvel_test::WriteProgramFile(QStringLiteral("keyboard-wheels.json"),
                                  R"({"actions": [{"name": "Leczenie", "voice": "lecz", "steps": [{"key": "h"}]}]})");
    return zirvel_test::ProgramFile(QStringLiteral("keyboard-wheels.json"));
}

}  // namespace

class KeyboardAccessTest : public QObject {
    Q_OBJECT

    std::unique_ptr<MainWindow> window_;

    std::vector<QWidget*> ChainOfPage(int row) {
        window_->sidebar()->setCurrentRow(row);
        return TabChain(window_.get());
    }

private slots:
    void init() {
        window_ = std::make_unique<MainWindow>();
        window_->editor()->loadFile(SampleWheels());
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }
    void cleanup() { window_.reset(); }

    void everyControlOfEveryPageIsReachedAndNamed() {
        for (int row = 0; row < window_->pages()->count(); ++row) {
            const std::vector<QWidget*> chain = ChainOfPage(row);
            QWidget* page = window_->pages()->widget(row);
            for (QWidget* control : page->findChildren<QWidget*>()) {
                if (!IsControl(control) || !control->isVisible() || !control->isEnabled()) continue;
                if (zirvel_test::IsInnerEditor(control)) continue;
                // The bars of the page's own scroll area follow the focus:
                // Tab scrolls each control it reaches into view.
                if (qobject_cast<QScrollBar*>(control) && page->isAncestorOf(control) &&
                    !window_->page(row)->isAncestorOf(control))
                    continue;
                QVERIFY2(std::find(chain.begin(), chain.end(), control) != chain.end(),
                         qPrintable(QStringLiteral("page %1: Tab never reaches %2").arg(row).arg(Describe(control))));
            }
            for (QWidget* widget : chain) {
                QVERIFY2(!SpokenName(widget).trimmed().isEmpty(),
                         qPrintable(QStringLiteral("page %1: %2 has no accessible name").arg(row).arg(Describe(widget))));
            }
        }
    }

    void tabScrollsTheEditorToEachControl() {
        const std::vector<QWidget*> chain = ChainOfPage(1);
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        window_->sidebar()->setFocus();
        for (size_t i = 1; i < chain.size(); ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QWidget* focus = QApplication::focusWidget();
            if (zirvel_test::IsInnerEditor(focus)) focus = focus->parentWidget();
            QCOMPARE(focus, chain[i]);
            const QRect shown = window_->pages()->currentWidget()->rect();
            const QRect control(focus->mapTo(window_->pages()->currentWidget(), QPoint(0, 0)), focus->size());
            QVERIFY2(shown.intersects(control), qPrintable(Describe(focus)));
        }
    }

    void tabStartsAtTheSidebar() {
        for (int row = 0; row < window_->pages()->count(); ++row) {
            const std::vector<QWidget*> chain = ChainOfPage(row);
            QVERIFY(!chain.empty());
            QCOMPARE(chain.front(), static_cast<QWidget*>(window_->sidebar()));
        }
        QCOMPARE(SpokenName(window_->sidebar()), QStringLiteral("Strony"));
    }

    void startPageOrder() {
        QCOMPARE(ObjectNames(ChainOfPage(0)), (QStringList{QStringLiteral("Sidebar"), QStringLiteral("Primary")}));
    }

    void voicePageOrder() {
        QCOMPARE(ObjectNames(ChainOfPage(2)),
                 (QStringList{QStringLiteral("Sidebar"), QStringLiteral("voiceEnabled"), QStringLiteral("voiceGlobal"),
                              QStringLiteral("globalCommands"), QStringLiteral("editGlobalCommands")}));
    }

    void gazePageOrder() {
        QCOMPARE(ObjectNames(ChainOfPage(3)),
                 (QStringList{QStringLiteral("Sidebar"), QStringLiteral("gazeEnabled"), QStringLiteral("gazeDwell")}));
    }

    void settingsPageOrder() {
        QCOMPARE(ObjectNames(ChainOfPage(4)),
                 (QStringList{QStringLiteral("Sidebar"), QStringLiteral("theme-fluent"), QStringLiteral("theme-neon"),
                              QStringLiteral("theme-pro"), QStringLiteral("scanEnabled"), QStringLiteral("scanMode"),
                              QStringLiteral("scanInterval"), QStringLiteral("scanLoops"), QStringLiteral("scanStepKey"),
                              QStringLiteral("checkUpdates")}));
    }

    void editorPageBeginsWithItsToolRowAndTree() {
        const QStringList names = ObjectNames(ChainOfPage(1));
        QVERIFY2(names.size() > 10, qPrintable(names.join(QLatin1Char(' '))));
        QCOMPARE(names.mid(0, 6), (QStringList{QStringLiteral("Sidebar"), QStringLiteral("openButton"),
                                              QStringLiteral("saveButton"), QStringLiteral("saveAsButton"),
                                              QStringLiteral("Primary"), QStringLiteral("tree")}));
    }

    void thePreviewsDescribeTheirFields() {
        QAccessibleInterface* start = QAccessible::queryAccessibleInterface(window_->preview());
        QVERIFY(start);
        QCOMPARE(start->text(QAccessible::Name), QStringLiteral("Podgląd koła"));
        QVERIFY(!start->text(QAccessible::Description).isEmpty());
        window_->sidebar()->setCurrentRow(1);
        auto* editorPreview = window_->editor()->findChild<zirvel::frontend::WheelPreview*>();
        QVERIFY(editorPreview);
        QAccessibleInterface* editor = QAccessible::queryAccessibleInterface(editorPreview);
        QVERIFY(editor->text(QAccessible::Description).contains(QStringLiteral("Leczenie")));
    }
};

ZIRVEL_FRONTEND_TEST_MAIN(KeyboardAccessTest)
#include "keyboard_access_test.moc"
