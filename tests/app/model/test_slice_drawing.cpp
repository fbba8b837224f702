// SPDX-License-Identifier: Apache-2.0
#include "app/support/Picture.h"
#include "app/support/Solids.h"

#include "model/slices/SliceDrawing.h"

#include <gtest/gtest.h>

#include <QtGui/QImage>
#include <QtGui/QPainter>

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

} // namespace
