// SPDX-License-Identifier: Apache-2.0
#include "model/pictures/CameraText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace {

const KVCamera someCamera{{265, 160.5f, -450}, {40, 0, -1}, 30, false};

/// The position of @p p in the view: right and up from its centre, in halves of its height.
QPointF placeOf(const QVector3D& p, const KVCamera& camera)
{
    const QVector3D forward = (camera.interestPoint - camera.position).normalized();
    const QVector3D right = QVector3D::crossProduct(QVector3D(1, 0, 0), forward).normalized();
    const QVector3D up = QVector3D::crossProduct(forward, right);
    const double tangent = std::tan(static_cast<double>(camera.viewingAngle) / 2 * std::numbers::pi / 180);
    const QVector3D toPoint = p - camera.position;
    const double depth = camera.orthogonal
                             ? static_cast<double>((camera.interestPoint - camera.position).length())
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

TEST(CameraText, isReadBackAsItWasWritten)
{
    EXPECT_EQ(CameraText::read(CameraText::write(someCamera)), someCamera);
    KVCamera other = someCamera;
    other.orthogonal = true;
    other.viewingAngle = 12.5f;
    EXPECT_EQ(CameraText::read(CameraText::write(other)), other);
    EXPECT_EQ(CameraText::write(someCamera),
              QStringLiteral("kvgamut camera 265,160.5,-450 look at 40,0,-1 angle 30 perspective"));
}

TEST(CameraText, ignoresWhiteSpace)
{
    EXPECT_EQ(CameraText::read(QStringLiteral("  kvgamut camera  265,160.5,-450 look at 40,0,-1\n angle 30 "
                                              "perspective\n")),
              someCamera);
}

TEST(CameraText, refusesOtherText)
{
    for (const char* text : {"", "hello", "kvgamut camera 1,2 look at 40,0,0 angle 30 perspective",
                             "kvgamut camera 1,2,x look at 40,0,0 angle 30 perspective",
                             "kvgamut camera 1,2,nan look at 40,0,0 angle 30 perspective",
                             "kvgamut camera 1,2,3 look at 1,2,3 angle 30 perspective",
                             "kvgamut camera 1,2,3 look at 4,5,6 angle 0 perspective",
                             "kvgamut camera 1,2,3 look at 4,5,6 angle wide perspective",
                             "kvgamut camera 1,2,3 look at 4,5,6 angle 30 fisheye",
                             "kvgamut camera 1,2,3 look at 4,5,6 angle 30 perspective!"})
        EXPECT_FALSE(CameraText::read(QLatin1String(text))) << text;
}

TEST(Framing, fitsAllPositionsTightly)
{
    for (const float aspect : {0.5f, 1.0f, 2.0f}) {
        for (const bool orthogonal : {false, true}) {
            KVCamera camera = someCamera;
            camera.orthogonal = orthogonal;
            const KVCamera framed = KVGamutView::framing(camera, someBody(), aspect);
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

TEST(Framing, keepsTheViewingDirection)
{
    const KVCamera framed = KVGamutView::framing(someCamera, someBody(), 1.5f);
    const QVector3D before = (someCamera.position - someCamera.interestPoint).normalized();
    const QVector3D after = (framed.position - framed.interestPoint).normalized();
    EXPECT_NEAR(QVector3D::dotProduct(before, after), 1.0f, 1e-5f);
    EXPECT_EQ(framed.viewingAngle, someCamera.viewingAngle);
    EXPECT_EQ(framed.orthogonal, someCamera.orthogonal);
}

TEST(Framing, keepsTheCameraWithoutPositions)
{
    EXPECT_EQ(KVGamutView::framing(someCamera, {}, 1.0f), someCamera);
}

TEST(ObliqueCamera, showsTheWholeGridInEveryAspect)
{
    for (const float aspect : {0.6f, 1.0f, 1.5f, 2.5f}) {
        const KVCamera camera = obliqueCamera(aspect);
        for (const float a : {-100.0f, 100.0f})
            for (const float b : {-100.0f, 100.0f}) {
                const QPointF place = placeOf({0, a, b}, camera);
                EXPECT_LE(std::fabs(place.x()), static_cast<double>(aspect)) << aspect;
                EXPECT_LE(std::fabs(place.y()), 1.0) << aspect;
            }
    }
}

} // namespace
