#include "frontend/elided_label.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

namespace zirvel::frontend {

QSize ElidedLabel::minimumSizeHint() const {
    // Room for a few characters and the ellipsis; the rest is elided.
    return {fontMetrics().horizontalAdvance(QStringLiteral("…/…")) * 3, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect area = contentsRect();
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, area.width());
    style()->drawItemText(&painter, area, int(alignment()), palette(), isEnabled(), shown, foregroundRole());
}

}  // namespace zirvel::frontend
