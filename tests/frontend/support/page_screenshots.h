// Screenshots of every page of the main window in every theme, as the
// screen shows them, each checked to look like a page and to differ from
// all the others. Used on Linux (Xvfb) and under Wine.
#pragma once

#include <QDir>
#include <QImage>
#include <QListWidget>
#include <QScreen>
#include <QTest>

#include <map>

#include "frontend/main_window.h"
#include "frontend/themes.h"
#include "frontend/wheel_editor_page.h"
#include "program_files.h"

namespace zirvel_test {

inline const char* const kPageNames[] = {"start", "editor", "voice", "gaze", "settings"};

// A wheels file that shows the editor with content: two wheels, the first
// with a few fields that use the program's own icons.
inline QString WriteSampleWheels() {
    const QStringList icons =
        QDir(ProgramFile(QStringLiteral("icons"))).entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
    const QStringList names{QStringLiteral("Leczenie"), QStringLiteral("Przeładuj"), QStringLiteral("Skok"),
                            QStringLiteral("Mapa"), QStringLiteral("Ekwipunek"), QStringLiteral("Wycisz")};
    QString actions;
    for (int i = 0; i < names.size(); ++i) {
        const QString icon = i < icons.size() ? QStringLiteral("icons/") + icons[i] : QString();
        actions += QStringLiteral(R"(%1{"name": "%2", "voice": "%3", "icon": "%4", "steps": [{"key": "%5"}, {"key": "ctrl", "action": "hold", "value": 120}]})")
                       .arg(i ? QStringLiteral(",") : QString(), names[i], names[i].toLower(), icon,
                            QString(QChar(u'1' + i)));
    }
    const QString text = QStringLiteral(R"({"wheels": [{"name": "Gra", "actions": [%1]}, {"name": "Przeglądarka", "actions": [{"name": "Wstecz", "steps": [{"key": "alt"}]}]}]})").arg(actions);
    WriteProgramFile(QStringLiteral("screenshot-wheels.json"), text.toUtf8());
    return ProgramFile(QStringLiteral("screenshot-wheels.json"));
}

// What the screen shows in the window's area, once two grabs in a row agree
// (the window may still be growing to fit a page's style).
inline QImage GrabSettled(QWidget& window) {
    QImage previous;
    for (int attempt = 0; attempt < 40; ++attempt) {
        QTest::qWait(50);
        const QRect area = window.frameGeometry();
        QImage current =
            QGuiApplication::primaryScreen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
        if (!previous.isNull() && current == previous) return current;
        previous = std::move(current);
    }
    return previous;
}

// Not blank: many colours, and no single colour covering almost everything.
inline bool LooksLikeAPage(const QImage& image, QString& why) {
    std::map<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y)];
    }
    int largest = 0;
    for (const auto& [colour, count] : counts) largest = std::max(largest, count);
    const double share = double(largest) / (image.width() * image.height());
    why = QStringLiteral("%1 colours, the commonest covers %2 %").arg(counts.size()).arg(share * 100, 0, 'f', 1);
    return counts.size() >= 24 && share < 0.85;
}

// Saves "<theme>-<row>-<page>.png" for every theme and page into `folder`.
inline void ScreenshotEveryPageInEveryTheme(const QString& folder) {
    zirvel::frontend::MainWindow window;
    window.move(0, 0);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.editor()->loadFile(WriteSampleWheels());
    QDir().mkpath(folder);
    std::map<size_t, QString> seen;
    for (const auto& theme : zirvel::frontend::themes()) {
        zirvel::frontend::applyTheme(theme.id);
        for (int row = 0; row < 5; ++row) {
            window.sidebar()->setCurrentRow(row);
            const QImage shot = GrabSettled(window);
            QVERIFY2(window.width() >= window.minimumSizeHint().width(), qPrintable(theme.id));
            const QString name = theme.id + QStringLiteral("-%1-%2").arg(row).arg(QLatin1String(kPageNames[row]));
            QVERIFY(shot.save(folder + QLatin1Char('/') + name + QStringLiteral(".png")));
            QString why;
            QVERIFY2(LooksLikeAPage(shot, why), qPrintable(name + QStringLiteral(": ") + why));
            const size_t key = qHashBits(shot.constBits(), shot.sizeInBytes());
            QVERIFY2(!seen.count(key), qPrintable(name + QStringLiteral(" looks the same as ") + seen[key]));
            seen[key] = name;
        }
    }
    zirvel::frontend::applyTheme(QStringLiteral("fluent"));
}

}  // namespace zirvel_test
