// Temporary stand-in until the painted preview lands: it keeps the state
// the header exposes and paints nothing.
#include "frontend/wheel_preview.h"

#include <algorithm>

namespace zirvel::frontend {

WheelPreview::WheelPreview(QWidget* parent) : QWidget(parent) {}

void WheelPreview::setSegmentCount(int count) { segmentCount_ = std::clamp(count, 1, 24); }

void WheelPreview::setHighlighted(int index) { highlighted_ = index; }

void WheelPreview::setLabels(const QStringList& labels) {
    labels_ = labels;
    setSegmentCount(static_cast<int>(labels.size()));
}

void WheelPreview::paintEvent(QPaintEvent*) {}

}  // namespace zirvel::frontend
