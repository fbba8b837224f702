// SPDX-License-Identifier: Apache-2.0
#include "app/support/BuiltInGamut.h"
#include "app/support/Picture.h"
#include "app/support/Solids.h"

#include "model/slices/SliceDrawing.h"
#include "model/slices/SliceFile.h"

#include <gtest/gtest.h>

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <cmath>
#include <limits>

using namespace kvtest;

namespace {

const Solid solid = box({0, -40, -60}, {100, 80, 60});

QImage drawn(const SliceDrawing& drawing, QSize size, const QRectF& area)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::magenta);
    QPainter painter(&picture);
    drawing.paint(painter, area);
    return picture;
}

QImage drawn(const SliceDrawing& drawing, QSize size)
{
    return drawn(drawing, size, QRectF(QPointF(), size));
}

SliceDrawing ofBox(const SlicePlane& plane, const QColor& color = Qt::red)
{
    SliceDrawing drawing = SliceDrawing::ofPlane(plane);
    drawing.add({QStringLiteral("box"), {QStringLiteral("a note")}, color}, gamutSlice(solid, plane));
    return drawing;
}

/// Whether a pixel at @p at or next to it is nearer to @p color than to the background. Thin lines are
/// antialiased over several pixels.
bool shows(const QImage& picture, const QPointF& at, const QColor& color)
{
    int nearest = 255;
    for (int y = -1; y <= 1; ++y)
        for (int x = -1; x <= 1; ++x)
            nearest = std::min(nearest, difference(picture.pixelColor(at.toPoint() + QPoint(x, y)), color));
    return nearest < 150;
}

const SlicePlane atFifty{SlicePlane::Lightness, 50};
const SlicePlane atHueZero{SlicePlane::Hue, 0};

TEST(SliceDrawing, drawsTheOutlineWhereItsPlaceIs)
{
    for (const QSize& size : {QSize(1000, 750), QSize(500, 700), QSize(2000, 800)}) {
        const SliceDrawing drawing = ofBox(atFifty);
        const QImage picture = drawn(drawing, size);
        const QTransform place = drawing.planeToArea(QRectF(QPointF(), size));
        for (const QPointF& p : {QPointF(80, 13), QPointF(-40, 13), QPointF(13, 60), QPointF(13, -60)})
            EXPECT_TRUE(shows(picture, place.map(p), Qt::red))
                << p.x() << ", " << p.y() << " in " << size.width() << "x" << size.height() << " is "
                << picture.pixelColor(place.map(p).toPoint()).name().toStdString();
        // a light tint of the colour inside, the background outside
        EXPECT_GT(picture.pixelColor(place.map(QPointF(50, 33)).toPoint()).saturation(), 10);
        EXPECT_EQ(picture.pixelColor(place.map(QPointF(84, 13)).toPoint()), QColor(Qt::white));
    }
}

TEST(SliceDrawing, isToScaleAndUpright)
{
    for (const SlicePlane& plane : {atFifty, atHueZero}) {
        const QTransform place = ofBox(plane).planeToArea(QRectF(0, 0, 900, 500));
        EXPECT_GT(place.m11(), 0.0);
        EXPECT_DOUBLE_EQ(place.m11(), -place.m22());
        EXPECT_EQ(place.m12(), 0.0);
    }
}

TEST(SliceDrawing, holdsAllGamutsWithinTheArea)
{
    SliceDrawing drawing = ofBox(atFifty);
    drawing.add({QStringLiteral("wide"), {}, Qt::blue},
                gamutSlice(box({0, -150, 0}, {100, -90, 20}), atFifty));
    const QRectF area(0, 0, 800, 600);
    const QTransform place = drawing.planeToArea(area);
    for (const QPointF& p : {QPointF(80, 60), QPointF(80, -60), QPointF(-150, 0), QPointF(-150, 20)})
        EXPECT_TRUE(area.contains(place.map(p)));
}

TEST(SliceDrawing, staysInsideItsAreaAndPaintsAllOfIt)
{
    const QImage picture = drawn(ofBox(atFifty), {400, 300}, QRectF(50, 40, 300, 200));
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 400; ++x) {
            const bool inside = QRect(50, 40, 300, 200).contains(x, y);
            ASSERT_EQ(picture.pixelColor(x, y) == QColor(Qt::magenta), !inside) << x << ", " << y;
        }
}

TEST(SliceDrawing, isTheSameAtEverySize)
{
    const QImage small = drawn(ofBox(atFifty), {500, 400});
    const QImage large = drawn(ofBox(atFifty), {1500, 1200});
    const QImage shrunk = large.scaled(500, 400, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    double sum = 0.0;
    for (int y = 0; y < 400; ++y)
        for (int x = 0; x < 500; ++x)
            sum += std::abs(small.pixelColor(x, y).green() - shrunk.pixelColor(x, y).green());
    EXPECT_LT(sum / (500.0 * 400.0), 4.0); // only edges of lines and letters differ
}

TEST(SliceDrawing, atAHueBeginsAtTheAxisAndShowsAllLightnesses)
{
    const QRectF area(0, 0, 800, 600);
    SliceDrawing drawing = SliceDrawing::ofPlane(atHueZero);
    drawing.add({QStringLiteral("grey"), {}, Qt::red}, gamutSlice(box({40, -5, -5}, {60, 5, 5}), atHueZero));
    const QTransform place = drawing.planeToArea(area);
    EXPECT_TRUE(area.contains(place.map(QPointF(0, 0))));
    EXPECT_TRUE(area.contains(place.map(QPointF(0, 100))));
    const QImage picture = drawn(drawing, {800, 600});
    EXPECT_TRUE(shows(picture, place.map(QPointF(3, 60)), Qt::red));
}

TEST(SliceDrawing, keepsTheRangeItIsGiven)
{
    const QRectF area(0, 0, 800, 600);
    SliceDrawing drawing = ofBox(atFifty);
    drawing.setRange(QRectF(-128, -128, 256, 256));
    const QTransform before = drawing.planeToArea(area);
    drawing.add({QStringLiteral("bar"), {QStringLiteral("a note")}, Qt::blue},
                gamutSlice(box({0, -150, 0}, {100, 150, 20}), atFifty));
    EXPECT_EQ(drawing.planeToArea(area), before);
    EXPECT_NE(ofBox(atFifty).planeToArea(area), before);
}

TEST(SliceDrawing, ofRingsDrawsEachRing)
{
    SliceDrawing drawing = SliceDrawing::ofRings();
    const GamutRings rings = gamutRings(solid);
    drawing.add({QStringLiteral("box"), {}, Qt::red}, rings);
    const QSize size(900, 700);
    const QImage picture = drawn(drawing, size);
    const QTransform place = drawing.planeToArea(QRectF(QPointF(), size));
    for (const QPolygonF& ring : rings.rings) {
        const QPointF p = place.map(ring[70]); // at a hue without labels or axes
        EXPECT_TRUE(shows(picture, p, Qt::red)) << p.x() << ", " << p.y();
    }
}

TEST(SliceDrawing, ignoresDataOfTheOtherKind)
{
    SliceDrawing slices = SliceDrawing::ofPlane(atFifty);
    SliceDrawing rings = SliceDrawing::ofRings();
    const QImage noSlices = drawn(slices, {300, 300});
    const QImage noRings = drawn(rings, {300, 300});
    slices.add({QStringLiteral("x"), {}, Qt::red}, gamutRings(solid));
    rings.add({QStringLiteral("x"), {}, Qt::red}, gamutSlice(solid, atFifty));
    EXPECT_EQ(drawn(slices, {300, 300}), noSlices);
    EXPECT_EQ(drawn(rings, {300, 300}), noRings);
}

TEST(SliceDrawing, hasALegendByDefault)
{
    SliceDrawing drawing = ofBox(atFifty);
    const QImage with = drawn(drawing, {600, 400});
    drawing.setLegendVisible(false);
    const QImage without = drawn(drawing, {600, 400});
    EXPECT_NE(with, without);
    const auto redRightOf = [](const QImage& picture, int left) {
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = left; x < picture.width(); ++x)
                count += picture.pixelColor(x, y) == QColor(Qt::red) ? 1 : 0;
        return count;
    };
    const qreal right = ofBox(atFifty).planeToArea(QRectF(0, 0, 600, 400)).map(QPointF(100, 0)).x();
    EXPECT_GT(redRightOf(with, static_cast<int>(right) + 4), 5); // the colour sample of the legend
}

/// Boxes side by side along b*, in the default colours.
SliceDrawing ofBoxes(int count)
{
    SliceDrawing drawing = SliceDrawing::ofPlane(atFifty);
    for (int i = 0; i < count; ++i) {
        const float b = static_cast<float>(20 * i);
        drawing.add({QStringLiteral("box %1").arg(i + 1),
                     {QStringLiteral("a note"), QStringLiteral("an area")},
                     SliceDrawing::defaultColor(i)},
                    gamutSlice(box({0, -60, b}, {100, 60, b + 18}), atFifty));
    }
    return drawing;
}

/// The text of a drawing, as an SVG contains it.
QByteArray svgOf(const SliceDrawing& drawing, const QSize& size)
{
    return SliceFile::svg(drawing, size);
}

TEST(SliceDrawing, namesEveryGamutInsideTheDrawing)
{
    for (const QSize& size : {QSize(1000, 750), QSize(640, 480), QSize(500, 900), QSize(2000, 400)})
        for (const int count : {1, 6, 7, 8, 15, 25}) {
            const QByteArray svg = svgOf(ofBoxes(count), size);
            for (int i = 1; i <= count; ++i)
                EXPECT_TRUE(svg.contains(QStringLiteral(">box %1<").arg(i).toUtf8())) << i << " of " << count;
            const QImage picture = drawn(ofBoxes(count), size);
            for (int x = 0; x < size.width(); ++x)
                ASSERT_EQ(picture.pixelColor(x, size.height() - 1), QColor(Qt::white)) << "cut off";
        }
}

TEST(SliceDrawing, countsTheGamutsForWhichTheLegendHasNoRoom)
{
    const QByteArray svg = svgOf(ofBoxes(100), {1000, 750});
    const int named = static_cast<int>(svg.count(">box "));
    EXPECT_GT(named, 50);
    EXPECT_LT(named, 100);
    EXPECT_TRUE(svg.contains(QStringLiteral(">and %1 more<").arg(100 - named).toUtf8()));
}

TEST(SliceDrawing, leavesNotesOutBeforeTextBecomesSmaller)
{
    EXPECT_EQ(svgOf(ofBoxes(8), {1000, 750}).count(">a note<"), 8);
    const QByteArray many = svgOf(ofBoxes(12), {1000, 750});
    EXPECT_EQ(many.count(">a note<"), 0);
    EXPECT_EQ(many.count(">an area<"), 12); // the last note is the most important
}

TEST(SliceDrawing, gamutsOfTheSameColourHaveDifferentLines)
{
    const QSize size(1000, 750);
    const SliceDrawing drawing = ofBoxes(15); // the 1st, 8th and 15th have the same colour
    const QImage picture = drawn(drawing, size);
    const QTransform place = drawing.planeToArea(QRectF(QPointF(), size));
    const auto share = [&](int i) { // of the edge at a* 60 that is drawn
        int seen = 0;
        for (int k = 0; k < 100; ++k)
            seen +=
                shows(picture, place.map(QPointF(60, 20 * i + 2 + 0.14 * k)), SliceDrawing::defaultColor(0))
                    ? 1
                    : 0;
        return seen;
    };
    EXPECT_EQ(share(0), 100);
    EXPECT_LT(share(7), 98);
    EXPECT_GT(share(7), 50);
    EXPECT_LT(share(14), share(7) + 25);
    EXPECT_GT(share(14), 20);
}

TEST(SliceDrawing, usesItsPalette)
{
    SliceDrawing drawing = ofBox(atFifty);
    drawing.setPalette({Qt::black, Qt::green, Qt::darkBlue});
    const QImage picture = drawn(drawing, {600, 400});
    EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::black));
    int ink = 0, grid = 0;
    for (int y = 0; y < 400; ++y)
        for (int x = 0; x < 600; ++x) {
            const QColor c = picture.pixelColor(x, y);
            ink += c.green() > 100 && c.red() < 40 && c.blue() < 60 ? 1 : 0;
            grid += c.blue() > 25 && c.red() < 20 && c.green() < 20 ? 1 : 0;
        }
    EXPECT_GT(ink, 300);
    EXPECT_GT(grid, 200);
}

TEST(SliceDrawing, ofNothingHasAxesAll)
{
    for (const SliceDrawing& drawing :
         {SliceDrawing::ofPlane(atFifty), SliceDrawing::ofPlane(atHueZero), SliceDrawing::ofRings()}) {
        const QRectF area(0, 0, 300, 300);
        EXPECT_TRUE(area.contains(drawing.planeToArea(area).map(QPointF(0, 0))));
        EXPECT_NE(drawn(drawing, {300, 300}).pixelColor(150, 150), QColor(Qt::magenta));
    }
}

// --- Colours of the plane -----------------------------------------------------------------------------

constexpr double degree = 3.14159265358979323846 / 180.0;

SliceDrawing coloured(const SlicePlane& plane)
{
    SliceDrawing drawing = SliceDrawing::ofPlane(plane);
    drawing.add({QStringLiteral("box"), {}, Qt::red},
                gamutSlice(box({0, -110, -110}, {100, 110, 110}), plane));
    drawing.setFill(SliceDrawing::Fill::Colors);
    return drawing;
}

/// The picture in an SVG; null if it has none.
QImage pictureIn(const QByteArray& svg)
{
    const QByteArray mark("data:image/png;base64,");
    const qsizetype from = svg.indexOf(mark);
    if (from < 0)
        return {};
    const qsizetype start = from + mark.size();
    return QImage::fromData(QByteArray::fromBase64(svg.mid(start, svg.indexOf('"', start) - start)));
}

const QList<Device> someColours{
    {0.8, 0.2, 0.1}, {0.1, 0.6, 0.3}, {0.3, 0.3, 0.9}, {0.9, 0.8, 0.3}, {0.4, 0.4, 0.4}};

TEST(SliceDrawing, isFilledWithTheColoursOfItsLightness)
{
    for (const Device& device : someColours) {
        const Lab lab = labOf(device);
        const SliceDrawing drawing = coloured({SlicePlane::Lightness, lab.L});
        const QSize size(1600, 1200);
        const QPointF at = drawing.planeToArea(QRectF(QPointF(), size)).map(QPointF(lab.a, lab.b));
        const QColor seen = drawn(drawing, size).pixelColor(at.toPoint());
        EXPECT_LE(difference(seen, colorOf(device)), 4) << seen.name().toStdString();
    }
}

TEST(SliceDrawing, isFilledWithTheColoursOfItsHue)
{
    for (const Device& device : someColours) {
        const Lab lab = labOf(device);
        const SliceDrawing drawing = coloured({SlicePlane::Hue, std::atan2(lab.b, lab.a) / degree});
        const QSize size(1600, 1200);
        const QPointF at =
            drawing.planeToArea(QRectF(QPointF(), size)).map(QPointF(std::hypot(lab.a, lab.b), lab.L));
        const QColor seen = drawn(drawing, size).pixelColor(at.toPoint());
        // grey is at the axis, below its line
        EXPECT_LE(difference(seen, colorOf(device)), lab.a * lab.a > 1.0 ? 4 : 255)
            << seen.name().toStdString();
    }
}

TEST(SliceDrawing, showsColoursOutsideTheScreenInTheirHue)
{
    const SliceDrawing drawing = coloured(atFifty);
    const QSize size(1600, 1200);
    const QImage picture = drawn(drawing, size);
    for (int hue = 5; hue < 360; hue += 10) { // at C* 105 no colour of this lightness is in sRGB
        const QPointF place(105.0 * std::cos(hue * degree), 105.0 * std::sin(hue * degree));
        const QColor seen =
            picture.pixelColor(drawing.planeToArea(QRectF(QPointF(), size)).map(place).toPoint());
        const Lab shown = labOf({seen.redF(), seen.greenF(), seen.blueF()});
        const double turn = std::remainder(std::atan2(shown.b, shown.a) / degree - hue, 360.0);
        EXPECT_LT(std::abs(turn), 2.0) << hue;
        EXPECT_NEAR(shown.L, 50.0, 1.0) << hue;
    }
}

TEST(SliceDrawing, fillsUpToTheOutlineAndNotItsHoles)
{
    const Solid hollow = solid + box({10, 0, -20}, {90, 40, 20}, true);
    SliceDrawing drawing = SliceDrawing::ofPlane(atFifty);
    drawing.add({QStringLiteral("hollow"), {}, Qt::red}, gamutSlice(hollow, atFifty));
    drawing.setFill(SliceDrawing::Fill::Colors);
    const QSize size(1600, 1200);
    const QImage picture = drawn(drawing, size);
    const QTransform place = drawing.planeToArea(QRectF(QPointF(), size));
    const auto isPaper = [&](double a, double b) {
        return picture.pixelColor(place.map(QPointF(a, b)).toPoint()) == QColor(Qt::white);
    };
    for (const double b : {-53.0, 33.0, 57.0}) {
        EXPECT_TRUE(isPaper(83.0, b) && isPaper(-43.0, b)) << b;
        EXPECT_FALSE(isPaper(77.0, b) || isPaper(-37.0, b)) << b;
    }
    EXPECT_TRUE(isPaper(3.0, 13.0) && isPaper(37.0, -13.0));
    EXPECT_FALSE(isPaper(-3.0, 13.0) || isPaper(43.0, -13.0));
}

TEST(SliceDrawing, anSvgContainsTheColoursAndNothingOutside)
{
    const QImage picture = pictureIn(svgOf(coloured(atFifty), {1000, 750}));
    ASSERT_FALSE(picture.isNull());
    const Lab lab = labOf({0.8, 0.2, 0.1});
    const SliceDrawing drawing = coloured({SlicePlane::Lightness, lab.L});
    const QImage atRed = pictureIn(svgOf(drawing, {1000, 750}));
    // it fills the frame, which ends at ticks 10 or 20 dE beyond the box, alike on all sides
    const QSize size = atRed.size();
    double covered = 0.0;
    for (int x = 0; x < size.width(); ++x)
        covered += qAlpha(atRed.pixel(x, size.height() / 2)) / 255.0;
    const double pixels = covered / 220.0; // for each dE
    const QPointF at = QPointF(size.width(), size.height()) / 2.0 + QPointF(lab.a, -lab.b) * pixels;
    EXPECT_LE(difference(atRed.pixelColor(at.toPoint()), colorOf(Device{0.8, 0.2, 0.1})), 5);
    EXPECT_EQ(qAlpha(picture.pixel(3, size.height() / 2)), 0);
    EXPECT_TRUE(pictureIn(svgOf(ofBox(atFifty), {1000, 750})).isNull());
}

TEST(SliceDrawing, ringsAreNotFilledWithColours)
{
    SliceDrawing rings = SliceDrawing::ofRings();
    rings.add({QStringLiteral("box"), {}, Qt::red}, gamutRings(solid));
    const QImage plain = drawn(rings, {600, 400});
    rings.setFill(SliceDrawing::Fill::Colors);
    EXPECT_EQ(drawn(rings, {600, 400}), plain);
}

// --- Points -------------------------------------------------------------------------------------------

TEST(SlicePoints, distancesAreThoseFromThePlane)
{
    const PlaneView above = viewOf({53, 10, -20}, atFifty);
    EXPECT_NEAR(above.distance, 3.0, 1e-9);
    EXPECT_EQ(above.place, QPointF(10, -20));
    const SlicePlane hue{SlicePlane::Hue, 90}; // the half-plane a* 0, b* > 0
    const PlaneView beside = viewOf({30, 4, 25}, hue);
    EXPECT_NEAR(beside.distance, 4.0, 1e-9);
    EXPECT_NEAR(beside.place.x(), 25.0, 1e-9);
    EXPECT_NEAR(beside.place.y(), 30.0, 1e-9);
    const PlaneView behind = viewOf({30, 4, -3}, hue); // nearest to the axis
    EXPECT_NEAR(behind.distance, 5.0, 1e-9);
    EXPECT_NEAR(behind.place.x(), 0.0, 1e-9);
}

TEST(SlicePoints, areThoseNearThePlaneWithTheirSide)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    QList<MeasuredPoint> points;
    for (const KVGamut::LabPoint& lab :
         {KVGamut::LabPoint{50, 0, 0}, {52, 100, 100}, {52.6f, 0, 0}, {nan, 0, 0}})
        points.append({lab, QColor(), QStringLiteral("p")});
    const QList<SlicePoint> near = slicePoints(points, atFifty, 2.5, builtInGamut("sRGB", 9));
    ASSERT_EQ(near.size(), 2);
    EXPECT_TRUE(near[0].isInside);
    EXPECT_FALSE(near[1].isInside);
    EXPECT_EQ(near[1].place, QPointF(100, 100));
}

SliceDrawing withPoints(const QList<SlicePoint>& points)
{
    SliceDrawing drawing = ofBox(atFifty);
    drawing.setRange(QRectF(-50, -70, 140, 140));
    drawing.setPoints(points, {QStringLiteral("inside it"), QStringLiteral("outside it")});
    return drawing;
}

TEST(SlicePoints, areDiscsInsideAndCrossesOutside)
{
    const QSize size(1000, 750);
    const SliceDrawing drawing =
        withPoints({{{30, 30}, Qt::green, {}, true}, {{30, -30}, Qt::green, {}, false}});
    const QImage picture = drawn(drawing, size);
    const QTransform place = drawing.planeToArea(QRectF(QPointF(), size));
    const QPoint inside = place.map(QPointF(30, 30)).toPoint();
    const QPoint outside = place.map(QPointF(30, -30)).toPoint();
    EXPECT_EQ(picture.pixelColor(inside), QColor(Qt::green));
    EXPECT_EQ(picture.pixelColor(inside + QPoint(2, 0)), QColor(Qt::green));
    EXPECT_LT(picture.pixelColor(outside).lightness(), 100); // ink
    EXPECT_LT(picture.pixelColor(outside + QPoint(2, 2)).lightness(), 100);
    EXPECT_GT(picture.pixelColor(outside + QPoint(0, 4)).lightness(), 200); // paper between the arms
}

TEST(SlicePoints, namesAreShownWhereThereIsRoom)
{
    QList<SlicePoint> points{{{30, 30}, Qt::green, QStringLiteral("alone"), true}};
    for (int i = 0; i < 5; ++i)
        points.append({{30.0 + 0.5 * i, -30}, Qt::green, QStringLiteral("crowd %1").arg(i), true});
    const QByteArray svg = svgOf(withPoints(points), {1000, 750});
    EXPECT_TRUE(svg.contains(">alone<"));
    EXPECT_EQ(svg.count(">crowd "), 2); // to the left of the first, to the right of the last
    EXPECT_TRUE(svg.contains(">inside it<") && svg.contains(">outside it<"));
}

TEST(SlicePoints, manyInOnePlaceAreDrawnOnce)
{
    const SlicePoint one{{30, 30}, Qt::green, {}, true};
    const QByteArray single = svgOf(withPoints({one}), {1000, 750});
    const QByteArray many = svgOf(withPoints(QList<SlicePoint>(5000, one)), {1000, 750});
    EXPECT_EQ(many.size(), single.size());
}

/// Discs to the left, crosses to the right.
SliceDrawing crowdInSteps(qreal step)
{
    QList<SlicePoint> points;
    for (qreal a = -40.0; a < 40.0; a += step)
        for (qreal b = -40.0; b < 40.0; b += step)
            points.append({{a, b}, Qt::green, {}, a < 0.0});
    return withPoints(points);
}

TEST(SlicePoints, areThinnedOutWhereTheyWouldOverlap)
{
    const QSize size(1000, 750);
    const qsizetype few = svgOf(crowdInSteps(1.0), size).size(),
                    many = svgOf(crowdInSteps(0.25), size).size();
    EXPECT_LT(std::abs(many - few), few / 10);
    const SliceDrawing drawing = crowdInSteps(0.25);
    const QImage picture = drawn(drawing, size);
    const QTransform place = drawing.planeToArea(QRectF(QPointF(), size));
    const QRect discs = place.mapRect(QRectF(-38, -38, 36, 76)).toRect();
    int green = 0;
    for (int y = discs.top(); y <= discs.bottom(); ++y)
        for (int x = discs.left(); x <= discs.right(); ++x)
            green += picture.pixelColor(x, y) == QColor(Qt::green) ? 1 : 0;
    EXPECT_GT(green, discs.width() * discs.height() / 4); // they still cover their part of the plot
}

TEST(SlicePoints, farOnesDoNotShrinkThePlot)
{
    const QRectF area(0, 0, 800, 600);
    SliceDrawing drawing = ofBox(atFifty);
    const QTransform before = drawing.planeToArea(area);
    drawing.setPoints({{{1e30, -1e30}, Qt::green, {}, false}}, {});
    EXPECT_EQ(drawing.planeToArea(area), before);
    EXPECT_FALSE(drawn(drawing, {800, 600}).isNull());
    drawing.setPoints({{{120, 0}, Qt::green, {}, false}}, {});
    EXPECT_TRUE(area.contains(drawing.planeToArea(area).map(QPointF(120, 0))));
}

} // namespace
