// SPDX-License-Identifier: Apache-2.0
#include "GeometryProbe.h"

#include <scene/Generators.h>

using namespace kvtest;

namespace {

/// The 24 segments of the bracketed cube of a marker.
QList<ColoredSegment> bracketedCube(const ColoredPoint& marker, float size)
{
    QList<ColoredSegment> segments;
    const float r = 0.5f * size;
    const float third = size / 3.0f;
    for (const float sx : {-1.0f, 1.0f}) {
        for (const float sy : {-1.0f, 1.0f}) {
            for (const float sz : {-1.0f, 1.0f}) {
                const QVector3D corner = marker.second + QVector3D(sx * r, sy * r, sz * r);
                segments.append(
                    {{marker.first, corner}, {marker.first, corner - QVector3D(sx * third, 0, 0)}});
                segments.append(
                    {{marker.first, corner}, {marker.first, corner - QVector3D(0, sy * third, 0)}});
                segments.append(
                    {{marker.first, corner}, {marker.first, corner - QVector3D(0, 0, sz * third)}});
            }
        }
    }
    return segments;
}

const QList<ColoredPoint> three = {{QColor(255, 10, 20), {50, 0, 0}},
                                   {QColor(1, 200, 30, 99), {20, -60, 40}},
                                   {QColor(7, 8, 250), {90, 70, -80}}};

/// The vertices of each marker. A vertex belongs to the marker with the nearest position.
std::vector<std::vector<GeneratedVertex>> perMarker(const GeometryData& g, const QList<ColoredPoint>& markers)
{
    std::vector<std::vector<GeneratedVertex>> groups(std::size_t(markers.size()));
    for (const GeneratedVertex& v : decode(g.vertices)) {
        std::size_t best = 0;
        double nearest = 1e300;
        for (std::size_t i = 0; i < groups.size(); ++i) {
            const double d = length(v.position - sceneFromHost(Vec3d(markers[qsizetype(i)].second)));
            if (d < nearest) {
                nearest = d;
                best = i;
            }
        }
        groups[best].push_back(v);
    }
    return groups;
}

} // namespace

class EveryMarkerType : public testing::TestWithParam<int>
{
};

TEST_P(EveryMarkerType, resultStoresTheArguments)
{
    const int type = GetParam();
    const GeometryData g = kvMarkers(type, three, 6.0f, 0.75f);
    EXPECT_FALSE(g.vertices.isEmpty());
    EXPECT_EQ(g.markerType, type);
    EXPECT_EQ(g.markers, three);
    EXPECT_EQ(g.markerSize, 6.0f);
    EXPECT_EQ(g.markerParam, 0.75f);
    EXPECT_EQ(g.lineWidth, 1.0f);
}

TEST_P(EveryMarkerType, emptyListGivesNoVerticesButStoresTheArguments)
{
    const int type = GetParam();
    const GeometryData g = kvMarkers(type, {}, 6.0f, 0.75f);
    EXPECT_TRUE(g.vertices.isEmpty());
    EXPECT_EQ(g.markerType, type);
    EXPECT_TRUE(g.markers.isEmpty());
    EXPECT_EQ(g.markerSize, 6.0f);
    EXPECT_EQ(g.markerParam, 0.75f);
}

TEST_P(EveryMarkerType, markersAreCentredAtTheirPositionInTheirColour)
{
    const GeometryData g = kvMarkers(GetParam(), three, 6.0f, 0.0f);
    const auto groups = perMarker(g, three);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const ColoredPoint& marker = three[qsizetype(i)];
        EXPECT_EQ(groups[i].size(), groups[0].size()) << "markers differ in shape";
        double low = 1e300, high = -1e300;
        for (const GeneratedVertex& v : groups[i]) {
            EXPECT_EQ(v.color, rgba(marker.first));
            low = std::min(low, v.position.y);
            high = std::max(high, v.position.y);
        }
        EXPECT_NEAR(0.5 * (low + high), marker.second.x(), 1e-4) << "not centred in L*";
        EXPECT_GE(high - low, 6.0 - 1e-3) << "smaller than its size";
    }
}

TEST_P(EveryMarkerType, surfaceIsClosedAndOrientedOutwards)
{
    const GeometryData g = kvMarkers(GetParam(), {three[1]}, 6.0f, 0.0f);
    const auto triangles = trianglesOf(g);
    EXPECT_TRUE(isClosedSurface(triangles));
    EXPECT_GT(signedVolume(triangles), 0.0);
}

TEST_P(EveryMarkerType, extentIsProportionalToSize)
{
    const QList<ColoredPoint> atOrigin = {{Qt::red, {0, 0, 0}}};
    const auto extent = [&](float size) {
        double high = 0.0;
        for (const GeneratedVertex& v : decode(kvMarkers(GetParam(), atOrigin, size, 0.0f).vertices))
            high = std::max({high, std::abs(v.position.x), std::abs(v.position.y), std::abs(v.position.z)});
        return high;
    };
    // The ribbons of the bracketed cube have the same thickness, 1 / 1.5, at every size.
    const double bar = GetParam() == 2 ? 0.5 / 1.5 : 0.0;
    EXPECT_NEAR(extent(30.0f), 15.0 + bar, 1e-4);
    EXPECT_NEAR(extent(60.0f), 30.0 + bar, 1e-4);
}

TEST_P(EveryMarkerType, sizeZeroGivesFiniteVertices)
{
    EXPECT_TRUE(allFinite(kvMarkers(GetParam(), three, 0.0f, 0.0f).vertices));
}

INSTANTIATE_TEST_SUITE_P(MarkersGenerator, EveryMarkerType, testing::Values(0, 1, 2, 3, 4, -7, 1000),
                         [](const auto& row) {
                             return (row.param < 0 ? "minus" : "type") + std::to_string(std::abs(row.param));
                         });

TEST(MarkersGenerator, typeOneIsASphereOfRadiusHalfTheSize)
{
    const ColoredPoint marker{Qt::green, {30, 40, -50}};
    const Vec3d centre = sceneFromHost(Vec3d(marker.second));
    const GeometryData g = kvMarkers(1, {marker}, 8.0f, 0.0f);
    for (const GeneratedVertex& v : decode(g.vertices)) {
        EXPECT_NEAR(length(v.position - centre), 4.0, 1e-4);
        // Smooth shading: the normal has the direction of the radius.
        EXPECT_NEAR(length(v.normal), 1.0, 1e-5);
        EXPECT_GT(dot(sceneFromHost(v.normal), unit(v.position - centre)), 0.9999);
    }
    const auto triangles = trianglesOf(g);
    // A sphere in steps of pi/8 has sixteen sectors and eight bands. Its volume is the sum of eight frustums
    // with regular 16-gons as bases.
    double expected = 0.0;
    const double area = 0.5 * 16.0 * std::sin(M_PI / 8.0); // of a regular 16-gon of radius 1
    for (int band = 0; band < 8; ++band) {
        const double low = -M_PI / 2.0 + band * M_PI / 8.0;
        const double high = low + M_PI / 8.0;
        const double r0 = 4.0 * std::cos(low);
        const double r1 = 4.0 * std::cos(high);
        expected += area * (r0 * r0 + r0 * r1 + r1 * r1) / 3.0 * 4.0 * (std::sin(high) - std::sin(low));
    }
    EXPECT_NEAR(signedVolume(triangles), expected, 1e-3 * expected);
    EXPECT_GT(windingNumber(triangles, centre), 0.99);
}

/// Number and size of the markers, and the expected number of bands from pole to pole.
struct ManySpheres
{
    int count;
    float size;
    int bands;
};

class SphereCounts : public testing::TestWithParam<ManySpheres>
{
};

TEST_P(SphereCounts, largeSetsUseCoarserClosedSpheres)
{
    const auto [count, size, bands] = GetParam();
    const QList<ColoredPoint> markers(count, ColoredPoint{Qt::green, {30, 40, -50}});
    const GeometryData all = kvMarkers(1, markers, size, 0.0f);
    ASSERT_EQ(all.vertices.size() % count, 0);

    GeometryData one = all;
    one.vertices = all.vertices.first(all.vertices.size() / count);
    const auto triangles = trianglesOf(one);
    EXPECT_EQ(triangles.size(), std::size_t(2 * bands * 2 * (bands - 1)));
    EXPECT_TRUE(isClosedSurface(triangles));
    EXPECT_GT(signedVolume(triangles), 0.0);
    const Vec3d centre = sceneFromHost(Vec3d(30, 40, -50));
    for (const GeneratedVertex& v : decode(one.vertices)) {
        EXPECT_NEAR(length(v.position - centre), 0.5 * size, 1e-4);
        EXPECT_GT(dot(sceneFromHost(v.normal), unit(v.position - centre)), 0.9999);
    }
}

INSTANTIATE_TEST_SUITE_P(MarkersGenerator, SphereCounts,
                         testing::Values(ManySpheres{2'000, 6, 8}, ManySpheres{10'000, 6, 4},
                                         ManySpheres{20'000, 6, 3}, ManySpheres{100'000, 6, 2},
                                         ManySpheres{700, 2, 8}, ManySpheres{3'000, 2, 4},
                                         ManySpheres{6'900, 2, 3}),
                         [](const auto& row) {
                             return std::to_string(row.param.count) + "ofSize" +
                                    std::to_string(int(row.param.size));
                         });

TEST(MarkersGenerator, unknownTypesAreSpheres)
{
    const auto sphere = kvMarkers(1, three, 6.0f, 0.0f).vertices;
    EXPECT_EQ(kvMarkers(0, three, 6.0f, 0.0f).vertices, sphere);
    EXPECT_EQ(kvMarkers(4, three, 6.0f, 0.0f).vertices, sphere);
    EXPECT_EQ(kvMarkers(-7, three, 6.0f, 0.0f).vertices, sphere);
}

TEST(MarkersGenerator, typeTwoHasTwentyFourRibbonsPerMarker)
{
    QList<ColoredSegment> segments;
    for (const ColoredPoint& marker : three)
        segments += bracketedCube(marker, 9.0f);
    ASSERT_EQ(segments.size(), 72);
    const auto expected = decode(kvSegments(segments, false, 1.0f, 0.5f).vertices);
    const GeometryData g = kvMarkers(2, three, 9.0f, 0.5f);
    const auto actual = decode(g.vertices);
    EXPECT_EQ(g.primitiveMode, 4);
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        ASSERT_LT(length(actual[i].position - expected[i].position), 1e-4) << "vertex " << i;
        ASSERT_LT(length(actual[i].normal - expected[i].normal), 1e-3) << "vertex " << i;
        ASSERT_EQ(actual[i].color, expected[i].color) << "vertex " << i;
    }
}

TEST(MarkersGenerator, typeTwoDrawsOnlyTheOuterThirdsOfEachEdge)
{
    const auto triangles = trianglesOf(kvMarkers(2, {{Qt::red, {0, 0, 0}}}, 30.0f, 0.0f));
    // Edges at +-15 parallel to the three axes; a third is 10 long.
    for (int axis = 0; axis < 3; ++axis) {
        for (const double u : {-15.0, 15.0}) {
            for (const double v : {-15.0, 15.0}) {
                const auto at = [&](double along) {
                    double p[3];
                    p[axis] = along;
                    p[(axis + 1) % 3] = u;
                    p[(axis + 2) % 3] = v;
                    return windingNumber(triangles, {p[0] + 0.011, p[1] + 0.012, p[2] + 0.013});
                };
                for (const double drawn : {-14.0, -10.0, -6.0, 6.0, 10.0, 14.0})
                    EXPECT_GT(at(drawn), 0.9) << "axis " << axis << " at " << drawn;
                for (const double open : {-4.0, 0.0, 4.0})
                    EXPECT_LT(at(open), 0.1) << "axis " << axis << " at " << open;
            }
        }
    }
    EXPECT_LT(windingNumber(triangles, {0, 0, 0}), 0.1) << "the cube must be empty";
}

TEST(MarkersGenerator, typeThreeIsAStarWithPolesAlongTheLightnessAxis)
{
    const ColoredPoint marker{Qt::green, {30, 40, -50}};
    const Vec3d centre = sceneFromHost(Vec3d(marker.second));
    const GeometryData g = kvMarkers(3, {marker}, 8.0f, 0.0f);
    const auto triangles = trianglesOf(g);
    expectFlatOutwardNormals(g);

    int poles = 0, tips = 0, notches = 0;
    std::set<int> angles;
    for (const PositionKey& k : distinctPositions(triangles)) {
        const Vec3d d = Vec3d(k[0], k[1], k[2]) - centre;
        if (std::abs(d.y) > 1e-3) {
            EXPECT_NEAR(std::abs(d.y), 4.0, 1e-4);
            EXPECT_NEAR(std::hypot(d.x, d.z), 0.0, 1e-4);
            ++poles;
            continue;
        }
        const double radius = std::hypot(d.x, d.z);
        const double steps = std::atan2(d.z, d.x) / (M_PI / 4.0);
        EXPECT_NEAR(steps, std::round(steps), 1e-3);
        const int step = int(std::lround(steps) + 8) % 8;
        angles.insert(step);
        if (radius > 3.0) {
            EXPECT_NEAR(radius, 4.0, 1e-4);
            ++tips;
        } else {
            EXPECT_NEAR(radius, 2.0, 1e-4);
            ++notches;
        }
    }
    EXPECT_EQ(poles, 2);
    EXPECT_EQ(tips, 4);
    EXPECT_EQ(notches, 4);
    EXPECT_EQ(angles.size(), 8u);
    // Two pyramids of height 4. Their base consists of eight triangles with sides 4 and 2 at an angle of 45
    // degrees.
    const double base = 8.0 * 0.5 * 4.0 * 2.0 * std::sin(M_PI / 4.0);
    EXPECT_NEAR(signedVolume(triangles), 2.0 * base * 4.0 / 3.0, 1e-3);
}
