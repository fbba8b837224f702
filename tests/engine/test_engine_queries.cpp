// SPDX-License-Identifier: Apache-2.0
#include "SlowGeometry.h"
#include "TestProfiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>

using namespace testprofiles;

namespace {

using RingPoint = std::array<float, 3>;

RingPoint pointOf(const QList<float>& lab)
{
    return {lab[0], lab[1], lab[2]};
}

// Whether every piece begins where another one ends.
bool isClosed(const QList<QList<QList<float>>>& ring)
{
    std::map<RingPoint, int> balance;
    for (const auto& piece : ring) {
        ++balance[pointOf(piece[0])];
        --balance[pointOf(piece[1])];
    }
    return std::all_of(balance.begin(), balance.end(), [](const auto& entry) { return entry.second == 0; });
}

// Twice the area that a ring at constant L* encloses.
double shoelace(const QList<QList<QList<float>>>& ring)
{
    double sum = 0.0;
    for (const auto& piece : ring)
        sum += double(piece[0][1]) * double(piece[1][2]) - double(piece[1][1]) * double(piece[0][2]);
    return sum;
}

// A box with the given bounds, up to the precision of a table profile.
QByteArray box(double L0, double L1, double a0, double a1, double b0, double b1)
{
    return tableProfile(cmsSigRgbData, 2, [=](const std::vector<double>& d) {
        return Lab{L0 + (L1 - L0) * d[0], a0 + (a1 - a0) * d[1], b0 + (b1 - b0) * d[2]};
    });
}

KVGamut::GamutObject boxGamut()
{
    return gamutOf(opened(box(20, 80, -30, 50, -60, 10)), 9);
}

} // namespace

// --- Points ---------------------------------------------------------------------------------------

TEST(IsInside, matchesTheSolidAngle)
{
    for (const QString& path : {srgb(), prophotoRgb(), printerCmyk()}) {
        const auto gamut = gamutOf(openedFile(path), 17);
        const auto faces = slow::facesOf(gamut);
        std::mt19937 random(3);
        std::uniform_real_distribution<float> L(-5.0f, 105.0f), ab(-130.0f, 130.0f);
        int inside = 0;
        for (int i = 0; i < 2000; ++i) {
            const float lab[] = {L(random), ab(random), ab(random)};
            const double winding = slow::windingNumber(faces, {lab[0], lab[1], lab[2]});
            ASSERT_LT(std::abs(winding - std::round(winding)), 1e-3);
            EXPECT_EQ(gamut.isInside(lab), std::round(winding) == 1.0)
                << lab[0] << ' ' << lab[1] << ' ' << lab[2];
            inside += gamut.isInside(lab);
        }
        EXPECT_GT(inside, 50);
    }
}

TEST(IsInside, matchesTheSolidAngleNearTheSurface)
{
    const auto gamut = gamutOf(openedFile(printerCmyk()), 17);
    const auto faces = slow::facesOf(gamut);
    for (std::size_t f = 0; f < faces.size(); f += 11) {
        // 0.01 dE below and above the centre of a face.
        const auto u = slow::minus(faces[f][1], faces[f][0]), v = slow::minus(faces[f][2], faces[f][0]);
        slow::Point n{u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
        const double size = std::hypot(n[0], n[1], n[2]);
        if (size < 0.01)
            continue;
        for (double step : {-0.01, 0.01}) {
            float lab[3];
            for (std::size_t c = 0; c < 3; ++c)
                lab[c] = static_cast<float>((faces[f][0][c] + faces[f][1][c] + faces[f][2][c]) / 3.0 +
                                            step * n[c] / size);
            const double winding = slow::windingNumber(faces, {lab[0], lab[1], lab[2]});
            EXPECT_EQ(gamut.isInside(lab), winding > 0.5) << "face " << f << " step " << step;
        }
    }
}

TEST(IsInside, isExactAboveAndBelowVerticesAndEdges)
{
    // Rays through vertices of many faces, where naive counting finds a crossing twice or not at all.
    const auto gamut = gamutOf(openedFile(srgb()), 9);
    const auto faces = slow::facesOf(gamut);
    int tried = 0;
    for (const auto& face : faces)
        for (const auto& corner : face) {
            const float lab[] = {50.0f, static_cast<float>(corner[1]), static_cast<float>(corner[2])};
            const double winding = slow::windingNumber(faces, {lab[0], lab[1], lab[2]});
            if (std::abs(winding - std::round(winding)) > 1e-3)
                continue; // on the surface
            ++tried;
            EXPECT_EQ(gamut.isInside(lab), std::round(winding) == 1.0);
        }
    EXPECT_GT(tried, 500);
}

TEST(IsInside, isTrueOnTheNeutralAxis)
{
    const auto gamut = gamutOf(openedFile(srgb()));
    const auto white = gamut.whitePoint(), black = gamut.blackPoint();
    EXPECT_TRUE(gamut.isInside(&white.L));
    EXPECT_TRUE(gamut.isInside(&black.L));
    for (float L = 1.0f; L < 100.0f; L += 1.0f) {
        const float grey[] = {L, 0.0f, 0.0f};
        EXPECT_TRUE(gamut.isInside(grey)) << L;
    }
}

TEST(IsInside, isFalseForNullNanAndInfinity)
{
    const auto gamut = boxGamut();
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    const float huge = std::numeric_limits<float>::max();
    for (float bad : {nan, inf, -inf, huge, -huge, 1e9f})
        for (int c = 0; c < 3; ++c) {
            float lab[] = {50.0f, 0.0f, 0.0f};
            EXPECT_TRUE(gamut.isInside(lab));
            lab[c] = bad;
            EXPECT_FALSE(gamut.isInside(lab));
        }
    EXPECT_FALSE(gamut.isInside(nullptr));
}

// --- Distances ------------------------------------------------------------------------------------

namespace {

double distanceOf(const slow::Point& p, const slow::Point& q)
{
    const auto step = slow::minus(p, q);
    return std::hypot(step[0], step[1], step[2]);
}

slow::Point pointOf(const KVGamut::LabPoint& p)
{
    return {p.L, p.a, p.b};
}

} // namespace

TEST(Nearest, matchesATestOfAllFaces)
{
    for (const QString& path : {srgb(), prophotoRgb(), printerCmyk()}) {
        const auto gamut = gamutOf(openedFile(path), 17);
        const auto faces = slow::facesOf(gamut);
        std::mt19937 random(13);
        std::uniform_real_distribution<float> L(-50.0f, 150.0f), ab(-250.0f, 250.0f);
        int inside = 0;
        for (int i = 0; i < 600; ++i) {
            const float spread = i % 2 == 0 ? 1.0f : 0.2f; // also near the centre
            const float lab[] = {50.0f + spread * (L(random) - 50.0f), spread * ab(random),
                                 spread * ab(random)};
            const slow::Point x{lab[0], lab[1], lab[2]};
            const double expected = distanceOf(slow::nearest(faces, x), x);
            const auto answer = gamut.nearest(lab);
            EXPECT_NEAR(std::abs(answer.distance), expected, 1e-4);
            EXPECT_NEAR(distanceOf(pointOf(answer.point), x), expected, 1e-4);
            const double winding = slow::windingNumber(faces, x);
            EXPECT_EQ(answer.distance<0.0f, winding> 0.5);
            inside += answer.distance < 0.0f;
        }
        EXPECT_GT(inside, 50);
    }
}

TEST(Nearest, isAPointOfTheSurface)
{
    const auto gamut = gamutOf(openedFile(printerCmyk()), 9);
    const auto faces = slow::facesOf(gamut);
    std::mt19937 random(17);
    std::uniform_real_distribution<float> any(-100.0f, 100.0f);
    for (int i = 0; i < 200; ++i) {
        const float lab[] = {any(random), any(random), any(random)};
        const auto p = gamut.nearest(lab).point;
        EXPECT_LT(distanceOf(slow::nearest(faces, pointOf(p)), pointOf(p)), 2e-5);
    }
}

TEST(Nearest, ofABoxIsExact)
{
    const auto gamut = boxGamut(); // 20..80, -30..50, -60..10
    const struct
    {
        std::array<float, 3> lab;
        float distance;
        std::array<float, 3> point;
    } cases[] = {{{25, 0, -20}, -5, {20, 0, -20}},   // inside, near a face
                 {{50, 41, -40}, -9, {50, 50, -40}}, // inside, near another
                 {{95, 0, -20}, 15, {80, 0, -20}},   // outside, over a face
                 {{90, 74, -20}, 26, {80, 50, -20}}, // over an edge
                 {{86, 52, 13}, 7, {80, 50, 10}},    // over a corner
                 {{50, 0, 10}, 0, {50, 0, 10}}};     // on a face
    for (const auto& c : cases) {
        const auto answer = gamut.nearest(c.lab.data());
        EXPECT_NEAR(answer.distance, c.distance, 0.01f);
        EXPECT_LT(distanceOf(pointOf(answer.point), {c.point[0], c.point[1], c.point[2]}), 0.02);
    }
    const float middle[] = {50.0f, 10.0f, -25.0f}; // equally far from L* 20 and L* 80
    EXPECT_NEAR(gamut.nearest(middle).distance, -30.0f, 0.01f);
}

TEST(Nearest, isNanForInvalidColours)
{
    const auto gamut = boxGamut();
    const float far[] = {50.0f, 1e6f, -20.0f};
    EXPECT_NEAR(gamut.nearest(far).distance, 1e6f - 50.0f, 0.1f);
    const float huge[] = {-1e30f, 0.0f, -20.0f};
    EXPECT_NEAR(gamut.nearest(huge).distance, 1e30f, 1e24f);
    EXPECT_NEAR(gamut.nearest(huge).point.L, 20.0f, 0.01f);

    const auto expectNan = [](const KVGamut::Nearest& answer) {
        EXPECT_TRUE(std::isinf(answer.distance) && answer.distance > 0.0f);
        EXPECT_TRUE(std::isnan(answer.point.L) && std::isnan(answer.point.a) && std::isnan(answer.point.b));
    };
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    for (float bad : {nan, inf, -inf})
        for (int c = 0; c < 3; ++c) {
            float lab[] = {50.0f, 0.0f, 0.0f};
            lab[c] = bad;
            expectNan(gamut.nearest(lab));
        }
    expectNan(gamut.nearest(nullptr));
    const float grey[] = {50.0f, 0.0f, 0.0f};
    expectNan(KVGamut::GamutObject().nearest(grey));
}

// --- Sections -------------------------------------------------------------------------------------

TEST(Ring, isClosedForEveryPlane)
{
    for (const QString& path : {srgb(), printerCmyk()}) {
        const auto faces = gamutOf(openedFile(path), 17).faces();
        std::mt19937 random(5);
        std::uniform_real_distribution<float> any(-1.0f, 1.0f);
        for (int i = 0; i < 60; ++i) {
            const float tilted[] = {any(random), any(random), any(random), 40.0f * any(random)};
            const auto ring = KVGamut::computeRing(tilted, faces);
            EXPECT_TRUE(isClosed(ring));
            for (const auto& piece : ring) {
                ASSERT_EQ(piece.size(), 2);
                for (const auto& p : piece) {
                    ASSERT_EQ(p.size(), 3);
                    EXPECT_NEAR(tilted[0] * p[0] + tilted[1] * p[1] + tilted[2] * p[2] + tilted[3], 0.0,
                                1e-3);
                }
            }
        }
    }
}

TEST(Ring, isClosedThroughVerticesAndFaces)
{
    // The grid of nine nodes: these planes pass through many vertices and edges, at the ends through faces.
    const auto gamut = boxGamut();
    const auto faces = gamut.faces();
    for (const auto& face : faces)
        for (const auto& node : face) {
            const float plane[] = {1.0f, 0.0f, 0.0f, -node.lab[0]};
            EXPECT_TRUE(isClosed(KVGamut::computeRing(plane, faces)));
        }
}

TEST(Ring, ofABoxIsItsRectangle)
{
    const auto faces = boxGamut().faces();
    for (float L : {21.0f, 35.5f, 50.0f, 79.0f}) {
        const float plane[] = {1.0f, 0.0f, 0.0f, -L};
        const auto ring = KVGamut::computeRing(plane, faces);
        EXPECT_NEAR(std::abs(shoelace(ring)) / 2.0, 80.0 * 70.0, 1.0);
        EXPECT_TRUE(isClosed(ring));
    }
}

TEST(Ring, hasOnePieceForEachCrossedFace)
{
    const auto faces = gamutOf(openedFile(srgb()), 9).faces();
    const float plane[] = {1.0f, 0.0f, 0.0f, -50.3f};
    qsizetype crossed = 0;
    for (const auto& face : faces) {
        int above = 0;
        for (const auto& node : face)
            above += node.lab[0] >= 50.3f ? 1 : 0;
        crossed += above == 1 || above == 2 ? 1 : 0;
    }
    EXPECT_GT(crossed, 20);
    EXPECT_EQ(KVGamut::computeRing(plane, faces).size(), crossed);
}

TEST(Ring, isEmptyOutsideTheGamutAndForInvalidPlanes)
{
    const auto faces = boxGamut().faces();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float planes[][4] = {{1, 0, 0, -101}, {1, 0, 0, 1},   {0, 0, 0, 0},
                               {0, 0, 0, 1},    {nan, 0, 0, 0}, {1, 0, 0, nan}};
    for (const auto& plane : planes)
        EXPECT_TRUE(KVGamut::computeRing(plane, faces).isEmpty());
    EXPECT_TRUE(KVGamut::computeRing(nullptr, faces).isEmpty());
    const float plane[] = {1, 0, 0, -50};
    EXPECT_TRUE(KVGamut::computeRing(plane, QList<QList<KVHull::Node>>()).isEmpty());
}

TEST(Ring, ignoresFacesThatAreNotTriangles)
{
    KVHull::Node above, below, without;
    above.lab = {60, 0, 0};
    below.lab = {40, 10, 0};
    const float plane[] = {1, 0, 0, -50};
    EXPECT_TRUE(KVGamut::computeRing(plane, {{above, below}, {above, below, without}, {}}).isEmpty());
}

// --- Outline --------------------------------------------------------------------------------------

namespace {

double outlineArea(const KVGamut::GamutObject& gamut)
{
    double sum = 0.0;
    for (const auto& segment : gamut.outline())
        sum += double(segment[0].lab[1]) * double(segment[1].lab[2]) -
               double(segment[1].lab[1]) * double(segment[0].lab[2]);
    return 0.5 * sum;
}

} // namespace

TEST(Outline, enclosesTheProjectionOfTheFaces)
{
    for (const QString& path : {srgb(), adobeRgb(), cieRgb(), printerCmyk()}) {
        const auto gamut = gamutOf(openedFile(path));
        const double covered = slow::projectedArea(slow::facesOf(gamut), 0.02);
        EXPECT_NEAR(outlineArea(gamut), covered, 1e-4 * covered) << qPrintable(path);
    }
}

TEST(Outline, formsClosedLoops)
{
    for (const QString& path : {srgb(), printerCmyk()}) {
        std::map<std::pair<float, float>, int> balance;
        const auto outline = gamutOf(openedFile(path)).outline();
        ASSERT_GT(outline.size(), 10);
        for (const auto& segment : outline) {
            ASSERT_EQ(segment.size(), 2);
            ++balance[{segment[0].lab[1], segment[0].lab[2]}];
            --balance[{segment[1].lab[1], segment[1].lab[2]}];
        }
        for (const auto& [place, sum] : balance)
            EXPECT_EQ(sum, 0) << qPrintable(path) << ' ' << place.first << ' ' << place.second;
    }
}

TEST(Outline, consistsOfPointsOfTheSurface)
{
    const auto gamut = gamutOf(openedFile(srgb()));
    std::map<std::pair<float, float>, std::vector<float>> lightness;
    for (const auto& face : gamut.faces())
        for (const auto& node : face)
            lightness[{node.lab[1], node.lab[2]}].push_back(node.lab[0]);
    int known = 0;
    for (const auto& segment : gamut.outline()) {
        const auto& lab = segment[0].lab;
        const auto there = lightness.find({lab[1], lab[2]});
        if (there == lightness.end())
            continue;
        ++known;
        EXPECT_NE(std::find(there->second.begin(), there->second.end(), lab[0]), there->second.end());
        EXPECT_EQ(segment[0].device.size(), 3);
    }
    EXPECT_GT(known, gamut.outline().size() * 9 / 10);
}

TEST(Outline, ofACrescentIsConcave)
{
    const auto gamut =
        gamutOf(opened(tableProfile(
                    cmsSigRgbData, 33,
                    [](const std::vector<double>& d) {
                        const double angle = 1.9 * M_PI * d[1];
                        const double radius = 20.0 + 30.0 * d[2];
                        return Lab{20 + 60 * d[0], radius * std::cos(angle), radius * std::sin(angle)};
                    })),
                33);
    const double covered = slow::projectedArea(slow::facesOf(gamut), 0.02);
    EXPECT_NEAR(outlineArea(gamut), covered, 1e-4 * covered);
    EXPECT_NEAR(covered, 0.5 * 1.9 * M_PI * (2500.0 - 400.0), 0.01 * covered);
}
