// The page that switches eye tracking on and off, sets the dwell time and
// shows the tracker's status.
#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QSlider;

namespace zirvel::frontend {

class GazePage : public QWidget {
    Q_OBJECT

public:
    explicit GazePage(QWidget* parent = nullptr);

    QLabel* statusLabel() const { return status_; }
    QCheckBox* enabledBox() const { return enabled_; }
    QSlider* dwellSlider() const { return dwell_; }
    QLabel* dwellLabel() const { return dwellValue_; }

private:
    void updateDwellLabel();
    void saveGazeSettings();
    void refreshStatus();

    QLabel* status_;
    QCheckBox* enabled_;
    QSlider* dwell_;
    QLabel* dwellValue_;
    bool loading_ = false;
};

}  // namespace zirvel::frontend
