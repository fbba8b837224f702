// SPDX-License-Identifier: Apache-2.0
// The filled section as a value: no OpenGL.

#include "support/MessageCheck.h"

#include <gamut/SectionLid.h>
#include <platform/KVVelmoraFramework.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <numbers>
#include <random>
#include <utility>

namespace {

using KVGamut::LabPoint;
using KVGamut::Mesh;
using KVGamut::SectionLoop;
using Loops = std::vector<SectionLoop>;

constexpr float L = 50.0f;

SectionLoop loopOf(std::initializer_list<std::pair<float, float>> corners)
{
    SectionLoop loop;
    for (const auto& [a, b] : corners)
        loop.push_back({L, a, b});
    return loop;
}

SectionLoop square(float left, float bottom, float size)
{
    return loopOf(
        {{left, bottom}, {left + size, bottom}, {left + size, bottom + size}, {left, bottom + size}});
}

SectionLoop reversed(SectionLoop loop)
{
    std::reverse(loop.begin(), loop.end());
    return loop;
}

/// A star around the origin with @p points corners at random distances.
SectionLoop star(int points, unsigned seed, double min, double max)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> radius(min, max);
    SectionLoop loop;
    for (int i = 0; i < points; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / points;
        const double r = radius(random);
        loop.push_back({L, static_cast<float>(r * std::cos(angle)), static_cast<float>(r * std::sin(angle))});
    }
    return loop;
}

double twiceArea(const LabPoint& p, const LabPoint& q, const LabPoint& r)
{
    return (double(q.a) - double(p.a)) * (double(r.b) - double(p.b)) -
           (double(q.b) - double(p.b)) * (double(r.a) - double(p.a));
}

/// By the shoelace formula.
double areaOf(const SectionLoop& loop)
{
    double twice = 0.0;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const LabPoint& p = loop[i];
        const LabPoint& q = loop[(i + 1) % loop.size()];
        twice += double(p.a) * double(q.b) - double(q.a) * double(p.b);
    }
    return 0.5 * twice;
}

double areaOf(const Loops& loops)
{
    double sum = 0.0;
    for (const SectionLoop& loop : loops)
        sum += areaOf(loop);
    return std::abs(sum);
}

double areaOf(const Mesh& mesh)
{
    double sum = 0.0;
    for (const auto& [i, j, k] : mesh.triangles)
        sum += 0.5 * twiceArea(mesh.lab[std::size_t(i)], mesh.lab[std::size_t(j)], mesh.lab[std::size_t(k)]);
    return sum;
}

/// Even-odd: how often a ray along +a* crosses the loops.
bool isInside(const Loops& loops, double a, double b)
{
    bool inside = false;
    for (const SectionLoop& loop : loops)
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const LabPoint& p = loop[i];
            const LabPoint& q = loop[(i + 1) % loop.size()];
            if ((double(p.b) > b) != (double(q.b) > b) && a < double(p.a) + (b - double(p.b)) /
                                                                                (double(q.b) - double(p.b)) *
                                                                                (double(q.a) - double(p.a)))
                inside = !inside;
        }
    return inside;
}

/// Edges that belong to one triangle only, by the positions of their ends.
std::size_t openEdges(const Mesh& mesh)
{
    using Place = std::pair<float, float>;
    std::map<std::pair<Place, Place>, int> uses;
    for (const auto& triangle : mesh.triangles)
        for (std::size_t i = 0; i < 3; ++i) {
            const auto at = [&](std::size_t k) {
                const LabPoint& p = mesh.lab[std::size_t(triangle[k % 3])];
                return Place(p.a, p.b);
            };
            const Place from = at(i), to = at(i + 1);
            if (uses[{to, from}] > 0)
                --uses[{to, from}];
            else
                ++uses[{from, to}];
        }
    return std::size_t(
        std::count_if(uses.begin(), uses.end(), [](const auto& use) { return use.second != 0; }));
}

/// Triangles are counter-clockwise, cover the region, and nothing else.
void expectFills(const Mesh& mesh, const Loops& loops, double tolerance = 1e-5)
{
    EXPECT_NEAR(areaOf(mesh) / areaOf(loops), 1.0, tolerance);
    double absolute = 0.0;
    for (const auto& [i, j, k] : mesh.triangles) {
        const LabPoint& p = mesh.lab[std::size_t(i)];
        const LabPoint& q = mesh.lab[std::size_t(j)];
        const LabPoint& r = mesh.lab[std::size_t(k)];
        const double twice = twiceArea(p, q, r);
        absolute += 0.5 * std::abs(twice);
        EXPECT_EQ(p.L, L);
        if (std::abs(twice) > 1e-3) {
            EXPECT_TRUE(isInside(loops, (double(p.a) + double(q.a) + double(r.a)) / 3.0,
                                 (double(p.b) + double(q.b) + double(r.b)) / 3.0));
        }
    }
    EXPECT_NEAR(absolute / areaOf(loops), 1.0, tolerance) << "triangles overlap";
}

} // namespace

TEST(SectionTriangles, fillASquareWithTwoTrianglesPerCell)
{
    const Loops loops{square(-4, -3, 8)};
    const Mesh mesh = kvSectionTriangles(loops, 1.0);
    expectFills(mesh, loops);
    EXPECT_EQ(mesh.triangles.size(), 2u * 64u);
}

TEST(SectionTriangles, haveTheExactAreaOfRandomStars)
{
    for (unsigned seed = 0; seed < 40; ++seed) {
        const Loops loops{star(3 + int(seed) * 5, seed, 2.0, 60.0)};
        for (const double cell : {1.0, 4.0})
            expectFills(kvSectionTriangles(loops, cell), loops);
    }
}

TEST(SectionTriangles, leaveHolesOpen)
{
    const Loops large{square(-20, -20, 40), reversed(square(-5, -5, 10))};
    expectFills(kvSectionTriangles(large, 1.0), large);
    const Loops inOneCell{square(-20, -20, 40), reversed(square(0.25f, 0.25f, 0.5f)),
                          reversed(square(0.875f, 0.125f, 0.0625f))};
    expectFills(kvSectionTriangles(inOneCell, 1.0), inOneCell);
}

TEST(SectionTriangles, fillAnIslandInAHole)
{
    const Loops loops{square(-20, -20, 40), reversed(square(-10, -10, 20)), square(-5, -5, 10)};
    expectFills(kvSectionTriangles(loops, 1.0), loops);
}

TEST(SectionTriangles, doNotDependOnTheDirectionOfTheLoops)
{
    const Loops loops{star(50, 7, 10.0, 40.0)};
    const Mesh mesh = kvSectionTriangles(Loops{reversed(loops[0])}, 1.0);
    expectFills(mesh, loops);
}

TEST(SectionTriangles, fillPartsThatTouchAtTheirCorners)
{
    const Loops loops{square(0, 0, 8), square(8, 8, 8), square(-8, 8, 8)};
    expectFills(kvSectionTriangles(loops, 1.0), loops);
    const Loops bow{loopOf({{0, 0}, {4, 4}, {8, 0}, {8, 8}, {4, 4}, {0, 8}})};
    expectFills(kvSectionTriangles(bow, 2.0), bow);
}

TEST(SectionTriangles, meetWithoutGaps)
{
    for (unsigned seed = 0; seed < 10; ++seed) {
        const SectionLoop loop = star(60, seed, 10.0, 40.0);
        const Mesh mesh = kvSectionTriangles(Loops{loop}, 1.0);
        // Only edges on the outline are open: each cell that it crosses has a few.
        double open = 0.0;
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const LabPoint& p = loop[i];
            const LabPoint& q = loop[(i + 1) % loop.size()];
            open += 1.0 + std::abs(std::floor(p.a) - std::floor(q.a)) +
                    std::abs(std::floor(p.b) - std::floor(q.b));
        }
        EXPECT_LE(double(openEdges(mesh)), open) << seed;
    }
}

TEST(SectionTriangles, ofNothingOrOfInvalidPointsAreNone)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float huge = std::numeric_limits<float>::max();
    EXPECT_TRUE(kvSectionTriangles(Loops{}, 1.0).triangles.empty());
    EXPECT_TRUE(kvSectionTriangles(Loops{SectionLoop{}}, 1.0).triangles.empty());
    EXPECT_TRUE(kvSectionTriangles(Loops{loopOf({{0, 0}, {1, 1}})}, 1.0).triangles.empty());
    EXPECT_TRUE(kvSectionTriangles(Loops{loopOf({{0, 0}, {1, nan}, {0, 1}})}, 1.0).triangles.empty());
    EXPECT_TRUE(kvSectionTriangles(Loops{square(1e9f, 0, 1000)}, 1.0).triangles.empty());
    const Mesh mesh = kvSectionTriangles(Loops{loopOf({{-huge, -huge}, {huge, -huge}, {huge, huge}})}, 1.0);
    EXPECT_LE(mesh.triangles.size(), std::size_t(4 * kvMaxLidCells * kvMaxLidCells));
}

TEST(SectionTriangles, areLimitedInNumber)
{
    const Loops loops{square(-5000, -5000, 10000)};
    const Mesh mesh = kvSectionTriangles(loops, 1.0);
    EXPECT_LE(mesh.triangles.size(), std::size_t(2 * kvMaxLidCells * kvMaxLidCells));
    expectFills(mesh, loops);
}

TEST(SectionLid, hasTheColoursOfItsLightness)
{
    // between the corners, too
    std::mt19937 random(3);
    std::uniform_real_distribution<float> chroma(-100.0f, 100.0f);
    long far = 0, all = 0;
    for (const float lightness : {10.0f, 30.0f, 50.0f, 70.0f, 90.0f, 95.0f}) {
        SectionLoop loop = square(-110, -110, 220);
        for (LabPoint& point : loop)
            point.L = lightness;
        const GeometryData lid = kvUnshadedLid(Loops{loop});
        const qsizetype stride = 3 * kvVertexFloats;
        std::uniform_int_distribution<qsizetype> triangle(0, lid.records.size() / stride - 1);
        for (int i = 0; i < 4000; ++i) {
            VertexStride corners[3];
            std::memcpy(corners, lid.records.constData() + triangle(random) * stride, sizeof corners);
            LabPoint middle{lightness, 0, 0};
            std::array<float, 3> shown{};
            for (const VertexStride& corner : corners) {
                EXPECT_EQ(corner.position[1], lightness);
                EXPECT_EQ(corner.normal[0], 0.0f); // not shaded
                middle.a -= corner.position[0] / 3.0f;
                middle.b += corner.position[2] / 3.0f;
                for (std::size_t k = 0; k < 3; ++k)
                    shown[k] += 255.0f * corner.color[k] / 3.0f;
            }
            std::array<float, 3> expected{};
            KVColorConversionHelper::KVHLab2RGB(std::span(&middle, 1), std::span(&expected, 1));
            float error = 0.0f;
            for (std::size_t k = 0; k < 3; ++k)
                error = std::max(error, std::abs(shown[k] - expected[k]));
            EXPECT_LE(error, float(kvMaxLidColorError));
            far += error > 4.0f ? 1 : 0; // one more for whole numbers
            ++all;
        }
    }
    EXPECT_LT(double(far), 0.003 * double(all));
}
