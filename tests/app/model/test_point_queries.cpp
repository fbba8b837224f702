// SPDX-License-Identifier: Apache-2.0
#include "app/support/BuiltInGamut.h"
#include "model/checks/PointQueries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using KVGamut::LabPoint;
using KVGamut::Nearest;
using PointQueries::Metric;

std::vector<LabPoint> randomColours(std::size_t count)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> lightness(-10.0f, 110.0f), chroma(-130.0f, 130.0f);
    std::vector<LabPoint> colours(count);
    for (LabPoint& colour : colours)
        colour = {lightness(random), chroma(random), chroma(random)};
    return colours;
}

class PointQueriesTest : public testing::Test
{
protected:
    const KVGamut::GamutObject gamut = kvtest::builtInGamut("sRGB", 17);
};

TEST_F(PointQueriesTest, answersWhetherEachColourIsInside)
{
    const auto colours = randomColours(10'000);
    const auto inside = PointQueries::inside(gamut, colours);
    ASSERT_EQ(inside.size(), colours.size());
    for (std::size_t i = 0; i < colours.size(); ++i)
        ASSERT_EQ(inside[i] == 1, gamut.isInside(&colours[i].L)) << i;
}

TEST_F(PointQueriesTest, findsTheNearestPointOfEachColour)
{
    const auto colours = randomColours(5'000);
    const auto found = PointQueries::nearest(gamut, colours, Metric::De76);
    ASSERT_EQ(found.size(), colours.size());
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const Nearest expected = gamut.nearest(&colours[i].L);
        ASSERT_EQ(found[i].distance, expected.distance) << i;
        ASSERT_EQ(found[i].point, expected.point) << i;
    }
}

TEST_F(PointQueriesTest, findsTheNearestPointByCiede2000)
{
    const auto colours = randomColours(200);
    const auto found = PointQueries::nearest(gamut, colours, Metric::De00);
    ASSERT_EQ(found.size(), colours.size());
    for (std::size_t i = 0; i < colours.size(); ++i)
        ASSERT_EQ(found[i].distance, gamut.nearestByCiede2000(&colours[i].L).distance) << i;
}

TEST_F(PointQueriesTest, hasNoAnswersForNoColours)
{
    EXPECT_TRUE(PointQueries::inside(gamut, {}).empty());
    EXPECT_TRUE(PointQueries::nearest(gamut, {}, Metric::De00).empty());
}

TEST_F(PointQueriesTest, computesNothingAfterACancellation)
{
    const auto task = KVCompletionProtocol::createTask(QStringLiteral("cancelled"));
    task->cancel();
    const std::vector<LabPoint> colours(10'000, LabPoint{50.0f, 0.0f, 0.0f}); // all are inside
    const auto inside = PointQueries::inside(gamut, colours, task);
    EXPECT_EQ(std::count(inside.begin(), inside.end(), 1), 0);
}

} // namespace
