// SPDX-License-Identifier: Apache-2.0
#include "GeometryProbe.h"

#include <scene/Generators.h>

#include <QtGui/QPainterPath>

using namespace kvtest;

namespace {

struct Stroke
{
    Vec3d from;
    Vec3d to;
};

QFont fontOfSize(int pixels)
{
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPixelSize(pixels);
    return font;
}

/// 201 samples of the outline, connected if they are less than a unit apart, in scene coordinates.
std::vector<Stroke> expectedStrokes(const QString& text, const QMatrix4x4& transform, const QFont& font)
{
    QPainterPath path;
    path.addText(0, 0, font, text);
    std::vector<Stroke> strokes;
    QPointF before;
    for (int i = 0; i <= 200; ++i) {
        const QPointF sample = path.pointAtPercent(std::min(1.0, i / 200.0));
        const QPointF step = sample - before;
        if (i > 0 && step.x() * step.x() + step.y() * step.y() < 1.0) {
            const auto place = [&](const QPointF& p) {
                const float* m = transform.constData(); // column-major
                double h[4];
                for (int row = 0; row < 4; ++row)
                    h[row] = m[row] * p.x() + m[4 + row] * p.y() + m[12 + row];
                return sceneFromHost(Vec3d(h[0] / h[3], h[1] / h[3], h[2] / h[3]));
            };
            strokes.push_back({place(before), place(sample)});
        }
        before = sample;
    }
    return strokes;
}

std::vector<Stroke> drawnStrokes(const GeometryData& g)
{
    EXPECT_EQ(g.primitiveMode, 1);
    const auto vertices = decode(g.vertices);
    std::vector<Stroke> strokes;
    for (std::size_t i = 0; i + 2 <= vertices.size(); i += 2)
        strokes.push_back({vertices[i].position, vertices[i + 1].position});
    return strokes;
}

double totalLength(const std::vector<Stroke>& strokes)
{
    double sum = 0.0;
    for (const Stroke& s : strokes)
        sum += length(s.to - s.from);
    return sum;
}

double distanceTo(const std::vector<Stroke>& strokes, const Vec3d& p)
{
    double nearest = 1e300;
    for (const Stroke& s : strokes) {
        const Vec3d d = s.to - s.from;
        const double l2 = dot(d, d);
        const double t = l2 > 0.0 ? std::clamp(dot(p - s.from, d) / l2, 0.0, 1.0) : 0.0;
        nearest = std::min(nearest, length(p - (s.from + t * d)));
    }
    return nearest;
}

/// Both sets of strokes cover the same lines, independent of how they are divided.
void expectSamePicture(const std::vector<Stroke>& actual, const std::vector<Stroke>& expected,
                       double tolerance)
{
    ASSERT_FALSE(expected.empty());
    ASSERT_FALSE(actual.empty());
    EXPECT_NEAR(totalLength(actual), totalLength(expected), 1e-3 * totalLength(expected));
    for (const Stroke& s : expected)
        EXPECT_LT(distanceTo(actual, 0.5 * (s.from + s.to)), tolerance);
    for (const Stroke& s : actual)
        EXPECT_LT(distanceTo(expected, 0.5 * (s.from + s.to)), tolerance);
}

} // namespace

TEST(TextOutlineGenerator, samplesTheOutlineInTwoHundredSteps)
{
    for (const char* text : {"L", "a", "O", "b*"}) {
        const QString string = QString::fromLatin1(text);
        const auto actual = drawnStrokes(kvTextOutline(string, {}, fontOfSize(16), Qt::white, 0));
        expectSamePicture(actual, expectedStrokes(string, {}, fontOfSize(16)), 1e-3);
    }
}

TEST(TextOutlineGenerator, closesTheOutlineUpToItsLastSample)
{
    // The letter has one contour, so the last sample equals the first one.
    const auto strokes = drawnStrokes(kvTextOutline(QStringLiteral("L"), {}, fontOfSize(16), Qt::white, 0));
    QPainterPath path;
    path.addText(0, 0, fontOfSize(16), QStringLiteral("L"));
    const QPointF end = path.pointAtPercent(1.0);
    EXPECT_LT(distanceTo(strokes, sceneFromHost(Vec3d(end.x(), end.y(), 0.0))), 1e-4);
    EXPECT_NEAR(totalLength(strokes), path.length(), 0.05 * path.length());
}

TEST(TextOutlineGenerator, doesNotConnectOneContourWithTheNext)
{
    const QString colon = QStringLiteral(":");
    const auto strokes = drawnStrokes(kvTextOutline(colon, {}, fontOfSize(40), Qt::white, 0));
    expectSamePicture(strokes, expectedStrokes(colon, {}, fontOfSize(40)), 1e-3);
    for (const Stroke& s : strokes)
        EXPECT_LT(length(s.to - s.from), 10.0) << "the two dots are connected";
}

TEST(TextOutlineGenerator, doesNotConnectSamplesAUnitApart)
{
    // The text is so large that each of the 200 steps is longer than a unit.
    const GeometryData g = kvTextOutline(QStringLiteral("W"), {}, fontOfSize(400), Qt::white, 0);
    EXPECT_TRUE(expectedStrokes(QStringLiteral("W"), {}, fontOfSize(400)).empty());
    EXPECT_TRUE(g.vertices.isEmpty());
    EXPECT_EQ(g.primitiveMode, 1);
}

TEST(TextOutlineGenerator, measuresDistancesBeforeTheTransform)
{
    QMatrix4x4 larger, smaller;
    larger.scale(50.0f);
    smaller.scale(0.001f);
    const QString text = QStringLiteral("i:");
    const QFont font = fontOfSize(24);
    expectSamePicture(drawnStrokes(kvTextOutline(text, larger, font, Qt::white, 0)),
                      expectedStrokes(text, larger, font), 0.05);
    expectSamePicture(drawnStrokes(kvTextOutline(text, smaller, font, Qt::white, 0)),
                      expectedStrokes(text, smaller, font), 1e-6);
}

TEST(TextOutlineGenerator, appliesTheTransformBeforeTheSceneCoordinates)
{
    QMatrix4x4 transform;
    transform.translate(10.0f, 20.0f, 30.0f);
    transform.rotate(40.0f, 0.3f, -0.8f, 0.5f);
    transform.scale(2.0f, 3.0f, 4.0f);
    const QString text = QStringLiteral("Qg");
    expectSamePicture(drawnStrokes(kvTextOutline(text, transform, fontOfSize(14), Qt::white, 0)),
                      expectedStrokes(text, transform, fontOfSize(14)), 5e-3);

    // The path point (u, v) has host coordinates (u, v, 0) and scene coordinates (-v, u, 0).
    const auto flat = drawnStrokes(kvTextOutline(QStringLiteral("L"), {}, fontOfSize(16), Qt::white, 0));
    for (const Stroke& s : flat) {
        EXPECT_EQ(s.from.z, 0.0);
        EXPECT_GE(s.from.y, -1e-4) << "u points right from the origin";
        EXPECT_GE(s.from.x, -1e-4) << "v is negative above the baseline";
    }
}

TEST(TextOutlineGenerator, drawsInTheGivenColour)
{
    const QColor color(12, 34, 56, 78);
    for (const int width : {0, 2}) {
        const auto vertices =
            decode(kvTextOutline(QStringLiteral("a"), {}, fontOfSize(16), color, width).vertices);
        ASSERT_FALSE(vertices.empty());
        for (const GeneratedVertex& v : vertices)
            ASSERT_EQ(v.color, rgba(color));
    }
}

TEST(TextOutlineGenerator, positiveWidthGivesRibbonsAroundTheOutline)
{
    const QString text = QStringLiteral("a*");
    const GeometryData g = kvTextOutline(text, {}, fontOfSize(20), Qt::white, 2);
    EXPECT_EQ(g.primitiveMode, 4);
    EXPECT_EQ(g.lineWidth, 2.0f);
    EXPECT_TRUE(allFinite(g.vertices));
    const auto triangles = trianglesOf(g);
    EXPECT_TRUE(isClosedSurface(triangles));
    for (const Stroke& s : expectedStrokes(text, {}, fontOfSize(20)))
        EXPECT_GT(windingNumber(triangles, 0.5 * (s.from + s.to)), 0.9);
}

TEST(TextOutlineGenerator, textWithoutAnOutlineGivesNoVertices)
{
    for (const QString& text : {QString(), QStringLiteral(" "), QStringLiteral("   ")}) {
        const GeometryData g = kvTextOutline(text, {}, fontOfSize(16), Qt::white, 2);
        EXPECT_TRUE(g.vertices.isEmpty());
        EXPECT_EQ(g.primitiveMode, 1);
        EXPECT_EQ(g.lineWidth, 2.0f);
    }
}
