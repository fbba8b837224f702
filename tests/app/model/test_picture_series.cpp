// SPDX-License-Identifier: Apache-2.0
#include "model/pictures/PictureSeries.h"
#include "model/pictures/Turntable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

TEST(PictureSeries, numbersHaveAsManyDigitsAsTheLast)
{
    const auto namesOf = [](int count) {
        return PictureSeries::names(QStringLiteral("a b.c/turn.x.png"), PictureFormat::Png, count);
    };
    EXPECT_EQ(namesOf(2),
              (QStringList{QStringLiteral("a b.c/turn.x-001.png"), QStringLiteral("a b.c/turn.x-002.png")}));
    EXPECT_EQ(namesOf(999).last(), QStringLiteral("a b.c/turn.x-999.png"));
    EXPECT_EQ(namesOf(1000).first(), QStringLiteral("a b.c/turn.x-0001.png"));
    EXPECT_EQ(PictureSeries::names(QStringLiteral("x.webp"), PictureFormat::WebP, 9),
              QStringList{QStringLiteral("x.webp")});
}

TEST(Turntable, turnsCounterClockwiseSeenFromAbove)
{
    KVCamera camera;
    camera.position = {120, 300, 0};
    camera.interestPoint = {50, 10, 0};
    const KVCamera turned = Turntable::turned(camera, 90.0);
    EXPECT_LT((turned.position - QVector3D(120, 0, 300)).length(), 1e-3f);
    EXPECT_LT((turned.interestPoint - QVector3D(50, 0, 10)).length(), 1e-3f);
    EXPECT_EQ(turned.viewingAngle, camera.viewingAngle);
}

TEST(Turntable, sweepsACircleAroundTheAxis)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const KVFraming swept = Turntable::swept(KVFraming{{{30.5f, 60, 80}, {30.5f, 5, 5}, {nan, 0, 0}}, {}});
    ASSERT_FALSE(swept.positions.isEmpty());
    for (const QVector3D& p : swept.positions) {
        EXPECT_TRUE(p.x() == 30.0f || p.x() == 31.0f) << p.x();
        EXPECT_GE(std::hypot(p.y(), p.z()), 100.0f - 1e-3f);
        EXPECT_LE(std::hypot(p.y(), p.z()), 100.2f);
    }
}

TEST(Turntable, leavesWhatIsTakenFree)
{
    KVFraming framing{{{50, 10, 10}}, {}};
    framing.margin = 0.1f;
    framing.taken = {QRectF(0, 0, 10, 20)};
    EXPECT_EQ(Turntable::swept(framing).taken, framing.taken);
    EXPECT_EQ(Turntable::swept(framing).margin, 0.1f);
}

} // namespace
