// A self-painted miniature of the wheel: a ring of pie segments with
// labels, one highlighted, in the current theme's colours.
#pragma once

#include <QStringList>
#include <QWidget>

namespace zirvel::frontend {

class WheelPreview : public QWidget {
    Q_OBJECT

public:
    explicit WheelPreview(QWidget* parent = nullptr);

    // Clamped to 1 … 24.
    void setSegmentCount(int count);
    // Not clamped; -1 highlights nothing (while labels are shown).
    void setHighlighted(int index);
    // One label per segment; the segment count follows the list's length.
    void setLabels(const QStringList& labels);

    int segmentCount() const { return segmentCount_; }
    int highlighted() const { return highlighted_; }
    const QStringList& labels() const { return labels_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    // Labels drawn: one per segment, as far as both reach.
    int shownLabelCount() const;
    // Screen readers read the fields from the description, as the picture
    // itself says nothing to them.
    void updateAccessibleDescription();

    int segmentCount_ = 8;
    int highlighted_ = -1;
    QStringList labels_;
};

}  // namespace zirvel::frontend
