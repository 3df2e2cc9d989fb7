// The settings card "Sterowanie przełącznikiem": switch scanning on and
// off, its mode, interval, rounds and step key. Each change is written to
// config.json and the engine reloads, as on the gaze and voice pages.
#pragma once

#include <QFrame>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace zirvel::frontend {

class SwitchScanCard : public QFrame {
    Q_OBJECT

public:
    explicit SwitchScanCard(QWidget* parent = nullptr);

    QCheckBox* enabledBox() const { return enabled_; }
    QComboBox* modeBox() const { return mode_; }
    QSpinBox* intervalBox() const { return interval_; }
    QSpinBox* loopsBox() const { return loops_; }
    QLineEdit* stepKeyEdit() const { return stepKey_; }
    QLabel* problemLabel() const { return problem_; }

private:
    void save();

    QCheckBox* enabled_;
    QComboBox* mode_;
    QSpinBox* interval_;
    QSpinBox* loops_;
    QLineEdit* stepKey_;
    QLabel* problem_;
    bool loading_ = false;
};

}  // namespace zirvel::frontend
