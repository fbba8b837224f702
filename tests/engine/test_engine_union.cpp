// SPDX-License-Identifier: Apache-2.0
// The union of a device's cells: its volume, and that colours of the interior are part of it.

#include "MappedDevice.h"
#include "Problems.h"
#include "SlowGeometry.h"
#include "TestProfiles.h"

#include <engine/mesh/LinesBeyond.h>
#include <engine/mesh/MeshVolume.h>
#include <engine/mesh/WindingIndex.h>
#include <engine/surface/CoveredVolume.h>
#include <engine/surface/DeviceCells.h>
#include <engine/surface/GamutBuilder.h>
#include <engine/surface/MissedColours.h>
#include <engine/surface/RadialHull.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>

#include <algorithm>
#include <array>
#include <cmath>

using namespace velmora;

namespace {

Vec3 mixed(const float* d, const std::vector<Vec3>& inks)
{
    Vec3 lab{95, 0, 0};
    for (std::size_t c = 0; c < inks.size(); ++c)
        lab = lab + double(d[c]) * inks[c];
    return lab;
}

const std::vector<Vec3>& fourInks()
{
    static const std::vector<Vec3> inks{{-20, -30, -30}, {-25, 40, -5}, {-5, -3, 60}, {-35, 2, 3}};
    return inks;
}

double zonotopeVolume(const std::vector<Vec3>& vectors)
{
    std::vector<slow::Point> points;
    for (const Vec3& v : vectors)
        points.push_back({v.L, v.a, v.b});
    return slow::zonotopeVolume(points);
}

DeviceNodes evenNodes(int channels, int count)
{
    std::vector<float> axis;
    for (int i = 0; i < count; ++i)
        axis.push_back(float(i) / float(count - 1));
    return DeviceNodes(static_cast<std::size_t>(channels), axis);
}

double unionOf(const MappedDevice& device, int count, int hullNodes = 9)
{
    const Mesh hull = radialHull(device, evenNodes(device.channels(), hullNodes), {}).value();
    UnionBudget budget;
    const auto lines = coveredLines(device, evenNodes(device.channels(), count), budget, {});
    return coveredVolume(lines.value(), hull, {}).value();
}

} // namespace

namespace {

void add(LineCover& cover, const std::array<Vec3, 4>& corners)
{
    const auto& [p, q, r, s] = corners;
    const LineRange range(cover.grid(), p, q, r, s);
    for (int j = range.j0; j <= range.j1; ++j)
        for (int i = range.i0; i <= range.i1; ++i)
            cover.add(i, j, TetrahedronOnLines(p, q, r, s));
}

LineGrid oneLine() // a = b = 0
{
    LineGrid grid;
    grid.na = grid.nb = 1;
    return grid;
}

// The lines at which the hull of points is found to reach beyond a cover.
std::vector<std::array<int, 2>> linesBeyond(const LineCover& cover, const std::vector<Vec3>& points)
{
    std::vector<LinesBeyond::Place> places;
    std::vector<std::size_t> offsets;
    for (const Vec3& p : points) {
        offsets.push_back(places.size());
        places.push_back(LinesBeyond::placeOf(p, cover.grid()));
    }
    LinesBeyond hull(cover);
    hull.setPoints(places.data(), offsets);
    std::vector<std::array<int, 2>> found;
    for (const auto& line : hull.all())
        found.push_back({line.i, line.j});
    EXPECT_EQ(hull.any(), !found.empty());
    return found;
}

// A pyramid over the square 0..20, with its top at (10, 10), upwards and downwards.
LineCover octahedron()
{
    LineGrid grid;
    grid.na = grid.nb = 21;
    LineCover cover(grid);
    const Vec3 top{40, 10, 10}, bottom{-40, 10, 10};
    const std::array<Vec3, 4> ring{Vec3{0, 0, 0}, Vec3{0, 20, 0}, Vec3{0, 20, 20}, Vec3{0, 0, 20}};
    for (std::size_t i = 0; i < 4; ++i)
        add(cover, {top, bottom, ring[i], ring[(i + 1) % 4]});
    return cover;
}

} // namespace

TEST(LineCover, unitesOverlappingTetrahedra)
{
    LineCover cover(oneLine());
    EXPECT_TRUE(cover.longest(0).isEmpty());
    const auto addPart = [&cover](double low, double high) {
        add(cover, {Vec3{low, -1, -1}, Vec3{low, 3, -1}, Vec3{low, -1, 3}, Vec3{high, 0, 0}});
    };
    addPart(0, 2);
    EXPECT_NEAR(cover.length(), 2.0, 1e-6);
    addPart(5, 6);
    EXPECT_NEAR(cover.length(), 3.0, 1e-6);
    EXPECT_EQ(cover.pieces(0).size(), 2u);
    EXPECT_NEAR(cover.longest(0).high, 2.0, 1e-6);
    addPart(1, 5.5);
    EXPECT_NEAR(cover.length(), 6.0, 1e-6);
    EXPECT_EQ(cover.pieces(0).size(), 1u);
    EXPECT_NEAR(cover.longest(0).high, 6.0, 1e-6);
}

TEST(LinesBeyond, areThoseWhereABoxIsNotCovered)
{
    const LineCover cover = octahedron();
    EXPECT_TRUE(linesBeyond(cover, {{1, 9, 9}, {1, 11, 9}, {1, 9, 11}, {5, 11, 11}}).empty());
    const auto found = linesBeyond(cover, {{1, 9, 9}, {1, 11, 9}, {1, 9, 11}, {60, 10, 10}});
    EXPECT_NE(std::find(found.begin(), found.end(), std::array{10, 10}), found.end());
    EXPECT_EQ(linesBeyond(cover, {{0, 30, 9}, {0, 31, 9}, {0, 30, 11}, {1, 31, 11}}).size(), 0u); // no lines
}

// The box around the points is not covered, because the cover is oblique.
TEST(LinesBeyond, areNoneUnderTheFacetsOfAConvexCover)
{
    const LineCover cover = octahedron();
    const auto heightAt = [](double a, double b) {
        return 4.0 * std::min(std::min(a, 20.0 - a), std::min(b, 20.0 - b));
    };
    const auto pointAt = [&](double a, double b, double share) { return Vec3{share * heightAt(a, b), a, b}; };
    for (const double share : {0.999, -0.999})
        EXPECT_TRUE(linesBeyond(cover, {pointAt(3, 8, share), pointAt(7, 8, share), pointAt(3, 12, share),
                                        pointAt(7, 12, share)})
                        .empty());
    // over an edge of the cover
    EXPECT_TRUE(linesBeyond(cover, {pointAt(4, 4, 0.99), pointAt(8, 4, 0.99), pointAt(4, 8, 0.99),
                                    pointAt(8, 8, 0.99)})
                    .empty());
    const auto above = linesBeyond(
        cover, {pointAt(3, 8, 1.05), pointAt(7, 8, 1.05), pointAt(3, 12, 1.05), pointAt(7, 12, 1.05)});
    EXPECT_NE(std::find(above.begin(), above.end(), std::array{5, 10}), above.end());
}

TEST(LinesBeyond, areNotThoseBesideTheHull)
{
    LineGrid grid;
    grid.na = grid.nb = 21;
    const LineCover nothing(grid);
    // a triangle under the diagonal of the square 2..18, lines at integers
    const auto found = linesBeyond(nothing, {{0, 2.5, 2.4}, {0, 17.5, 2.4}, {0, 17.5, 17.4}, {5, 15, 4}});
    EXPECT_EQ(found.size(), 105u); // 14 + 13 + ... + 1
    for (const auto& [i, j] : found)
        EXPECT_LT(j, i);
}

TEST(CellUnion, ofLinearInksIsTheirZonotope)
{
    for (std::size_t channels : {3u, 4u, 5u, 6u, 7u}) {
        std::vector<Vec3> inks = fourInks();
        inks.insert(inks.end(), {{-8, 12, 20}, {-6, -25, 9}, {-3, 10, -18}});
        inks.resize(channels);
        const MappedDevice device(static_cast<int>(channels),
                                  [inks](const float* d) { return mixed(d, inks); });
        EXPECT_NEAR(unionOf(device, 4), zonotopeVolume(inks), 1e-3 * zonotopeVolume(inks)) << channels;
    }
}

// Every ink is darkest at 80 %: the faces on which inks are 100 % are inside the gamut.
TEST(CellUnion, containsColoursOfTheInterior)
{
    const MappedDevice inverting(4, [](const float* d) {
        float peaked[4];
        for (int c = 0; c < 4; ++c)
            peaked[c] = d[c] <= 0.8f ? d[c] / 0.8f : 1.0f - (d[c] - 0.8f);
        return mixed(peaked, fourInks());
    });
    const double truth = zonotopeVolume(fourInks());
    EXPECT_NEAR(unionOf(inverting, 6), truth, 1e-3 * truth); // a node at 80 %
    const Mesh faces = radialHull(inverting, evenNodes(4, 5), {}).value();
    EXPECT_LT(signedVolume(faces), 0.97 * truth);
}

// With so many inks the interior is not measured: the outermost faces are those up to the turns.
TEST(CellUnion, ofManyInksIsWithinTheStatedUncertaintyAlthoughTheyTurnBack)
{
    std::vector<Vec3> inks = fourInks();
    inks.insert(inks.end(), {{-8, 12, 20},
                             {-6, -25, 9},
                             {-3, 10, -18},
                             {-4, 14, 6},
                             {-2, -9, -12},
                             {-3, 5, 16},
                             {-2, 8, -6},
                             {-3, -6, 4},
                             {-2, 4, 5}});
    for (int channels : {13, 12, 11, 10, 8}) {
        inks.resize(static_cast<std::size_t>(channels));
        const double truth = zonotopeVolume(inks);
        for (const float fall : {0.0f, 0.03f}) {
            const MappedDevice press(channels, [&inks, fall](const float* d) {
                std::array<float, 13> printed{};
                for (std::size_t c = 0; c < inks.size(); ++c)
                    printed[c] = d[c] <= 0.85f ? d[c] / 0.85f : 1.0f - fall * (d[c] - 0.85f) / 0.15f;
                return mixed(printed.data(), inks);
            });
            const GamutRecord record = buildGamut(press, {}, {}).value();

            EXPECT_LE(std::abs(record.volume - truth), record.volumeUncertainty)
                << channels << " inks, " << fall << ": " << record.volume << " instead of " << truth;
            EXPECT_LT(record.volumeUncertainty, 0.015 * truth) << channels << ' ' << fall;
        }
    }
}

// The faces of the hypercube miss a quarter of the volume, and the nodes of the cells a tenth.
TEST(CellUnion, ofInksThatTurnFarBackHasASurface)
{
    for (int channels : {5, 6, 7}) {
        std::vector<Vec3> inks = fourInks();
        inks.insert(inks.end(), {{-8, 12, 20}, {-6, -25, 9}, {-3, 10, -18}});
        inks.resize(static_cast<std::size_t>(channels));
        const MappedDevice press(channels, [&inks](const float* d) {
            std::array<float, 7> printed{};
            for (std::size_t c = 0; c < inks.size(); ++c)
                printed[c] = d[c] <= 0.85f ? d[c] / 0.85f : 1.0f - 0.1f * (d[c] - 0.85f) / 0.15f;
            return mixed(printed.data(), inks);
        });
        const double truth = zonotopeVolume(inks);
        const Mesh faces = radialHull(press, evenNodes(channels, 5), {}).value();
        EXPECT_LT(signedVolume(faces), 0.8 * truth);
        const auto record = buildGamut(press, {}, {});
        ASSERT_TRUE(record) << channels;
        EXPECT_LE(std::abs(record->volume - truth), record->volumeUncertainty) << channels;
        EXPECT_NEAR(signedVolume(record->mesh), truth, 0.02 * truth) << channels;
    }
}

TEST(CellUnion, doesNotBridgeHollows)
{
    const MappedDevice crescent(4, [](const float* d) {
        const double angle = 1.5 * M_PI * double(d[1]),
                     radius = 20.0 + 15.0 * double(d[2]) + 15.0 * double(d[3]);
        return Vec3{20 + 60 * double(d[0]), radius * std::cos(angle), radius * std::sin(angle)};
    });
    const double truth = 60.0 * 0.5 * 1.5 * M_PI * (50.0 * 50.0 - 20.0 * 20.0);
    EXPECT_NEAR(unionOf(crescent, 21), truth, 0.02 * truth);
    EXPECT_GT(signedVolume(radialHull(crescent, evenNodes(4, 21), {}).value()), 1.2 * truth);
}

TEST(CellUnion, failsIfItsBudgetIsExceeded)
{
    const MappedDevice device(4, [](const float* d) { return mixed(d, fourInks()); });
    UnionBudget budget{.left = 100};
    EXPECT_EQ(codeOf(coveredLines(device, evenNodes(4, 5), budget, {})), KVProblemCode::TooManyOverlaps);
}

TEST(CellUnion, canBeCancelled)
{
    const MappedDevice device(4, [](const float* d) { return mixed(d, fourInks()); });
    UnionBudget budget;
    int looks = 0;
    const Task task([&looks] { return ++looks > 40; });
    EXPECT_EQ(codeOf(coveredLines(device, evenNodes(4, 9), budget, task)), KVProblemCode::Cancelled);
    EXPECT_LE(looks, 45);
}

TEST(CellSolid, coversWhatItsCellsCover)
{
    const MappedDevice device(4, [](const float* d) { return mixed(d, fourInks()); });
    UnionBudget budget;
    const DeviceSolid solid = cellSolid(device, evenNodes(4, 5), budget, {}).value();
    LineCover cover = [&] {
        UnionBudget other;
        return cellUnion(device, evenNodes(4, 5), 40, other, {}).value();
    }();
    LineCover ofSolid(cover.grid());
    for (const auto& t : solid.tetrahedra) {
        const auto at = [&](std::size_t i) { return turned(solid.points[static_cast<std::size_t>(t[i])]); };
        add(ofSolid, {at(0), at(1), at(2), at(3)});
    }
    EXPECT_NEAR(ofSolid.length(), cover.length(), 1e-3 * cover.length());
}

TEST(MissedColours, areNoneOfMonotoneInks)
{
    const MappedDevice device(4, [](const float* d) { return mixed(d, fourInks()); });
    const Mesh hull = radialHull(device, evenNodes(4, 17), {}).value();
    const MissedColours missed = findMissedColours(hull, device, {}).value();
    EXPECT_EQ(missed.volume, 0.0);
    EXPECT_EQ(missed.share, 0.0);
}

// An ink that falls by 4 % above 85 %.
TEST(MissedColours, areFoundIfAnInkInverts)
{
    const MappedDevice device(4, [](const float* d) {
        float peaked[4]{d[0], d[1], d[2], d[3]};
        peaked[0] = d[0] <= 0.85f ? d[0] / 0.85f : 1.0f - 0.04f * (d[0] - 0.85f) / 0.15f;
        return mixed(peaked, fourInks());
    });
    const Mesh hull = radialHull(device, evenNodes(4, 17), {}).value();
    const double truth = zonotopeVolume(fourInks());
    const MissedColours missed = findMissedColours(hull, device, {}).value();
    EXPECT_GT(missed.volume, 0.2 * (truth - signedVolume(hull)));
    EXPECT_LT(missed.volume, 5.0 * (truth - signedVolume(hull)));
}

// Two inks whose joint effect is largest at half of both.
TEST(MissedColours, areFoundIfInksHaveAJointExtremum)
{
    const MappedDevice device(4, [](const float* d) {
        const double bump = 16.0 * double(d[0]) * (1.0 - double(d[0])) * double(d[1]) * (1.0 - double(d[1]));
        return mixed(d, fourInks()) + Vec3{0, 40 * bump, 30 * bump};
    });
    const Mesh hull = radialHull(device, evenNodes(4, 17), {}).value();
    EXPECT_GT(findMissedColours(hull, device, {}).value().share, 0.01);
    const auto outside = coloursOutside(hull, device, gridColours(evenNodes(4, 5), {}), {}).value();
    EXPECT_GT(outside.size(), 0u);
    EXPECT_EQ(outside.size() % 4, 0u);
    const WindingIndex winding(hull);
    for (std::size_t i = 0; i < outside.size(); i += 4) {
        const auto lab = device.toLab(std::span(outside).subspan(i, 4), {}).value();
        EXPECT_FALSE(winding.isInside(lab.front()));
    }
}

TEST(TableNodes, areThoseOfTheTable)
{
    const auto rgb = testprofiles::tableProfile(cmsSigRgbData, 7, [](const std::vector<double>& d) {
        return testprofiles::Lab{100 * d[0], 80 * d[1] * d[1] - 40, 80 * d[2] * d[2] * d[2] - 40};
    });
    const auto transform = DeviceTransform::create(rgb, KVVMRenderPerceptual, false).value();
    const auto nodes = transform->tableNodes();
    ASSERT_EQ(nodes.size(), 3u);
    for (const auto& axis : nodes) {
        ASSERT_EQ(axis.size(), 7u);
        for (std::size_t i = 0; i < 7; ++i)
            EXPECT_NEAR(axis[i], double(i) / 6.0, 1e-4);
    }
    EXPECT_TRUE(isLinearBetweenTableNodes(*transform, {}).value());
    const auto equalised = equalisedNodes(*transform, 129, minEvenShare, {}).value();
    for (const auto& axis : alignedNodes(*transform, equalised, {1, 1, 1}, {12, 12, 12}, 33)) {
        EXPECT_EQ(axis.size(), 12u);
        for (float node : nodes.front())
            EXPECT_NE(std::find_if(axis.begin(), axis.end(),
                                   [node](float x) { return std::abs(x - node) < 1e-6f; }),
                      axis.end())
                << node;
    }
}

TEST(TurningPoints, areWhereColorantsAreFarthestFromTheirAbsence)
{
    const MappedDevice device(4, [](const float* d) {
        const auto peaked = [](float value, float at) {
            return value <= at ? value / at : 1.0f - 0.05f * (value - at) / (1.0f - at);
        };
        const float printed[4]{peaked(d[0], 0.85f), d[1], peaked(d[2], 0.303f), d[3] * (2.0f - d[3])};
        return mixed(printed, fourInks());
    });
    const auto turns = turningPoints(device, {}).value();
    ASSERT_EQ(turns.size(), 4u);
    EXPECT_NEAR(turns[0], 0.85f, 0.001f);
    EXPECT_EQ(turns[1], 1.0f);
    EXPECT_NEAR(turns[2], 0.303f, 0.001f);
    EXPECT_EQ(turns[3], 1.0f);
    const MappedDevice circle(4, [](const float* d) {
        return Vec3{50 + 20 * double(d[0]) + double(d[2] + d[3]), 30 * std::cos(6 * double(d[1])),
                    30 * std::sin(6 * double(d[1]))};
    });
    EXPECT_EQ(turningPoints(circle, {}).value(), std::vector<float>(4, 1.0f));
    const auto equalised = equalisedNodes(device, 129, minEvenShare, {}).value();
    const DeviceNodes nodes = alignedNodes(device, equalised, turns, {5, 5, 5, 5}, 33);
    for (std::size_t axis = 0; axis < 4; ++axis) {
        EXPECT_NE(std::find(nodes[axis].begin(), nodes[axis].end(), turns[axis]), nodes[axis].end()) << axis;
        EXPECT_TRUE(std::is_sorted(nodes[axis].begin(), nodes[axis].end()));
        EXPECT_EQ(nodes[axis].size(), 5u);
    }
}

TEST(TableNodes, areUnknownForAMatrix)
{
    QFile file(testprofiles::srgb());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto transform =
        DeviceTransform::create(file.readAll(), KVVMRenderRelativeColorimetric, false).value();
    EXPECT_TRUE(transform->tableNodes().empty());
    EXPECT_FALSE(isLinearBetweenTableNodes(*transform, {}).value());
}

// A volume is measured again when a better surface is found; the cells cost much more than the surface.
TEST(DeviceCells, areConvertedOnceForAllSurfaces)
{
    int converted = 0;
    const MappedDevice device(4, [&converted](const float* d) {
        ++converted;
        return mixed(d, fourInks());
    });
    const Mesh coarse = radialHull(device, evenNodes(4, 3), {}).value();
    const Mesh fine = radialHull(device, evenNodes(4, 9), {}).value();
    const auto measured = [](DeviceCells& cells, const Mesh& surface) {
        return cells.volume(DeviceCells::Grid::Look, surface, {}).value();
    };
    DeviceCells cells(device, 1.0, {}), others(device, 1.0, {});
    const double first = measured(cells, coarse);
    const int afterFirst = converted;
    EXPECT_GT(afterFirst, 0);
    const double second = measured(cells, fine);
    EXPECT_EQ(converted, afterFirst);
    EXPECT_EQ(second, measured(others, fine)); // as if it were the first
    EXPECT_NEAR(first, second, 0.01 * second);
}
