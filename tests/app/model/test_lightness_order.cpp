// SPDX-License-Identifier: Apache-2.0
#include "model/points/LightnessOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

MeasuredPoint pointAt(float lightness)
{
    MeasuredPoint point;
    point.lab = {lightness, 0.0f, 0.0f};
    return point;
}

QList<MeasuredPoint> pointsAt(std::initializer_list<float> lightness)
{
    QList<MeasuredPoint> points;
    for (const float L : lightness)
        points.append(pointAt(L));
    return points;
}

QList<qsizetype> numbersOf(std::span<const LightnessOrder::Item> items)
{
    QList<qsizetype> numbers;
    for (const LightnessOrder::Item& item : items)
        numbers.append(item.index);
    return numbers;
}

TEST(OrderByLightness, findsTheSamePointsAsASearchThroughAll)
{
    std::mt19937 random(1);
    QList<MeasuredPoint> points;
    for (int i = 0; i < 2000; ++i) // in steps, so that some have equal lightness or lie on the limits
        points.append(pointAt(static_cast<float>(random() % 401) / 4.0f));
    const LightnessOrder order(points);
    for (int i = 0; i < 200; ++i) {
        const double lightness = static_cast<double>(random() % 500) / 4.0 - 10.0;
        const double within = static_cast<double>(random() % 20) / 4.0;
        QList<qsizetype> expected;
        for (qsizetype p = 0; p < points.size(); ++p)
            if (std::abs(static_cast<double>(points[p].lab.L) - lightness) <= within)
                expected.append(p);
        QList<qsizetype> found = numbersOf(order.near(lightness, within));
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, expected) << lightness << " " << within;
    }
}

TEST(OrderByLightness, givesDarkPointsFirst)
{
    const LightnessOrder order(pointsAt({52, 50, 51, 50}));
    EXPECT_EQ(numbersOf(order.near(51.0, 1.0)), (QList<qsizetype>{1, 3, 2, 0}));
}

TEST(OrderByLightness, leavesOutLightnessThatIsNotFinite)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinite = std::numeric_limits<float>::infinity();
    const LightnessOrder order(pointsAt({nan, 50, infinite, -infinite, nan}));
    EXPECT_EQ(numbersOf(order.near(50.0, 1000.0)), QList<qsizetype>{1});
    EXPECT_TRUE(order.near(static_cast<double>(nan), 1.0).empty());
    EXPECT_TRUE(LightnessOrder().near(50.0, 10.0).empty());
}

} // namespace
