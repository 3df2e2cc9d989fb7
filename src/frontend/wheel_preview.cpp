#include "frontend/wheel_preview.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>
#include <QtMath>

#include <algorithm>

#include "frontend/themes.h"

namespace zirvel::frontend {
namespace {

constexpr int kMinSegments = 1;
constexpr int kMaxSegments = 24;
// Without labels the preview is decorative and always shows its second
// segment highlighted, so the highlight colour can be judged at a glance.
constexpr int kDecorativeHighlight = 1;

// Screen readers should announce the preview as a picture, not as an empty
// container, so it gets the Graphic role.
QAccessibleInterface* PreviewAccessible(const QString&, QObject* object) {
    if (auto* preview = qobject_cast<WheelPreview*>(object)) return new QAccessibleWidget(preview, QAccessible::Graphic);
    return nullptr;
}

void InstallAccessibleFactoryOnce() {
    static const bool installed = [] {
        QAccessible::installFactory(PreviewAccessible);
        return true;
    }();
    (void)installed;
}

}  // namespace

WheelPreview::WheelPreview(QWidget* parent) : QWidget(parent) {
    InstallAccessibleFactoryOnce();
    setMinimumSize(160, 160);
    setAccessibleName(tr("Podgląd koła"));
    updateAccessibleDescription();
}

void WheelPreview::setSegmentCount(int count) {
    segmentCount_ = std::clamp(count, kMinSegments, kMaxSegments);
    updateAccessibleDescription();
    update();
}

void WheelPreview::setHighlighted(int index) {
    highlighted_ = index;
    updateAccessibleDescription();
    update();
}

void WheelPreview::setLabels(const QStringList& labels) {
    labels_ = labels;
    segmentCount_ = std::clamp(static_cast<int>(labels.size()), kMinSegments, kMaxSegments);
    updateAccessibleDescription();
    update();
}

int WheelPreview::shownLabelCount() const { return std::min(segmentCount_, static_cast<int>(labels_.size())); }

void WheelPreview::updateAccessibleDescription() {
    QString description;
    if (labels_.isEmpty()) {
        description = tr("Pola koła: %1.").arg(segmentCount_);
    } else {
        const int shown = shownLabelCount();
        description = tr("Pola koła (%1): %2.")
                          .arg(QString::number(segmentCount_), labels_.mid(0, shown).join(QStringLiteral(", ")));
        if (highlighted_ >= 0 && highlighted_ < shown)
            description += QLatin1Char(' ') + tr("Wybrane: %1.").arg(labels_[highlighted_]);
    }
    // The start page sets the count every 1.5 s; a screen reader hears of
    // a change only when there is one.
    if (description != accessibleDescription()) setAccessibleDescription(description);
}

void WheelPreview::paintEvent(QPaintEvent*) {
    // Read on every paint, so a theme switch shows on the next repaint.
    const auto& colours = themeById(currentThemeId()).colours;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    const int side = std::min(width(), height());
    const QRectF pie((width() - side) / 2.0 + 6, (height() - side) / 2.0 + 6, side - 12, side - 12);
    const double sweep = 360.0 / segmentCount_;
    const int highlight = labels_.isEmpty() ? kDecorativeHighlight : highlighted_;

    // Qt angles are in 1/16 degree, counter-clockwise from three o'clock:
    // start at twelve o'clock and sweep clockwise.
    painter.setPen(QPen(colours[0], 1.4));
    for (int i = 0; i < segmentCount_; ++i) {
        painter.setBrush(i == highlight ? colours[2] : colours[1]);
        painter.drawPie(pie, static_cast<int>((90 - i * sweep) * 16), static_cast<int>(-sweep * 16));
    }

    const QPointF centre = pie.center();
    const double discRadius = side * 0.22 * 0.5;
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours[3]);
    painter.drawEllipse(centre, discRadius, discRadius);

    if (labels_.isEmpty()) return;
    QFont labelFont = font();
    labelFont.setPointSizeF(std::max(7.0, side / 30.0));
    painter.setFont(labelFont);
    painter.setPen(colours[5]);
    const double labelRadius = pie.width() * 0.5 * 0.68;
    const int textWidth = static_cast<int>(side / 3.2);
    for (int i = 0; i < shownLabelCount(); ++i) {
        const double theta = qDegreesToRadians((i + 0.5) * sweep - 90);
        const QPointF at(centre.x() + std::cos(theta) * labelRadius, centre.y() + std::sin(theta) * labelRadius);
        const QString text = painter.fontMetrics().elidedText(labels_[i], Qt::ElideRight, textWidth);
        painter.drawText(QRectF(at.x() - side / 6.0, at.y() - 12, side / 3.0, 24), Qt::AlignCenter, text);
    }
}

}  // namespace zirvel::frontend
