// Screen coordinates in physical pixels, and the fractional coordinates that
// pictures are drawn in.
#pragma once

#include <cstdint>

namespace zirvel {

struct ScreenPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
    friend bool operator==(const ScreenPoint&, const ScreenPoint&) = default;
};

// Left and top inclusive, right and bottom exclusive.
struct ScreenRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    std::int32_t Width() const { return right - left; }
    std::int32_t Height() const { return bottom - top; }
    bool Contains(ScreenPoint p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }
    friend bool operator==(const ScreenRect&, const ScreenRect&) = default;
};

// A point of a picture, in pixels from its top left.
struct PointF {
    float x = 0.0f;
    float y = 0.0f;
    friend bool operator==(const PointF&, const PointF&) = default;
};

// A rectangle of a picture: its top left, width and height.
struct RectF {
    float x = 0.0f;
    float y = 0.0f;
    float width = 0.0f;
    float height = 0.0f;
    friend bool operator==(const RectF&, const RectF&) = default;
};

}  // namespace zirvel
