// SPDX-License-Identifier: Apache-2.0
#include "desktop/view/ViewState.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace {

const ViewCamera someCamera{{265, 160.5f, -450}, {40, 0, -1}, false, 30};

/// How far @p p is from the middle of the view by the half of its height, up or down, and across.
QPointF placeOf(const QVector3D& p, const ViewCamera& camera)
{
    const QVector3D forward = (camera.interest - camera.eye).normalized();
    const QVector3D right = QVector3D::crossProduct(QVector3D(1, 0, 0), forward).normalized();
    const QVector3D up = QVector3D::crossProduct(forward, right);
    const double tangent = std::tan(static_cast<double>(camera.angle) / 2 * std::numbers::pi / 180);
    const QVector3D toPoint = p - camera.eye;
    const double depth = camera.orthogonal ? static_cast<double>((camera.interest - camera.eye).length())
                                           : static_cast<double>(QVector3D::dotProduct(toPoint, forward));
    return {QVector3D::dotProduct(toPoint, right) / depth / tangent,
            QVector3D::dotProduct(toPoint, up) / depth / tangent};
}

QList<QVector3D> someBody()
{
    std::mt19937 random(3);
    std::uniform_real_distribution<float> L(10, 90);
    std::uniform_real_distribution<float> ab(-60, 100);
    QList<QVector3D> positions;
    for (int i = 0; i < 300; ++i)
        positions.append({L(random), ab(random), ab(random)});
    return positions;
}

TEST(ViewCamera, comesBackFromItsText)
{
    EXPECT_EQ(ViewCamera::fromText(someCamera.toText()), someCamera);
    ViewCamera other = someCamera;
    other.orthogonal = true;
    other.angle = 12.5f;
    EXPECT_EQ(ViewCamera::fromText(other.toText()), other);
    EXPECT_EQ(someCamera.toText(),
              QStringLiteral("kvgamut camera 265,160.5,-450 look at 40,0,-1 angle 30 perspective"));
}

TEST(ViewCamera, isReadFromTextThatWentThroughOtherPrograms)
{
    EXPECT_EQ(
        ViewCamera::fromText(QStringLiteral("  kvgamut camera  265,160.5,-450 look at 40,0,-1\n angle 30 "
                                            "perspective\n")),
        someCamera);
}

TEST(ViewCamera, isNotReadFromOtherText)
{
    for (const char* text : {"", "hello", "kvgamut camera 1,2 look at 40,0,0 angle 30 perspective",
                             "kvgamut camera 1,2,x look at 40,0,0 angle 30 perspective",
                             "kvgamut camera 1,2,nan look at 40,0,0 angle 30 perspective",
                             "kvgamut camera 1,2,3 look at 1,2,3 angle 30 perspective",
                             "kvgamut camera 1,2,3 look at 4,5,6 angle 0 perspective",
                             "kvgamut camera 1,2,3 look at 4,5,6 angle wide perspective",
                             "kvgamut camera 1,2,3 look at 4,5,6 angle 30 fisheye",
                             "kvgamut camera 1,2,3 look at 4,5,6 angle 30 perspective!"})
        EXPECT_FALSE(ViewCamera::fromText(QLatin1String(text))) << text;
}

TEST(Framing, showsAllPositionsAndLittleElse)
{
    for (const float aspect : {0.5f, 1.0f, 2.0f}) {
        for (const bool orthogonal : {false, true}) {
            ViewCamera camera = someCamera;
            camera.orthogonal = orthogonal;
            const ViewCamera framed = framing(camera, someBody(), aspect);
            double farthest = 0.0; // 1: at the edge of the view
            const auto body = someBody();
            for (const QVector3D& p : body) {
                const QPointF place = placeOf(p, framed);
                farthest = std::max(
                    {farthest, std::fabs(place.x()) / static_cast<double>(aspect), std::fabs(place.y())});
            }
            EXPECT_LE(farthest, 1.0) << aspect << orthogonal;
            EXPECT_GE(farthest, 0.6) << aspect << orthogonal;
        }
    }
}

TEST(Framing, keepsLookingTheSameWay)
{
    const ViewCamera framed = framing(someCamera, someBody(), 1.5f);
    const QVector3D before = (someCamera.eye - someCamera.interest).normalized();
    const QVector3D after = (framed.eye - framed.interest).normalized();
    EXPECT_NEAR(QVector3D::dotProduct(before, after), 1.0f, 1e-5f);
    EXPECT_EQ(framed.angle, someCamera.angle);
    EXPECT_EQ(framed.orthogonal, someCamera.orthogonal);
}

TEST(Framing, staysWhereThereIsNothingToShow)
{
    EXPECT_EQ(framing(someCamera, {}, 1.0f), someCamera);
}

TEST(ObliqueCamera, seesTheWholeGridInAnyShapeOfWindow)
{
    for (const float aspect : {0.6f, 1.0f, 1.5f, 2.5f}) {
        const ViewCamera camera = obliqueCamera(aspect);
        for (const float a : {-100.0f, 100.0f})
            for (const float b : {-100.0f, 100.0f}) {
                const QPointF place = placeOf({0, a, b}, camera);
                EXPECT_LE(std::fabs(place.x()), static_cast<double>(aspect)) << aspect;
                EXPECT_LE(std::fabs(place.y()), 1.0) << aspect;
            }
    }
}

} // namespace
