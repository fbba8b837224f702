// SPDX-License-Identifier: Apache-2.0
#include "desktop/view/Picker.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr float uncut = std::numeric_limits<float>::max();

/// Two faces that form a square of edge 2 around the L* axis at lightness @p L.
QList<Picker::Face> squareAt(float L)
{
    return {{{L, -1, -1}, {L, 1, -1}, {L, 1, 1}}, {{L, -1, -1}, {L, 1, 1}, {L, -1, 1}}};
}

/// A ball as faces: an octahedron whose faces were divided and pushed onto it.
QList<Picker::Face> ball(const QVector3D& centre, float radius, int divisions)
{
    QList<Picker::Face> faces;
    for (const float x : {-1.0f, 1.0f})
        for (const float y : {-1.0f, 1.0f})
            for (const float z : {-1.0f, 1.0f})
                faces.append({{x, 0, 0}, {0, y, 0}, {0, 0, z}});
    for (int i = 0; i < divisions; ++i) {
        QList<Picker::Face> finer;
        for (const Picker::Face& f : faces) {
            const QVector3D ab = (f[0] + f[1]) / 2;
            const QVector3D bc = (f[1] + f[2]) / 2;
            const QVector3D ca = (f[2] + f[0]) / 2;
            finer << Picker::Face{f[0], ab, ca} << Picker::Face{ab, f[1], bc} << Picker::Face{ca, bc, f[2]}
                  << Picker::Face{ab, bc, ca};
        }
        faces = finer;
    }
    for (Picker::Face& face : faces)
        for (QVector3D& corner : face)
            corner = centre + corner.normalized() * radius;
    return faces;
}

TEST(Picker, meetsTheNearerOfTwoFacesWhateverTheirOrder)
{
    const Picker::Ray down({100, 0.25f, 0.5f}, {-3, 0, 0});
    for (const auto& faces : {squareAt(20) + squareAt(60), squareAt(60) + squareAt(20)}) {
        const auto hit = Picker::firstHit(down, faces, uncut);
        ASSERT_TRUE(hit);
        EXPECT_FLOAT_EQ(hit->distance, 40.0f); // Lab units, however long the direction is
        EXPECT_EQ(hit->lab, QVector3D(60, 0.25f, 0.5f));
    }
}

TEST(Picker, meetsAFaceFromEitherSide)
{
    EXPECT_TRUE(Picker::firstHit({{100, 0, 0.5f}, {-1, 0, 0}}, squareAt(50), uncut));
    EXPECT_TRUE(Picker::firstHit({{0, 0, 0.5f}, {1, 0, 0}}, squareAt(50), uncut));
}

TEST(Picker, seesThroughWhatIsCutOff)
{
    const Picker::Ray down({100, 0, 0.5f}, {-1, 0, 0});
    const auto faces = squareAt(60) + squareAt(20);
    EXPECT_FLOAT_EQ(Picker::firstHit(down, faces, 59.0f)->lab.x(), 20.0f);
    EXPECT_FLOAT_EQ(Picker::firstHit(down, faces, 60.0f)->lab.x(), 60.0f);
    EXPECT_FALSE(Picker::firstHit(down, faces, 10.0f));
}

TEST(Picker, meetsNothingBehindBesideOrAlongsideTheRay)
{
    EXPECT_FALSE(Picker::firstHit({{100, 0, 0}, {1, 0, 0}}, squareAt(50), uncut));
    EXPECT_FALSE(Picker::firstHit({{100, 1.01f, 0}, {-1, 0, 0}}, squareAt(50), uncut));
    EXPECT_FALSE(Picker::firstHit({{50, -5, 0}, {0, 1, 0}}, squareAt(50), uncut));
    EXPECT_FALSE(Picker::firstHit({{100, 0, 0}, {0, 0, 0}}, squareAt(50), uncut));
    EXPECT_FALSE(Picker::firstHit({{100, 0, 0}, {-1, 0, 0}}, {}, uncut));
}

TEST(Picker, slipsThroughNoEdgeBetweenTwoFaces)
{
    for (int i = -9; i <= 9; ++i) {
        const float onDiagonal = static_cast<float>(i) / 10.0f;
        EXPECT_TRUE(Picker::firstHit({{100, onDiagonal, onDiagonal}, {-1, 0, 0}}, squareAt(50), uncut)) << i;
    }
}

TEST(Picker, meetsABallWhereGeometrySaysItDoes)
{
    const QVector3D centre(50, 10, -20);
    constexpr float radius = 30.0f;
    const auto faces = ball(centre, radius, 5);
    std::mt19937 random(7);
    std::uniform_real_distribution<float> beside(-0.9f * radius, 0.9f * radius);
    int met = 0;
    for (int i = 0; i < 50; ++i) {
        const float da = beside(random);
        const float db = beside(random);
        const double under = 1.0 * radius * radius - 1.0 * da * da - 1.0 * db * db;
        const auto hit = Picker::firstHit({centre + QVector3D(200, da, db), {-1, 0, 0}}, faces, uncut);
        if (under < 40.0) // grazing: the faces lie a little inside the ball
            continue;
        ++met;
        ASSERT_TRUE(hit);
        EXPECT_NEAR(hit->distance, 200.0 - std::sqrt(under), 0.25);
    }
    EXPECT_GT(met, 20);
}

TEST(Picker, entersTheNearestBallOnly)
{
    const QList<QVector3D> places{{20, 0, 0}, {60, 1, 0}, {80, 5, 0}};
    const auto hit = Picker::firstBall({{100, 0, 0}, {-2, 0, 0}}, places, 2.0f);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->index, 1);
    EXPECT_NEAR(hit->distance, 40.0 - std::sqrt(4.0 - 1.0), 1e-5);
}

TEST(Picker, entersNoBallBehindOrBesideIt)
{
    EXPECT_FALSE(Picker::firstBall({{100, 0, 0}, {1, 0, 0}}, {{20, 0, 0}}, 2.0f));
    EXPECT_FALSE(Picker::firstBall({{100, 2.1f, 0}, {-1, 0, 0}}, {{20, 0, 0}}, 2.0f));
    EXPECT_FALSE(Picker::firstBall({{100, 0, 0}, {0, 0, 0}}, {{20, 0, 0}}, 2.0f));
    EXPECT_FALSE(Picker::firstBall({{100, 0, 0}, {-1, 0, 0}}, {}, 2.0f));
}

} // namespace
