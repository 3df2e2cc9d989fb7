// The AT-SPI element scanner against real applications on a private X
// server and a private session bus: a GTK dialog nobody here wrote (zenity)
// and the project's own Qt test window. The rectangles are checked against
// what the X server reports and by clicking them.
#include <glib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <thread>

#include "hint_test_window_layout.h"
#include "navigation/element_filter.h"
#include "platform/x11/accessibility_bus_switch.h"
#include "platform/x11/atspi_element_scanner.h"
#include "private_session_bus.h"
#include "x_session.h"

#include <signal.h>
#include <unistd.h>

#include <X11/Xatom.h>

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;
using zirvel::ElementScanMode;
using zirvel::ElementScanResult;
using zirvel::ScreenRect;
namespace layout = hint_window;

constexpr int kScreenWidth = 1280;
constexpr int kScreenHeight = 1024;

// One X server and one session bus for the whole program: libatspi connects
// to the accessibility bus once per process.
struct Desktop {
    PrivateXServer server{kScreenWidth, kScreenHeight};
    std::unique_ptr<PrivateSessionBus> bus;
    std::unique_ptr<XConnection> user;
    std::unique_ptr<zirvel::x11::AtspiElementScanner> scanner;
    bool switchedOn = false;
    // The applications' home: no settings of the developer's.
    std::filesystem::path home = ScratchDirectory("zirvel_scan_home_");
    ~Desktop() {
        std::error_code ignored;
        std::filesystem::remove_all(home, ignored);
    }
};

Desktop* desktop = nullptr;

class ScannerEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        desktop = new Desktop;
        if (!desktop->server.Running()) return;
        desktop->bus = std::make_unique<PrivateSessionBus>(desktop->server.Name());
        setenv("DISPLAY", desktop->server.Name().c_str(), 1);
        setenv("DBUS_SESSION_BUS_ADDRESS", desktop->bus->Address().c_str(), 1);
        unsetenv("AT_SPI_BUS_ADDRESS");
        desktop->user = std::make_unique<XConnection>(desktop->server.Name());
        // As the program does at its start; Qt's trees depend on it.
        desktop->switchedOn = zirvel::x11::SwitchAccessibilityBusOn();
        desktop->scanner = std::make_unique<zirvel::x11::AtspiElementScanner>();
    }
    void TearDown() override {
        delete desktop;
        desktop = nullptr;
    }
};

const auto* const environment = ::testing::AddGlobalTestEnvironment(new ScannerEnvironment);

std::vector<std::string> ApplicationEnvironment() {
    return {"DISPLAY=" + desktop->server.Name(), "DBUS_SESSION_BUS_ADDRESS=" + desktop->bus->Address(),
            "QT_QPA_PLATFORM=xcb", "LANG=C.UTF-8", "LANGUAGE=C", "HOME=" + desktop->home.string(),
            "XDG_CONFIG_HOME=" + (desktop->home / "config").string()};
}

std::string Describe(const std::vector<ScreenRect>& rects) {
    std::ostringstream text;
    for (const ScreenRect& r : rects) text << "[" << r.left << "," << r.top << " " << r.Width() << "x" << r.Height() << "] ";
    return text.str();
}

ScreenRect Rect(const XConnection::Geometry& g) { return {g.x, g.y, g.x + g.width, g.y + g.height}; }

ScreenRect Inside(const XConnection::Geometry& window, const layout::Box& box) {
    return {window.x + box.x, window.y + box.y, window.x + box.x + box.width, window.y + box.y + box.height};
}

bool Contains(const ScreenRect& outer, const ScreenRect& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

// Gives the window the input focus as a user's click would (no window
// manager runs) and waits until it has it.
void Focus(Window window) {
    Display* display = desktop->user->Get();
    XSetInputFocus(display, window, RevertToParent, CurrentTime);
    XSync(display, False);
}

// Scans until at least `atLeast` elements come (an application registers
// on the bus a little after its window shows).
ElementScanResult ScanFor(ElementScanMode mode, std::size_t atLeast) {
    ElementScanResult result;
    WaitUntil(
        [&] {
            result = desktop->scanner->Scan(mode);
            return result.elements.size() >= atLeast;
        },
        8000ms, 100ms);
    return result;
}

Window WaitForWindow(const std::string& title) {
    Window window = 0;
    WaitUntil([&] { return (window = desktop->user->FindWindow(title)) != 0 && desktop->user->IsMapped(window); },
              8000ms);
    return window;
}

class AtspiScannerTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(desktop && desktop->server.Running());
        ASSERT_TRUE(desktop->bus && desktop->bus->Running());
        folder_ = ScratchDirectory("zirvel_scan_");
    }
    void TearDown() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    std::unique_ptr<ChildProcess> Start(const std::vector<std::string>& command) {
        return std::make_unique<ChildProcess>(command, ApplicationEnvironment(), folder_ / "output.txt");
    }

    // A zenity question titled `title`, with the input focus once it shows.
    std::unique_ptr<ChildProcess> StartFocusedQuestion(const std::string& title) {
        std::unique_ptr<ChildProcess> zenity = Start({"zenity", "--question", "--title=" + title, "--text=Czy?"});
        if (const Window window = WaitForWindow(title)) Focus(window);
        return zenity;
    }

    std::filesystem::path folder_;
};

TEST_F(AtspiScannerTest, ZenityQuestionNumbersItsTextAndTwoButtonsWhereTheyAreClicked) {
    for (int answer : {0, 1}) {
        std::unique_ptr<ChildProcess> zenity = Start({"zenity", "--question", "--title=Pytanie", "--text=Czy?"});
        const Window window = WaitForWindow("Pytanie");
        ASSERT_NE(window, 0u);
        Focus(window);
        const ElementScanResult result = ScanFor(ElementScanMode::ForegroundWindow, 3);
        const ScreenRect dialog = Rect(desktop->user->WindowGeometry(window));
        // The question (a selectable, so focusable, text), then "No" and
        // "Yes" side by side below it.
        ASSERT_EQ(result.elements.size(), 3u) << Describe(result.elements);
        EXPECT_EQ(result.area, (ScreenRect{0, 0, kScreenWidth, kScreenHeight}));
        for (const ScreenRect& element : result.elements) {
            EXPECT_TRUE(Contains(dialog, element)) << Describe(result.elements) << " outside " << Describe({dialog});
        }
        EXPECT_LE(result.elements[0].bottom, result.elements[1].top);
        EXPECT_LE(result.elements[1].right, result.elements[2].left);
        EXPECT_EQ(result.elements[1].top, result.elements[2].top);
        // Clicking the centre of the third answers "Yes" (0), of the second "No" (1).
        const ScreenRect& target = result.elements[answer == 0 ? 2 : 1];
        desktop->user->MoveMouseTo((target.left + target.right) / 2, (target.top + target.bottom) / 2);
        desktop->user->ClickButton(1);
        EXPECT_EQ(zenity->WaitForExit(5000ms), std::optional<int>(answer));
    }
}

TEST_F(AtspiScannerTest, ZenityListNumbersItsRowsTopToBottom) {
    std::unique_ptr<ChildProcess> zenity =
        Start({"zenity", "--list", "--title=Lista", "--column=Nazwa", "jeden", "dwa", "trzy", "cztery"});
    const Window window = WaitForWindow("Lista");
    ASSERT_NE(window, 0u);
    Focus(window);
    const ElementScanResult result = ScanFor(ElementScanMode::ForegroundWindow, 8);
    const ScreenRect dialog = Rect(desktop->user->WindowGeometry(window));
    // The list (focusable), its column header, the four rows (GTK's table
    // cells), then "Cancel" and "OK".
    ASSERT_EQ(result.elements.size(), 8u) << Describe(result.elements);
    for (const ScreenRect& element : result.elements) EXPECT_TRUE(Contains(dialog, element)) << Describe({element});
    const ScreenRect& list = result.elements[0];
    for (std::size_t row = 2; row < 6; ++row) {
        const ScreenRect& cell = result.elements[row];
        // The last row may be cut by the list's lower edge.
        EXPECT_TRUE(cell.left >= list.left && cell.right <= list.right && cell.top >= list.top &&
                    cell.top < list.bottom)
            << Describe({cell}) << " outside the list " << Describe({list});
        EXPECT_GE(cell.top, result.elements[row - 1].bottom) << "rows out of order: " << Describe(result.elements);
    }
    EXPECT_GE(result.elements[6].top, list.bottom);
    // Clicking the third row and then OK answers with its text.
    for (const ScreenRect* target : {&result.elements[4], &result.elements[7]}) {
        desktop->user->MoveMouseTo((target->left + target->right) / 2, (target->top + target->bottom) / 2);
        desktop->user->ClickButton(1);
        std::this_thread::sleep_for(200ms);
    }
    ASSERT_EQ(zenity->WaitForExit(5000ms), std::optional<int>(0));
    std::ifstream output(folder_ / "output.txt");
    std::string answer;
    std::getline(output, answer);
    EXPECT_EQ(answer, "trzy");
}

// In the program the GUI thread's event loop runs the default main
// context, where libatspi puts its private connection to an application
// (GTK offers one). Scans from another thread must still get their answers
// at once, not after the call timeout.
TEST_F(AtspiScannerTest, AnEventLoopOnTheDefaultContextLeavesScansTheirAnswers) {
    std::unique_ptr<ChildProcess> zenity = StartFocusedQuestion("Pętla");
    ASSERT_EQ(ScanFor(ElementScanMode::ForegroundWindow, 3).elements.size(), 3u) << "the dialog has no elements";

    // A busy GUI thread: it looks at the default context's connections
    // again and again, as one handling input and paints does.
    std::atomic<bool> stop{false};
    std::thread guiLoop([&stop] {
        while (!stop) g_main_context_iteration(nullptr, FALSE);
    });
    constexpr int kScans = 300;
    std::vector<long> slow;
    for (int i = 0; i < kScans; ++i) {
        const auto start = std::chrono::steady_clock::now();
        const std::size_t found = desktop->scanner->Scan(ElementScanMode::ForegroundWindow).elements.size();
        const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
        EXPECT_EQ(found, 3u);
        if (took > 1200ms) slow.push_back(static_cast<long>(took.count()));
    }
    stop = true;
    guiLoop.join();
    // A scan robbed of its answers waits for the call's time-out of 1.5 s.
    EXPECT_TRUE(slow.empty()) << slow.size() << " of " << kScans << " scans took over 1.2 s, the slowest "
                              << *std::max_element(slow.begin(), slow.end()) << " ms";
}

// Without a session bus a scan finds nothing, at once, and the process
// goes on; the area is still the monitor's.
TEST_F(AtspiScannerTest, WithoutASessionBusAScanFindsNothing) {
    std::unique_ptr<ChildProcess> zenity = StartFocusedQuestion("Bez szyny");
    ASSERT_EQ(ScanFor(ElementScanMode::ForegroundWindow, 3).elements.size(), 3u) << "the dialog has no elements";
    const auto start = std::chrono::steady_clock::now();
    ChildProcess scan({ZIRVEL_SCAN_ONCE},
                      {"DISPLAY=" + desktop->server.Name(),
                       "DBUS_SESSION_BUS_ADDRESS=unix:path=" + (folder_ / "no-bus").string()},
                      folder_ / "scan.txt");
    EXPECT_EQ(scan.WaitForExit(5000ms), std::optional<int>(0));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 3000ms);
    std::ifstream output(folder_ / "scan.txt");
    std::string line;
    std::getline(output, line);
    EXPECT_EQ(line, "0 0 0 1280 1024");
}

class QtWindowScanTest : public AtspiScannerTest {
protected:
    void SetUp() override {
        AtspiScannerTest::SetUp();
        // Started after the switch, without Qt's own variable: its tree shows
        // only because the accessibility bus is switched on.
        ASSERT_TRUE(desktop->switchedOn);
        window_ = Start({ZIRVEL_HINT_WINDOW, "--log", (folder_ / "log.txt").string(), "--rows", std::to_string(Rows())});
        id_ = WaitForWindow(layout::kTitle);
        ASSERT_NE(id_, 0u);
        ASSERT_TRUE(WaitUntil([this] { return Log().find("ready") != std::string::npos; }, 5000ms));
        geometry_ = desktop->user->WindowGeometry(id_);
    }

    virtual int Rows() const { return layout::kListRows; }

    std::string Log() {
        std::ifstream file(folder_ / "log.txt");
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    // Where the window says its list rows in view are.
    std::vector<ScreenRect> RowsInView() {
        std::vector<ScreenRect> rows;
        std::istringstream lines(Log());
        std::string word;
        int number = 0, x = 0, y = 0, width = 0, height = 0;
        while (lines >> word) {
            if (word == "row" && lines >> number >> x >> y >> width >> height) rows.push_back({x, y, x + width, y + height});
        }
        return rows;
    }

    std::unique_ptr<ChildProcess> window_;
    Window id_ = 0;
    XConnection::Geometry geometry_;
};

TEST_F(QtWindowScanTest, NumbersTheClickableWidgetsInTreeOrderAtTheirPlaces) {
    Focus(id_);
    const ElementScanResult result = ScanFor(ElementScanMode::ForegroundWindow, 8);
    const std::vector<ScreenRect> rows = RowsInView();
    ASSERT_EQ(rows.size(), 3u);
    // Not numbered: the disabled button, the 7 x 30 one, the focusable pane,
    // the page itself. The list is focusable, so it is numbered before its rows.
    const std::vector<ScreenRect> expected = {
        Inside(geometry_, layout::kNormalButton), Inside(geometry_, layout::kList), rows[0], rows[1], rows[2],
        Inside(geometry_, layout::kEdit), Inside(geometry_, layout::kSlowButton),
        Inside(geometry_, {layout::kPage.x + layout::kPageButton.x, layout::kPage.y + layout::kPageButton.y,
                           layout::kPageButton.width, layout::kPageButton.height})};
    EXPECT_EQ(Describe(result.elements), Describe(expected));
    EXPECT_EQ(result.area, (ScreenRect{0, 0, kScreenWidth, kScreenHeight}));
}

TEST_F(QtWindowScanTest, PageModeTakesOnlyTheWebDocumentAndItsArea) {
    Focus(id_);
    const ElementScanResult result = ScanFor(ElementScanMode::BrowserPage, 1);
    const ScreenRect page = Inside(geometry_, layout::kPage);
    EXPECT_EQ(result.area, page);
    const std::vector<ScreenRect> expected = {
        Inside(geometry_, {layout::kPage.x + layout::kPageButton.x, layout::kPage.y + layout::kPageButton.y,
                           layout::kPageButton.width, layout::kPageButton.height})};
    EXPECT_EQ(Describe(result.elements), Describe(expected));
}

// A window of the scanning process is one of the engine's own: nothing of
// it is numbered, only the panel (a dock window) when there is one.
TEST_F(QtWindowScanTest, OverAnOwnWindowOnlyThePanelIsNumbered) {
    TestApplication own(desktop->server.Name(), 0, 0, 300, 200);
    Display* display = desktop->user->Get();
    const long pid = static_cast<long>(getpid());
    XChangeProperty(display, own.Id(), XInternAtom(display, "_NET_WM_PID", False), XA_CARDINAL, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&pid), 1);
    XSync(display, False);
    Focus(own.Id());
    ElementScanResult result = desktop->scanner->Scan(ElementScanMode::ForegroundWindow);
    EXPECT_TRUE(result.elements.empty()) << Describe(result.elements);

    const Atom dock = XInternAtom(display, "_NET_WM_WINDOW_TYPE_DOCK", False);
    XChangeProperty(display, id_, XInternAtom(display, "_NET_WM_WINDOW_TYPE", False), XA_ATOM, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&dock), 1);
    XSync(display, False);
    // The window registers with the accessibility bus a little after it shows.
    result = ScanFor(ElementScanMode::ForegroundWindow, 8);
    ASSERT_EQ(result.elements.size(), 8u) << Describe(result.elements);
    EXPECT_EQ(result.elements.front(), Inside(geometry_, layout::kNormalButton));
    // Page mode never looks at the panel.
    EXPECT_TRUE(desktop->scanner->Scan(ElementScanMode::BrowserPage).elements.empty());
}

// A long list: the rows out of view (not shown) are passed over, the ones
// in view numbered in order, between the list and the edit.
class LongListScanTest : public QtWindowScanTest {
protected:
    int Rows() const override { return 60; }
};

TEST_F(LongListScanTest, OnlyTheRowsInViewAreNumbered) {
    Focus(id_);
    const ElementScanResult result = ScanFor(ElementScanMode::ForegroundWindow, 8);
    const std::vector<ScreenRect> rows = RowsInView();
    ASSERT_GE(rows.size(), 5u);
    ASSERT_LT(rows.size(), 60u);
    std::vector<ScreenRect> expected = {Inside(geometry_, layout::kNormalButton), Inside(geometry_, layout::kList)};
    expected.insert(expected.end(), rows.begin(), rows.end());
    expected.push_back(Inside(geometry_, layout::kEdit));
    expected.push_back(Inside(geometry_, layout::kSlowButton));
    expected.push_back(Inside(geometry_, {layout::kPage.x + layout::kPageButton.x, layout::kPage.y + layout::kPageButton.y,
                                          layout::kPageButton.width, layout::kPageButton.height}));
    EXPECT_EQ(Describe(result.elements), Describe(expected));
}

Window RootWindowProperty(const char* name) {
    Display* display = desktop->user->Get();
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long remaining = 0;
    unsigned char* data = nullptr;
    Window value = 0;
    if (XGetWindowProperty(display, desktop->user->Root(), XInternAtom(display, name, False), 0, 1, False, XA_WINDOW,
                           &type, &format, &count, &remaining, &data) == Success &&
        data) {
        if (count == 1) value = *reinterpret_cast<Window*>(data);
        XFree(data);
    }
    return value;
}

// With a window manager the foreground window is its active window; once
// it is gone, what it left on the root window no longer counts and the
// input focus decides.
TEST_F(QtWindowScanTest, TheWindowManagersActiveWindowCountsOnlyWhileItRuns) {
    std::unique_ptr<ChildProcess> manager = Start({"openbox", "--sm-disable"});
    ASSERT_TRUE(WaitUntil([] { return RootWindowProperty("_NET_SUPPORTING_WM_CHECK") != 0; }, 5000ms));
    std::unique_ptr<ChildProcess> zenity = Start({"zenity", "--question", "--title=Aktywne", "--text=Czy?"});
    const Window dialog = WaitForWindow("Aktywne");
    ASSERT_NE(dialog, 0u);
    ASSERT_TRUE(WaitUntil([&] { return RootWindowProperty("_NET_ACTIVE_WINDOW") == dialog; }, 5000ms));
    ElementScanResult result = ScanFor(ElementScanMode::ForegroundWindow, 3);
    ASSERT_EQ(result.elements.size(), 3u) << Describe(result.elements);
    const ScreenRect framed = Rect(desktop->user->WindowGeometry(dialog));
    for (const ScreenRect& element : result.elements) EXPECT_TRUE(Contains(framed, element)) << Describe({element});

    // Killed, the window manager leaves its properties behind.
    kill(manager->Pid(), SIGKILL);
    ASSERT_TRUE(manager->WaitForExit(5000ms));
    ASSERT_EQ(RootWindowProperty("_NET_ACTIVE_WINDOW"), dialog);
    ASSERT_TRUE(WaitUntil([this] { return desktop->user->IsMapped(id_); }, 3000ms));
    Focus(id_);
    // The window was the manager's child: its toolkit reports the position
    // it has on the root once it has noticed the change.
    const ScreenRect button = Inside(desktop->user->WindowGeometry(id_), layout::kNormalButton);
    WaitUntil(
        [&] {
            result = desktop->scanner->Scan(ElementScanMode::ForegroundWindow);
            return result.elements.size() == 8u && result.elements.front() == button;
        },
        8000ms, 100ms);
    ASSERT_EQ(result.elements.size(), 8u) << Describe(result.elements);
    EXPECT_EQ(result.elements.front(), button);
}

}  // namespace
}  // namespace zirvel_test
