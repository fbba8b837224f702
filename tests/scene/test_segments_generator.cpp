// SPDX-License-Identifier: Apache-2.0
#include "GeometryProbe.h"

#include <scene/Generators.h>

#include <cfloat>
#include <limits>
#include <random>

using namespace kvtest;

namespace {

/// Thickness of the tube for a segment width.
double thickness(double width)
{
    return width / 1.5;
}

ColoredSegment segment(const QVector3D& from, const QVector3D& to, const QColor& start = Qt::red,
                       const QColor& end = Qt::blue)
{
    return {{start, from}, {end, to}};
}

/// Segments between consecutive points.
QList<ColoredSegment> polyline(const QList<QVector3D>& points)
{
    QList<ColoredSegment> segments;
    for (qsizetype i = 1; i < points.size(); ++i)
        segments.append(segment(points[i - 1], points[i]));
    return segments;
}

double pathLength(const QList<ColoredSegment>& segments)
{
    double sum = 0.0;
    for (const ColoredSegment& s : segments)
        sum += length(Vec3d(s.second.second) - Vec3d(s.first.second));
    return sum;
}

double distanceToSegment(const Vec3d& p, const Vec3d& a, const Vec3d& b)
{
    const Vec3d d = b - a;
    const double l2 = dot(d, d);
    const double t = l2 > 0.0 ? std::clamp(dot(p - a, d) / l2, 0.0, 1.0) : 0.0;
    return length(p - (a + t * d));
}

double distanceToSegments(const Vec3d& scenePoint, const QList<ColoredSegment>& segments)
{
    double nearest = std::numeric_limits<double>::infinity();
    for (const ColoredSegment& s : segments) {
        nearest = std::min(nearest, distanceToSegment(scenePoint, sceneFromHost(Vec3d(s.first.second)),
                                                      sceneFromHost(Vec3d(s.second.second))));
    }
    return nearest;
}

/// Directions spread evenly over the sphere.
std::vector<Vec3d> viewDirections(int count)
{
    std::vector<Vec3d> directions;
    for (int i = 0; i < count; ++i) {
        const double y = 1.0 - 2.0 * (i + 0.5) / count;
        const double r = std::sqrt(1.0 - y * y);
        const double angle = i * M_PI * (3.0 - std::sqrt(5.0));
        directions.push_back({r * std::cos(angle), y, r * std::sin(angle)});
    }
    return directions;
}

struct Extent
{
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();
    double size() const { return high - low; }
};

Extent extentAlong(const std::vector<TriangleCorners>& triangles, const Vec3d& direction)
{
    Extent e;
    for (const TriangleCorners& t : triangles) {
        for (const Vec3d& p : t) {
            e.low = std::min(e.low, dot(p, direction));
            e.high = std::max(e.high, dot(p, direction));
        }
    }
    return e;
}

/// Every point of every segment is inside. The ends lie on the surface and are not tested.
void expectCovered(const std::vector<TriangleCorners>& triangles, const QList<ColoredSegment>& segments)
{
    for (const ColoredSegment& s : segments) {
        const Vec3d a = sceneFromHost(Vec3d(s.first.second));
        const Vec3d b = sceneFromHost(Vec3d(s.second.second));
        for (int i = 1; i < 20; ++i) {
            const Vec3d p = a + i / 20.0 * (b - a);
            EXPECT_GT(windingNumber(triangles, p), 0.9)
                << "hole at (" << p.x << ", " << p.y << ", " << p.z << ")";
        }
    }
}

/// All points at distance @p reach from the joint are inside.
void expectJointCovered(const std::vector<TriangleCorners>& triangles, const QVector3D& hostJoint,
                        double reach)
{
    for (const Vec3d& direction : viewDirections(40)) {
        const Vec3d p = sceneFromHost(Vec3d(hostJoint)) + reach * direction;
        EXPECT_GT(windingNumber(triangles, p), 0.9) << "hole beside the joint, towards (" << direction.x
                                                    << ", " << direction.y << ", " << direction.z << ")";
    }
}

} // namespace

// ---- lines ----------------------------------------------------------------------------

TEST(SegmentsGenerator, emptyListGivesLinesThatStoreTheWidth)
{
    for (const float width : {0.0f, 1.0f, 7.5f}) {
        const GeometryData g = kvSegments({}, true, width);
        EXPECT_EQ(g.primitiveMode, 1);
        EXPECT_TRUE(g.vertices.isEmpty());
        EXPECT_EQ(g.lineWidth, width);
        EXPECT_EQ(g.markerType, 1);
        EXPECT_TRUE(g.markers.isEmpty());
        EXPECT_EQ(g.markerSize, -1.0f);
        EXPECT_EQ(g.markerParam, 0.0f);
    }
}

TEST(SegmentsGenerator, widthZeroGivesLinesInTheColoursOfTheirEnds)
{
    const QColor a(1, 2, 3, 4), b(50, 60, 70), c(9, 8, 7), d(200, 100, 0, 128);
    const QList<ColoredSegment> segments = {segment({1, 2, 3}, {4, 5, 6}, a, b),
                                            segment({-7, 8, -9}, {0, 0, 0.5f}, c, d)};
    const GeometryData g = kvSegments(segments, false, 0.0f);
    EXPECT_EQ(g.primitiveMode, 1);
    EXPECT_EQ(g.lineWidth, 0.0f);
    const auto vertices = decode(g.vertices);
    ASSERT_EQ(vertices.size(), 4u);
    const Vec3d positions[] = {{-2, 1, 3}, {-5, 4, 6}, {-8, -7, -9}, {0, 0, 0.5}};
    const QColor colors[] = {a, b, c, d};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(keyOf(vertices[i].position), keyOf(positions[i])) << i;
        EXPECT_EQ(vertices[i].color, rgba(colors[i])) << i;
    }
}

TEST(SegmentsGenerator, widthsAboveFloatEpsilonGiveARibbon)
{
    const QList<ColoredSegment> segments = {segment({0, 0, 0}, {10, 0, 0})};
    EXPECT_EQ(kvSegments(segments, false, FLT_EPSILON).primitiveMode, 1);
    EXPECT_EQ(kvSegments(segments, false, FLT_EPSILON).lineWidth, FLT_EPSILON);
    EXPECT_EQ(kvSegments(segments, false, -3.0f).primitiveMode, 1);
    EXPECT_EQ(kvSegments(segments, false, -3.0f).lineWidth, -3.0f);
    EXPECT_EQ(kvSegments(segments, false, std::nextafter(FLT_EPSILON, 1.0f)).primitiveMode, 4);
}

TEST(SegmentsGenerator, ribbonStoresItsWidthAndDefaults)
{
    const GeometryData g = kvSegments({segment({0, 0, 0}, {10, 0, 0})}, false, 2.5f);
    EXPECT_EQ(g.primitiveMode, 4);
    EXPECT_EQ(g.lineWidth, 2.5f);
    EXPECT_EQ(g.markerType, 1);
    EXPECT_TRUE(g.markers.isEmpty());
    EXPECT_EQ(g.markerSize, -1.0f);
    EXPECT_EQ(g.markerParam, 0.0f);
}

TEST(SegmentsGenerator, trailingArgumentIsIgnored)
{
    const auto segments = polyline({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}});
    for (const float width : {0.0f, 2.0f, 8.0f}) {
        const GeometryData plain = kvSegments(segments, false, width);
        for (const float trailing : {-1.0f, 0.5f, 1e9f, quietNaN}) {
            const GeometryData g = kvSegments(segments, false, width, trailing);
            EXPECT_EQ(g.vertices, plain.vertices);
            EXPECT_EQ(g.lineWidth, plain.lineWidth);
            EXPECT_EQ(g.primitiveMode, plain.primitiveMode);
        }
    }
}

// ---- one tube -------------------------------------------------------------------------------

TEST(SegmentsGenerator, wideSegmentIsAClosedTubeOfSquareSection)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<float> lab(-100.0f, 100.0f);
    for (int i = 0; i < 50; ++i) {
        const QList<ColoredSegment> one = {
            segment({lab(random), lab(random), lab(random)}, {lab(random), lab(random), lab(random)})};
        const GeometryData g = kvSegments(one, false, 6.0f);
        const auto triangles = trianglesOf(g);
        EXPECT_TRUE(isClosedSurface(triangles));
        EXPECT_EQ(distinctPositions(triangles).size(), 8u);
        const double expected = thickness(6.0) * thickness(6.0) * pathLength(one);
        EXPECT_NEAR(signedVolume(triangles), expected, 1e-4 * expected);
        expectFlatOutwardNormals(g);

        const Vec3d axis = unit(sceneFromHost(Vec3d(one[0].second.second) - Vec3d(one[0].first.second)));
        EXPECT_NEAR(extentAlong(triangles, axis).size(), pathLength(one), 1e-3);
    }
}

TEST(SegmentsGenerator, segmentsParallelToAnAxisAreClosedTubes)
{
    // Perpendiculars are computed with a reference direction; one of these segments is parallel to it.
    for (const QVector3D& direction :
         {QVector3D(1, 0, 0), QVector3D(0, 1, 0), QVector3D(0, 0, 1), QVector3D(-1, 0, 0),
          QVector3D(0, -1, 0), QVector3D(0, 0, -1), QVector3D(1, 1, 0), QVector3D(1, 1, 1),
          QVector3D(1, 1e-6f, 0), QVector3D(0, 1, -1e-6f), QVector3D(1e-6f, 0, 1)}) {
        const QList<ColoredSegment> one = {segment({5, 5, 5}, QVector3D(5, 5, 5) + 20 * direction)};
        const auto triangles = trianglesOf(kvSegments(one, false, 4.5f));
        EXPECT_TRUE(isClosedSurface(triangles));
        EXPECT_NEAR(signedVolume(triangles), 9.0 * pathLength(one), 0.01);
    }
}

TEST(SegmentsGenerator, tubeHasItsFullThicknessFromEverySide)
{
    for (const float width : {1.0f, 2.0f, 6.0f, 30.0f}) {
        for (const QVector3D& end :
             {QVector3D(50, 0, 0), QVector3D(0, 50, 0), QVector3D(0, 0, 50), QVector3D(30, -20, 40)}) {
            const auto triangles = trianglesOf(kvSegments({segment({0, 0, 0}, end)}, false, width));
            const Vec3d axis = unit(sceneFromHost(Vec3d(end)));
            for (const Vec3d& view : viewDirections(200)) {
                const Vec3d across = cross(axis, view);
                if (length(across) < 0.05)
                    continue; // view along the segment
                const double seen = extentAlong(triangles, unit(across)).size();
                EXPECT_GE(seen, thickness(width) * 0.999);
                EXPECT_LE(seen, thickness(width) * std::sqrt(2.0) * 1.001);
            }
        }
    }
}

TEST(SegmentsGenerator, tubeSeenFromItsEndShowsItsFullSection)
{
    const auto triangles = trianglesOf(kvSegments({segment({0, 0, 0}, {0, 0, 50})}, false, 6.0f));
    // Seen along b*, the section lies in the scene's XY plane. A square of area 16 has extents between 4 and
    // 4 * sqrt(2) in every direction.
    for (const Vec3d& across : {Vec3d(1, 0, 0), Vec3d(0, 1, 0), unit({1, 1, 0})}) {
        EXPECT_GE(extentAlong(triangles, across).size(), 4.0 - 1e-4);
        EXPECT_LE(extentAlong(triangles, across).size(), 4.0 * std::sqrt(2.0) + 1e-4);
    }
}

TEST(SegmentsGenerator, tubeHasTheColourOfEachEndAtThatEnd)
{
    const QColor start(10, 200, 30, 77), end(250, 20, 90);
    for (const float width : {1.0f, 6.0f}) {
        const auto vertices =
            decode(kvSegments({segment({0, 0, 0}, {0, 0, 50}, start, end)}, false, width).vertices);
        ASSERT_FALSE(vertices.empty());
        for (const GeneratedVertex& v : vertices)
            EXPECT_EQ(v.color, rgba(v.position.z < 25.0 ? start : end)) << "at " << v.position.z;
    }
}

TEST(SegmentsGenerator, tubeIsCentredOnTheSegmentInSceneCoordinates)
{
    const auto triangles = trianglesOf(kvSegments({segment({10, 20, 30}, {10, 20, 80})}, false, 6.0f));
    Vec3d sum;
    for (const PositionKey& k : distinctPositions(triangles))
        sum = sum + Vec3d(k[0], k[1], k[2]);
    const Vec3d centre = 1.0 / 8.0 * sum;
    EXPECT_NEAR(centre.x, -20.0, 1e-4);
    EXPECT_NEAR(centre.y, 10.0, 1e-4);
    EXPECT_NEAR(centre.z, 55.0, 1e-4);
}

// ---- ends -----------------------------------------------------------------------------------

struct EndsRow
{
    const char* sentence;
    float width;
    bool closedHint;
    bool reachesFurther;
};

class SegmentEnds : public testing::TestWithParam<EndsRow>
{
};

TEST_P(SegmentEnds, freeEndsAreCutSquareOrExtended)
{
    const EndsRow ends = GetParam();
    const QList<ColoredSegment> one = {segment({0, 0, 0}, {0, 0, 50})};
    const auto triangles = trianglesOf(kvSegments(one, ends.closedHint, ends.width));
    const Extent along = extentAlong(triangles, {0, 0, 1});
    const double further = ends.reachesFurther ? thickness(ends.width) * 0.5 : 0.0;
    EXPECT_NEAR(along.low, -further, 1e-4);
    EXPECT_NEAR(along.high, 50.0 + further, 1e-4);
    EXPECT_TRUE(isClosedSurface(triangles));
    EXPECT_NEAR(signedVolume(triangles), std::pow(thickness(ends.width), 2) * (50.0 + 2.0 * further), 0.01);
}

INSTANTIATE_TEST_SUITE_P(
    SegmentsGenerator, SegmentEnds,
    testing::Values(EndsRow{"narrow", 1.0f, false, true}, EndsRow{"narrowWithHint", 1.0f, true, true},
                    EndsRow{"justBelowFour", 3.9f, false, true}, EndsRow{"four", 4.0f, false, false},
                    EndsRow{"fourWithHint", 4.0f, true, true}, EndsRow{"wide", 9.0f, false, false},
                    EndsRow{"wideWithHint", 9.0f, true, true}),
    [](const auto& row) { return std::string(row.param.sentence); });

TEST(SegmentsGenerator, separateNarrowSegmentsAreExtendedAtAllEnds)
{
    const QList<ColoredSegment> loose = {segment({0, 0, 0}, {0, 0, 10}), segment({0, 0, 40}, {0, 0, 50})};
    const auto triangles = trianglesOf(kvSegments(loose, false, 3.0f)); // 2 thick
    for (const double inside : {-0.9, 10.9, 39.1, 50.9})
        EXPECT_NEAR(windingNumber(triangles, {0.01, 0.01, inside}), 1.0, 1e-3) << inside;
    for (const double outside : {-1.1, 11.1, 25.0, 38.9, 51.1})
        EXPECT_NEAR(windingNumber(triangles, {0.01, 0.01, outside}), 0.0, 1e-3) << outside;
}

// ---- corners --------------------------------------------------------------------------------

TEST(SegmentsGenerator, rightAngleIsJoinedByOneMitre)
{
    const auto segments = polyline({{0, 0, 0}, {0, 0, 50}, {0, 50, 50}});
    const auto triangles = trianglesOf(kvSegments(segments, false, 6.0f));
    EXPECT_EQ(distinctPositions(triangles).size(), 12u); // four at each of three points
    EXPECT_TRUE(isClosedSurface(triangles));
    // Mitres cut each leg through its axis, so that its volume is the section times the length of the axis.
    EXPECT_NEAR(signedVolume(triangles), 16.0 * 100.0, 0.05);
    expectCovered(triangles, segments);
    // The outer corner is complete: a round or bevelled joint would not contain the first point.
    EXPECT_GT(windingNumber(triangles, {1.9, 0.01, 51.9}), 0.9);
    EXPECT_LT(windingNumber(triangles, {2.1, 0.01, 52.1}), 0.1);
}

TEST(SegmentsGenerator, moderateTurnsAreMitredAndKeepTheThickness)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<float> turn(-15.0f, 15.0f);
    for (int round = 0; round < 20; ++round) {
        QList<QVector3D> points = {{0, 0, 0}};
        QVector3D step(20, 0, 0);
        for (int i = 0; i < 6; ++i) {
            points.append(points.last() + step);
            step += QVector3D(turn(random), turn(random), turn(random)) * 0.5f;
        }
        const auto segments = polyline(points);
        const GeometryData g = kvSegments(segments, false, 6.0f);
        const auto triangles = trianglesOf(g);
        EXPECT_EQ(distinctPositions(triangles).size(), 4u * std::size_t(points.size()));
        EXPECT_TRUE(isClosedSurface(triangles));
        const double expected = 16.0 * pathLength(segments);
        EXPECT_NEAR(signedVolume(triangles), expected, 0.01 * expected);
        expectCovered(triangles, segments);
        for (qsizetype i = 1; i + 1 < points.size(); ++i)
            expectJointCovered(triangles, points[i], 1.8);
    }
}

TEST(SegmentsGenerator, collinearSegmentsHaveNoSeam)
{
    const auto whole = trianglesOf(kvSegments({segment({0, 0, 0}, {0, 0, 60})}, false, 6.0f));
    const auto cut = trianglesOf(kvSegments(polyline({{0, 0, 0}, {0, 0, 20}, {0, 0, 60}}), false, 6.0f));
    EXPECT_TRUE(isClosedSurface(cut));
    EXPECT_EQ(distinctPositions(cut).size(), 12u);
    EXPECT_NEAR(signedVolume(cut), signedVolume(whole), 1e-3);
}

class ClosedFigures : public testing::TestWithParam<float>
{
};

TEST_P(ClosedFigures, closedPolygonIsMitredAtAllCorners)
{
    const float width = GetParam();
    const auto square = polyline({{50, 0, 0}, {50, 60, 0}, {50, 60, 60}, {50, 0, 60}, {50, 0, 0}});
    const auto triangles = trianglesOf(kvSegments(square, false, width));
    EXPECT_EQ(distinctPositions(triangles).size(), 16u);
    EXPECT_TRUE(isClosedSurface(triangles));
    const double s = thickness(width);
    EXPECT_NEAR(signedVolume(triangles), s * s * 240.0, 0.001 * s * s * 240.0);
    expectCovered(triangles, square);
    // The corner where the list begins is mitred as well. Scene coordinates (-a*, L*, b*).
    for (const Vec3d& corner : {Vec3d(0, 50, 0), Vec3d(-60, 50, 0), Vec3d(-60, 50, 60), Vec3d(0, 50, 60)}) {
        const double x = corner.x < -30.0 ? -1.0 : 1.0;
        const double z = corner.z > 30.0 ? 1.0 : -1.0;
        EXPECT_GT(windingNumber(triangles, corner + 0.48 * s * Vec3d(x, 0.01, z)), 0.9);
        EXPECT_LT(windingNumber(triangles, corner + 0.52 * s * Vec3d(x, 0.01, z)), 0.1);
    }
}

TEST_P(ClosedFigures, closedPolygonWithRoundedCoordinatesHasNoSeam)
{
    const float width = GetParam();
    for (const int corners : {3, 5, 7, 12}) {
        QList<QVector3D> points;
        for (int i = 0; i <= corners; ++i) { // at constant lightness, like the outline of a section
            const double a = 0.3 + 2.0 * M_PI * (i % corners) / corners;
            points.append({50.0f, float(60.0 * std::cos(a)), float(60.0 * std::sin(a))});
        }
        const auto figure = polyline(points);
        const auto triangles = trianglesOf(kvSegments(figure, false, width));
        EXPECT_TRUE(isClosedSurface(triangles)) << corners;
        expectCovered(triangles, figure);
        if (corners == 3)
            continue; // a turn of 120 degrees may be too sharp for a mitre
        EXPECT_EQ(distinctPositions(triangles).size(), 4u * std::size_t(corners));
        const double expected = std::pow(thickness(width), 2) * pathLength(figure);
        EXPECT_NEAR(signedVolume(triangles), expected, 0.001 * expected) << corners;
    }
}

TEST_P(ClosedFigures, closedFigureInSpaceHasNoHole)
{
    const float width = GetParam();
    const auto loop = polyline({{0, 0, 0}, {0, 60, 0}, {30, 60, 60}, {70, 0, 60}, {40, -50, 30}, {0, 0, 0}});
    const auto triangles = trianglesOf(kvSegments(loop, false, width));
    EXPECT_TRUE(isClosedSurface(triangles));
    expectCovered(triangles, loop);
    expectJointCovered(triangles, {0, 0, 0}, 0.4 * thickness(width));
    expectJointCovered(triangles, {30, 60, 60}, 0.4 * thickness(width));
}

TEST_P(ClosedFigures, closedFigureAtConstantLightnessIsABand)
{
    const float width = GetParam();
    const double s = thickness(width);
    const auto square = polyline({{50, 0, 0}, {50, 60, 0}, {50, 60, 60}, {50, 0, 60}, {50, 0, 0}});
    const auto flat = trianglesOf(kvSegments(square, true, width));
    EXPECT_TRUE(isClosedSurface(flat));
    EXPECT_NEAR(signedVolume(flat), s * s / 3.0 * 240.0, 0.001 * s * s * 240.0);
    // with a small change of lightness the section is square
    const auto climbing = polyline({{50, 0, 0}, {50, 60, 0}, {50, 60, 60}, {51, 0, 60}, {50, 0, 0}});
    EXPECT_GT(signedVolume(trianglesOf(kvSegments(climbing, true, width))), 0.95 * s * s * 240.0);
}

INSTANTIATE_TEST_SUITE_P(SegmentsGenerator, ClosedFigures, testing::Values(1.5f, 3.0f, 6.0f),
                         [](const auto& row) { return "width" + std::to_string(int(row.param * 10)); });

TEST(SegmentsGenerator, almostEqualEndsCloseTheFigure)
{
    auto square = polyline({{50, 10, 10}, {50, 60, 10}, {50, 60, 60}, {50, 10, 60}, {50, 10, 10}});
    const auto exact = trianglesOf(kvSegments(square, false, 6.0f));
    square.last().second.second = QVector3D(50.00002f, 10.000002f, 9.999998f);
    const auto fuzzy = trianglesOf(kvSegments(square, false, 6.0f));
    EXPECT_TRUE(isClosedSurface(fuzzy));
    EXPECT_EQ(distinctPositions(fuzzy).size(), distinctPositions(exact).size());
    EXPECT_NEAR(signedVolume(fuzzy), signedVolume(exact), 0.01);

    square.last().second.second = QVector3D(50, 10, 14); // open figure, cut square at both ends
    const auto open = trianglesOf(kvSegments(square, false, 6.0f));
    EXPECT_EQ(distinctPositions(open).size(), 20u);
    EXPECT_NEAR(signedVolume(open), 16.0 * 196.0, 0.1);
}

TEST(SegmentsGenerator, sharpCornerIsCoveredWithoutASpike)
{
    for (const float opening : {0.0f, 0.01f, 0.1f, 1.0f, 3.0f}) {
        // A turn of almost 180 degrees: the angle at the corner is below 5 degrees.
        const auto segments = polyline({{0, 0, 0}, {0, 0, 40}, {0, opening, 1}});
        const auto triangles = trianglesOf(kvSegments(segments, false, 6.0f));
        EXPECT_TRUE(isClosedSurface(triangles)) << opening;
        expectCovered(triangles, segments);
        expectJointCovered(triangles, {0, 0, 40}, 1.6);
        for (const TriangleCorners& t : triangles) {
            for (const Vec3d& p : t)
                EXPECT_LE(distanceToSegments(p, segments), 2.0 * thickness(6.0)) << opening;
        }
    }
}

TEST(SegmentsGenerator, cornersOfAllAnglesAreCoveredWithoutSpikes)
{
    for (int degrees = 0; degrees < 360; degrees += 5) {
        const double a = degrees * M_PI / 180.0;
        const QVector3D joint(10, 20, 30);
        const QVector3D end = joint + 40.0f * QVector3D(float(std::cos(a)), float(std::sin(a)), 0.0f);
        const auto segments = polyline({joint - QVector3D(40, 0, 0), joint, end});
        for (const float width : {2.0f, 6.0f}) {
            const GeometryData g = kvSegments(segments, false, width);
            ASSERT_TRUE(allFinite(g.vertices)) << degrees;
            const auto triangles = trianglesOf(g);
            EXPECT_TRUE(isClosedSurface(triangles)) << degrees;
            expectCovered(triangles, segments);
            expectJointCovered(triangles, joint, 0.4 * thickness(width));
            for (const TriangleCorners& t : triangles) {
                for (const Vec3d& p : t)
                    EXPECT_LE(distanceToSegments(p, segments), 2.0 * thickness(width)) << degrees;
            }
        }
    }
}

/// The middle of each segment is surrounded by the tube in all directions perpendicular to the segment.
void expectThickFromEverySide(const std::vector<TriangleCorners>& triangles,
                              const QList<ColoredSegment>& segments, double width)
{
    for (const ColoredSegment& s : segments) {
        const Vec3d a = sceneFromHost(Vec3d(s.first.second));
        const Vec3d b = sceneFromHost(Vec3d(s.second.second));
        const Vec3d axis = unit(b - a);
        const Vec3d middle = 0.5 * (a + b);
        for (const Vec3d& view : viewDirections(50)) {
            if (length(cross(axis, view)) < 0.05)
                continue;
            const Vec3d across = unit(cross(axis, view));
            for (const double side : {-1.0, 1.0})
                EXPECT_GT(windingNumber(triangles, middle + side * 0.49 * thickness(width) * across), 0.9);
        }
    }
}

TEST(SegmentsGenerator, joinedSegmentsHaveTheirThicknessFromEverySide)
{
    const auto segments = polyline({{0, 0, 0}, {0, 0, 50}, {0, 50, 50}, {50, 50, 50}});
    expectThickFromEverySide(trianglesOf(kvSegments(segments, false, 6.0f)), segments, 6.0);
}

TEST(SegmentsGenerator, closedFiguresInSpaceKeepTheirThickness)
{
    // Parallel transport around a non-planar figure returns rotated axes.
    std::mt19937 random(17);
    std::uniform_real_distribution<float> lab(-80.0f, 80.0f);
    for (int round = 0; round < 10; ++round) {
        QList<QVector3D> points;
        for (int i = 0; i < 8; ++i) {
            const double a = 2.0 * M_PI * i / 8.0;
            points.append({0.6f * lab(random), float(90.0 * std::cos(a)), float(90.0 * std::sin(a))});
        }
        points.append(points.first());
        const auto loop = polyline(points);
        const auto triangles = trianglesOf(kvSegments(loop, false, 6.0f));
        EXPECT_TRUE(isClosedSurface(triangles));
        expectThickFromEverySide(triangles, loop, 6.0);
    }
}

// ---- bad input ------------------------------------------------------------------------------

TEST(SegmentsGenerator, degenerateSegmentsAreSkipped)
{
    const QVector3D a(0, 0, 0), b(0, 0, 30), c(0, 30, 30);
    for (const float width : {1.0f, 6.0f}) {
        const auto expected = kvSegments({segment(a, b), segment(b, c)}, false, width).vertices;
        EXPECT_EQ(kvSegments({segment(a, b), segment(b, b), segment(b, c)}, false, width).vertices, expected);
        EXPECT_EQ(kvSegments({segment(a, a), segment(a, b), segment(b, c)}, false, width).vertices, expected);
        EXPECT_EQ(kvSegments({segment(a, b), segment(b, c), segment(c, c)}, false, width).vertices, expected);
    }
}

TEST(SegmentsGenerator, onlyDegenerateSegmentsGiveNoVertices)
{
    for (const bool hint : {false, true}) {
        const GeometryData g =
            kvSegments({segment({1, 2, 3}, {1, 2, 3}), segment({4, 5, 6}, {4, 5, 6})}, hint, 6.0f);
        EXPECT_TRUE(g.vertices.isEmpty());
        EXPECT_EQ(g.lineWidth, 6.0f);
    }
}

TEST(SegmentsGenerator, segmentsWithNonFinitePositionsAreSkipped)
{
    const QVector3D a(0, 0, 0), b(0, 0, 30), c(0, 30, 30), d(30, 30, 30);
    const auto expected = kvSegments({segment(a, b), segment(c, d)}, false, 6.0f).vertices;
    for (const QVector3D& bad :
         {QVector3D(quietNaN, 0, 0), QVector3D(0, infinite, 0), QVector3D(0, 0, -infinite)}) {
        const QList<ColoredSegment> segments = {segment(a, b), segment(b, bad), segment(bad, c),
                                                segment(c, d), segment(bad, bad)};
        EXPECT_EQ(kvSegments(segments, false, 6.0f).vertices, expected);
    }
}

TEST(SegmentsGenerator, segmentsBetweenTheSamePointsBecomeOneInTheLastColours)
{
    const QVector3D a(0, 0, 0), b(0, 0, 30), c(0, 30, 30);
    const ColoredSegment ab = segment(a, b), bc = segment(b, c);
    const ColoredSegment newAb = segment(a, b, Qt::green, Qt::yellow),
                         newBa = segment(b, a, Qt::yellow, Qt::green);
    for (const float width : {1.0f, 6.0f}) {
        const auto expected = kvSegments({newAb, bc}, false, width).vertices;
        EXPECT_EQ(kvSegments({ab, bc, newAb}, false, width).vertices, expected);
        EXPECT_EQ(kvSegments({ab, newBa, bc}, false, width).vertices, expected);
        EXPECT_NE(kvSegments({ab, bc}, false, width).vertices, expected);
    }
}

TEST(SegmentsGenerator, allLinesBetweenTheSamePointsAreKept)
{
    const QVector3D a(0, 0, 0), b(0, 0, 30);
    const auto vertices = decode(kvSegments({segment(a, b), segment(b, a, Qt::green)}, false, 0.0f).vertices);
    ASSERT_EQ(vertices.size(), 4u);
    EXPECT_EQ(vertices[0].color, rgba(Qt::red));
    EXPECT_EQ(vertices[2].color, rgba(Qt::green));
}

TEST(SegmentsGenerator, randomInputGivesFiniteVertices)
{
    std::mt19937 random(5);
    const float special[] = {0.0f,  -0.0f,  1.0f,   -1.0f,    1e-45f,   1e-30f,   1e-10f,
                             3e-4f, 1e-3f,  100.0f, 1e6f,     1e10f,    -1e10f,   1e18f,
                             1e25f, -1e30f, 1e37f,  quietNaN, infinite, -infinite};
    std::uniform_int_distribution<std::size_t> pick(0, std::size(special) - 1);
    const auto point = [&] {
        return QVector3D(special[pick(random)], special[pick(random)], special[pick(random)]);
    };
    for (int round = 0; round < 3000; ++round) {
        QList<QVector3D> points;
        for (int i = 0; i < 5; ++i)
            points.append(point());
        if (round % 3 == 0)
            points.append(points.first());
        const auto segments = polyline(points);
        for (const float width : {1e-6f, 1.0f, 6.0f, 1e10f}) {
            const GeometryData g = kvSegments(segments, round % 2 == 0, width);
            ASSERT_TRUE(allFinite(g.vertices)) << "round " << round << ", width " << width;
        }
    }
}

TEST(SegmentsGenerator, veryLargePositionsGiveNoNaN)
{
    const float max = FLT_MAX;
    for (const float width : {1.0f, 6.0f, max, infinite, quietNaN}) {
        const GeometryData g =
            kvSegments(polyline({{max, max, max}, {-max, max, 0}, {0, -max, max}, {0, 0, 0}}), true, width);
        for (const float f : g.vertices)
            ASSERT_FALSE(std::isnan(f)) << "width " << width;
    }
}

TEST(SegmentsGenerator, nonFiniteWidthGivesLines)
{
    const QList<ColoredSegment> one = {segment({0, 0, 0}, {10, 0, 0})};
    for (const float width : {infinite, -infinite, quietNaN}) {
        const GeometryData g = kvSegments(one, true, width);
        EXPECT_EQ(g.primitiveMode, 1);
        EXPECT_EQ(g.vertices, kvSegments(one, true, 0.0f).vertices);
    }
}

TEST(SegmentsGenerator, segmentsShorterThanTheirWidthAreClosed)
{
    QList<QVector3D> points;
    for (int i = 0; i <= 40; ++i) { // a ring of radius 1 in steps of 0.16 at thickness 4
        const float a = float(2.0 * M_PI * (i % 40) / 40.0);
        points.append({50.0f, std::cos(a), std::sin(a)});
    }
    const GeometryData g = kvSegments(polyline(points), true, 6.0f);
    EXPECT_TRUE(allFinite(g.vertices));
    EXPECT_TRUE(isClosedSurface(trianglesOf(g)));
}
