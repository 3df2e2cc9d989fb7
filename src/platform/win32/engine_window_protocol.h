// What other processes and the shell send to the engine's windows: the
// class names, the WM_APP messages, the command ids and the WM_COPYDATA
// kinds. The tools that hand over a file or a phrase use it too.
#pragma once

#include <windows.h>

namespace zirvel::win32 {

inline constexpr wchar_t kMainWindowClass[] = L"RadialOverlayMain";
inline constexpr wchar_t kWheelWindowClass[] = L"RadialOverlayWheel";
inline constexpr wchar_t kGridWindowClass[] = L"RadialOverlayGrid";
inline constexpr wchar_t kEditorWindowClass[] = L"RadialOverlayEditor";

// WM_APP + 2 to + 8 carry the engine messages of the same offset.
inline constexpr UINT kTrayCallbackMessage = WM_APP + 1;

inline constexpr int kHotKeyId = 1;
// The step key of switch scanning, registered only while a scan runs.
inline constexpr int kStepKeyId = 2;
inline constexpr UINT_PTR kWheelTimerId = 1;
inline constexpr UINT kTrayIconId = 1;
// The main window's timer that tries again to add a tray icon the shell
// refused (Explorer not yet up at logon).
inline constexpr UINT_PTR kTrayRetryTimerId = 2;
// The switch scan's one-shot timer, on the main window.
inline constexpr UINT_PTR kScanTimerId = 3;

// Menu and button commands of the main window.
inline constexpr WORD kShowWindowCommand = 1001;
inline constexpr WORD kQuitCommand = 1002;
inline constexpr WORD kOpenEditorCommand = 1003;

// WM_COPYDATA kinds: a wheels file's path to activate, and (our own) a
// phrase to act on as if the recogniser had heard it. Both UTF-16; the
// answer is 1 when it was taken.
inline constexpr ULONG_PTR kActivateWheelFileData = 1;
inline constexpr ULONG_PTR kSayPhraseData = 2;
// Longer records are refused unread, as the control socket drops longer
// lines: no path or phrase comes near it.
inline constexpr DWORD kLongestCopyData = 64 * 1024;

}  // namespace zirvel::win32
