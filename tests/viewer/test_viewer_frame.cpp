// SPDX-License-Identifier: Apache-2.0
#include "ViewerCase.h"

#include <scene/Generators.h>

#include <QtGui/QFont>
#include <QtGui/QPainterPath>

#include <cmath>

namespace {

using kvtest::expectGeometry;
using kvtest::Vertex;
using kvtest::verticesOf;

using ViewerAxes = ViewerCase;
using ViewerLabels = ViewerCase;
using ViewerGrid = ViewerCase;

const QColor black(Qt::black);

QFont labelFont()
{
    return QFont(QStringLiteral("Arial"), 12);
}

/// The transform that maps (u, v, 0) by the three rows of coefficients of u, v and 1.
QMatrix4x4 placement(const std::array<float, 9>& rows)
{
    return QMatrix4x4(rows[0], rows[1], 0, rows[2], //
                      rows[3], rows[4], 0, rows[5], //
                      rows[6], rows[7], 0, rows[8], //
                      0, 0, 0, 1);
}

const std::array<float, 9> alongX{0, 0, 1, 1, 0, 110, 0, -1, 0}; // (1, u + 110, -v)
const std::array<float, 9> alongY{0, -1, 100, 1, 0, 0, 0, 0, 0}; // (100 - v, u, 0)
const std::array<float, 9> alongZ{0, 0, 1, 1, 0, 0, 0, -1, 110}; // (1, u, 110 - v)
const std::array<float, 9> unplaced{1, 0, 0, 0, 1, 0, 0, 0, 0};  // (u, v, 0)

QList<ColoredSegment> gridSegments()
{
    const QColor grey(180, 180, 180);
    QList<ColoredSegment> segments;
    for (int i = -120; i <= 120; i += 10) {
        const auto at = [&](float a, float b) { return ColoredPoint(grey, QVector3D(0, a, b)); };
        const float f = static_cast<float>(i);
        segments.append({at(f, -128), at(f, 128)});
        segments.append({at(-128, f), at(128, f)});
    }
    return segments;
}

double distanceToSegment(const QVector3D& p, const QVector3D& s, const QVector3D& e)
{
    const double d[] = {double(e.x()) - s.x(), double(e.y()) - s.y(), double(e.z()) - s.z()};
    const double w[] = {double(p.x()) - s.x(), double(p.y()) - s.y(), double(p.z()) - s.z()};
    const double dd = d[0] * d[0] + d[1] * d[1] + d[2] * d[2];
    const double t = std::clamp((w[0] * d[0] + w[1] * d[1] + w[2] * d[2]) / dd, 0.0, 1.0);
    double sum = 0;
    for (int k = 0; k < 3; ++k)
        sum += (w[k] - t * d[k]) * (w[k] - t * d[k]);
    return std::sqrt(sum);
}

/// Every vertex is within @p reach of the segments, and each end of a segment is within @p reach of a vertex.
void expectAlong(const KV3DObject& object, const QList<ColoredSegment>& segments, double reach)
{
    const auto vertices = verticesOf(object);
    for (const Vertex& vertex : vertices) {
        double nearest = 1e9;
        for (const ColoredSegment& s : segments)
            nearest = std::min(nearest, distanceToSegment(vertex.lab(), s.first.second, s.second.second));
        ASSERT_LE(nearest, reach);
    }
    for (const ColoredSegment& s : segments)
        for (const QVector3D& end : {s.first.second, s.second.second}) {
            const bool reached = std::any_of(vertices.begin(), vertices.end(), [&](const Vertex& v) {
                return (v.lab() - end).length() <= reach;
            });
            ASSERT_TRUE(reached) << end.x() << " " << end.y() << " " << end.z();
        }
}

/// Two opposite corners of the bounding box of an object, in host coordinates.
std::pair<QVector3D, QVector3D> boxOf(const KV3DObject& object)
{
    QVector3D low(1e9f, 1e9f, 1e9f);
    QVector3D high = -low;
    for (const Vertex& vertex : verticesOf(object))
        for (int k = 0; k < 3; ++k) {
            low[k] = std::min(low[k], vertex.lab()[k]);
            high[k] = std::max(high[k], vertex.lab()[k]);
        }
    return {low, high};
}

/// Maximum distance of a vertex from the centre line of a stroke of width 1: strokes are 2/3 thick, and
/// their corners and mitres are somewhat farther away.
constexpr float kStroke = 1.0f;

} // namespace

// --- Axes ----------------------------------------------------------------------------------------

TEST_F(ViewerAxes, areThreeBlackRibbonsFromTheOrigin)
{
    const auto axes = group("Axes");
    const ColoredPoint origin{black, QVector3D(0, 0, 0)};
    const QList<ColoredSegment> segments{{origin, {black, QVector3D(100, 0, 0)}},
                                         {origin, {black, QVector3D(0, 110, 0)}},
                                         {origin, {black, QVector3D(0, 0, 110)}}};
    expectGeometry(*axes, kvSegments(segments, false, 1.5f));
    expectAlong(*axes, segments, 2 * 0.5); // half of width 1.5 / 1.5, with room for its corners
    EXPECT_EQ(axes->lineWidth(), 1.5f);
    EXPECT_EQ(axes->primitiveMode(), 4);
    for (const Vertex& vertex : verticesOf(*axes))
        EXPECT_EQ(vertex.color, (std::array<float, 4>{0, 0, 0, 1}));

    const auto [low, high] = boxOf(*axes);
    EXPECT_NEAR(high.x(), 100, 0.51);
    EXPECT_NEAR(high.y(), 110, 0.51);
    EXPECT_NEAR(high.z(), 110, 0.51);
    for (int k = 0; k < 3; ++k)
        EXPECT_NEAR(low[k], 0, 0.51);
}

TEST_F(ViewerAxes, haveExactlyTheirThreeLabelsBelow)
{
    EXPECT_EQ(group("Axes")->name(), QStringLiteral("Axes"));
    EXPECT_EQ(group("Axes")->childOrder(),
              (QStringList{QStringLiteral("Axis_X"), QStringLiteral("Axis_Y"), QStringLiteral("Axis_Z")}));
    for (const QString& id : group("Axes")->childOrder()) {
        EXPECT_EQ(item("Axes", id)->name(), id);
        EXPECT_EQ(item("Axes", id)->lineWidth(), 1.0f);
        EXPECT_TRUE(item("Axes", id)->isVisible());
        EXPECT_FALSE(item("Axes", id)->vertices().isEmpty());
        EXPECT_TRUE(item("Axes", id)->children().isEmpty());
    }
}

TEST_F(ViewerAxes, areBuiltAgainInPlace)
{
    const auto axes = group("Axes");
    const auto grid = group("Grid");
    const auto label = item("Axes", QStringLiteral("Axis_Y"));
    const QStringList order = root().childOrder();
    const QList<float> axesBefore = axes->vertices();
    const QList<float> gridBefore = grid->vertices();
    const QList<float> labelBefore = label->vertices();
    viewer->setDisplayAxes(false);
    label->setVisible(false);

    viewer->addAxesAndGrid();
    EXPECT_EQ(root().childOrder(), order);
    EXPECT_EQ(group("Axes"), axes);
    EXPECT_EQ(group("Grid"), grid);
    EXPECT_EQ(axes->childOrder().size(), 3);
    EXPECT_EQ(item("Axes", QStringLiteral("Axis_Y")), label);
    EXPECT_EQ(axes->vertices(), axesBefore);
    EXPECT_EQ(grid->vertices(), gridBefore);
    EXPECT_EQ(label->vertices(), labelBefore);
    EXPECT_FALSE(viewer->displayAxes());
    EXPECT_FALSE(label->isVisible());
    EXPECT_TRUE(viewer->displayGrid());
}

TEST_F(ViewerAxes, areCreatedAgainAtTheEndAfterRemoval)
{
    root().takeChild(QStringLiteral("Axes"));
    viewer->addAxesAndGrid();
    EXPECT_EQ(root().childOrder(),
              (QStringList{QStringLiteral("Plane"), QStringLiteral("Grid"), QStringLiteral("Axes")}));
    EXPECT_EQ(group("Axes")->childOrder().size(), 3);
    EXPECT_TRUE(viewer->displayAxes());
}

TEST_F(ViewerAxes, areBuiltAgainInTheirPresentWidth)
{
    group("Axes")->setLineWidth(3.0f);
    group("Grid")->setLineWidth(2.0f);
    viewer->addAxesAndGrid();
    EXPECT_EQ(group("Axes")->lineWidth(), 3.0f);
    const auto [low, high] = boxOf(*group("Axes"));
    EXPECT_NEAR(low.x(), -1.0f, 1e-3) << "a ribbon of width 3 is 2 units across";
    expectGeometry(*group("Grid"), kvSegments(gridSegments(), false, 2.0f));
}

// --- Labels --------------------------------------------------------------------------------------

TEST_F(ViewerLabels, traceTheirLettersAtTheEndsOfTheAxes)
{
    expectGeometry(*item("Axes", QStringLiteral("Axis_X")),
                   kvTextOutline(QStringLiteral("a"), placement(alongX), labelFont(), black, 1));
    expectGeometry(*item("Axes", QStringLiteral("Axis_Y")),
                   kvTextOutline(QStringLiteral("L"), placement(alongY), labelFont(), black, 1));
    expectGeometry(*item("Axes", QStringLiteral("Axis_Z")),
                   kvTextOutline(QStringLiteral("b"), placement(alongZ), labelFont(), black, 1));
}

TEST_F(ViewerLabels, areOrientedForReading)
{
    const auto ink = [](const char* letter) {
        QPainterPath path;
        path.addText(QPointF(0, 0), labelFont(), QLatin1String(letter));
        return path.boundingRect();
    };
    const auto expectBox = [](const std::pair<QVector3D, QVector3D>& box,
                              const std::array<double, 6>& expected) {
        for (int k = 0; k < 3; ++k) {
            EXPECT_NEAR(box.first[k], expected[2 * k], kStroke) << "from, axis " << k;
            EXPECT_NEAR(box.second[k], expected[2 * k + 1], kStroke) << "to, axis " << k;
        }
    };
    // "a" is horizontal, just above the grid. It starts at a* 110 and runs along a*; its top points to +b*.
    const QRectF a = ink("a");
    expectBox(boxOf(*item("Axes", QStringLiteral("Axis_X"))),
              {1, 1, 110 + a.left(), 110 + a.right(), -a.bottom(), -a.top()});
    // "L" is in the plane b* = 0, with its baseline at L* 100, and runs along a*.
    const QRectF L = ink("L");
    expectBox(boxOf(*item("Axes", QStringLiteral("Axis_Y"))),
              {100 - L.bottom(), 100 - L.top(), L.left(), L.right(), 0, 0});
    // "b" is horizontal, with its baseline at b* 110.
    const QRectF b = ink("b");
    expectBox(boxOf(*item("Axes", QStringLiteral("Axis_Z"))),
              {1, 1, b.left(), b.right(), 110 - b.bottom(), 110 - b.top()});
    EXPECT_GT(L.height(), 6.0) << "a letter, not a dot";
}

TEST_F(ViewerLabels, areBlack)
{
    for (const auto& label : group("Axes")->children())
        for (const Vertex& vertex : verticesOf(*label))
            ASSERT_EQ(vertex.color, (std::array<float, 4>{0, 0, 0, 1}));
}

TEST_F(ViewerLabels, canBeAddedToAnyObjectInAnyColour)
{
    KV3DObject parent(QStringLiteral("parent"));
    viewer->fillVertexBufferForText(&parent, QStringLiteral("Y"), QStringLiteral("Hi"), 40,
                                    QColor(200, 100, 50));
    ASSERT_EQ(parent.childOrder(), QStringList{QStringLiteral("Axis_Y")});
    const std::array<float, 9> rows{0, -1, 40, 1, 0, 0, 0, 0, 0};
    expectGeometry(
        *parent.child(QStringLiteral("Axis_Y")),
        kvTextOutline(QStringLiteral("Hi"), placement(rows), labelFont(), QColor(200, 100, 50), 1));
    EXPECT_EQ(group("Axes")->childOrder().size(), 3);
}

TEST_F(ViewerLabels, areRewrittenInPlace)
{
    KV3DObject parent(QStringLiteral("parent"));
    viewer->fillVertexBufferForText(&parent, QStringLiteral("Z"), QStringLiteral("x"), 40, black);
    const auto label = parent.child(QStringLiteral("Axis_Z"));
    label->setVisible(false);
    viewer->fillVertexBufferForText(&parent, QStringLiteral("Z"), QStringLiteral("y"), -7, Qt::red);
    EXPECT_EQ(parent.childOrder(), QStringList{QStringLiteral("Axis_Z")});
    EXPECT_EQ(parent.child(QStringLiteral("Axis_Z")), label);
    EXPECT_FALSE(label->isVisible());
    const std::array<float, 9> rows{0, 0, 1, 1, 0, 0, 0, -1, -7};
    expectGeometry(*label,
                   kvTextOutline(QStringLiteral("y"), placement(rows), labelFont(), QColor(Qt::red), 1));
}

TEST_F(ViewerLabels, ofAnUnknownAxisAreAtTheOrigin)
{
    for (const QString& axis :
         {QStringLiteral("x"), QStringLiteral("W"), QStringLiteral("XY"), QString(), QStringLiteral("X ")}) {
        KV3DObject parent(QStringLiteral("parent"));
        viewer->fillVertexBufferForText(&parent, axis, QStringLiteral("k"), 55, black);
        ASSERT_EQ(parent.childOrder(), QStringList{QStringLiteral("Axis_") + axis});
        const auto label = parent.child(QStringLiteral("Axis_") + axis);
        expectGeometry(*label,
                       kvTextOutline(QStringLiteral("k"), placement(unplaced), labelFont(), black, 1));
        const auto [low, high] = boxOf(*label);
        EXPECT_NEAR(low.z(), 0, kStroke);
        EXPECT_NEAR(high.z(), 0, kStroke);
        EXPECT_LT(high.x(), 50.0f);
    }
}

TEST_F(ViewerLabels, truncateTheirLineWidthToAWholeNumber)
{
    KV3DObject parent(QStringLiteral("parent"));
    const struct
    {
        float width;
        int traced;
    } rows[] = {{1.9f, 1}, {2.7f, 2}, {0.5f, 0}};
    for (const auto& row : rows) {
        viewer->fillVertexBufferForText(&parent, QStringLiteral("X"), QStringLiteral("a"), 110, black);
        const auto label = parent.child(QStringLiteral("Axis_X"));
        label->setLineWidth(row.width);
        viewer->fillVertexBufferForText(&parent, QStringLiteral("X"), QStringLiteral("a"), 110, black);
        expectGeometry(*label,
                       kvTextOutline(QStringLiteral("a"), placement(alongX), labelFont(), black, row.traced));
        label->setLineWidth(1.0f);
    }
}

// --- Grid ----------------------------------------------------------------------------------------

TEST_F(ViewerGrid, isFiftyGreyLinesTenUnitsApart)
{
    const auto segments = gridSegments();
    ASSERT_EQ(segments.size(), 50);
    ASSERT_EQ(segments[0].first.second, QVector3D(0, -120, -128));
    ASSERT_EQ(segments[0].second.second, QVector3D(0, -120, 128));
    ASSERT_EQ(segments[1].first.second, QVector3D(0, -128, -120));
    ASSERT_EQ(segments[1].second.second, QVector3D(0, 128, -120));
    ASSERT_EQ(segments[49].first.second, QVector3D(0, -128, 120));
    ASSERT_EQ(segments[49].second.second, QVector3D(0, 128, 120));

    const auto grid = group("Grid");
    expectGeometry(*grid, kvSegments(segments, false, 1.0f));
    expectAlong(*grid, segments, 2.0 / 3.0);
    EXPECT_EQ(grid->lineWidth(), 1.0f);
    for (const Vertex& vertex : verticesOf(*grid)) {
        ASSERT_NEAR(vertex.color[0], 180 / 255.0, 1e-5);
        ASSERT_EQ(vertex.color[0], vertex.color[1]);
        ASSERT_EQ(vertex.color[1], vertex.color[2]);
        ASSERT_EQ(vertex.color[3], 1.0f);
    }
}

TEST_F(ViewerGrid, hasNothingBelowIt)
{
    EXPECT_EQ(group("Grid")->name(), QStringLiteral("Grid"));
    EXPECT_TRUE(group("Grid")->children().isEmpty());
    EXPECT_TRUE(group("Grid")->isVisible());
}
