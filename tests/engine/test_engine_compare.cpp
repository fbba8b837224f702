// SPDX-License-Identifier: Apache-2.0
#include "SlowGeometry.h"
#include "TestProfiles.h"

#include <engine/mesh/Compare.h>
#include <engine/mesh/ShareInside.h>
#include <engine/mesh/WindingIndex.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

using namespace testprofiles;

namespace {

constexpr double tolerance =
    1e-6; // relative to the exact result for the two meshes; the precision of floats is 6e-8

// A box with edges that a table profile represents exactly: multiples of 1/655.35 in L, of 1/257 in a and b.
KVGamut::GamutObject box(double L0, double L1, double a0, double a1, double b0, double b1)
{
    return gamutOf(opened(tableProfile(
                       cmsSigRgbData, 2,
                       [=](const std::vector<double>& d) {
                           return Lab{L0 + (L1 - L0) * d[0], a0 + (a1 - a0) * d[1], b0 + (b1 - b0) * d[2]};
                       })),
                   9);
}

// Bounds of a box-shaped gamut, from its faces.
std::array<std::pair<double, double>, 3> boundsOf(const KVGamut::GamutObject& gamut)
{
    std::array<std::pair<double, double>, 3> bounds;
    bounds.fill({1e300, -1e300});
    for (const auto& face : slow::facesOf(gamut))
        for (const auto& p : face)
            for (std::size_t c = 0; c < 3; ++c)
                bounds[c] = {std::min(bounds[c].first, p[c]), std::max(bounds[c].second, p[c])};
    return bounds;
}

double commonOfBoxes(const KVGamut::GamutObject& p, const KVGamut::GamutObject& q)
{
    const auto pb = boundsOf(p), qb = boundsOf(q);
    double volume = 1.0;
    for (std::size_t c = 0; c < 3; ++c)
        volume *= std::max(0.0, std::min(pb[c].second, qb[c].second) - std::max(pb[c].first, qb[c].first));
    return volume;
}

void expectConsistent(const KVGamut::Comparison& c)
{
    EXPECT_NEAR(c.unionVolume, c.volumeFirst + c.volumeSecond - c.intersection, 1e-6 * c.unionVolume);
    EXPECT_NEAR(c.secondCovered, c.intersection / c.volumeSecond, 1e-6);
    EXPECT_NEAR(c.firstCovered, c.intersection / c.volumeFirst, 1e-6);
    EXPECT_LE(c.intersection, std::min(c.volumeFirst, c.volumeSecond));
    EXPECT_GE(c.intersection, 0.0f);
}

} // namespace

TEST(Compare, ofAGamutWithItselfCoversIt)
{
    for (const QString& path : {srgb(), printerCmyk()}) {
        const auto gamut = gamutOf(openedFile(path));
        const auto c = gamut.compare(gamut);
        EXPECT_FLOAT_EQ(c.intersection, gamut.volume());
        EXPECT_FLOAT_EQ(c.unionVolume, gamut.volume());
        EXPECT_EQ(c.firstCovered, 1.0f);
        EXPECT_EQ(c.secondCovered, 1.0f);
    }
}

TEST(Compare, ofBoxesIsTheirCommonBox)
{
    const auto first = box(20, 80, -30, 50, -60, 10);
    const std::vector<KVGamut::GamutObject> others{
        box(50, 90, -10, 70, -20, 40), // overlapping at a corner
        box(30, 70, -20, 40, -50, 0),  // contained
        box(10, 90, -40, 60, -70, 20), // containing
        box(10, 90, -5, 5, -70, 20),   // a thin plate through it
        box(77, 90, 47, 70, 7, 40),    // a small corner
        box(20, 80, -30, 50, 5, 60),   // with common facets
    };
    for (const auto& second : others) {
        const auto c = first.compare(second);
        const double exact = commonOfBoxes(first, second);
        EXPECT_NEAR(c.intersection, exact, tolerance * exact);
        expectConsistent(c);
        EXPECT_NEAR(second.compare(first).intersection, exact, tolerance * exact);
    }
}

TEST(Compare, ofDisjointGamutsHasNoIntersection)
{
    const auto first = box(20, 80, -30, 50, -60, 10);
    for (const auto& second :
         {box(20, 80, 60, 90, -60, 10), box(85, 99, -30, 50, -60, 10), box(20, 80, -30, 50, 20, 60)}) {
        const auto c = first.compare(second);
        EXPECT_EQ(c.intersection, 0.0f);
        EXPECT_EQ(c.firstCovered, 0.0f);
        EXPECT_EQ(c.secondCovered, 0.0f);
        EXPECT_NEAR(c.unionVolume, first.volume() + second.volume(), 1.0);
    }
}

// One above the other over the same ab area: columns cross both, but the solids are disjoint.
TEST(Compare, ofInterlockingGamutsHasNoIntersection)
{
    const auto crescent =
        gamutOf(opened(tableProfile(
                    cmsSigRgbData, 33,
                    [](const std::vector<double>& d) {
                        const double angle = 1.5 * M_PI * d[1];
                        const double radius = 30.0 + 30.0 * d[2];
                        return Lab{20 + 60 * d[0], radius * std::cos(angle), radius * std::sin(angle)};
                    })),
                33);
    const auto core = box(30, 70, -15, 15, -15, 15);
    EXPECT_EQ(crescent.compare(core).intersection, 0.0f);
}

TEST(Compare, ofRealProfilesMatchesPolygonSections)
{
    const auto display = gamutOf(openedFile(srgb()), 17);
    const auto wide = gamutOf(openedFile(adobeRgb()), 17);
    const auto printer = gamutOf(openedFile(printerCmyk()), 17);
    const std::vector<std::pair<const KVGamut::GamutObject*, const KVGamut::GamutObject*>> pairs{
        {&display, &printer}, {&display, &wide}, {&printer, &wide}};
    for (const auto& [first, second] : pairs) {
        const double exact = slow::commonVolume(*first, *second, 0.05);
        // The sections, 0.05 apart, have a relative error of 1e-5 themselves.
        EXPECT_NEAR(velmora::intersectionVolume(first->mesh(), second->mesh()), exact, 1e-5 * exact);
    }
}

TEST(Compare, returnsTheEighteenFloatsInOrder)
{
    const auto first = gamutOf(openedFile(srgb()), 9);
    const auto second = gamutOf(openedFile(printerCmyk()), 9, KVVMRenderAbsoluteColorimetric);
    const auto c = first.compare(second);
    float fields[18];
    std::memcpy(fields, &c, sizeof(fields));
    const auto expectPoint = [&](int at, const KVGamut::LabPoint& p) {
        EXPECT_EQ(fields[at], p.L);
        EXPECT_EQ(fields[at + 1], p.a);
        EXPECT_EQ(fields[at + 2], p.b);
    };
    expectPoint(0, first.whitePoint());
    expectPoint(3, first.blackPoint());
    expectPoint(6, second.whitePoint());
    expectPoint(9, second.blackPoint());
    EXPECT_EQ(fields[12], first.volume());
    EXPECT_EQ(fields[13], second.volume());
    EXPECT_EQ(fields[14], c.intersection);
    EXPECT_EQ(fields[15], c.unionVolume);
    EXPECT_EQ(fields[16], c.secondCovered);
    EXPECT_EQ(fields[17], c.firstCovered);
    EXPECT_GT(c.secondCovered, c.firstCovered); // the printer is the smaller one
    expectConsistent(c);
}

TEST(Compare, withAnEmptyGamutHasNoIntersection)
{
    const auto gamut = box(20, 80, -30, 50, -60, 10);
    const KVGamut::GamutObject empty;
    const auto c = gamut.compare(empty);
    EXPECT_EQ(c.volumeFirst, gamut.volume());
    EXPECT_EQ(c.volumeSecond, 0.0f);
    EXPECT_EQ(c.intersection, 0.0f);
    EXPECT_EQ(c.unionVolume, gamut.volume());
    EXPECT_EQ(c.secondCovered, 0.0f);
}

TEST(CompareWithUncertainty, hasTheValuesOfCompare)
{
    const auto first = gamutOf(openedFile(srgb()), 9);
    const auto second = gamutOf(openedFile(printerCmyk()), 9);
    const auto plain = first.compare(second);
    const auto report = first.compareWithUncertainty(second);
    EXPECT_FALSE(report.problem);
    EXPECT_EQ(std::memcmp(&report.values, &plain, sizeof plain), 0);
}

TEST(CompareWithUncertainty, exchangesTheSidesOnly)
{
    const auto first = gamutOf(openedFile(srgb()), 17);
    const auto second = gamutOf(openedFile(printerCmyk()), 17);
    const auto ab = first.compareWithUncertainty(second).uncertainty;
    const auto ba = second.compareWithUncertainty(first).uncertainty;
    constexpr double rounding = 1e-9;
    EXPECT_EQ(ab.intersection, ba.intersection);
    EXPECT_EQ(ab.unionVolume, ba.unionVolume);
    EXPECT_NEAR(ab.firstCovered, ba.secondCovered, rounding);
    EXPECT_NEAR(ab.secondCovered, ba.firstCovered, rounding);
    EXPECT_GT(ab.intersection, 0.0);
    EXPECT_LT(ab.intersection, 0.01 * double(first.volume()));
}

TEST(CompareWithUncertainty, coversBoxesThatAreKnownExactly)
{
    const auto first = box(20, 80, -30, 50, -60, 10);
    const auto second = box(50, 90, -10, 70, -20, 40);
    const auto report = first.compareWithUncertainty(second);
    const double exact = commonOfBoxes(first, second);
    EXPECT_NEAR(double(report.values.intersection), exact, report.uncertainty.intersection);
    EXPECT_LT(report.uncertainty.intersection, 0.005 * exact);
}

TEST(CompareWithUncertainty, ofAGamutWithItselfIsSureOfTheCoverage)
{
    const auto gamut = gamutOf(openedFile(srgb()));
    KVGamut::GamutObject restored;
    restored.deserialize(gamut.serialize());
    for (const auto& other : {gamut, restored}) {
        const auto report = gamut.compareWithUncertainty(other);
        EXPECT_EQ(report.uncertainty.intersection, gamut.report().volumeUncertainty);
        EXPECT_EQ(report.uncertainty.unionVolume, gamut.report().volumeUncertainty);
        EXPECT_EQ(report.values.firstCovered, 1.0f);
        EXPECT_EQ(report.uncertainty.firstCovered, 0.0);
        EXPECT_EQ(report.uncertainty.secondCovered, 0.0);
    }
}

// The boundary of the inner one alone decides; it is wholly covered, whatever its volume is.
TEST(CompareWithUncertainty, ofAContainedGamutIsThatOfItsVolume)
{
    const auto inner = box(30, 70, -20, 40, -50, 0), outer = box(20, 80, -30, 50, -60, 10);
    const auto report = outer.compareWithUncertainty(inner);
    EXPECT_EQ(report.uncertainty.intersection, inner.report().volumeUncertainty);
    EXPECT_EQ(report.uncertainty.unionVolume, outer.report().volumeUncertainty);
    EXPECT_EQ(report.values.secondCovered, 1.0f);
    EXPECT_EQ(report.uncertainty.secondCovered, 0.0);
    EXPECT_GT(report.uncertainty.firstCovered, 0.0);
}

TEST(CompareWithUncertainty, ofDisjointAndEmptyGamutsHasNoIntersection)
{
    const auto gamut = box(20, 80, -30, 50, -60, 10);
    for (const auto& other : {box(85, 99, -30, 50, -60, 10), KVGamut::GamutObject()}) {
        const auto report = gamut.compareWithUncertainty(other);
        EXPECT_FALSE(report.problem);
        EXPECT_EQ(report.values.intersection, 0.0f);
        EXPECT_EQ(report.uncertainty.intersection, 0.0);
        EXPECT_EQ(report.uncertainty.firstCovered, 0.0);
        EXPECT_NEAR(report.uncertainty.unionVolume,
                    std::hypot(gamut.report().volumeUncertainty, other.report().volumeUncertainty), 1e-9);
    }
}

TEST(CompareWithUncertainty, saysThatItWasCancelled)
{
    const auto gamut = box(20, 80, -30, 50, -60, 10), other = box(50, 90, -10, 70, -20, 40);
    auto protocol = KVCompletionProtocol::createTask(QStringLiteral("comparison"));
    EXPECT_FALSE(gamut.compareWithUncertainty(other, &protocol).problem);
    protocol->cancel();
    const auto report = gamut.compareWithUncertainty(other, &protocol);
    ASSERT_TRUE(report.problem);
    EXPECT_EQ(report.problem->code, KVProblemCode::Cancelled);
}

TEST(ShareInside, ofABoxIsTheShareOfItsArea)
{
    const auto first = box(20, 80, -30, 50, -60, 10);  // 60 x 80 x 70
    const auto second = box(50, 95, -40, 60, -70, 20); // contains its upper half
    const double area = 2.0 * (60 * 80 + 60 * 70 + 80 * 70), inside = 80 * 70 + 30 * 2.0 * (80 + 70);
    EXPECT_NEAR(velmora::shareInside(first.mesh(), velmora::WindingIndex(second.mesh())), inside / area,
                0.02);
    EXPECT_EQ(velmora::shareInside({}, velmora::WindingIndex(second.mesh())), 0.0);
    EXPECT_EQ(velmora::shareInside(first.mesh(), velmora::WindingIndex()), 0.0);
}
