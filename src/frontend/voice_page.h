// The page that switches voice control, shows the recogniser's status and
// lists the global voice commands of voice.json.
#pragma once

#include <QWidget>

#include <functional>

class QCheckBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace zirvel::frontend {

class VoicePage : public QWidget {
    Q_OBJECT

public:
    // Receives the path of a wheels file to open in the wheel editor; may be empty.
    using OpenInEditor = std::function<void(const QString& path)>;

    explicit VoicePage(OpenInEditor openInEditor, QWidget* parent = nullptr);

    QLabel* statusLabel() const { return status_; }
    QCheckBox* enabledBox() const { return enabled_; }
    QCheckBox* globalBox() const { return global_; }
    QListWidget* commandList() const { return commands_; }
    QPushButton* editButton() const { return edit_; }

private:
    void saveVoiceSettings();
    void refreshVoiceStatus();
    void reloadGlobalCommands();
    void onTimer();

    OpenInEditor openInEditor_;
    QLabel* status_;
    QCheckBox* enabled_;
    QCheckBox* global_;
    QListWidget* commands_;
    QPushButton* edit_;
    bool loading_ = false;
};

}  // namespace zirvel::frontend
