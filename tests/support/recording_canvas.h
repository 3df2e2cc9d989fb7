// A canvas that records what is drawn on it, operation by operation, and a
// factory whose "images" are decoded from a table of known paths.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "core/canvas.h"
#include "core/canvas_factory.h"

namespace zirvel_test {

enum class Op {
    SetTextHint,
    Clear,
    SetPicture,
    FillPie,
    DrawPie,
    DrawEllipse,
    DrawArc,
    FillRectangle,
    DrawRectangle,
    FillPolygon,
    DrawPolygon,
    ClearEllipse,
    DrawText,
    DrawImage,
};

struct CanvasOperation {
    Op op = Op::Clear;
    zirvel::RectF rect;  // bounds, rectangle, text box or image destination
    float startAngle = 0.0f;
    float sweepAngle = 0.0f;
    zirvel::Argb color = 0;
    float penWidth = 0.0f;
    std::vector<zirvel::PointF> points;
    std::u16string text;
    zirvel::CanvasFont font;
    zirvel::TextHint hint = zirvel::TextHint::AntiAlias;
    const zirvel::CanvasImage* image = nullptr;
    float alphaFactor = 0.0f;
};

using Frame = std::vector<CanvasOperation>;

class RecordingCanvas final : public zirvel::Canvas {
public:
    RecordingCanvas(std::int32_t width, std::int32_t height, Frame& frame)
        : width_(width), height_(height), frame_(frame) {}

    std::int32_t Width() const override { return width_; }
    std::int32_t Height() const override { return height_; }

    void SetTextHint(zirvel::TextHint hint) override {
        CanvasOperation& o = Add(Op::SetTextHint);
        o.hint = hint;
    }
    void Clear() override { Add(Op::Clear); }
    void SetPicture(const zirvel::Picture&) override { Add(Op::SetPicture); }
    void FillPie(const zirvel::RectF& bounds, float start, float sweep, zirvel::Argb color) override {
        Angled(Op::FillPie, bounds, start, sweep, color, 0.0f);
    }
    void DrawPie(const zirvel::RectF& bounds, float start, float sweep, zirvel::Argb color, float pen) override {
        Angled(Op::DrawPie, bounds, start, sweep, color, pen);
    }
    void DrawEllipse(const zirvel::RectF& bounds, zirvel::Argb color, float pen) override {
        Shape(Op::DrawEllipse, bounds, color, pen);
    }
    void DrawArc(const zirvel::RectF& bounds, float start, float sweep, zirvel::Argb color, float pen) override {
        Angled(Op::DrawArc, bounds, start, sweep, color, pen);
    }
    void FillRectangle(const zirvel::RectF& rect, zirvel::Argb color) override {
        Shape(Op::FillRectangle, rect, color, 0.0f);
    }
    void DrawRectangle(const zirvel::RectF& rect, zirvel::Argb color, float pen) override {
        Shape(Op::DrawRectangle, rect, color, pen);
    }
    void FillPolygon(std::span<const zirvel::PointF> points, zirvel::Argb color) override {
        Polygon(Op::FillPolygon, points, color, 0.0f);
    }
    void DrawPolygon(std::span<const zirvel::PointF> points, zirvel::Argb color, float pen) override {
        Polygon(Op::DrawPolygon, points, color, pen);
    }
    void ClearEllipse(const zirvel::RectF& bounds) override { Shape(Op::ClearEllipse, bounds, 0, 0.0f); }
    void DrawCentredText(std::u16string_view text, const zirvel::CanvasFont& font, const zirvel::RectF& box,
                         zirvel::Argb color) override {
        CanvasOperation& o = Shape(Op::DrawText, box, color, 0.0f);
        o.text = std::u16string(text);
        o.font = font;
    }
    void DrawImage(const zirvel::CanvasImage& image, const zirvel::RectF& destination, float alpha) override {
        CanvasOperation& o = Shape(Op::DrawImage, destination, 0, 0.0f);
        o.image = &image;
        o.alphaFactor = alpha;
    }
    zirvel::Picture TakePicture() override {
        zirvel::Picture picture;
        picture.width = width_;
        picture.height = height_;
        picture.pixels.assign(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), 0u);
        return picture;
    }

private:
    CanvasOperation& Add(Op op) {
        frame_.push_back(CanvasOperation{});
        frame_.back().op = op;
        return frame_.back();
    }
    CanvasOperation& Shape(Op op, const zirvel::RectF& rect, zirvel::Argb color, float pen) {
        CanvasOperation& o = Add(op);
        o.rect = rect;
        o.color = color;
        o.penWidth = pen;
        return o;
    }
    void Angled(Op op, const zirvel::RectF& rect, float start, float sweep, zirvel::Argb color, float pen) {
        CanvasOperation& o = Shape(op, rect, color, pen);
        o.startAngle = start;
        o.sweepAngle = sweep;
    }
    void Polygon(Op op, std::span<const zirvel::PointF> points, zirvel::Argb color, float pen) {
        CanvasOperation& o = Add(op);
        o.points.assign(points.begin(), points.end());
        o.color = color;
        o.penWidth = pen;
    }

    std::int32_t width_;
    std::int32_t height_;
    Frame& frame_;
};

class RecordedImage final : public zirvel::CanvasImage {
public:
    explicit RecordedImage(std::u16string path) : path(std::move(path)) {}
    std::int32_t Width() const override { return 48; }
    std::int32_t Height() const override { return 48; }
    std::u16string path;
};

// Canvases record into frames(); DecodeImage succeeds for the paths given
// to AddImage and records every path it is asked for.
class RecordingCanvasFactory final : public zirvel::CanvasFactory {
public:
    std::unique_ptr<zirvel::Canvas> CreateCanvas(std::int32_t width, std::int32_t height) override {
        frames_.push_back(std::make_unique<Frame>());
        sizes_.push_back({width, height});
        return std::make_unique<RecordingCanvas>(width, height, *frames_.back());
    }
    std::shared_ptr<const zirvel::CanvasImage> DecodeImage(const std::u16string& path) override {
        decoded_.push_back(path);
        if (decodable_.count(path) == 0) return nullptr;
        return std::make_shared<RecordedImage>(path);
    }

    void AddImage(const std::u16string& resolvedPath) { decodable_.insert(resolvedPath); }

    std::size_t FrameCount() const { return frames_.size(); }
    const Frame& LastFrame() const { return *frames_.back(); }
    // The last frame drawn with `op` in it (the wheel's body is drawn on a
    // canvas of its own, the pointer over a copy of it).
    const Frame& LastFrameWith(Op op) const {
        for (auto frame = frames_.rbegin(); frame != frames_.rend(); ++frame) {
            for (const CanvasOperation& operation : **frame) {
                if (operation.op == op) return **frame;
            }
        }
        return empty_;
    }
    zirvel::ScreenPoint LastSize() const { return sizes_.back(); }
    const std::vector<std::u16string>& Decoded() const { return decoded_; }

private:
    std::vector<std::unique_ptr<Frame>> frames_;
    const Frame empty_;
    std::vector<zirvel::ScreenPoint> sizes_;
    std::set<std::u16string> decodable_;
    std::vector<std::u16string> decoded_;
};

// The operations of one kind, in drawing order.
inline std::vector<CanvasOperation> OperationsOf(const Frame& frame, Op op) {
    std::vector<CanvasOperation> found;
    for (const CanvasOperation& o : frame) {
        if (o.op == op) found.push_back(o);
    }
    return found;
}

inline std::vector<Op> KindsOf(const Frame& frame) {
    std::vector<Op> kinds;
    for (const CanvasOperation& o : frame) kinds.push_back(o.op);
    return kinds;
}

}  // namespace zirvel_test
