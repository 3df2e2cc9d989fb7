#include "frontend/main_window.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSettings>
#include <QStackedWidget>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

#include "engine/overlay_exports.h"
#include "frontend/cards.h"
#include "frontend/engine_text.h"
#include "frontend/frontend_identity.h"
#include "frontend/gaze_page.h"
#include "frontend/page_title.h"
#include "frontend/themes.h"
#include "frontend/switch_scan_card.h"
#include "frontend/voice_page.h"
#include "frontend/wheel_editor_page.h"
#include "frontend/wheel_preview.h"
#include "update/updater.h"

namespace zirvel::frontend {
namespace {

constexpr int kEditorRow = 1;

// A settings card under its heading; `layout` receives the card's rows.
QFrame* MakeSettingsCard(const QString& heading, QVBoxLayout*& layout) {
    auto* card = new QFrame;
    layout = SetUpSettingsCard(card, heading);
    return card;
}

// Each page scrolls on its own: the window keeps the size it opens at
// whatever a page's widest row or a theme's paddings ask for, and a narrow
// page is never laid out at the widest page's width.
QScrollArea* InScrollArea(QWidget* page) {
    auto* area = new QScrollArea;
    // The themes paint it with the page colour.
    area->setObjectName(QStringLiteral("PageScroll"));
    area->setWidget(page);
    // setWidget() makes the page fill itself with the palette's grey; the
    // theme's page colour behind it should show instead.
    page->setAutoFillBackground(false);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    // The page's own controls take the focus; the area scrolls to each.
    area->setFocusPolicy(Qt::NoFocus);
    return area;
}

}  // namespace

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent) {
    setWindowTitle(tr("Zirvel"));
    resize(860, 560);

    auto* central = new QWidget;
    auto* layout = new QHBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    sidebar_ = new QListWidget;
    sidebar_->setObjectName(QStringLiteral("Sidebar"));
    sidebar_->setFixedWidth(190);
    sidebar_->setAccessibleName(tr("Strony"));
    sidebar_->addItems({tr("Start"), tr("Koła wyboru"), tr("Komendy głosowe"), tr("Sterowanie wzrokiem"), tr("Ustawienia")});
    sidebar_->setCurrentRow(0);

    pages_ = new QStackedWidget;
    editor_ = new WheelEditorPage;
    auto* voice = new VoicePage([this](const QString& path) {
        editor_->loadFile(path);
        sidebar_->setCurrentRow(kEditorRow);
    });
    for (QWidget* page : {buildStartPage(), static_cast<QWidget*>(editor_), static_cast<QWidget*>(voice),
                          static_cast<QWidget*>(new GazePage), buildSettingsPage()})
        pages_->addWidget(InScrollArea(page));
    connect(sidebar_, &QListWidget::currentRowChanged, pages_, &QStackedWidget::setCurrentIndex);

    layout->addWidget(sidebar_, 0);
    layout->addWidget(pages_, 1);
    setCentralWidget(central);

    // Every page takes its style now, so no page's first showing resizes the window.
    ensurePolished();
    buildTray();
    refreshStatus();
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &MainWindow::refreshStatus);
    timer->start(1500);
}

QWidget* MainWindow::page(int row) const {
    auto* area = qobject_cast<QScrollArea*>(pages_->widget(row));
    return area ? area->widget() : nullptr;
}

QWidget* MainWindow::buildStartPage() {
    auto* page = new QWidget;
    auto* layout = new QHBoxLayout(page);
    layout->setContentsMargins(18, 18, 18, 18);
    layout->setSpacing(14);

    auto* left = new QVBoxLayout;
    left->setSpacing(10);
    left->addWidget(BuildValueCard(tr("Tobii Eye Tracker"), QString(), "ok", &gazeStatus_));
    left->addWidget(BuildValueCard(tr("Komendy głosowe"), QString(), "ok", &voiceStatus_));
    left->addWidget(BuildValueCard(tr("Konfiguracja kół"), QString(), "value", &wheelsStatus_));
    // A long status (a missing library and what to install) wraps rather
    // than widening the page.
    for (QLabel* status : {gazeStatus_, voiceStatus_, wheelsStatus_}) status->setWordWrap(true);
    left->addStretch(1);
    auto* toggle = new QPushButton(tr("Pokaż koło (X)"));
    toggle->setObjectName(QStringLiteral("Primary"));
    toggle->setMinimumHeight(38);
    connect(toggle, &QPushButton::clicked, this, [] { OverlayToggleWheel(); });
    left->addWidget(toggle);

    auto* right = new QVBoxLayout;
    right->addStretch(1);
    preview_ = new WheelPreview;
    preview_->setMinimumSize(240, 240);
    right->addWidget(preview_);
    right->addStretch(1);

    layout->addLayout(left, 1);
    layout->addLayout(right, 1);
    return page;
}

QWidget* MainWindow::buildSettingsPage() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(18, 18, 18, 18);
    layout->setSpacing(10);
    layout->addWidget(MakePageTitle(tr("Ustawienia")));
    layout->addWidget(buildThemeCard(), 0);
    layout->addWidget(new SwitchScanCard, 0);
    layout->addWidget(buildUpdatesCard(), 0);
    layout->addStretch(1);
    return page;
}

QWidget* MainWindow::buildThemeCard() {
    QVBoxLayout* layout = nullptr;
    QFrame* card = MakeSettingsCard(tr("Motyw interfejsu"), layout);
    auto* group = new QButtonGroup(card);
    group->setExclusive(true);
    for (const Theme& theme : themes()) {
        auto* row = new QHBoxLayout;
        auto* button = new QRadioButton(theme.label);
        button->setObjectName(QStringLiteral("theme-") + theme.id);
        auto* swatch = new QLabel;
        swatch->setFixedSize(46, 20);
        swatch->setStyleSheet(QStringLiteral("background:%1; border:1px solid %2; border-radius:4px;")
                                  .arg(theme.colours[0].name(), theme.colours[3].name()));
        row->addWidget(button);
        row->addStretch(1);
        row->addWidget(swatch);
        button->setChecked(theme.id == currentThemeId());
        group->addButton(button);
        layout->addLayout(row);
        // Each button keeps its own copy of its theme.
        connect(button, &QRadioButton::toggled, this, [this, theme](bool checked) { chooseTheme(theme, checked); });
    }
    return card;
}

QWidget* MainWindow::buildUpdatesCard() {
    QVBoxLayout* layout = nullptr;
    QFrame* card = MakeSettingsCard(tr("Aktualizacje"), layout);
    auto* version = new QLabel(tr("Zainstalowana wersja: %1").arg(kVersion));
    SetRole(version, "cardTitle");
    auto* check = new QPushButton(tr("Sprawdź aktualizacje…"));
    check->setObjectName(QStringLiteral("checkUpdates"));
    connect(check, &QPushButton::clicked, this, [] { update::CheckForUpdatesWithUi(); });
    layout->addWidget(version);
    layout->addWidget(check, 0, Qt::AlignLeft);
    return card;
}

void MainWindow::chooseTheme(const Theme& theme, bool checked) {
    if (!checked) return;
    applyTheme(theme.id);
    QSettings(kOrganisationName, kSettingsScope).setValue(kThemeKey, theme.id);
    if (preview_) preview_->update();
    if (editor_) editor_->refreshPreview();
}

void MainWindow::buildTray() {
    tray_ = new QSystemTrayIcon(QGuiApplication::windowIcon(), this);
    tray_->setToolTip(tr("Zirvel"));
    auto* menu = new QMenu(this);
    connect(menu->addAction(tr("Pokaż koło")), &QAction::triggered, this, [] { OverlayToggleWheel(); });
    connect(menu->addAction(tr("Pokaż okno")), &QAction::triggered, this, &MainWindow::showWindow);
    menu->addSeparator();
    // exit(), not quit(): Qt 6's quit() first asks every window to close and
    // gives up when one refuses, as this window does while the tray shows.
    connect(menu->addAction(tr("Zakończ")), &QAction::triggered, this, [] { QCoreApplication::exit(0); });
    tray_->setContextMenu(menu);
    // Only a double click brings the window back; a single click is easy to make by accident.
    connect(tray_, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::DoubleClick) showWindow();
    });
    tray_->setVisible(true);
}

void MainWindow::showWindow() {
    showNormal();
    raise();
    activateWindow();
}

void MainWindow::refreshStatus() {
    if (gazeStatus_) gazeStatus_->setText(EngineText(OverlayGazeStatus()));
    if (voiceStatus_) {
        voiceStatus_->setText(VoiceStatusLine());
    }
    const int wheels = OverlayWheelCount();
    if (wheelsStatus_) wheelsStatus_->setText(tr("%n koło(a)", "", wheels));
    if (preview_) preview_->setSegmentCount(std::max(2, 2 * wheels));
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // The window hides to the tray; only the tray menu ends the program.
    if (tray_ && tray_->isVisible()) {
        hide();
        event->ignore();
        return;
    }
    event->accept();
}

}  // namespace zirvel::frontend
