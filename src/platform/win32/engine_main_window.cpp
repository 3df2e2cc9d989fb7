// The engine's main window: its mailbox for the other threads' messages,
// the hot key, the tray icon and its menu, the hand-over of files and
// phrases from other processes, and the help page it shows from the tray.
#include <algorithm>
#include <memory>
#include <string>

#include "core/dpi_scale.h"
#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/engine_voice_target.h"
#include "engine/help_page.h"
#include "platform/win32/dpi_awareness.h"
#include "platform/win32/engine_window_protocol.h"
#include "platform/win32/win32_platform.h"

namespace zirvel::win32 {
namespace {

// The text of a WM_COPYDATA record: cbData / 2 UTF-16 units without the
// terminating NULs a sender may include.
std::u16string CopiedText(const COPYDATASTRUCT& data) {
    std::u16string text(static_cast<const char16_t*>(data.lpData), data.cbData / 2);
    while (!text.empty() && text.back() == u'\0') text.pop_back();
    return text;
}

// Tries to add a refused tray icon once a second for a minute.
constexpr UINT kTrayRetryPeriod = 1000;
constexpr int kTrayRetries = 60;
// At 96 DPI; scaled by the main window's DPI.
constexpr int kWindowWidth = 560;
constexpr int kWindowHeight = 570;
constexpr RECT kEditorButton{20, 480, 190, 512};
constexpr int kUiFontHeight = 15;
constexpr int kHelpFontHeight = 16;
constexpr int kHelpMarginX = 20;
constexpr int kHelpMarginTop = 16;

// Copies `text` into a fixed field of the tray record, cut to fit.
template <std::size_t N>
void CopyToField(wchar_t (&field)[N], const std::u16string& text) {
    const std::size_t length = std::min(text.size(), N - 1);
    std::copy_n(reinterpret_cast<const wchar_t*>(text.data()), length, field);
    field[length] = L'\0';
}

}  // namespace

LRESULT Win32Platform::OnMainWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE: {
            // Placed and given its font by ScaleMainWindow.
            CreateWindowExW(0, L"BUTTON", L"Edytor funkcji…", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, window,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(kOpenEditorCommand)), instance_, nullptr);
            return 0;
        }
        case WM_DPICHANGED:
            OnMainWindowDpiChanged(AcceptDpiChange(window, wParam, lParam));
            return 0;
        case WM_PAINT:
            PaintHelpPage(window);
            return 0;
        case WM_SIZE:
            if (wParam == SIZE_MINIMIZED) ShowWindow(window, SW_HIDE);  // minimising sends it to the tray
            return 0;
        case WM_CLOSE:
            ShowWindow(window, SW_HIDE);
            return 0;
        case WM_COMMAND:
            switch (LOWORD(wParam)) {
                case kShowWindowCommand:
                    ShowMainWindow();
                    break;
                case kQuitCommand:
                    DestroyWindow(window);
                    break;
                case kOpenEditorCommand:
                    editor_->Open();
                    break;
                default:
                    break;
            }
            return 0;
        case WM_HOTKEY:
            if (wParam == kHotKeyId && events_) events_->OnHotKey();
            if (wParam == kStepKeyId && events_) events_->OnStepKey();
            return 0;
        case WM_DESTROY:
            // The engine lets go of the system; ending the process is the host's business.
            DetachEngineFromSystem();
            RemoveTrayIcon();
            if (destroyed_) destroyed_();
            return 0;
        case WM_COPYDATA:
            return OnCopyData(*reinterpret_cast<const COPYDATASTRUCT*>(lParam));
        case kTrayCallbackMessage:
            if (lParam == WM_LBUTTONDBLCLK) ShowMainWindow();
            if (lParam == WM_RBUTTONUP) ShowTrayMenu();
            return 0;
        case WM_TIMER:
            if (wParam == kTrayRetryTimerId) PutTrayIcon();
            if (wParam == kScanTimerId) {
                KillTimer(window, kScanTimerId);  // one-shot
                if (events_) events_->OnScanTimer();
            }
            return 0;
        case WM_APP + static_cast<UINT>(EngineMessageKind::VoiceCommand):
        case WM_APP + static_cast<UINT>(EngineMessageKind::RunWheelFunction):
        case WM_APP + static_cast<UINT>(EngineMessageKind::RunGlobalFunction):
        case WM_APP + static_cast<UINT>(EngineMessageKind::InputRefused): {
            EngineMessage posted;
            posted.kind = static_cast<EngineMessageKind>(message - WM_APP);
            posted.first = static_cast<std::int64_t>(static_cast<INT_PTR>(wParam));
            posted.second = static_cast<std::int64_t>(lParam);
            Deliver(std::move(posted));
            return 0;
        }
        case WM_APP + static_cast<UINT>(EngineMessageKind::ElementScanResult): {
            EngineMessage posted;
            posted.kind = EngineMessageKind::ElementScanResult;
            posted.scanResult.reset(reinterpret_cast<ElementScanResult*>(lParam));
            Deliver(std::move(posted));
            return 0;
        }
        case WM_APP + static_cast<UINT>(EngineMessageKind::SkippedPhrases): {
            std::unique_ptr<std::u16string> text(reinterpret_cast<std::u16string*>(lParam));
            if (!text) return 0;
            EngineMessage posted;
            posted.kind = EngineMessageKind::SkippedPhrases;
            posted.text = std::move(*text);
            Deliver(std::move(posted));
            return 0;
        }
        default:
            if (message == taskbarCreated_ && taskbarCreated_ != 0 && trayWanted_) {
                trayAdded_ = false;  // the new taskbar has none of the old icons
                trayRetries_ = 0;
                PutTrayIcon();
                return 0;
            }
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

void Win32Platform::PaintHelpPage(HWND window) {
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(window, &paint);
    RECT client;
    GetClientRect(window, &client);
    FillRect(dc, &client, GetSysColorBrush(COLOR_WINDOW));
    SetBkMode(dc, TRANSPARENT);
    HGDIOBJ previous = SelectObject(dc, helpFont_);
    const std::u16string text = HelpPageText(Engine());
    const int marginX = ScaleByDpi(kHelpMarginX, mainDpi_);
    RECT box{client.left + marginX, client.top + ScaleByDpi(kHelpMarginTop, mainDpi_), client.right - marginX,
             client.bottom};
    DrawTextW(dc, reinterpret_cast<const wchar_t*>(text.c_str()), static_cast<int>(text.size()), &box, DT_WORDBREAK);
    SelectObject(dc, previous);
    EndPaint(window, &paint);
}

void Win32Platform::ScaleMainWindow() {
    if (!main_) return;
    OnMainWindowDpiChanged(DpiOfWindow(main_));
    SetWindowPos(main_, nullptr, 0, 0, ScaleByDpi(kWindowWidth, mainDpi_), ScaleByDpi(kWindowHeight, mainDpi_),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Win32Platform::OnMainWindowDpiChanged(std::uint32_t dpi) {
    mainDpi_ = dpi;
    for (HFONT* font : {&uiFont_, &helpFont_}) {
        if (*font) DeleteObject(*font);
    }
    uiFont_ = CreateUiFont(kUiFontHeight, dpi);
    helpFont_ = CreateUiFont(kHelpFontHeight, dpi);
    HWND button = GetDlgItem(main_, kOpenEditorCommand);
    const int left = ScaleByDpi(kEditorButton.left, dpi);
    const int top = ScaleByDpi(kEditorButton.top, dpi);
    SetWindowPos(button, nullptr, left, top, ScaleByDpi(kEditorButton.right, dpi) - left,
                 ScaleByDpi(kEditorButton.bottom, dpi) - top, SWP_NOZORDER | SWP_NOACTIVATE);
    SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(uiFont_), TRUE);
    InvalidateRect(main_, nullptr, TRUE);
}

void Win32Platform::ShowMainWindow() {
    ShowWindow(main_, SW_SHOW);
    SetForegroundWindow(main_);
}

void Win32Platform::ShowTrayMenu() {
    POINT at{};
    GetCursorPos(&at);
    HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, kShowWindowCommand, L"Pokaż okno");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, kQuitCommand, L"Zakończ");
    // The menu closes when the user clicks elsewhere only if its owner is in front.
    SetForegroundWindow(main_);
    TrackPopupMenu(menu, TPM_RIGHTBUTTON, at.x, at.y, 0, main_, nullptr);
    // Without a message after it, the menu does not close the second time.
    PostMessageW(main_, WM_NULL, 0, 0);
    DestroyMenu(menu);
}

LRESULT Win32Platform::OnCopyData(const COPYDATASTRUCT& data) {
    if (data.cbData < 2 || data.cbData > kLongestCopyData || !data.lpData) return 0;
    if (data.dwData == kActivateWheelFileData) {
        if (!ActivateHandedOverWheelFile(CopiedText(data))) return 0;
        InvalidateRect(main_, nullptr, TRUE);  // the help page's counts changed
        return 1;
    }
    if (data.dwData == kSayPhraseData) return DispatchHandedOverPhrase(Engine(), CopiedText(data)) ? 1 : 0;
    return 0;
}

// --- Tray ------------------------------------------------------------------------------------

void Win32Platform::AddTrayIcon(const std::u16string& tip) {
    trayIcon_ = NOTIFYICONDATAW{};
    trayIcon_.cbSize = sizeof trayIcon_;
    trayIcon_.hWnd = main_;
    trayIcon_.uID = kTrayIconId;
    trayIcon_.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    trayIcon_.uCallbackMessage = kTrayCallbackMessage;
    trayIcon_.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    CopyToField(trayIcon_.szTip, tip);
    trayWanted_ = true;
    trayRetries_ = 0;
    PutTrayIcon();
}

void Win32Platform::PutTrayIcon() {
    if (!trayWanted_ || trayAdded_) {
        KillTimer(main_, kTrayRetryTimerId);
        return;
    }
    NOTIFYICONDATAW icon = trayIcon_;
    icon.uFlags &= ~NIF_INFO;  // an old balloon is not shown again
    // An icon the old taskbar still knows is only modified.
    trayAdded_ = Shell_NotifyIconW(NIM_ADD, &icon) != FALSE || Shell_NotifyIconW(NIM_MODIFY, &icon) != FALSE;
    if (trayAdded_ || ++trayRetries_ > kTrayRetries) {
        KillTimer(main_, kTrayRetryTimerId);
    } else {
        SetTimer(main_, kTrayRetryTimerId, kTrayRetryPeriod, nullptr);
    }
}

void Win32Platform::ShowTrayNotice(const std::u16string& title, const std::u16string& text, bool warning) {
    trayIcon_.uFlags |= NIF_INFO;
    CopyToField(trayIcon_.szInfoTitle, title);
    CopyToField(trayIcon_.szInfo, text);
    trayIcon_.dwInfoFlags = warning ? NIIF_WARNING : NIIF_INFO;
    if (trayAdded_) {
        Shell_NotifyIconW(NIM_MODIFY, &trayIcon_);
    } else if (warning && warningHandler_) {
        warningHandler_(title, text);  // the front-end's tray icon; its notices are its own
    }
}

// Called from the voice and gaze threads: InvalidateRect only queues a paint.
void Win32Platform::StatusChanged() {
    if (main_) InvalidateRect(main_, nullptr, TRUE);
}

void Win32Platform::RemoveTrayIcon() {
    trayWanted_ = false;
    KillTimer(main_, kTrayRetryTimerId);
    if (!trayAdded_) return;
    Shell_NotifyIconW(NIM_DELETE, &trayIcon_);
    trayAdded_ = false;
}

}  // namespace zirvel::win32
