// A Qt Widgets window for the element hint tests: controls that must and
// must not be numbered, a list, an edit, a widget whose accessible role is a
// web page, and one button whose accessible answers come slowly on request.
// It records the mouse presses it receives and the rectangles of its list
// rows.
//   hint_test_window --log FILE [--rows N] [--slow-ms N]
#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QTextStream>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <thread>

#include "hint_test_window_layout.h"

namespace {

namespace layout = zirvel_test::hint_window;

QString logPath;
int slowMs = 0;

void Log(const QString& line) {
    QFile file(logPath);
    if (!file.open(QIODevice::Append | QIODevice::Text)) return;
    QTextStream(&file) << line << "\n";
}

// The page: Qt's AT-SPI bridge gives WebDocument the role "document web",
// as browsers show their pages.
class PageAccessible : public QAccessibleWidget {
public:
    explicit PageAccessible(QWidget* widget) : QAccessibleWidget(widget, QAccessible::WebDocument) {}
};

// Takes its time over every question about where it is.
class SlowAccessible : public QAccessibleWidget {
public:
    explicit SlowAccessible(QWidget* widget) : QAccessibleWidget(widget, QAccessible::Button) {}
    QRect rect() const override {
        Log("slow asked");
        std::this_thread::sleep_for(std::chrono::milliseconds(slowMs));
        return QAccessibleWidget::rect();
    }
};

// Classes of their own: Qt asks for a widget's accessible as soon as the
// widget is made, before it has a name.
class PageWidget : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;
};

class SlowButton : public QPushButton {
    Q_OBJECT
public:
    using QPushButton::QPushButton;
};

QAccessibleInterface* MakeAccessible(const QString& className, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (!widget) return nullptr;
    if (className == "PageWidget") return new PageAccessible(widget);
    if (className == "SlowButton" && slowMs > 0) return new SlowAccessible(widget);
    return nullptr;
}

// Every mouse press and double click that reaches a widget of the window.
class ClickRecorder : public QObject {
protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if ((event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) &&
            watched->isWidgetType()) {
            auto* mouse = static_cast<QMouseEvent*>(event);
            const QString kind = event->type() == QEvent::MouseButtonDblClick ? "double" : "press";
            const QString button = mouse->button() == Qt::RightButton ? "right" : "left";
            Log(kind + " " + button + " " + watched->objectName());
        }
        return false;
    }
};

QWidget* Place(QWidget* widget, const layout::Box& box, const char* name) {
    widget->setGeometry(box.x, box.y, box.width, box.height);
    widget->setObjectName(name);
    return widget;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    int rows = layout::kListRows;
    const QStringList arguments = application.arguments();
    for (int i = 1; i + 1 < arguments.size(); ++i) {
        if (arguments[i] == "--log") logPath = arguments[i + 1];
        if (arguments[i] == "--rows") rows = arguments[i + 1].toInt();
        if (arguments[i] == "--slow-ms") slowMs = arguments[i + 1].toInt();
    }
    QAccessible::installFactory(MakeAccessible);

    QWidget window;
    window.setWindowTitle(layout::kTitle);
    window.setGeometry(layout::kWindow.x, layout::kWindow.y, layout::kWindow.width, layout::kWindow.height);
    Place(new QPushButton("Zwykły", &window), layout::kNormalButton, "normal");
    Place(new QPushButton("Wyłączony", &window), layout::kDisabledButton, "disabled")->setEnabled(false);
    Place(new QPushButton("", &window), layout::kTinyButton, "tiny");
    QWidget* pane = Place(new QWidget(&window), layout::kPane, "pane");
    pane->setFocusPolicy(Qt::StrongFocus);
    auto* list = static_cast<QListWidget*>(Place(new QListWidget(&window), layout::kList, "list"));
    for (int i = 1; i <= rows; ++i) list->addItem(QString("Wiersz %1").arg(i));
    Place(new QLineEdit(&window), layout::kEdit, "edit");
    Place(new SlowButton("Powoli", &window), layout::kSlowButton, "slow");
    QWidget* page = Place(new PageWidget(&window), layout::kPage, "page");
    Place(new QPushButton("W stronie", page), layout::kPageButton, "pagebutton");

    ClickRecorder recorder;
    application.installEventFilter(&recorder);
    window.show();
    // The places on the screen of the rows in view, once the window shows.
    QTimer::singleShot(300, [list, rows] {
        for (int i = 0; i < rows; ++i) {
            const QRect local = list->visualItemRect(list->item(i));
            if (!list->viewport()->rect().intersects(local)) continue;
            const QPoint global = list->viewport()->mapToGlobal(local.topLeft());
            Log(QString("row %1 %2 %3 %4 %5").arg(i + 1).arg(global.x()).arg(global.y()).arg(local.width()).arg(local.height()));
        }
        Log("ready");
    });
    return application.exec();
}

#include "hint_test_window.moc"
