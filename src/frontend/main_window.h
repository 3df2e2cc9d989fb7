// The front-end's window: a sidebar of five pages, the tray icon and the
// engine's status, refreshed every 1.5 s whether the window shows or not.
#pragma once

#include <QMainWindow>

class QLabel;
class QListWidget;
class QStackedWidget;
class QSystemTrayIcon;

namespace zirvel::frontend {

class WheelEditorPage;
class WheelPreview;
struct Theme;

class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);

    QListWidget* sidebar() const { return sidebar_; }
    // Each page sits in its own scroll area in pages(); page() is the page itself.
    QStackedWidget* pages() const { return pages_; }
    QWidget* page(int row) const;
    WheelPreview* preview() const { return preview_; }
    WheelEditorPage* editor() const { return editor_; }
    QSystemTrayIcon* tray() const { return tray_; }
    QLabel* gazeStatus() const { return gazeStatus_; }
    QLabel* voiceStatus() const { return voiceStatus_; }
    QLabel* wheelsStatus() const { return wheelsStatus_; }

public slots:
    void refreshStatus();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* buildStartPage();
    QWidget* buildSettingsPage();
    QWidget* buildThemeCard();
    QWidget* buildUpdatesCard();
    void buildTray();
    void chooseTheme(const Theme& theme, bool checked);
    void showWindow();

    QListWidget* sidebar_ = nullptr;
    QStackedWidget* pages_ = nullptr;
    WheelPreview* preview_ = nullptr;
    WheelEditorPage* editor_ = nullptr;
    QSystemTrayIcon* tray_ = nullptr;
    QLabel* gazeStatus_ = nullptr;
    QLabel* voiceStatus_ = nullptr;
    QLabel* wheelsStatus_ = nullptr;
};

}  // namespace zirvel::frontend
