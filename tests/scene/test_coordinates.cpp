// SPDX-License-Identifier: Apache-2.0
#include <scene/Coordinates.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

TEST(Coordinates, convertExactlyInBothDirections)
{
    EXPECT_EQ(kvSceneFromHost({1, 2, 3}), QVector3D(-2, 1, 3));
    EXPECT_EQ(kvHostFromScene({1, 2, 3}), QVector3D(2, -1, 3));
    std::mt19937 random(8);
    std::uniform_real_distribution<float> any(-1e6f, 1e6f);
    for (int i = 0; i < 100; ++i) {
        const QVector3D v(any(random), any(random), any(random));
        EXPECT_EQ(kvHostFromScene(kvSceneFromHost(v)), v);
        EXPECT_EQ(kvSceneFromHost(kvHostFromScene(v)), v);
    }
}

TEST(Coordinates, keepTheSignOfZero)
{
    EXPECT_TRUE(std::signbit(kvSceneFromHost({1, 0.0f, 3}).x()));
    EXPECT_FALSE(std::signbit(kvSceneFromHost({1, -0.0f, 3}).x()));
    EXPECT_TRUE(std::signbit(kvHostFromScene({0.0f, 1, 3}).y()));
    EXPECT_FALSE(std::signbit(kvHostFromScene({-0.0f, 1, 3}).y()));
    EXPECT_TRUE(std::signbit(kvSceneFromHost({1, 1, -0.0f}).z()));
}
