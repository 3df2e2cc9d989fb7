// Which of the elements an accessibility scan finds get a numbered hint, and
// where the hint picture puts them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "core/dpi_scale.h"
#include "core/geometry.h"
#include "navigation/element_scanner.h"

namespace zirvel {

// UI Automation control type ids; other platforms map their roles to these.
namespace control_type {
inline constexpr std::int32_t kButton = 50000;
inline constexpr std::int32_t kCheckBox = 50002;
inline constexpr std::int32_t kComboBox = 50003;
inline constexpr std::int32_t kEdit = 50004;
inline constexpr std::int32_t kHyperlink = 50005;
inline constexpr std::int32_t kListItem = 50007;
inline constexpr std::int32_t kMenuItem = 50011;
inline constexpr std::int32_t kRadioButton = 50013;
inline constexpr std::int32_t kSlider = 50015;
inline constexpr std::int32_t kSpinner = 50016;
inline constexpr std::int32_t kTabItem = 50019;
inline constexpr std::int32_t kTreeItem = 50024;
inline constexpr std::int32_t kDocument = 50030;
inline constexpr std::int32_t kSplitButton = 50031;
inline constexpr std::int32_t kWindow = 50032;
inline constexpr std::int32_t kPane = 50033;
}  // namespace control_type

// The control types that are always candidates, in the order the scan's
// search condition lists them.
inline constexpr std::array<std::int32_t, 13> kClickableControlTypes = {
    control_type::kButton,   control_type::kSplitButton, control_type::kCheckBox,
    control_type::kRadioButton, control_type::kComboBox, control_type::kEdit,
    control_type::kHyperlink, control_type::kListItem, control_type::kMenuItem,
    control_type::kTabItem,  control_type::kTreeItem,   control_type::kSlider,
    control_type::kSpinner,
};

// One hint per spoken number 1..99.
inline constexpr std::size_t kMaxElementHints = 99;

// Smallest accepted width and height, in pixels.
inline constexpr std::int32_t kMinElementSize = 8;

// One element as the scan read it. The defaults are the values taken when a
// property cannot be read: such an element is never accepted.
struct ElementRecord {
    std::int32_t controlType = 0;
    bool enabled = false;
    bool offscreen = true;
    bool focusable = false;
    ScreenRect rect;  // whole screen pixels
};

struct ElementSizeLimit {
    std::int32_t maxWidth = 0;
    std::int32_t maxHeight = 0;
};

// Largest element: 900 x 700 for a window, 1400 x 1000 for a page.
ElementSizeLimit LargestElement(ElementScanMode mode);

bool IsClickableControlType(std::int32_t controlType);

// True when the two rectangles share at least one pixel.
bool RectsIntersect(const ScreenRect& a, const ScreenRect& b);

// The common part of two rectangles; all zero when they share no pixel.
ScreenRect IntersectRects(const ScreenRect& a, const ScreenRect& b);

// Enabled, on screen, of a clickable type (or focusable and not a document,
// window or pane), between 8 pixels and the mode's limit each way, and
// overlapping `area`. Says nothing about duplicates.
bool IsElementCandidate(const ElementRecord& element, ElementScanMode mode, const ScreenRect& area);

// True when `rect` mostly covers, and is of a similar size to, a rectangle
// already accepted: the overlap exceeds 85 % of the smaller rectangle and
// the smaller is more than 55 % of the larger.
bool IsDuplicateElement(const ScreenRect& rect, std::span<const ScreenRect> accepted);

bool ElementListFull(const std::vector<ScreenRect>& accepted);

// Offers one element; appends its rectangle when it is a candidate, not a
// duplicate and the list is not yet full. Returns whether it was appended.
bool AcceptElement(const ElementRecord& element, ElementScanMode mode, const ScreenRect& area,
                   std::vector<ScreenRect>& accepted);

// Offers one root's elements in the order found, stopping as soon as the list
// holds kMaxElementHints rectangles. Call once per root, in root order, with
// the same list: the list order is the hint numbering (entry 0 is hint 1).
// Returns how many records were looked at.
std::size_t AcceptElements(std::span<const ElementRecord> found, ElementScanMode mode,
                           const ScreenRect& area, std::vector<ScreenRect>& accepted);

// A browser's page area: a child window whose class name contains one of the
// known content window class names, visible, and more than 200 pixels wide
// and high.
bool IsBrowserContentWindow(std::u16string_view className, bool visible, const ScreenRect& windowRect);

// The hint picture. Positions are relative to the top left of the scan area;
// label sizes are at 96 DPI and scale with the monitor's.
inline constexpr std::int32_t kHintLabelHeight = 18;
inline constexpr std::int32_t kHintLabelDigitWidth = 9;
inline constexpr std::int32_t kHintLabelPadding = 14;
inline constexpr float kHintFontSize = 13.0f;

struct HintBox {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    friend bool operator==(const HintBox&, const HintBox&) = default;
};

struct HintLayout {
    int number = 0;   // 1-based, as spoken
    HintBox element;  // filled and bordered
    HintBox label;    // at the element's top left; the number centred in it
};

// Decimal digits of `number` (at least 1).
int DecimalDigitCount(int number);

// Number `number`'s label box for an element whose top left is (x, y):
// digits * 9 + 14 wide, 18 high, at 96 DPI.
HintBox HintLabelBox(int number, std::int32_t x, std::int32_t y, std::uint32_t dpi = kDefaultDpi);

// The hint picture needs at least one pixel each way.
bool HintAreaDrawable(const ScreenRect& area);

// The hints for `elements` in the picture covering `area` on a monitor of
// `dpi`; empty when the area is not drawable. Elements keep their screen
// pixels; only the labels scale.
std::vector<HintLayout> LayOutHints(const ScreenRect& area, std::span<const ScreenRect> elements,
                                    std::uint32_t dpi = kDefaultDpi);

// Where saying `number` clicks: the centre of hint `number`, or nothing when
// there is no such hint.
std::optional<ScreenPoint> HintClickPoint(std::span<const ScreenRect> hints, int number);

}  // namespace zirvel
