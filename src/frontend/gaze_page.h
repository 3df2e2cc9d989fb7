// The page that switches eye tracking on and off, sets the dwell time and
// shows the tracker's status.
#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QSlider;
class QTimer;

namespace zirvel::frontend {

class GazePage : public QWidget {
    Q_OBJECT

public:
    // How long keys and the mouse wheel must rest before their dwell is saved.
    static constexpr int kKeyboardSaveDelayMs = 400;

    explicit GazePage(QWidget* parent = nullptr);
    // A keyboard change still waiting for its save is saved now.
    ~GazePage() override;

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
    // Keyboard and wheel changes come in runs (a held arrow key): one save
    // after the run, not one per step.
    QTimer* pendingSave_;
    bool loading_ = false;
};

}  // namespace zirvel::frontend
