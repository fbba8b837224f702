// SPDX-License-Identifier: Apache-2.0
#include "Looks.h"
#include "SlowGeometry.h"
#include "TestProfiles.h"

#include <engine/mesh/LchIndex.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

using namespace testprofiles;
using KVGamut::LabPoint;

namespace {

struct PublishedPair
{
    LabPoint first;
    LabPoint second;
    double difference;
};

// G. Sharma, W. Wu, E. N. Dalal, "The CIEDE2000 color-difference formula: implementation notes, supplementary
// test data, and mathematical observations", Color Res. Appl. 30(1), 2005, table 1.
constexpr PublishedPair publishedPairs[] = {
    {{50.0000f, 2.6772f, -79.7751f}, {50.0000f, 0.0000f, -82.7485f}, 2.0425},
    {{50.0000f, 3.1571f, -77.2803f}, {50.0000f, 0.0000f, -82.7485f}, 2.8615},
    {{50.0000f, 2.8361f, -74.0200f}, {50.0000f, 0.0000f, -82.7485f}, 3.4412},
    {{50.0000f, -1.3802f, -84.2814f}, {50.0000f, 0.0000f, -82.7485f}, 1.0000},
    {{50.0000f, -1.1848f, -84.8006f}, {50.0000f, 0.0000f, -82.7485f}, 1.0000},
    {{50.0000f, -0.9009f, -85.5211f}, {50.0000f, 0.0000f, -82.7485f}, 1.0000},
    {{50.0000f, 0.0000f, 0.0000f}, {50.0000f, -1.0000f, 2.0000f}, 2.3669},
    {{50.0000f, -1.0000f, 2.0000f}, {50.0000f, 0.0000f, 0.0000f}, 2.3669},
    {{50.0000f, 2.4900f, -0.0010f}, {50.0000f, -2.4900f, 0.0009f}, 7.1792},
    {{50.0000f, 2.4900f, -0.0010f}, {50.0000f, -2.4900f, 0.0010f}, 7.1792},
    {{50.0000f, 2.4900f, -0.0010f}, {50.0000f, -2.4900f, 0.0011f}, 7.2195},
    {{50.0000f, 2.4900f, -0.0010f}, {50.0000f, -2.4900f, 0.0012f}, 7.2195},
    {{50.0000f, -0.0010f, 2.4900f}, {50.0000f, 0.0009f, -2.4900f}, 4.8045},
    {{50.0000f, -0.0010f, 2.4900f}, {50.0000f, 0.0010f, -2.4900f}, 4.8045},
    {{50.0000f, -0.0010f, 2.4900f}, {50.0000f, 0.0011f, -2.4900f}, 4.7461},
    {{50.0000f, 2.5000f, 0.0000f}, {50.0000f, 0.0000f, -2.5000f}, 4.3065},
    {{50.0000f, 2.5000f, 0.0000f}, {73.0000f, 25.0000f, -18.0000f}, 27.1492},
    {{50.0000f, 2.5000f, 0.0000f}, {61.0000f, -5.0000f, 29.0000f}, 22.8977},
    {{50.0000f, 2.5000f, 0.0000f}, {56.0000f, -27.0000f, -3.0000f}, 31.9030},
    {{50.0000f, 2.5000f, 0.0000f}, {58.0000f, 24.0000f, 15.0000f}, 19.4535},
    {{50.0000f, 2.5000f, 0.0000f}, {50.0000f, 3.1736f, 0.5854f}, 1.0000},
    {{50.0000f, 2.5000f, 0.0000f}, {50.0000f, 3.2972f, 0.0000f}, 1.0000},
    {{50.0000f, 2.5000f, 0.0000f}, {50.0000f, 1.8634f, 0.5757f}, 1.0000},
    {{50.0000f, 2.5000f, 0.0000f}, {50.0000f, 3.2592f, 0.3350f}, 1.0000},
    {{60.2574f, -34.0099f, 36.2677f}, {60.4626f, -34.1751f, 39.4387f}, 1.2644},
    {{63.0109f, -31.0961f, -5.8663f}, {62.8187f, -29.7946f, -4.0864f}, 1.2630},
    {{61.2901f, 3.7196f, -5.3901f}, {61.4292f, 2.2480f, -4.9620f}, 1.8731},
    {{35.0831f, -44.1164f, 3.7933f}, {35.0232f, -40.0716f, 1.5901f}, 1.8645},
    {{22.7233f, 20.0904f, -46.6940f}, {23.0331f, 14.9730f, -42.5619f}, 2.0373},
    {{36.4612f, 47.8580f, 18.3852f}, {36.2715f, 50.5065f, 21.2231f}, 1.4146},
    {{90.8027f, -2.0831f, 1.4410f}, {91.1528f, -1.6435f, 0.0447f}, 1.4441},
    {{90.9257f, -0.5406f, -0.9208f}, {88.6381f, -0.8985f, -0.7239f}, 1.5381},
    {{6.7747f, -0.2908f, -2.4247f}, {5.8714f, -0.0985f, -2.2286f}, 0.6377},
    {{2.0776f, 0.0795f, -1.1350f}, {0.9033f, -0.0636f, -0.5514f}, 0.9082},
};

double distanceOf(const LabPoint& p, const LabPoint& q)
{
    return std::hypot(double(p.L) - double(q.L), double(p.a) - double(q.a), double(p.b) - double(q.b));
}

LabPoint labOf(const slow::Point& p)
{
    return {static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2])};
}

} // namespace

// --- The difference -------------------------------------------------------------------------------

TEST(Ciede2000, hasThePublishedValues)
{
    ASSERT_EQ(std::size(publishedPairs), 34u);
    for (const PublishedPair& pair : publishedPairs) {
        SCOPED_TRACE(pair.difference);
        EXPECT_NEAR(KVGamut::ciede2000(pair.first, pair.second), pair.difference, 0.5001e-4);
        EXPECT_NEAR(KVGamut::ciede2000(pair.second, pair.first), pair.difference, 0.5001e-4);
    }
}

TEST(Ciede2000, isZeroForEqualColours)
{
    for (const LabPoint& lab : {LabPoint{}, {50, 0, 0}, {50, 0, -80}, {100, -1e-6f, 0}, {3, 1e30f, 4}})
        EXPECT_EQ(KVGamut::ciede2000(lab, lab), 0.0);
}

TEST(Ciede2000, isFiniteForHugeColours)
{
    const float most = std::numeric_limits<float>::max();
    EXPECT_TRUE(std::isfinite(KVGamut::ciede2000({most, most, most}, {-most, -most, most})));
    EXPECT_TRUE(std::isfinite(KVGamut::ciede2000({most, most, most}, {0, 0, 0})));
    EXPECT_TRUE(std::isnan(KVGamut::ciede2000({std::nanf(""), 0, 0}, {0, 0, 0})));
}

// The bound of a range must not exceed the difference to any colour in it.
TEST(Ciede2000, isNeverBelowTheBoundOfARange)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> share(0.0, 1.0);
    for (int i = 0; i < 20000; ++i) {
        const double size = std::pow(10.0, -2.0 + 4.0 * share(random)); // 0.01 to 100
        const auto polar = [](double L, double C, double h) {
            return velmora::Vec3{L, C * std::cos(h), C * std::sin(h)};
        };
        const velmora::Vec3 x =
            polar(110.0 * share(random), 130.0 * share(random) * share(random), 6.3 * share(random));
        velmora::LchRange range;
        range.lowL = 110.0 * share(random) - 5.0;
        range.highL = range.lowL + size * share(random);
        range.lowC = 130.0 * share(random) * share(random);
        range.highC = range.lowC + size * share(random);
        range.hue = 6.3 * share(random);
        range.halfWidth = std::min(3.2, size * share(random) / (range.lowC + 1.0));
        const double bound = velmora::Ciede2000Bound(x)(range);
        for (int k = 0; k < 40; ++k) {
            const auto any = [&](double low, double high) {
                const double t = share(random); // the ends are tested, too
                return t < 0.25 ? low : t > 0.75 ? high : low + 2.0 * (t - 0.25) * (high - low);
            };
            const velmora::Vec3 p = polar(any(range.lowL, range.highL), any(range.lowC, range.highC),
                                          any(range.hue - range.halfWidth, range.hue + range.halfWidth));
            ASSERT_GE(velmora::length(velmora::ciede2000Residual(x, p)), bound - 1e-9);
        }
    }
}

// --- The nearest point ----------------------------------------------------------------------------

namespace {

// The difference by Little CMS.
double independentDifference(const slow::Point& p, const slow::Point& q)
{
    const cmsCIELab first{p[0], p[1], p[2]}, second{q[0], q[1], q[2]};
    return cmsCIE2000DeltaE(&first, &second, 1.0, 1.0, 1.0);
}

slow::Point mixed(const slow::Face& face, double s, double t)
{
    slow::Point p{};
    for (std::size_t c = 0; c < 3; ++c)
        p[c] = face[0][c] + s * (face[1][c] - face[0][c]) + t * (face[2][c] - face[0][c]);
    return p;
}

// The smallest difference to a surface: evenly spaced points of every face, and a search from the best of
// them by steps of half the size.
class ExhaustiveSearch
{
public:
    explicit ExhaustiveSearch(const KVGamut::GamutObject& gamut) : m_faces(slow::facesOf(gamut))
    {
        for (std::size_t f = 0; f < m_faces.size(); ++f) {
            const auto& [p, q, r] = m_faces[f];
            const double longest = std::max({edge(p, q), edge(q, r), edge(r, p)});
            const int steps = std::max(1, static_cast<int>(std::ceil(longest / 3.0)));
            for (int i = 0; i <= steps; ++i)
                for (int k = 0; i + k <= steps; ++k)
                    m_samples.push_back({f, double(i) / steps, double(k) / steps, 1.0 / steps});
        }
    }
    double operator()(const slow::Point& x) const
    {
        std::vector<std::pair<double, std::size_t>> all(m_samples.size());
        for (std::size_t i = 0; i < all.size(); ++i) {
            const Sample& s = m_samples[i];
            all[i] = {independentDifference(x, mixed(m_faces[s.face], s.s, s.t)), i};
        }
        constexpr std::size_t starts = 50;
        const auto end = all.begin() + static_cast<std::ptrdiff_t>(std::min(starts, all.size()));
        std::partial_sort(all.begin(), end, all.end());
        double best = all.front().first;
        for (auto start = all.begin(); start != end; ++start)
            best = std::min(best, refined(x, m_samples[start->second], start->first));
        return best;
    }

private:
    struct Sample
    {
        std::size_t face;
        double s;
        double t;
        double step;
    };
    static double edge(const slow::Point& p, const slow::Point& q)
    {
        const auto way = slow::minus(p, q);
        return std::hypot(way[0], way[1], way[2]);
    }
    double refined(const slow::Point& x, Sample at, double best) const
    {
        while (at.step > 1e-6) {
            Sample next = at;
            for (int i = -1; i <= 1; ++i)
                for (int k = -1; k <= 1; ++k) {
                    const double s = std::clamp(at.s + i * at.step, 0.0, 1.0);
                    const double t = std::clamp(at.t + k * at.step, 0.0, 1.0 - s);
                    const double difference = independentDifference(x, mixed(m_faces[at.face], s, t));
                    if (difference < best) {
                        best = difference;
                        next.s = s;
                        next.t = t;
                    }
                }
            if (next.s == at.s && next.t == at.t)
                next.step *= 0.5;
            at = next;
        }
        return best;
    }

    std::vector<slow::Face> m_faces;
    std::vector<Sample> m_samples;
};

// Lightness, chroma, hue in degrees.
slow::Point polar(double L, double C, double h)
{
    const double angle = h * std::numbers::pi / 180.0;
    return {L, C * std::cos(angle), C * std::sin(angle)};
}

// Dark, light, neutral, nearly neutral and saturated colours; blues, where CIEDE2000 is not convex; hues on
// both sides of 0 and 180 degrees.
std::vector<slow::Point> colours(int random, unsigned seed)
{
    std::vector<slow::Point> all{{0, 0, 0},
                                 {2, 1, -1},
                                 {-5, 0, 0},
                                 {100, 0, 0},
                                 {105, 0, 0},
                                 {50, 0, 0},
                                 {50, 0.01, 0},
                                 {50, -0.01, 0},
                                 polar(50, 2, 180),
                                 polar(30, 120, 285),
                                 polar(32, 134, 306),
                                 polar(20, 90, 275),
                                 polar(45, 60, 265),
                                 polar(5, 60, 290),
                                 polar(70, 100, 179.9),
                                 polar(70, 100, 180.1),
                                 polar(50, 130, 0.1),
                                 polar(50, 130, 359.9),
                                 polar(95, 110, 100),
                                 polar(60, 150, 30)};
    std::mt19937 engine(seed);
    std::uniform_real_distribution<double> share(0.0, 1.0);
    for (int i = 0; i < random; ++i) {
        const double hue = i % 3 == 0 ? 240.0 + 80.0 * share(engine) : 360.0 * share(engine);
        all.push_back(polar(-5.0 + 112.0 * share(engine), 150.0 * share(engine), hue));
    }
    return all;
}

KVGamut::GamutObject boxGamut(double L0, double L1, double a0, double a1, double b0, double b1)
{
    return gamutOf(opened(tableProfile(
                       cmsSigRgbData, 2,
                       [=](const std::vector<double>& d) {
                           return Lab{L0 + (L1 - L0) * d[0], a0 + (a1 - a0) * d[1], b0 + (b1 - b0) * d[2]};
                       })),
                   3);
}

// A display, a wide one, a printer, a box that encloses no grey, and one whose faces are large and contain
// the axis.
std::vector<KVGamut::GamutObject> bodies()
{
    return {gamutOf(openedFile(srgb()), 9), gamutOf(openedFile(prophotoRgb()), 9),
            gamutOf(openedFile(printerCmyk()), 5), boxGamut(20, 80, 5, 50, -90, -10),
            boxGamut(10, 90, 0, 80, -70, 60)};
}

} // namespace

TEST(NearestByCiede2000, matchesAnExhaustiveSearch)
{
    int inside = 0;
    for (const KVGamut::GamutObject& gamut : bodies()) {
        const ExhaustiveSearch search(gamut);
        for (const slow::Point& x : colours(12, 11)) {
            SCOPED_TRACE(::testing::PrintToString(x));
            const LabPoint lab = labOf(x);
            const auto answer = gamut.nearestByCiede2000(&lab.L);
            const double expected = search({lab.L, lab.a, lab.b});
            EXPECT_LT(std::abs(answer.distance), expected + 0.005);
            EXPECT_EQ(std::signbit(answer.distance), gamut.isInside(&lab.L));
            inside += std::signbit(answer.distance);
        }
    }
    EXPECT_GT(inside, 15);
}

TEST(NearestByCiede2000, isAPointOfTheSurfaceAtThatDifference)
{
    for (const KVGamut::GamutObject& gamut : bodies()) {
        const auto faces = slow::facesOf(gamut);
        for (const slow::Point& x : colours(20, 12)) {
            const LabPoint lab = labOf(x);
            const auto answer = gamut.nearestByCiede2000(&lab.L);
            const slow::Point p{answer.point.L, answer.point.a, answer.point.b};
            EXPECT_LT(distanceOf(labOf(slow::nearest(faces, p)), answer.point), 5e-5);
            EXPECT_NEAR(KVGamut::ciede2000(lab, answer.point), std::abs(answer.distance), 1e-4);
        }
    }
}

TEST(NearestByCiede2000, isNotFartherThanTheNearestInLab)
{
    const auto gamut = gamutOf(openedFile(printerCmyk()), 17);
    double most = 0.0;
    for (const slow::Point& x : colours(2000, 13)) {
        const LabPoint lab = labOf(x);
        const double found = std::abs(gamut.nearestByCiede2000(&lab.L).distance);
        const double ofNearest = KVGamut::ciede2000(lab, gamut.nearest(&lab.L).point);
        EXPECT_LE(found, ofNearest + 1e-4);
        most = std::max(most, ofNearest - found);
    }
    EXPECT_GT(most, 5.0); // the two differ much for saturated colours
}

TEST(NearestByCiede2000, ofAListIsThatOfEachColour)
{
    const auto gamut = gamutOf(openedFile(srgb()), 9);
    std::vector<LabPoint> list;
    for (const slow::Point& x : colours(100, 14))
        list.push_back(labOf(x));
    list.push_back({std::nanf(""), 0, 0});
    const auto all = gamut.nearestByCiede2000(list);
    ASSERT_EQ(all.size(), list.size());
    for (std::size_t i = 0; i + 1 < list.size(); ++i) {
        const auto one = gamut.nearestByCiede2000(&list[i].L);
        EXPECT_EQ(all[i].distance, one.distance);
        EXPECT_EQ(all[i].point, one.point);
    }
    EXPECT_TRUE(std::isinf(all.back().distance) && std::isnan(all.back().point.L));
    EXPECT_TRUE(gamut.nearestByCiede2000(std::span<const LabPoint>()).empty());
}

TEST(NearestByCiede2000, ofAListCanBeCancelled)
{
    const auto gamut = gamutOf(openedFile(srgb()), 9);
    const std::vector<LabPoint> list(1000, LabPoint{50, 90, 0});
    auto protocol = KVCompletionProtocol::createTask(QStringLiteral("list"));
    EXPECT_EQ(gamut.nearestByCiede2000(list, &protocol).size(), list.size());
    protocol->cancel();
    EXPECT_TRUE(gamut.nearestByCiede2000(list, &protocol).empty());
}

namespace {

void expectNone(const KVGamut::Nearest& answer)
{
    EXPECT_TRUE(std::isinf(answer.distance) && answer.distance > 0.0f);
    EXPECT_TRUE(std::isnan(answer.point.L) && std::isnan(answer.point.a) && std::isnan(answer.point.b));
}

} // namespace

TEST(NearestByCiede2000, isNanForInvalidColours)
{
    const auto gamut = boxGamut(20, 80, -30, 50, -60, 10);
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    for (float bad : {nan, inf, -inf})
        for (int c = 0; c < 3; ++c) {
            float lab[] = {50.0f, 0.0f, 0.0f};
            lab[c] = bad;
            expectNone(gamut.nearestByCiede2000(lab));
            expectNone(gamut.nearestAtHue(lab));
        }
    expectNone(gamut.nearestByCiede2000(nullptr));
    expectNone(gamut.nearestAtHue(nullptr));
    const float grey[] = {50.0f, 0.0f, 0.0f};
    expectNone(KVGamut::GamutObject().nearestByCiede2000(grey));
    expectNone(KVGamut::GamutObject().nearestAtHue(grey));
    const float huge[] = {1e30f, -1e30f, 1e38f};
    EXPECT_TRUE(std::isfinite(gamut.nearestByCiede2000(huge).distance));
}

TEST(LchIndex, canBeCancelled)
{
    const auto gamut = gamutOf(openedFile(srgb()), 33);
    const int looks = looksOf([&](const velmora::Task& task) { velmora::LchIndex(gamut.mesh(), task); });
    EXPECT_GT(looks, 10);
    EXPECT_LE(looksOf([&](const velmora::Task& task) { velmora::LchIndex(gamut.mesh(), task); }, 0), 3);
}

// --- At constant hue ------------------------------------------------------------------------------

namespace {

double hueDifference(const LabPoint& p, const LabPoint& q)
{
    return std::remainder(std::atan2(double(p.b), double(p.a)) - std::atan2(double(q.b), double(q.a)),
                          2.0 * std::numbers::pi);
}

// The nearest point of the section of all faces with the half-plane of x: the pieces of the complete plane,
// cut off at the axis.
double distanceToSection(const KVGamut::GamutObject& gamut, const LabPoint& x)
{
    const float plane[] = {0.0f, -x.b, x.a, 0.0f};
    const double C = std::hypot(double(x.a), double(x.b));
    const auto chroma = [&](const LabPoint& p) {
        return (double(p.a) * double(x.a) + double(p.b) * double(x.b)) / C;
    };
    double best = std::numeric_limits<double>::infinity();
    for (const auto& [p, q] : KVGamut::computeRing(plane, gamut.mesh())) {
        double pc = chroma(p), qc = chroma(q), pL = double(p.L), qL = double(q.L);
        if (pc < 0.0 && qc < 0.0)
            continue;
        if (pc < 0.0 || qc < 0.0) {
            const double L = pL + pc / (pc - qc) * (qL - pL);
            (pc < 0.0 ? pL : qL) = L;
            (pc < 0.0 ? pc : qc) = 0.0;
        }
        const double dL = qL - pL, dc = qc - pc, size = dL * dL + dc * dc;
        const double t =
            size > 0.0 ? std::clamp(((double(x.L) - pL) * dL + (C - pc) * dc) / size, 0.0, 1.0) : 0.0;
        best = std::min(best, std::hypot(pL + t * dL - double(x.L), pc + t * dc - C));
    }
    return best;
}

} // namespace

TEST(NearestAtHue, matchesTheCompleteSection)
{
    int met = 0, missed = 0;
    for (const KVGamut::GamutObject& gamut : bodies())
        for (const slow::Point& colour : colours(200, 15)) {
            SCOPED_TRACE(::testing::PrintToString(colour));
            const LabPoint x = labOf(colour);
            if (x.a == 0.0f && x.b == 0.0f)
                continue;
            const double expected = distanceToSection(gamut, x);
            const auto answer = gamut.nearestAtHue(&x.L);
            if (std::isinf(expected)) {
                expectNone(answer);
                ++missed;
                continue;
            }
            ++met;
            EXPECT_NEAR(std::abs(answer.distance), expected, 1e-3);
            EXPECT_NEAR(distanceOf(answer.point, x), expected, 1e-3);
            EXPECT_EQ(std::signbit(answer.distance), gamut.isInside(&x.L));
            if (std::hypot(answer.point.a, answer.point.b) > 1.0f) {
                EXPECT_NEAR(hueDifference(answer.point, x), 0.0, 1e-5);
            }
        }
    EXPECT_GT(met, 800);
    EXPECT_GT(missed, 50); // of the box without greys
}

TEST(NearestAtHue, ofANeutralColourIsNeutral)
{
    const auto gamut = gamutOf(openedFile(srgb()), 33);
    for (const float L : {-10.0f, 30.0f, 80.0f, 120.0f}) {
        const float lab[] = {L, 0.0f, 0.0f};
        const auto answer = gamut.nearestAtHue(lab);
        EXPECT_EQ(answer.point.a, 0.0f);
        EXPECT_EQ(answer.point.b, 0.0f);
        EXPECT_NEAR(answer.point.L, L < 50.0f ? 0.0f : 100.0f, 0.1f);
        EXPECT_EQ(answer.distance<0.0f, L> 0.0f && L < 100.0f);
    }
    const auto withoutGreys = boxGamut(20, 80, 5, 50, -90, -10);
    const float grey[] = {50.0f, 0.0f, 0.0f};
    expectNone(withoutGreys.nearestAtHue(grey));
}

TEST(NearestAtHue, findsAColourInAFaceOfThatHue)
{
    const auto gamut = boxGamut(10, 90, 0, 80, -70, 60); // the face a* = 0 has two hues
    const LabPoint low = *std::min_element(gamut.mesh().lab.begin(), gamut.mesh().lab.end(),
                                           [](const LabPoint& p, const LabPoint& q) { return p.a < q.a; });
    if (low.a == 0.0f) {
        const float lab[] = {50.0f, 0.0f, 30.0f};
        EXPECT_NEAR(gamut.nearestAtHue(lab).distance, 0.0f, 1e-6f);
    }
}
