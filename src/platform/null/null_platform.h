// A headless platform: records every request of the engine with the time it
// came, and lets a test play the user (hot key, raw motion, clicks) and the
// passage of time. With the virtual clock, time moves only when the test
// advances it, so timing rules can be checked to the millisecond; with the
// real clock it runs in real time for tests with tolerances and for running
// the engine in a process without a display.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/platform.h"

namespace zirvel {

struct InjectedInput {
    enum class Kind { Key, MouseButton };
    std::uint64_t time = 0;
    Kind kind = Kind::Key;
    std::uint16_t vk = 0;
    bool extended = false;
    std::uint32_t button = 0;  // the physical button sent
    bool press = false;
};

struct OpenedTarget {
    std::uint64_t time = 0;
    std::u16string target;
};

struct CursorMove {
    std::uint64_t time = 0;
    ScreenPoint point;
};

struct SurfaceState {
    ScreenRect rect;
    bool visible = false;
    int presentCount = 0;
    int showCount = 0;
    Picture lastPicture;
};

class NullPlatform final : public Platform {
public:
    enum class Clock { Virtual, Real };
    explicit NullPlatform(Clock clock = Clock::Virtual);
    ~NullPlatform() override;

    // --- Playing the user and the system (test thread = GUI thread) ---------
    // Runs the GUI thread's loop for `milliseconds`: worker threads wake at
    // their times, the wheel timer ticks every period and posted messages are
    // delivered, in time order.
    void Advance(std::uint64_t milliseconds);
    // Delivers the messages posted so far (and those they post in turn).
    void DispatchPosted();
    void PressHotKey();
    // The step key of switch scanning: reported only while it is registered.
    void PressStepKey();
    // Physical mouse motion: raw motion while captured, else the pointer moves.
    void MoveMouse(std::int32_t dx, std::int32_t dy);
    // A physical left press: reported while captured, else only recorded.
    void PressLeftButton();
    void SetMonitors(std::vector<ScreenRect> monitors);  // the first is primary
    // The DPI of every monitor that has no DPI of its own (96 unless set).
    void SetDpi(std::uint32_t dpi);
    // The DPI of the monitor `monitor` (exactly as given to SetMonitors).
    void SetMonitorDpi(ScreenRect monitor, std::uint32_t dpi);
    void SetCursor(ScreenPoint point);
    void SetForeground(WindowHandle window);  // also makes it a live window
    void CloseWindow(WindowHandle window);
    void SetHotKeyTaken(bool taken);
    // Another program holds every step key from now on (or lets go).
    void SetStepKeyTaken(bool taken);
    void SetButtonsSwapped(bool swapped);
    // The window's program runs with higher privileges than Zirvel.
    void SetOutOfReach(WindowHandle window);
    // What ProgramOf says of the window (empty unless set).
    void SetProgram(WindowHandle window, ProgramIdentity program);
    // How many times the engine asked ProgramOf.
    int ProgramLookups() const;
    // The system refuses injected input from now on (or takes it again).
    void SetInputRefused(bool refused);

    // --- What the engine asked for --------------------------------------------
    std::vector<InjectedInput> Injected() const;
    std::vector<OpenedTarget> Opened() const;
    std::vector<CursorMove> CursorMoves() const;
    std::vector<std::u16string> Warnings() const;
    std::vector<std::u16string> TrayNotices() const;  // "title|text"
    int StatusRepaints() const { return statusRepaints_.load(); }
    std::vector<std::u16string> TrayIconTips() const;  // one per tray icon added
    std::vector<WindowHandle> ForegroundRequests() const;
    SurfaceState SurfaceAt(Surface surface) const;
    std::optional<KeyCode> RegisteredHotKey() const;
    std::optional<KeyCode> RegisteredStepKey() const;
    int HotKeyRegistrations() const;
    bool PointerCaptured() const;
    std::optional<ScreenPoint> PinnedAt() const;
    bool WheelTimerRunning() const;
    // When the scan's one-shot timer falls due, if one is pending.
    std::optional<std::uint64_t> ScanTimerDue() const;
    std::uint32_t WheelTimerPeriod() const;
    int WheelTakeFocusRequests() const;
    std::uint64_t Now() const;
    std::size_t DetachedJobsStarted() const;

    // --- Platform --------------------------------------------------------------
    void SetEventSink(PlatformEvents* events) override;
    void Post(EngineMessage message) override;
    std::uint64_t TickCount() override;
    void Sleep(std::uint32_t milliseconds) override;
    void RunDetached(std::function<void()> job) override;
    void StartWheelTimer(std::uint32_t periodMilliseconds) override;
    void StopWheelTimer() override;
    void StartScanTimer(std::uint32_t delayMilliseconds) override;
    void StopScanTimer() override;
    bool RegisterHotKey(const KeyCode& key) override;
    void UnregisterHotKey() override;
    bool RegisterStepKey(const KeyCode& key) override;
    void UnregisterStepKey() override;
    void BeginPointerCapture(ScreenPoint pinned) override;
    void EndPointerCapture() override;
    ScreenPoint CursorPosition() override;
    void SetCursorPosition(ScreenPoint point) override;
    WindowHandle ForegroundWindow() override;
    bool IsWindow(WindowHandle window) override;
    void GiveForeground(WindowHandle window) override;
    void TakeForegroundForWheel(WindowHandle current) override;
    bool OutOfReach(WindowHandle window) override;
    ProgramIdentity ProgramOf(WindowHandle window) override;
    ScreenRect MonitorRect(ScreenPoint point, bool nearest) override;
    ScreenRect ForegroundMonitorRect() override;
    ScreenPoint PrimaryScreenSize() override;
    std::uint32_t MonitorDpi(ScreenPoint point) override;
    void PlaceSurface(Surface surface, ScreenRect rect) override;
    void ShowSurface(Surface surface) override;
    void HideSurface(Surface surface) override;
    void PresentPicture(Surface surface, ScreenPoint position, const Picture& picture) override;
    ScreenRect SurfaceRect(Surface surface) override;
    bool InjectKey(std::uint16_t vk, bool extended, bool press) override;
    bool InjectMouseButton(std::uint32_t button, bool press) override;
    bool MouseButtonsSwapped() override;
    void OpenTarget(const std::u16string& target) override;
    void ShowWarning(const std::u16string& text) override;
    void AddTrayIcon(const std::u16string& tip) override;
    void ShowTrayNotice(const std::u16string& title, const std::u16string& text, bool warning) override;
    void StatusChanged() override;

private:
    std::uint64_t NowLocked() const;
    // Virtual clock: waits (bounded) until every worker sleeps or has ended.
    void WaitForWorkersToSettle(std::unique_lock<std::mutex>& lock);
    void DeliverTimerTicksUpTo(std::uint64_t time);

    const Clock clock_;
    const std::chrono::steady_clock::time_point realStart_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    PlatformEvents* events_ = nullptr;

    std::uint64_t virtualNow_ = 0;
    std::multimap<std::uint64_t, int> sleepers_;  // wake time -> sleeper id
    int nextSleeperId_ = 0;
    int runningWorkers_ = 0;  // started or woken, not yet asleep or done
    int liveWorkers_ = 0;
    bool shuttingDown_ = false;
    std::size_t jobsStarted_ = 0;

    std::deque<EngineMessage> posted_;
    bool timerRunning_ = false;
    std::uint32_t timerPeriod_ = 0;
    std::uint64_t nextTimerTick_ = 0;
    std::optional<std::uint64_t> scanTimerDue_;

    std::optional<KeyCode> hotKey_;
    std::optional<KeyCode> stepKey_;
    bool stepKeyTaken_ = false;
    int hotKeyRegistrations_ = 0;
    bool hotKeyTaken_ = false;
    bool captured_ = false;
    std::optional<ScreenPoint> pinned_;
    ScreenPoint cursor_;
    std::vector<CursorMove> cursorMoves_;
    WindowHandle foreground_ = 0;
    std::vector<WindowHandle> liveWindows_;
    std::vector<WindowHandle> foregroundRequests_;
    int takeFocusRequests_ = 0;
    std::vector<ScreenRect> monitors_{ScreenRect{0, 0, 1920, 1080}};
    std::uint32_t dpi_ = 96;
    std::vector<std::pair<ScreenRect, std::uint32_t>> monitorDpis_;
    std::map<Surface, SurfaceState> surfaces_;
    std::map<WindowHandle, ProgramIdentity> programs_;
    int programLookups_ = 0;
    bool buttonsSwapped_ = false;
    std::vector<InjectedInput> injected_;  // refused input is not recorded
    std::vector<WindowHandle> outOfReach_;
    bool inputRefused_ = false;
    std::vector<OpenedTarget> opened_;
    std::vector<std::u16string> warnings_;
    std::vector<std::u16string> trayNotices_;
    std::vector<std::u16string> trayTips_;
    std::atomic<int> statusRepaints_{0};
};

}  // namespace zirvel
