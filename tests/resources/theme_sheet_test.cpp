// The theme sheets as Qt reads them, applied to the whole application the
// way the front-end applies a theme: they parse without complaint, the
// front-end's hooks take their colours, keyboard focus visibly changes
// every focusable widget, and the files are UTF-8 (Polish comments).
#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QStringDecoder>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFrame>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include <cstdlib>
#include <functional>
#include <memory>

#include "style_sheet_rules.h"
#include "theme_files.h"

namespace zirvel_test {
namespace {

QStringList& QtWarnings() {
    static QStringList warnings;
    return warnings;
}

void RecordWarnings(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        QtWarnings().append(message);
    }
}

QColor DeclaredColour(const StyleSheetRules& rules, const std::string& selector, const std::string& property) {
    const auto value = Declared(rules, selector, property);
    return value ? QColor(QString::fromStdString(*value)) : QColor();
}

int DifferingPixels(const QImage& one, const QImage& other) {
    if (one.size() != other.size()) {
        return one.width() * one.height();
    }
    int differing = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            differing += one.pixel(x, y) != other.pixel(x, y) ? 1 : 0;
        }
    }
    return differing;
}

class ThemeSheetTest : public ::testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        QFile file(QString::fromStdString(ThemePath(GetParam())));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        bytes_ = file.readAll();
        rules_ = ParseStyleSheet(bytes_.toStdString());
        QtWarnings().clear();
        qApp->setStyleSheet(QString::fromUtf8(bytes_));
    }
    void TearDown() override { qApp->setStyleSheet({}); }

    // A window laid out like the front-end's pages: the sidebar, a card
    // with labels, and `widget` on the page.
    QWidget* ShowOnPage(QWidget* widget) {
        window_ = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(window_.get());
        sidebar_ = new QListWidget;
        sidebar_->setObjectName("Sidebar");
        sidebar_->setFixedWidth(190);
        sidebar_->addItems({"Start", "Koła wyboru", "Komendy głosowe", "Sterowanie wzrokiem", "Ustawienia"});
        sidebar_->setCurrentRow(0);
        layout->addWidget(sidebar_);
        card_ = new QFrame;
        card_->setObjectName("Card");
        auto* cardLayout = new QVBoxLayout(card_);
        for (const char* role : {"pageTitle", "cardTitle", "value", "ok"}) {
            auto* label = new QLabel(QString::fromLatin1(role));
            label->setProperty("role", role);
            cardLayout->addWidget(label);
        }
        layout->addWidget(card_);
        parking_ = new QPushButton("Parking");
        layout->addWidget(parking_);
        layout->addWidget(widget);
        window_->resize(420, 640);
        window_->show();
        window_->activateWindow();
        QApplication::processEvents();
        return widget;
    }

    QImage Grab(QWidget* widget) {
        QApplication::processEvents();
        return widget->grab().toImage();
    }

    QLabel* LabelWithRole(const char* role) const {
        for (QLabel* label : card_->findChildren<QLabel*>()) {
            if (label->property("role").toString() == QLatin1String(role)) {
                return label;
            }
        }
        return nullptr;
    }

    QByteArray bytes_;
    StyleSheetRules rules_;
    std::unique_ptr<QWidget> window_;
    QListWidget* sidebar_ = nullptr;
    QFrame* card_ = nullptr;
    QPushButton* parking_ = nullptr;
};

TEST_P(ThemeSheetTest, IsUtf8WithPolishLettersInItsFirstComment) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(bytes_);
    EXPECT_FALSE(utf8.hasError());
    ASSERT_TRUE(text.startsWith("/*"));
    const QString firstComment = text.left(text.indexOf("*/"));
    EXPECT_TRUE(firstComment.contains(QRegularExpression(QString::fromUtf8("[ąćęłńóśźżĄĆĘŁŃÓŚŹŻ]"))));
}

TEST_P(ThemeSheetTest, QtReadsItWithoutAWarning) {
    ShowOnPage(new QComboBox);
    EXPECT_TRUE(QtWarnings().filter(QRegularExpression("style ?sheet|parse", QRegularExpression::CaseInsensitiveOption))
                    .isEmpty())
        << QtWarnings().join('\n').toStdString();
}

TEST_P(ThemeSheetTest, TheHooksTakeTheirColours) {
    auto* primary = new QPushButton("Pokaż koło");
    primary->setObjectName("Primary");
    ShowOnPage(primary);
    for (const char* role : {"pageTitle", "cardTitle", "value", "ok"}) {
        QLabel* label = LabelWithRole(role);
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->palette().color(QPalette::WindowText),
                  DeclaredColour(rules_, "QLabel[role=\"" + std::string(role) + "\"]", "color"))
            << role;
    }
    EXPECT_EQ(primary->palette().color(QPalette::ButtonText), DeclaredColour(rules_, "QPushButton#Primary", "color"));

    // Pixels where nothing else is drawn: the card's middle right, the
    // sidebar below its last item, the primary button's left edge.
    const QImage card = Grab(card_);
    EXPECT_EQ(card.pixelColor(card.width() - 20, card.height() / 2),
              DeclaredColour(rules_, "QFrame#Card", "background-color"));
    const QImage sidebar = Grab(sidebar_);
    EXPECT_EQ(sidebar.pixelColor(sidebar.width() / 2, sidebar.height() - 6),
              DeclaredColour(rules_, "QListWidget#Sidebar", "background-color"));
    const QImage button = Grab(primary);
    EXPECT_EQ(button.pixelColor(6, button.height() / 2),
              DeclaredColour(rules_, "QPushButton#Primary", "background-color"));
}

// Each focusable widget looks different with the keyboard focus: at least
// twice its shorter side in changed pixels, more than a text caret.
TEST_P(ThemeSheetTest, KeyboardFocusVisiblyChangesEveryFocusableWidget) {
    const std::vector<std::pair<const char*, std::function<QWidget*()>>> focusable = {
        {"button", [] { return new QPushButton("Sprawdź aktualizacje"); }},
        {"primary button",
         [] {
             auto* button = new QPushButton("Pokaż koło");
             button->setObjectName("Primary");
             return button;
         }},
        {"text field", [] { return new QLineEdit("Ctrl+Alt+Z"); }},
        {"spin box", [] { return new QSpinBox; }},
        {"drop-down list",
         [] {
             auto* box = new QComboBox;
             box->addItems({"fluent", "neon", "pro"});
             return box;
         }},
        {"check box", [] { return new QCheckBox("Dźwięki"); }},
        {"radio button", [] { return new QRadioButton("Lewa ręka"); }},
        {"slider", [] { return new QSlider(Qt::Horizontal); }},
        {"list",
         [] {
             auto* list = new QListWidget;
             list->addItems({"Jeden", "Dwa"});
             return list;
         }},
        {"tree",
         [] {
             auto* tree = new QTreeWidget;
             new QTreeWidgetItem(tree, {"Gry"});
             return tree;
         }},
        {"sidebar", [] { return nullptr; }},
    };
    for (const auto& [name, make] : focusable) {
        QWidget* made = make();
        QWidget* widget = ShowOnPage(made != nullptr ? made : new QWidget);
        if (made == nullptr) {
            widget = sidebar_;
        }
        widget->setFocusPolicy(Qt::StrongFocus);
        parking_->setFocus(Qt::TabFocusReason);
        const QImage unfocused = Grab(widget);
        widget->setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(widget->hasFocus()) << name;
        const QImage focused = Grab(widget);
        EXPECT_GE(DifferingPixels(unfocused, focused), 2 * std::min(widget->width(), widget->height())) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(EveryTheme, ThemeSheetTest, ::testing::ValuesIn(ThemeIds()),
                         [](const ::testing::TestParamInfo<std::string>& info) { return info.param; });

}  // namespace
}  // namespace zirvel_test

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    qInstallMessageHandler(zirvel_test::RecordWarnings);
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
