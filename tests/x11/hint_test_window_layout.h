// Where the Qt hint test window puts its widgets (inside the window), shared
// by the window and the tests that check the numbered rectangles.
#pragma once

namespace zirvel_test::hint_window {

struct Box {
    int x;
    int y;
    int width;
    int height;
};

inline constexpr const char* kTitle = "Zirvel hint test window";
inline constexpr Box kWindow{100, 80, 640, 520};  // on the screen, without a window manager

inline constexpr Box kNormalButton{20, 20, 120, 32};
inline constexpr Box kDisabledButton{160, 20, 120, 32};
inline constexpr Box kTinyButton{300, 20, 7, 30};  // too small for a hint
inline constexpr Box kPane{20, 70, 200, 110};      // focusable, yet only a pane
inline constexpr Box kList{240, 70, 220, 160};
inline constexpr int kListRows = 3;
inline constexpr Box kEdit{20, 250, 200, 30};
inline constexpr Box kSlowButton{480, 20, 120, 32};  // answers slowly with --slow-ms
// A web page: its accessible role is the browser document's.
inline constexpr Box kPage{20, 300, 440, 180};
inline constexpr Box kPageButton{40, 40, 140, 32};  // inside the page

}  // namespace zirvel_test::hint_window
