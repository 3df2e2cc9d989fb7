#include "navigation/element_filter.h"

#include <algorithm>

#include "navigation/grid_geometry.h"

namespace zirvel {

namespace {

constexpr double kDuplicateOverlap = 0.85;
constexpr double kDuplicateSizeRatio = 0.55;
constexpr std::int32_t kMinBrowserContentSize = 200;

constexpr std::u16string_view kBrowserContentClasses[] = {
    u"Chrome_RenderWidgetHostHWND",
    u"MozillaWindowClass",
    u"MozillaContentWindowClass",
};

double RectArea(const ScreenRect& r) {
    return static_cast<double>(r.Width()) * static_cast<double>(r.Height());
}

}  // namespace

ElementSizeLimit LargestElement(ElementScanMode mode) {
    if (mode == ElementScanMode::BrowserPage) {
        return ElementSizeLimit{1400, 1000};
    }
    return ElementSizeLimit{900, 700};
}

bool IsClickableControlType(std::int32_t controlType) {
    return std::find(kClickableControlTypes.begin(), kClickableControlTypes.end(), controlType) !=
           kClickableControlTypes.end();
}

bool RectsIntersect(const ScreenRect& a, const ScreenRect& b) {
    return std::max(a.left, b.left) < std::min(a.right, b.right) &&
           std::max(a.top, b.top) < std::min(a.bottom, b.bottom);
}

ScreenRect IntersectRects(const ScreenRect& a, const ScreenRect& b) {
    if (!RectsIntersect(a, b)) {
        return ScreenRect{};
    }
    return ScreenRect{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                      std::min(a.bottom, b.bottom)};
}

bool IsElementCandidate(const ElementRecord& element, ElementScanMode mode, const ScreenRect& area) {
    if (!element.enabled || element.offscreen) {
        return false;
    }
    const std::int32_t type = element.controlType;
    const bool container = type == control_type::kDocument || type == control_type::kWindow ||
                           type == control_type::kPane;
    if (!IsClickableControlType(type) && !(element.focusable && !container)) {
        return false;
    }
    const ElementSizeLimit limit = LargestElement(mode);
    const std::int32_t width = element.rect.Width();
    const std::int32_t height = element.rect.Height();
    if (width < kMinElementSize || height < kMinElementSize || width > limit.maxWidth ||
        height > limit.maxHeight) {
        return false;
    }
    return RectsIntersect(element.rect, area);
}

bool IsDuplicateElement(const ScreenRect& rect, std::span<const ScreenRect> accepted) {
    const double a = RectArea(rect);
    for (const ScreenRect& r : accepted) {
        if (!RectsIntersect(rect, r)) {
            continue;
        }
        const double b = RectArea(r);
        const double small = std::min(a, b);
        if (small <= 0.0) {
            continue;
        }
        const double overlap = RectArea(IntersectRects(rect, r));
        if (overlap / small > kDuplicateOverlap && small / std::max(a, b) > kDuplicateSizeRatio) {
            return true;
        }
    }
    return false;
}

bool ElementListFull(const std::vector<ScreenRect>& accepted) {
    return accepted.size() >= kMaxElementHints;
}

bool AcceptElement(const ElementRecord& element, ElementScanMode mode, const ScreenRect& area,
                   std::vector<ScreenRect>& accepted) {
    if (ElementListFull(accepted) || !IsElementCandidate(element, mode, area) ||
        IsDuplicateElement(element.rect, accepted)) {
        return false;
    }
    accepted.push_back(element.rect);
    return true;
}

std::size_t AcceptElements(std::span<const ElementRecord> found, ElementScanMode mode,
                           const ScreenRect& area, std::vector<ScreenRect>& accepted) {
    std::size_t examined = 0;
    while (examined < found.size() && !ElementListFull(accepted)) {
        AcceptElement(found[examined], mode, area, accepted);
        ++examined;
    }
    return examined;
}

bool IsBrowserContentWindow(std::u16string_view className, bool visible, const ScreenRect& windowRect) {
    const bool known = std::any_of(std::begin(kBrowserContentClasses), std::end(kBrowserContentClasses),
                                   [className](std::u16string_view name) {
                                       return className.find(name) != std::u16string_view::npos;
                                   });
    return known && visible && windowRect.Width() > kMinBrowserContentSize &&
           windowRect.Height() > kMinBrowserContentSize;
}

int DecimalDigitCount(int number) {
    int digits = 1;
    for (long long rest = number < 0 ? -static_cast<long long>(number) : number; rest >= 10; rest /= 10) {
        ++digits;
    }
    return digits;
}

HintBox HintLabelBox(int number, std::int32_t x, std::int32_t y, std::uint32_t dpi) {
    return HintBox{x, y, ScaleByDpi(DecimalDigitCount(number) * kHintLabelDigitWidth + kHintLabelPadding, dpi),
                   ScaleByDpi(kHintLabelHeight, dpi)};
}

bool HintAreaDrawable(const ScreenRect& area) {
    return area.Width() >= 1 && area.Height() >= 1;
}

std::vector<HintLayout> LayOutHints(const ScreenRect& area, std::span<const ScreenRect> elements,
                                    std::uint32_t dpi) {
    std::vector<HintLayout> hints;
    if (!HintAreaDrawable(area)) {
        return hints;
    }
    hints.reserve(elements.size());
    int number = 0;
    for (const ScreenRect& r : elements) {
        ++number;
        HintLayout hint;
        hint.number = number;
        hint.element = HintBox{r.left - area.left, r.top - area.top, r.Width(), r.Height()};
        hint.label = HintLabelBox(number, hint.element.x, hint.element.y, dpi);
        hints.push_back(hint);
    }
    return hints;
}

std::optional<ScreenPoint> HintClickPoint(std::span<const ScreenRect> hints, int number) {
    if (number < 1 || static_cast<std::size_t>(number) > hints.size()) {
        return std::nullopt;
    }
    return GridAreaCentre(hints[static_cast<std::size_t>(number) - 1]);
}

}  // namespace zirvel
