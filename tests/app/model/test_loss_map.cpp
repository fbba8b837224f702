// SPDX-License-Identifier: Apache-2.0
#include "model/pictures/LossMap.h"

#include "../support/ColourVision.h"
#include "model/inputs/GamutSource.h"

#include <gtest/gtest.h>

#include <cmath>

using kvtest::colourVisions;

namespace {

KVGamut::GamutObject smallGamut(const char* name)
{
    KVGamut::Settings settings;
    settings.gridPoints = 9;
    return GamutSource::open(QString::fromLatin1(name))->compute(settings).value();
}

} // namespace

TEST(LossMap, isTheDistanceOutsideTheOtherGamut)
{
    const KVGamut::GamutObject wide = smallGamut("AdobeRGB"), narrow = smallGamut("sRGB");
    const auto de76 = lossOf(wide.mesh().lab, narrow, ColourMetric::DE76);
    const auto de00 = lossOf(wide.mesh().lab, narrow, ColourMetric::Ciede2000);
    ASSERT_EQ(de76.size(), wide.mesh().lab.size());
    ASSERT_EQ(de00.size(), wide.mesh().lab.size());
    int outside = 0;
    for (std::size_t v = 0; v < de76.size(); ++v) {
        const float* lab = &wide.mesh().lab[v].L;
        EXPECT_EQ(de76[v], narrow.isInside(lab) ? 0.0f : narrow.nearest(lab).distance);
        EXPECT_EQ(de00[v], narrow.isInside(lab) ? 0.0f : narrow.nearestByCiede2000(lab).distance);
        outside += de76[v] > 1.0f;
    }
    EXPECT_GT(outside, 20);
}

TEST(LossMap, isNegativeInsideBesideTheBorderOfASurface)
{
    const KVGamut::GamutObject wide = smallGamut("AdobeRGB"), narrow = smallGamut("sRGB");
    const auto plain = lossOf(wide.mesh().lab, narrow, ColourMetric::DE76);
    const auto loss = lossOnSurface(wide.mesh(), narrow, ColourMetric::DE76);
    ASSERT_EQ(loss.size(), plain.size());
    std::vector<bool> isBeside(loss.size());
    for (const auto& triangle : wide.mesh().triangles)
        for (const int vertex : triangle)
            for (const int other : triangle)
                if (plain[std::size_t(other)] > 0.0f)
                    isBeside[std::size_t(vertex)] = true;
    int inside = 0;
    for (std::size_t v = 0; v < loss.size(); ++v) {
        const bool isSigned = isBeside[v] && plain[v] == 0.0f;
        EXPECT_EQ(loss[v], isSigned ? narrow.nearest(&wide.mesh().lab[v].L).distance : plain[v]);
        inside += loss[v] < 0.0f;
    }
    EXPECT_GT(inside, 10);
    auto protocol = KVCompletionProtocol::createTask(QStringLiteral("loss"));
    protocol->cancel();
    EXPECT_TRUE(lossOnSurface(wide.mesh(), narrow, ColourMetric::DE76, &protocol).empty());
}

TEST(LossMap, canBeCancelled)
{
    const KVGamut::GamutObject wide = smallGamut("AdobeRGB"), narrow = smallGamut("sRGB");
    auto protocol = KVCompletionProtocol::createTask(QStringLiteral("loss"));
    protocol->cancel();
    for (const ColourMetric metric : {ColourMetric::DE76, ColourMetric::Ciede2000})
        EXPECT_TRUE(lossOf(wide.mesh().lab, narrow, metric, &protocol).empty());
}

TEST(LossScale, isNeutralUpToTheThreshold)
{
    const LossScale scale{2.0f, 10.0f};
    EXPECT_EQ(scale.colorOf(0.0f), scale.colorOf(2.0f));
    EXPECT_EQ(scale.colorOf(0.0f).hsvSaturation(), 0);
    EXPECT_GT(scale.colorOf(2.001f).hsvSaturation(), 100);
    EXPECT_EQ(scale.colorOf(10.0f), scale.colorOf(1e9f));
    EXPECT_NE(scale.colorOf(10.0f), scale.colorOf(9.0f));
    EXPECT_EQ(scale.colorOf(std::nanf("")), scale.colorOf(0.0f));
}

TEST(LossScale, hasStopsInItsColours)
{
    const LossScale scale{2.0f, 10.0f};
    const auto stops = scale.stops();
    ASSERT_GE(stops.size(), 3);
    EXPECT_EQ(stops[0], std::pair(2.0f, scale.colorOf(0.0f).rgb()));
    EXPECT_EQ(stops[1].first, 2.0f);
    for (const auto& [distance, color] : stops.mid(2))
        EXPECT_EQ(color, scale.colorOf(distance).rgb()) << distance;
    EXPECT_EQ(stops.last(), std::pair(10.0f, scale.colorOf(10.0f).rgb()));
}

TEST(LossScale, fitsTheDistances)
{
    EXPECT_EQ(LossScale::forDistances({0.0f, 7.2f, 3.0f}, 1.0f).largest, 8.0f);
    EXPECT_EQ(LossScale::forDistances({}, 1.0f).largest, 2.0f);
    EXPECT_EQ(LossScale::forDistances({0.5f}, 3.0f).largest, 4.0f);
    EXPECT_EQ(LossScale::forDistances({0.5f}, 3.0f).threshold, 3.0f);
}

TEST(LossScale, colorsGoFromZeroToTheLargest)
{
    const LossScale scale{1.0f, 4.0f};
    const QList<QColor> colors = scale.colors();
    ASSERT_GE(colors.size(), 50);
    EXPECT_EQ(colors.first(), scale.colorOf(0.0f));
    const auto inside = std::count(colors.begin(), colors.end(), scale.colorOf(0.0f));
    EXPECT_NEAR(double(inside) / double(colors.size()), 0.25, 0.02);
}

TEST(LossScale, becomesDarkerInEveryColourVision)
{
    const LossScale scale{0.0f, 1.0f};
    for (const auto& vision : colourVisions()) {
        for (float share = 0.05f; share < 1.0f; share += 0.05f)
            EXPECT_LT(seen(scale.colorOf(share), vision).L, seen(scale.colorOf(share - 0.04f), vision).L)
                << vision.name << ' ' << share;
        for (float share = 0.25f; share <= 1.0f; share += 0.25f)
            EXPECT_GT(seenDifference(scale.colorOf(share), scale.colorOf(share - 0.2499f), vision), 10.0)
                << vision.name << ' ' << share;
    }
}

TEST(LossScale, insideDiffersFromOutsideInEveryColourVision)
{
    const LossScale scale{0.0f, 1.0f};
    for (const auto& vision : colourVisions())
        for (float share = 0.001f; share <= 1.0f; share += 0.02f)
            EXPECT_GT(seenDifference(scale.colorOf(0.0f), scale.colorOf(share), vision), 15.0)
                << vision.name << ' ' << share;
}
