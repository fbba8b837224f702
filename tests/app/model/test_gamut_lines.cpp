// SPDX-License-Identifier: Apache-2.0
#include "model/pictures/GamutLines.h"

#include "../support/BuiltInGamut.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

KVGamut::GamutObject adobe(int grid)
{
    return kvtest::builtInGamut("AdobeRGB", grid);
}

double length(const LabSegment& s)
{
    return std::hypot(s.first.L - s.second.L, s.first.a - s.second.a, s.first.b - s.second.b);
}

bool isOnALine(const KVGamut::LabPoint& p)
{
    const double L = std::abs(std::remainder(double(p.L), 10.0));
    const double hue = std::atan2(double(p.b), double(p.a)) * 180.0 / M_PI;
    const double offset = std::abs(std::remainder(hue, 30.0)) * M_PI / 180.0 * std::hypot(p.a, p.b);
    return L < 1e-2 || offset < 1e-2;
}

} // namespace

TEST(GamutLines, areAtRoundLightnessesAndHuesOnTheSurface)
{
    const KVGamut::GamutObject gamut = adobe(17);
    const auto lines = gamutLines(gamut.mesh());
    std::set<int> lightnesses;
    for (const LabSegment& line : lines) {
        EXPECT_TRUE(isOnALine(line.first)) << line.first.L << ' ' << line.first.a << ' ' << line.first.b;
        const float lab[3]{line.first.L, line.first.a, line.first.b};
        EXPECT_NEAR(gamut.nearest(lab).distance, 0.0, 0.01);
        if (line.first.L == line.second.L)
            lightnesses.insert(int(std::lround(line.first.L)));
    }
    EXPECT_EQ(lightnesses, (std::set<int>{10, 20, 30, 40, 50, 60, 70, 80, 90}));
}

TEST(GamutLines, areClosed)
{
    const auto lines = gamutLines(adobe(9).mesh());
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const bool isFollowed = std::any_of(lines.begin(), lines.end(), [&](const LabSegment& other) {
            return other.first == lines[i].second;
        });
        EXPECT_TRUE(isFollowed) << i;
    }
}

TEST(GamutLines, hardlyDependOnTheGrid)
{
    const auto coarse = gamutLines(adobe(41).mesh()), fine = gamutLines(adobe(97).mesh());
    EXPECT_NEAR(double(fine.size()) / double(coarse.size()), 1.0, 0.35);
    double coarseLength = 0.0, fineLength = 0.0;
    for (const auto& s : coarse)
        coarseLength += length(s);
    for (const auto& s : fine)
        fineLength += length(s);
    EXPECT_NEAR(fineLength / coarseLength, 1.0, 0.02);
}

TEST(GamutLines, ofAnEmptySurfaceAreNone)
{
    EXPECT_TRUE(gamutLines({}).isEmpty());
}
