// A one-line label that keeps its whole text (for code and screen readers)
// but draws it shortened in the middle when it does not fit, so a long file
// path never widens the window.
#pragma once

#include <QLabel>

namespace zirvel::frontend {

class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace zirvel::frontend
