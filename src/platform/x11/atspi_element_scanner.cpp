#include "platform/x11/atspi_element_scanner.h"

#include <unistd.h>

#include <chrono>
#include <mutex>
#include <optional>
#include <vector>

#include "engine/monitor_choice.h"
#include "navigation/element_filter.h"
#include "platform/x11/atspi_connection.h"
#include "platform/x11/atspi_tree.h"
#include "platform/x11/foreground_window.h"
#include "platform/x11/x11_monitors.h"

#include <X11/Xlib.h>

namespace zirvel::x11 {
namespace {

using namespace std::chrono_literals;

// A scan that takes longer ends with what it has: one application that
// stops answering (each call gives up after kAccessibilityCallTimeoutMs)
// must not keep the hints away for long.
constexpr auto kScanTime = 3000ms;
// Nodes looked at per scan: far more than any window shows, yet a bound on
// a huge page.
constexpr int kScanNodes = 6000;

const std::vector<AtspiRole> kWebDocumentRoles = {ATSPI_ROLE_DOCUMENT_WEB};
const std::vector<AtspiRole> kDocumentRoles = {ATSPI_ROLE_DOCUMENT_FRAME, ATSPI_ROLE_DOCUMENT_WEB,
                                               ATSPI_ROLE_DOCUMENT_TEXT, ATSPI_ROLE_DOCUMENT_EMAIL,
                                               ATSPI_ROLE_DOCUMENT_PRESENTATION, ATSPI_ROLE_DOCUMENT_SPREADSHEET};

// The window (or panel) of an X top-level window on the accessibility bus.
AccessibleRef AccessibleWindow(const TopLevelWindow& window, ScanBudget& budget) {
    AccessibleRef application = FindApplication(window.pid, budget);
    return application ? FindTopLevel(application.get(), window.rect, budget) : AccessibleRef{};
}

// libatspi's state is the process's: scans never overlap (the engine starts
// one at a time), and this lock keeps it so for any other caller.
std::mutex scanLock;

ScreenPoint Centre(const ScreenRect& rect) { return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2}; }

}  // namespace

AtspiElementScanner::AtspiElementScanner() = default;

AtspiElementScanner::~AtspiElementScanner() {
    if (display_) XCloseDisplay(display_);
}

ElementScanResult AtspiElementScanner::Scan(ElementScanMode mode) {
    std::lock_guard lock(scanLock);
    ElementScanResult result;
    if (!windows_) windows_ = std::make_unique<ForegroundWindowReader>();
    if (!display_) display_ = XOpenDisplay(nullptr);
    if (!windows_->Connected() || !display_) return result;

    const std::optional<TopLevelWindow> foreground = windows_->Foreground();
    const std::vector<ScreenRect> monitors = ReadMonitors(display_);
    result.area = foreground ? ChooseMonitor(monitors, Centre(foreground->rect), true) : monitors.front();

    if (!PrepareAccessibilityConnection()) return result;
    ScanBudget budget(kScanTime, kScanNodes);
    // A window of this process is one of the engine's own.
    AccessibleRef window;
    if (foreground && foreground->pid != getpid()) window = AccessibleWindow(*foreground, budget);

    std::vector<AccessibleRef> roots;
    if (mode == ElementScanMode::ForegroundWindow) {
        if (window) roots.push_back(std::move(window));
        const std::optional<TopLevelWindow> dock = windows_->Dock();
        if (dock && dock->pid != getpid()) {
            if (AccessibleRef panel = AccessibleWindow(*dock, budget)) roots.push_back(std::move(panel));
        }
    } else if (window) {
        // A browser's page is its web document; else the first document;
        // else the whole window.
        if (AccessibleRef page = FindFirstDescendant(window.get(), budget, kWebDocumentRoles)) {
            result.area = IntersectRects(result.area, ReadScreenRect(page.get()));
            roots.push_back(std::move(page));
        } else if (AccessibleRef document = FindFirstDescendant(window.get(), budget, kDocumentRoles)) {
            roots.push_back(std::move(document));
        } else {
            roots.push_back(std::move(window));
        }
    }

    for (const AccessibleRef& root : roots) {
        if (ElementListFull(result.elements)) break;
        VisitDescendants(root.get(), budget, [&](AtspiAccessible* node, const NodeFacts& facts) {
            AcceptElement(ReadElement(node, facts), mode, result.area, result.elements);
            return ElementListFull(result.elements) ? Visit::Stop : Visit::Continue;
        });
    }
    return result;
}

}  // namespace zirvel::x11
