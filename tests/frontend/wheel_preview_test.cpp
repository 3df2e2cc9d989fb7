// The wheel preview: segment count and highlight rules, label elision, the
// centred geometry and the theme colours, all read back from its pixels;
// and what it tells screen readers.
#include <QAccessible>
#include <QDir>
#include <QFontMetrics>
#include <QImage>
#include <QTest>
#include <QtMath>

#include <algorithm>
#include <cmath>

#include "frontend/themes.h"
#include "frontend/wheel_preview.h"
#include "support/frontend_test_main.h"

using zirvel::frontend::applyTheme;
using zirvel::frontend::currentThemeId;
using zirvel::frontend::Theme;
using zirvel::frontend::themeById;
using zirvel::frontend::themes;
using zirvel::frontend::WheelPreview;

namespace {

// Never one of the themes' colours, so it shows where nothing was painted.
const QColor kBackground(255, 0, 255);

const Theme& CurrentTheme() { return themeById(currentThemeId()); }

// Draws the preview alone, without any window background.
QImage Render(WheelPreview& preview) {
    QImage image(preview.size(), QImage::Format_ARGB32);
    image.fill(kBackground);
    preview.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

bool Near(QColor actual, QColor expected) {
    constexpr int kTolerance = 3;
    return std::abs(actual.red() - expected.red()) <= kTolerance &&
           std::abs(actual.green() - expected.green()) <= kTolerance &&
           std::abs(actual.blue() - expected.blue()) <= kTolerance;
}

// A segment's inside: its fill or the highlight.
bool IsFill(QColor pixel, const Theme& theme) { return Near(pixel, theme.colours[1]) || Near(pixel, theme.colours[2]); }

int Distance(QColor a, QColor b) {
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
}

// Which of the theme's painted colours (or the background) a pixel is closest
// to: 0 outline, 1 fill, 2 highlight, 3 centre disc, -1 background.
int NearestPart(QColor pixel, const Theme& theme) {
    int best = -1;
    int bestDistance = Distance(pixel, kBackground);
    for (int part = 0; part <= 3; ++part) {
        const int distance = Distance(pixel, theme.colours[static_cast<std::size_t>(part)]);
        if (distance < bestDistance) {
            best = part;
            bestDistance = distance;
        }
    }
    return best;
}

// Antialiasing spreads a thin outline over two pixels, each blended with
// what lies beside it; at least one of them near `at` stays closest to the
// outline colour.
bool OutlineAround(const QImage& image, QPoint at, const Theme& theme) {
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            if (NearestPart(image.pixelColor(at + QPoint(dx, dy)), theme) == 0) return true;
        }
    }
    return false;
}

// The circle the preview paints into, as the test expects it to be.
struct Circle {
    QPointF centre;
    double radius;
};

Circle ExpectedCircle(QSize size) {
    const int side = std::min(size.width(), size.height());
    return {QPointF(size.width() / 2.0, size.height() / 2.0), (side - 12) / 2.0};
}

// A point at `fraction` of the radius in the middle of segment `index`,
// counting clockwise from twelve o'clock.
QPoint SegmentPoint(QSize size, int count, int index, double fraction) {
    const Circle circle = ExpectedCircle(size);
    const double angle = qDegreesToRadians((index + 0.5) * 360.0 / count);
    return QPointF(circle.centre.x() + std::sin(angle) * circle.radius * fraction,
                   circle.centre.y() - std::cos(angle) * circle.radius * fraction)
        .toPoint();
}

// Of `count` segments, segment `highlighted` shows the highlight colour and
// every other one the fill colour (-1: none is highlighted).
void VerifyHighlight(const QImage& image, int count, int highlighted) {
    const Theme& theme = CurrentTheme();
    for (int i = 0; i < count; ++i) {
        const QColor pixel = image.pixelColor(SegmentPoint(image.size(), count, i, 0.45));
        const QColor expected = theme.colours[i == highlighted ? 2 : 1];
        QVERIFY2(Near(pixel, expected), qPrintable(QStringLiteral("segment %1 is %2").arg(i).arg(pixel.name())));
    }
}

// Walks a ring inside the segments and counts the outlines it crosses: one
// per boundary between segments.
int OutlineCrossings(const QImage& image) {
    const Theme& theme = CurrentTheme();
    const Circle circle = ExpectedCircle(image.size());
    const auto isFill = [&](int step, int steps) {
        const double angle = 2 * M_PI * step / steps;
        const QPoint at(static_cast<int>(circle.centre.x() + std::sin(angle) * circle.radius * 0.85),
                        static_cast<int>(circle.centre.y() - std::cos(angle) * circle.radius * 0.85));
        return IsFill(image.pixelColor(at), theme);
    };
    constexpr int kSteps = 2880;
    int start = 0;
    while (start < kSteps && !isFill(start, kSteps)) ++start;
    if (start == kSteps) return -1;
    int crossings = 0;
    bool inFill = true;
    for (int step = 1; step <= kSteps; ++step) {
        const bool fill = isFill((start + step) % kSteps, kSteps);
        if (inFill && !fill) ++crossings;
        inFill = fill;
    }
    return crossings;
}

QStringList NumberedLabels(int count) {
    QStringList labels;
    for (int i = 1; i <= count; ++i) labels << QString::number(i);
    return labels;
}

// Ink of the labels: pixels in `area` that are neither fill nor highlight.
QRect InkBounds(const QImage& image, const QRect& area) {
    const Theme& theme = CurrentTheme();
    QRect bounds;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (!IsFill(image.pixelColor(x, y), theme)) bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

}  // namespace

class WheelPreviewTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { applyTheme(QStringLiteral("fluent")); }

    void startsWithEightUnlabelledSegments() {
        WheelPreview preview;
        QCOMPARE(preview.segmentCount(), 8);
        QCOMPARE(preview.highlighted(), -1);
        QVERIFY(preview.labels().isEmpty());
        QCOMPARE(preview.minimumSize(), QSize(160, 160));
        preview.resize(100, 50);
        QCOMPARE(preview.size(), QSize(160, 160));
    }

    void zeroSegmentsBecomeOneFullCircle() {
        WheelPreview preview;
        preview.resize(400, 400);
        preview.setSegmentCount(0);
        QCOMPARE(preview.segmentCount(), 1);
        preview.setSegmentCount(-7);
        QCOMPARE(preview.segmentCount(), 1);
        const QImage image = Render(preview);
        // The whole ring is one fill: no second segment, so nothing highlighted.
        for (int quarter = 0; quarter < 4; ++quarter) {
            const QColor pixel = image.pixelColor(SegmentPoint(image.size(), 4, quarter, 0.6));
            QVERIFY2(Near(pixel, CurrentTheme().colours[1]), qPrintable(pixel.name()));
        }
        // A full pie still closes with its edge from the centre to twelve o'clock.
        QCOMPARE(OutlineCrossings(image), 1);
        QVERIFY(OutlineAround(image, QPoint(200, 60), CurrentTheme()));
    }

    void segmentCountIsClampedToTwentyFour() {
        WheelPreview preview;
        preview.resize(400, 400);
        preview.setSegmentCount(30);
        QCOMPARE(preview.segmentCount(), 24);
        const QImage image = Render(preview);
        QCOMPARE(OutlineCrossings(image), 24);
        VerifyHighlight(image, 24, 1);
    }

    void ringShowsEachSegmentCount_data() {
        QTest::addColumn<int>("count");
        for (int count : {2, 3, 7, 8, 12, 24}) QTest::newRow(qPrintable(QString::number(count))) << count;
    }
    void ringShowsEachSegmentCount() {
        QFETCH(int, count);
        WheelPreview preview;
        preview.resize(400, 400);
        preview.setSegmentCount(count);
        const QImage image = Render(preview);
        QCOMPARE(OutlineCrossings(image), count);
        VerifyHighlight(image, count, 1);
    }

    void thirtyLabelsDrawTheFirstTwentyFour() {
        WheelPreview preview;
        preview.resize(400, 400);
        preview.setLabels(NumberedLabels(30));
        QCOMPARE(preview.segmentCount(), 24);
        QCOMPARE(preview.labels().size(), 30);
        const QImage thirty = Render(preview);
        QCOMPARE(OutlineCrossings(thirty), 24);

        preview.setLabels(NumberedLabels(24));
        QCOMPARE(Render(preview), thirty);
        preview.setLabels(QStringList(24, QString()));
        QVERIFY(Render(preview) != thirty);
    }

    void segmentCountChangesAfterLabelsLimitTheLabelsDrawn() {
        WheelPreview preview;
        preview.resize(400, 400);
        preview.setLabels(NumberedLabels(6));
        preview.setSegmentCount(3);
        const QImage fewer = Render(preview);
        preview.setLabels(NumberedLabels(3));
        QCOMPARE(Render(preview), fewer);
    }

    void labelsWithoutHighlightHighlightNothing() {
        WheelPreview preview;
        preview.resize(400, 400);
        preview.setLabels({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")});
        QCOMPARE(preview.highlighted(), -1);
        VerifyHighlight(Render(preview), 3, -1);
        preview.setHighlighted(2);
        VerifyHighlight(Render(preview), 3, 2);
        preview.setHighlighted(5);
        QCOMPARE(preview.highlighted(), 5);
        VerifyHighlight(Render(preview), 3, -1);
    }

    void withoutLabelsTheSecondSegmentIsHighlighted_data() {
        QTest::addColumn<int>("highlighted");
        QTest::newRow("none") << -1;
        QTest::newRow("first") << 0;
        QTest::newRow("fifth") << 4;
        QTest::newRow("beyond") << 40;
    }
    void withoutLabelsTheSecondSegmentIsHighlighted() {
        QFETCH(int, highlighted);
        WheelPreview preview;
        preview.resize(400, 400);
        preview.setHighlighted(highlighted);
        VerifyHighlight(Render(preview), 8, 1);
    }

    void longLabelsAreElidedToAThirdOfTheSide() {
        WheelPreview preview;
        preview.resize(400, 400);
        // Narrow letters, so that a few pixels more or less change the cut.
        const QString label = QStringLiteral("Lilie i ilość lilii w Liliowie");
        preview.setLabels({label});
        const QImage image = Render(preview);

        QFont font = preview.font();
        font.setPointSizeF(400 / 30.0);
        const int available = static_cast<int>(400 / 3.2);
        const QString elided = QFontMetrics(font, &image).elidedText(label, Qt::ElideRight, available);
        QVERIFY2(elided.endsWith(QChar(0x2026)), qPrintable(elided));
        QVERIFY(elided.size() < label.size());
        // The label tells the limit from the width of the text box.
        QVERIFY(elided != QFontMetrics(font, &image).elidedText(label, Qt::ElideRight, static_cast<int>(400 / 3.0)));

        // The one label sits below the centre, in a box a third of the side wide.
        const Circle circle = ExpectedCircle(image.size());
        const QPointF at(circle.centre.x(), circle.centre.y() + circle.radius * 0.68);
        const QRect box = QRectF(at.x() - 400 / 6.0, at.y() - 12, 400 / 3.0, 24).toAlignedRect();
        const QRect ink = InkBounds(image, box);
        QVERIFY(!ink.isEmpty());
        QVERIFY2(ink.width() <= available, qPrintable(QString::number(ink.width())));
        QVERIFY2(ink.width() >= available / 2, qPrintable(QString::number(ink.width())));

        preview.setLabels({elided});
        QCOMPARE(Render(preview), image);
    }

    void nonSquareWidgetDrawsACentredCircle() {
        WheelPreview preview;
        preview.resize(400, 240);
        // Three segments keep the three, six and nine o'clock rim clear of boundaries.
        preview.setSegmentCount(3);
        const QImage image = Render(preview);
        const Theme& theme = CurrentTheme();
        const QPoint centre(200, 120);
        const int radius = 114;
        QVERIFY(Near(image.pixelColor(centre), theme.colours[3]));
        for (const QPoint direction : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1)}) {
            const QPoint inside = centre + direction * (radius - 4);
            const QPoint outside = centre + direction * (radius + 3);
            QVERIFY2(IsFill(image.pixelColor(inside), theme), qPrintable(QString::number(inside.x())));
            QVERIFY2(Near(image.pixelColor(outside), kBackground), qPrintable(QString::number(outside.x())));
        }
        for (int i = 0; i < 3; ++i) {
            QVERIFY(IsFill(image.pixelColor(SegmentPoint(image.size(), 3, i, (radius - 4.0) / radius)), theme));
            QVERIFY(Near(image.pixelColor(SegmentPoint(image.size(), 3, i, (radius + 4.0) / radius)), kBackground));
        }
        // The outline runs on the circle, even over the highlighted segment.
        QVERIFY(OutlineAround(image, QPoint(centre.x() - radius, centre.y()), theme));
        QVERIFY(OutlineAround(image, QPoint(centre.x(), centre.y() + radius), theme));
        QVERIFY(!OutlineAround(image, QPoint(centre.x() - radius + 4, centre.y()), theme));
        // The strips beside the square stay untouched.
        QVERIFY(Near(image.pixelColor(10, 120), kBackground));
        QVERIFY(Near(image.pixelColor(390, 120), kBackground));
        QVERIFY(Near(image.pixelColor(78, 120), kBackground));
    }

    void segmentsAreOutlined() {
        WheelPreview preview;
        preview.resize(400, 400);
        preview.setSegmentCount(4);
        const QImage image = Render(preview);
        const Theme& theme = CurrentTheme();
        // Boundaries at twelve and three o'clock, between centre disc and rim.
        QVERIFY(OutlineAround(image, QPoint(200, 80), theme));
        QVERIFY(OutlineAround(image, QPoint(320, 200), theme));
        QVERIFY(OutlineAround(image, QPoint(200, 320), theme));
        QVERIFY(OutlineAround(image, QPoint(80, 200), theme));
        QVERIFY(!OutlineAround(image, QPoint(150, 150), theme));
    }

    void paintsInTheCurrentTheme() {
        WheelPreview preview;
        preview.resize(300, 300);
        for (const Theme& theme : themes()) {
            applyTheme(theme.id);
            const QImage image = Render(preview);
            QVERIFY2(Near(image.pixelColor(150, 150), theme.colours[3]), qPrintable(theme.id));
            VerifyHighlight(image, 8, 1);
            QVERIFY2(OutlineAround(image, QPoint(150, 60), theme), qPrintable(theme.id));
            QVERIFY2(OutlineAround(image, QPoint(6, 150), theme), qPrintable(theme.id));
        }
    }

    void everySetterRepaints_data() {
        QTest::addColumn<int>("setter");
        QTest::newRow("segment count") << 0;
        QTest::newRow("highlighted") << 1;
        QTest::newRow("labels") << 2;
    }
    void everySetterRepaints() {
        QFETCH(int, setter);
        WheelPreview preview;
        preview.resize(200, 200);
        preview.show();
        QVERIFY(QTest::qWaitForWindowExposed(&preview));
        QCoreApplication::processEvents();
        PaintCounter counter;
        preview.installEventFilter(&counter);
        if (setter == 0) preview.setSegmentCount(5);
        if (setter == 1) preview.setHighlighted(2);
        if (setter == 2) preview.setLabels({QStringLiteral("A")});
        QTRY_VERIFY(counter.paints > 0);
    }

    void tellsScreenReadersItsFields() {
        WheelPreview preview;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&preview);
        QVERIFY(accessible);
        QCOMPARE(accessible->role(), QAccessible::Graphic);
        QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("Podgląd koła"));
        QCOMPARE(accessible->text(QAccessible::Description), QStringLiteral("Pola koła: 8."));
        preview.setSegmentCount(5);
        QCOMPARE(accessible->text(QAccessible::Description), QStringLiteral("Pola koła: 5."));

        preview.setLabels({QStringLiteral("Leczenie"), QStringLiteral("Przeładuj"), QStringLiteral("Skok")});
        QCOMPARE(accessible->text(QAccessible::Description), QStringLiteral("Pola koła (3): Leczenie, Przeładuj, Skok."));
        preview.setHighlighted(1);
        QCOMPARE(accessible->text(QAccessible::Description),
                 QStringLiteral("Pola koła (3): Leczenie, Przeładuj, Skok. Wybrane: Przeładuj."));
        preview.setSegmentCount(2);
        QCOMPARE(accessible->text(QAccessible::Description), QStringLiteral("Pola koła (2): Leczenie, Przeładuj. Wybrane: Przeładuj."));
        preview.setHighlighted(2);
        QCOMPARE(accessible->text(QAccessible::Description), QStringLiteral("Pola koła (2): Leczenie, Przeładuj."));
    }

    void labelsWithPercentSignsAreListedVerbatim() {
        WheelPreview preview;
        preview.setLabels({QStringLiteral("100% %1"), QStringLiteral("%2")});
        preview.setHighlighted(0);
        QCOMPARE(QAccessible::queryAccessibleInterface(&preview)->text(QAccessible::Description),
                 QStringLiteral("Pola koła (2): 100% %1, %2. Wybrane: 100% %1."));
    }

    // Not a check of its own: pictures to look at after a change of the painting.
    void writesSnapshotsOfEachTheme() {
        QVERIFY(QDir().mkpath(QStringLiteral(ZIRVEL_SNAPSHOT_DIR)));
        WheelPreview preview;
        preview.resize(320, 320);
        preview.setLabels({QStringLiteral("Leczenie"), QStringLiteral("Przeładuj"), QStringLiteral("Skok"),
                           QStringLiteral("Granat odłamkowy"), QStringLiteral("Mapa"), QStringLiteral("Zażółć gęślą jaźń")});
        preview.setHighlighted(1);
        for (const Theme& theme : themes()) {
            applyTheme(theme.id);
            QImage image(preview.size(), QImage::Format_ARGB32);
            image.fill(theme.colours[3].darker(130));
            preview.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
            const QString path = QStringLiteral(ZIRVEL_SNAPSHOT_DIR "/wheel_preview_") + theme.id + QStringLiteral(".png");
            QVERIFY(image.save(path));
            QCOMPARE(QImage(path).convertToFormat(QImage::Format_ARGB32), image);
        }
    }

private:
    struct PaintCounter : QObject {
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint) ++paints;
            return false;
        }
    };
};

ZIRVEL_FRONTEND_TEST_MAIN(WheelPreviewTest)
#include "wheel_preview_test.moc"
