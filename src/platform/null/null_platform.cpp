#include "platform/null/null_platform.h"

#include "engine/monitor_choice.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <stdexcept>
#include <thread>

namespace zirvel {
namespace {

// Worker threads get this long (in real time) to reach their next sleep: a
// bound against a worker that hangs, far beyond what a machine busy with
// other builds and a Wine prefix being made takes (10 s was not).
constexpr auto kSettleTimeout = std::chrono::seconds(60);

}  // namespace

NullPlatform::NullPlatform(Clock clock) : clock_(clock), realStart_(std::chrono::steady_clock::now()) {
    surfaces_[Surface::Wheel] = {};
    surfaces_[Surface::Grid] = {};
}

NullPlatform::~NullPlatform() {
    std::unique_lock lock(mutex_);
    shuttingDown_ = true;
    changed_.notify_all();
    // Sleeps now return at once, so every worker runs to its end quickly.
    changed_.wait_for(lock, kSettleTimeout, [this] { return liveWorkers_ == 0; });
}

// --- Time and threads ---------------------------------------------------------

std::uint64_t NullPlatform::NowLocked() const {
    if (clock_ == Clock::Virtual) return virtualNow_;
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - realStart_).count());
}

std::uint64_t NullPlatform::TickCount() {
    std::lock_guard lock(mutex_);
    return NowLocked();
}

std::uint64_t NullPlatform::Now() const {
    std::lock_guard lock(mutex_);
    return NowLocked();
}

void NullPlatform::Sleep(std::uint32_t milliseconds) {
    if (clock_ == Clock::Real) {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
        return;
    }
    std::unique_lock lock(mutex_);
    if (shuttingDown_ || milliseconds == 0) return;
    const std::uint64_t wake = virtualNow_ + milliseconds;
    sleepers_.emplace(wake, nextSleeperId_++);
    --runningWorkers_;  // Advance counts it as running again when it wakes it
    changed_.notify_all();
    changed_.wait(lock, [&] { return shuttingDown_ || virtualNow_ >= wake; });
}

void NullPlatform::RunDetached(std::function<void()> job) {
    {
        std::lock_guard lock(mutex_);
        ++runningWorkers_;
        ++liveWorkers_;
        ++jobsStarted_;
    }
    std::thread([this, job = std::move(job)] {
        job();
        std::lock_guard lock(mutex_);
        --runningWorkers_;
        --liveWorkers_;
        changed_.notify_all();
    }).detach();
}

void NullPlatform::WaitForWorkersToSettle(std::unique_lock<std::mutex>& lock) {
    if (clock_ == Clock::Real) return;
    if (!changed_.wait_for(lock, kSettleTimeout, [this] { return runningWorkers_ == 0; })) {
        throw std::runtime_error("null platform: a worker thread neither slept nor ended");
    }
}

void NullPlatform::DispatchPosted() {
    std::unique_lock lock(mutex_);
    for (;;) {
        WaitForWorkersToSettle(lock);
        if (posted_.empty()) return;
        EngineMessage message = std::move(posted_.front());
        posted_.pop_front();
        PlatformEvents* events = events_;
        lock.unlock();
        if (events) events->OnMessage(std::move(message));
        lock.lock();
    }
}

void NullPlatform::Advance(std::uint64_t milliseconds) {
    if (clock_ == Clock::Real) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
        while (std::chrono::steady_clock::now() < deadline) {
            DispatchPosted();
            std::unique_lock lock(mutex_);
            const bool tick = timerRunning_ && NowLocked() >= nextTimerTick_;
            if (tick) nextTimerTick_ = NowLocked() + timerPeriod_;
            const bool scanDue = scanTimerDue_ && NowLocked() >= *scanTimerDue_;
            if (scanDue) scanTimerDue_.reset();
            PlatformEvents* events = events_;
            lock.unlock();
            if (scanDue && events) events->OnScanTimer();
            if (tick && events) events->OnWheelTimer();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        DispatchPosted();
        return;
    }

    std::unique_lock lock(mutex_);
    const std::uint64_t target = virtualNow_ + milliseconds;
    for (;;) {
        WaitForWorkersToSettle(lock);
        if (!posted_.empty()) {
            lock.unlock();
            DispatchPosted();
            lock.lock();
            continue;
        }
        std::uint64_t next = std::numeric_limits<std::uint64_t>::max();
        if (!sleepers_.empty()) next = sleepers_.begin()->first;
        if (timerRunning_) next = std::min(next, nextTimerTick_);
        if (scanTimerDue_) next = std::min(next, *scanTimerDue_);
        if (next > target) break;

        virtualNow_ = std::max(virtualNow_, next);
        int woken = 0;
        while (!sleepers_.empty() && sleepers_.begin()->first <= virtualNow_) {
            sleepers_.erase(sleepers_.begin());
            ++woken;
        }
        if (woken > 0) {
            runningWorkers_ += woken;
            changed_.notify_all();
            continue;  // let them run before the timer sees the new time
        }
        if (scanTimerDue_ && *scanTimerDue_ <= virtualNow_) {
            scanTimerDue_.reset();
            PlatformEvents* events = events_;
            lock.unlock();
            if (events) events->OnScanTimer();
            lock.lock();
            continue;  // the same moment's wheel tick comes after
        }
        if (timerRunning_ && nextTimerTick_ <= virtualNow_) {
            nextTimerTick_ += timerPeriod_;
            PlatformEvents* events = events_;
            lock.unlock();
            if (events) events->OnWheelTimer();
            lock.lock();
        }
    }
    virtualNow_ = target;
}

void NullPlatform::Post(EngineMessage message) {
    std::lock_guard lock(mutex_);
    posted_.push_back(std::move(message));
    changed_.notify_all();
}

void NullPlatform::SetEventSink(PlatformEvents* events) {
    std::lock_guard lock(mutex_);
    events_ = events;
}

void NullPlatform::StartWheelTimer(std::uint32_t periodMilliseconds) {
    std::lock_guard lock(mutex_);
    timerRunning_ = true;
    timerPeriod_ = std::max<std::uint32_t>(periodMilliseconds, 1);
    nextTimerTick_ = NowLocked() + timerPeriod_;
}

void NullPlatform::StartScanTimer(std::uint32_t delayMilliseconds) {
    std::lock_guard lock(mutex_);
    scanTimerDue_ = NowLocked() + delayMilliseconds;
}

void NullPlatform::StopScanTimer() {
    std::lock_guard lock(mutex_);
    scanTimerDue_.reset();
}

std::optional<std::uint64_t> NullPlatform::ScanTimerDue() const {
    std::lock_guard lock(mutex_);
    return scanTimerDue_;
}

void NullPlatform::StopWheelTimer() {
    std::lock_guard lock(mutex_);
    timerRunning_ = false;
}

// --- Playing the user ------------------------------------------------------------

void NullPlatform::PressHotKey() {
    std::unique_lock lock(mutex_);
    PlatformEvents* events = hotKey_ ? events_ : nullptr;
    lock.unlock();
    if (events) events->OnHotKey();
}

void NullPlatform::PressStepKey() {
    std::unique_lock lock(mutex_);
    PlatformEvents* events = stepKey_ ? events_ : nullptr;
    lock.unlock();
    if (events) events->OnStepKey();
}

void NullPlatform::MoveMouse(std::int32_t dx, std::int32_t dy) {
    std::unique_lock lock(mutex_);
    if (!captured_) {
        cursor_.x += dx;
        cursor_.y += dy;
        return;
    }
    PlatformEvents* events = events_;
    lock.unlock();
    if (events) events->OnRawMotion(dx, dy);
}

void NullPlatform::PressLeftButton() {
    std::unique_lock lock(mutex_);
    PlatformEvents* events = captured_ ? events_ : nullptr;
    lock.unlock();
    if (events) events->OnCapturedLeftButtonDown();
}

void NullPlatform::SetMonitors(std::vector<ScreenRect> monitors) {
    std::lock_guard lock(mutex_);
    monitors_ = std::move(monitors);
}

void NullPlatform::SetDpi(std::uint32_t dpi) {
    std::lock_guard lock(mutex_);
    dpi_ = dpi;
}

void NullPlatform::SetMonitorDpi(ScreenRect monitor, std::uint32_t dpi) {
    std::lock_guard lock(mutex_);
    monitorDpis_.emplace_back(monitor, dpi);
}

void NullPlatform::SetCursor(ScreenPoint point) {
    std::lock_guard lock(mutex_);
    cursor_ = point;
}

void NullPlatform::SetForeground(WindowHandle window) {
    std::lock_guard lock(mutex_);
    foreground_ = window;
    if (window != 0 && std::find(liveWindows_.begin(), liveWindows_.end(), window) == liveWindows_.end()) {
        liveWindows_.push_back(window);
    }
}

void NullPlatform::CloseWindow(WindowHandle window) {
    std::lock_guard lock(mutex_);
    liveWindows_.erase(std::remove(liveWindows_.begin(), liveWindows_.end(), window), liveWindows_.end());
    if (foreground_ == window) foreground_ = 0;
}

void NullPlatform::SetHotKeyTaken(bool taken) {
    std::lock_guard lock(mutex_);
    hotKeyTaken_ = taken;
}

void NullPlatform::SetStepKeyTaken(bool taken) {
    std::lock_guard lock(mutex_);
    stepKeyTaken_ = taken;
}

void NullPlatform::SetButtonsSwapped(bool swapped) {
    std::lock_guard lock(mutex_);
    buttonsSwapped_ = swapped;
}

// --- Records ---------------------------------------------------------------------

std::vector<InjectedInput> NullPlatform::Injected() const {
    std::lock_guard lock(mutex_);
    return injected_;
}

std::vector<OpenedTarget> NullPlatform::Opened() const {
    std::lock_guard lock(mutex_);
    return opened_;
}

std::vector<CursorMove> NullPlatform::CursorMoves() const {
    std::lock_guard lock(mutex_);
    return cursorMoves_;
}

std::vector<std::u16string> NullPlatform::Warnings() const {
    std::lock_guard lock(mutex_);
    return warnings_;
}

std::vector<WindowHandle> NullPlatform::ForegroundRequests() const {
    std::lock_guard lock(mutex_);
    return foregroundRequests_;
}

SurfaceState NullPlatform::SurfaceAt(Surface surface) const {
    std::lock_guard lock(mutex_);
    return surfaces_.at(surface);
}

std::optional<KeyCode> NullPlatform::RegisteredHotKey() const {
    std::lock_guard lock(mutex_);
    return hotKey_;
}

std::optional<KeyCode> NullPlatform::RegisteredStepKey() const {
    std::lock_guard lock(mutex_);
    return stepKey_;
}

int NullPlatform::HotKeyRegistrations() const {
    std::lock_guard lock(mutex_);
    return hotKeyRegistrations_;
}

bool NullPlatform::PointerCaptured() const {
    std::lock_guard lock(mutex_);
    return captured_;
}

std::optional<ScreenPoint> NullPlatform::PinnedAt() const {
    std::lock_guard lock(mutex_);
    return pinned_;
}

bool NullPlatform::WheelTimerRunning() const {
    std::lock_guard lock(mutex_);
    return timerRunning_;
}

std::uint32_t NullPlatform::WheelTimerPeriod() const {
    std::lock_guard lock(mutex_);
    return timerPeriod_;
}

int NullPlatform::WheelTakeFocusRequests() const {
    std::lock_guard lock(mutex_);
    return takeFocusRequests_;
}

std::size_t NullPlatform::DetachedJobsStarted() const {
    std::lock_guard lock(mutex_);
    return jobsStarted_;
}

// --- Platform requests --------------------------------------------------------------

bool NullPlatform::RegisterHotKey(const KeyCode& key) {
    std::lock_guard lock(mutex_);
    if (hotKeyTaken_) return false;
    hotKey_ = key;
    ++hotKeyRegistrations_;
    return true;
}

void NullPlatform::UnregisterHotKey() {
    std::lock_guard lock(mutex_);
    hotKey_.reset();
}

bool NullPlatform::RegisterStepKey(const KeyCode& key) {
    std::lock_guard lock(mutex_);
    if (stepKeyTaken_) return false;
    stepKey_ = key;
    return true;
}

void NullPlatform::UnregisterStepKey() {
    std::lock_guard lock(mutex_);
    stepKey_.reset();
}

void NullPlatform::BeginPointerCapture(ScreenPoint pinned) {
    std::lock_guard lock(mutex_);
    captured_ = true;
    pinned_ = pinned;
}

void NullPlatform::EndPointerCapture() {
    std::lock_guard lock(mutex_);
    captured_ = false;
    pinned_.reset();
}

ScreenPoint NullPlatform::CursorPosition() {
    std::lock_guard lock(mutex_);
    return cursor_;
}

void NullPlatform::SetCursorPosition(ScreenPoint point) {
    std::lock_guard lock(mutex_);
    cursor_ = point;
    cursorMoves_.push_back({NowLocked(), point});
}

WindowHandle NullPlatform::ForegroundWindow() {
    std::lock_guard lock(mutex_);
    return foreground_;
}

bool NullPlatform::IsWindow(WindowHandle window) {
    std::lock_guard lock(mutex_);
    return std::find(liveWindows_.begin(), liveWindows_.end(), window) != liveWindows_.end();
}

void NullPlatform::GiveForeground(WindowHandle window) {
    std::lock_guard lock(mutex_);
    foregroundRequests_.push_back(window);
    foreground_ = window;
}

void NullPlatform::TakeForegroundForWheel(WindowHandle) {
    std::lock_guard lock(mutex_);
    ++takeFocusRequests_;
}

ScreenRect NullPlatform::MonitorRect(ScreenPoint point, bool nearest) {
    std::lock_guard lock(mutex_);
    return ChooseMonitor(monitors_, point, nearest);
}

ScreenRect NullPlatform::ForegroundMonitorRect() {
    std::lock_guard lock(mutex_);
    return monitors_.front();
}

ScreenPoint NullPlatform::PrimaryScreenSize() {
    std::lock_guard lock(mutex_);
    return {monitors_.front().Width(), monitors_.front().Height()};
}

std::uint32_t NullPlatform::MonitorDpi(ScreenPoint point) {
    std::lock_guard lock(mutex_);
    const ScreenRect monitor = ChooseMonitor(monitors_, point, true);
    for (const auto& [rect, dpi] : monitorDpis_) {
        if (rect == monitor) return dpi;
    }
    return dpi_;
}

void NullPlatform::PlaceSurface(Surface surface, ScreenRect rect) {
    std::lock_guard lock(mutex_);
    surfaces_[surface].rect = rect;
}

void NullPlatform::ShowSurface(Surface surface) {
    std::lock_guard lock(mutex_);
    surfaces_[surface].visible = true;
    ++surfaces_[surface].showCount;
}

void NullPlatform::HideSurface(Surface surface) {
    std::lock_guard lock(mutex_);
    surfaces_[surface].visible = false;
}

void NullPlatform::PresentPicture(Surface surface, ScreenPoint position, const Picture& picture) {
    std::lock_guard lock(mutex_);
    SurfaceState& state = surfaces_[surface];
    state.rect = {position.x, position.y, position.x + picture.width, position.y + picture.height};
    state.lastPicture = picture;
    ++state.presentCount;
}

ScreenRect NullPlatform::SurfaceRect(Surface surface) {
    std::lock_guard lock(mutex_);
    return surfaces_[surface].rect;
}

void NullPlatform::SetOutOfReach(WindowHandle window) {
    std::lock_guard lock(mutex_);
    outOfReach_.push_back(window);
}

void NullPlatform::SetProgram(WindowHandle window, ProgramIdentity program) {
    std::lock_guard lock(mutex_);
    programs_[window] = std::move(program);
}

int NullPlatform::ProgramLookups() const {
    std::lock_guard lock(mutex_);
    return programLookups_;
}

ProgramIdentity NullPlatform::ProgramOf(WindowHandle window) {
    std::lock_guard lock(mutex_);
    ++programLookups_;
    const auto found = programs_.find(window);
    return window != 0 && found != programs_.end() ? found->second : ProgramIdentity{};
}

void NullPlatform::SetInputRefused(bool refused) {
    std::lock_guard lock(mutex_);
    inputRefused_ = refused;
}

bool NullPlatform::OutOfReach(WindowHandle window) {
    std::lock_guard lock(mutex_);
    return window != 0 && std::find(outOfReach_.begin(), outOfReach_.end(), window) != outOfReach_.end();
}

bool NullPlatform::InjectKey(std::uint16_t vk, bool extended, bool press) {
    std::lock_guard lock(mutex_);
    if (inputRefused_) return false;
    InjectedInput input;
    input.time = NowLocked();
    input.kind = InjectedInput::Kind::Key;
    input.vk = vk;
    input.extended = extended;
    input.press = press;
    injected_.push_back(input);
    return true;
}

bool NullPlatform::InjectMouseButton(std::uint32_t button, bool press) {
    std::lock_guard lock(mutex_);
    if (inputRefused_) return false;
    InjectedInput input;
    input.time = NowLocked();
    input.kind = InjectedInput::Kind::MouseButton;
    input.button = button;
    input.press = press;
    injected_.push_back(input);
    return true;
}

bool NullPlatform::MouseButtonsSwapped() {
    std::lock_guard lock(mutex_);
    return buttonsSwapped_;
}

void NullPlatform::OpenTarget(const std::u16string& target) {
    std::lock_guard lock(mutex_);
    opened_.push_back({NowLocked(), target});
}

void NullPlatform::ShowWarning(const std::u16string& text) {
    std::lock_guard lock(mutex_);
    warnings_.push_back(text);
}

void NullPlatform::AddTrayIcon(const std::u16string& tip) {
    std::lock_guard lock(mutex_);
    trayTips_.push_back(tip);
}

std::vector<std::u16string> NullPlatform::TrayIconTips() const {
    std::lock_guard lock(mutex_);
    return trayTips_;
}

void NullPlatform::ShowTrayNotice(const std::u16string& title, const std::u16string& text, bool) {
    std::lock_guard lock(mutex_);
    trayNotices_.push_back(title + u"|" + text);
}

void NullPlatform::StatusChanged() { ++statusRepaints_; }

std::vector<std::u16string> NullPlatform::TrayNotices() const {
    std::lock_guard lock(mutex_);
    return trayNotices_;
}

}  // namespace zirvel
