// SPDX-License-Identifier: Apache-2.0
#include "support/ShownViewer.h"

#include <gtest/gtest.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using kvtest::ShownViewer;

// Run with a device pixel ratio of 2. Pictures are in device pixels, rays and clicks in device-independent
// pixels.

namespace {

const QVector3D eye(210, -250, -330), interest(50, 0, 0);

/// The mean position of the red pixels, in device pixels.
QPointF middleOfRed(const QImage& image)
{
    double x = 0, y = 0, count = 0;
    for (int row = 0; row < image.height(); ++row) {
        for (int column = 0; column < image.width(); ++column) {
            const QColor c = image.pixelColor(column, row);
            if (c.red() > c.green() + 60 && c.red() > c.blue() + 60) {
                x += column + 0.5;
                y += row + 0.5;
                ++count;
            }
        }
    }
    return count > 0 ? QPointF(x / count, y / count) : QPointF(-1, -1);
}

class HighDpi : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(shown.shown);
        ASSERT_EQ(shown.viewer.devicePixelRatio(), 2.0) << "run this through ctest";
        shown.viewer.setCamera(eye, 0, interest);
        shown.viewer.addMarkerSet(QStringLiteral("set"), KVGamut3DViewer::Sphere, {{Qt::red, marker}}, 12, 1);
    }

    ShownViewer shown{200, 150};
    const QVector3D marker{70, 45, -20};
};

} // namespace

TEST_F(HighDpi, picturesAreInDevicePixels)
{
    const QImage picture = shown.settledPicture();
    EXPECT_EQ(picture.size(), QSize(400, 300));
    EXPECT_EQ(picture.devicePixelRatio(), 2.0);
    QImage drawnAnew = shown.viewer.picture(QSize(400, 300));
    drawnAnew.setDevicePixelRatio(2);
    EXPECT_EQ(picture, drawnAnew);
}

TEST_F(HighDpi, rayThroughThePixelOfAMarkerHitsTheMarker)
{
    const QPointF device = middleOfRed(shown.settledPicture());
    ASSERT_GE(device.x(), 0);
    const QPoint pixel = (device / 2).toPoint();
    const float distance = KVGamut3DViewer::squaredDistanceToRay(marker, shown.viewer.rayToPoint(pixel));
    // half a device-independent pixel at this distance is 0.8 Lab units
    EXPECT_LT(distance, 1.0f);
    const float asIfDevice =
        KVGamut3DViewer::squaredDistanceToRay(marker, shown.viewer.rayToPoint(device.toPoint()));
    EXPECT_GT(asIfDevice, 100.0f);
}

TEST_F(HighDpi, clicksAreInDeviceIndependentPixels)
{
    const QPoint pixel = (middleOfRed(shown.settledPicture()) / 2).toPoint();
    QSignalSpy clicks(&shown.viewer, &KVGamut3DViewer::click);
    QTest::mouseClick(&shown.widget(), Qt::LeftButton, Qt::NoModifier, pixel);
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks[0][0].toPoint(), pixel);
    const std::pair ray(clicks[0][1].value<QVector3D>(), clicks[0][2].value<QVector3D>());
    EXPECT_LT(KVGamut3DViewer::squaredDistanceToRay(marker, ray), 1.0f);
}

TEST_F(HighDpi, dragAcrossTheWindowIsTwoTurns)
{
    shown.settle();
    const auto move = [&](int x, Qt::MouseButtons held) {
        QMouseEvent e(QEvent::MouseMove, QPointF(x, 50), QPointF(x, 50), Qt::NoButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&shown.viewer, &e);
    };
    move(20, Qt::NoButton);
    move(120, Qt::LeftButton); // half the width is one turn
    EXPECT_LT((shown.viewer.camera() - eye).length(), 0.01f);
}
