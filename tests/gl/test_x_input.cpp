// SPDX-License-Identifier: Apache-2.0
#include "support/ShownViewer.h"
#include "support/WindowManager.h"

#include <gtest/gtest.h>

#include <QtCore/QProcess>
#include <QtGui/QStyleHints>
#include <QtTest/QSignalSpy>

#include <cmath>

// End-to-end tests with real X events and a window manager.

namespace {

constexpr double pi = 3.14159265358979323846;

class XInput : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(windowManager.start()) << "openbox is needed";
        viewer.setTitle(QStringLiteral("viewer"));
        viewer.resize(320, 240);
        viewer.setPosition(100, 100);
        viewer.show();
        // frame margins: the window manager manages the window
        ASSERT_TRUE(kvtest::spinUntil([&] {
            return widget().drawnFrames() > 0 && viewer.isSettled() && viewer.frameMargins().top() > 0;
        }));
        kvtest::spinFor(200);
        viewer.setCamera(QVector3D(50, 0, -300), 0, QVector3D(50, 0, 0));
        // the first click gives the window the keyboard focus
        pointTo(QPoint(160, 120));
        xdotool({"click", "1"});
        ASSERT_TRUE(kvtest::spinUntil([&] { return clicks.count() == 1; }));
        clicks.clear();
    }

    KVGLWidget& widget() { return *viewer.findChild<KVGLWidget*>(); }

    /// Runs xdotool with the event loop running, then waits for the events.
    void xdotool(std::initializer_list<const char*> words)
    {
        QStringList arguments;
        for (const char* word : words)
            arguments.append(QString::fromLatin1(word));
        run(arguments);
    }

    void run(const QStringList& arguments)
    {
        QProcess tool;
        tool.start(QStringLiteral("xdotool"), arguments);
        ASSERT_TRUE(kvtest::spinUntil([&] { return tool.state() == QProcess::NotRunning; }));
        ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().constData();
        kvtest::spinFor(50);
    }

    /// Moves the pointer to a pixel of the viewer and waits until the viewer has received the move.
    void pointTo(const QPoint& p)
    {
        const QPoint global = viewer.mapToGlobal(p);
        // without this a pointer that is already there would cause no event
        run({QStringLiteral("mousemove_relative"), QStringLiteral("--"), QStringLiteral("-3"),
             QStringLiteral("-2")});
        run({QStringLiteral("mousemove"), QString::number(global.x()), QString::number(global.y())});
        ASSERT_TRUE(kvtest::spinUntil([&] { return widget().lastMousePosition().toPoint() == global; }));
    }

    void drag(const char* button, const QPoint& from, const QPoint& to)
    {
        pointTo(from);
        xdotool({"mousedown", button});
        pointTo((from + to) / 2);
        pointTo(to);
        xdotool({"mouseup", button});
    }

    kvtest::WindowManager windowManager;
    KVGamut3DViewer viewer;
    QSignalSpy clicks{&viewer, &KVGamut3DViewer::click};
};

} // namespace

TEST_F(XInput, leftDragOrbits)
{
    const CameraState before = widget().cameraState();
    drag("1", QPoint(160, 120), QPoint(200, 100));
    const CameraState after = widget().cameraState();
    EXPECT_NEAR(after.azimuth() - before.azimuth(), 40 / (320 / (4 * pi)), 1e-4);
    EXPECT_NEAR(after.polarAngle() - before.polarAngle(), 20 / (240 / (4 * pi)), 1e-4);
    EXPECT_NEAR(after.distance(), before.distance(), 1e-3);
    EXPECT_EQ(after.interestPoint(), before.interestPoint());
    ASSERT_TRUE(kvtest::spinUntil([&] { return clicks.count() > 0; }));
    EXPECT_EQ(clicks.count(), 1); // at the end of the drag
    EXPECT_EQ(clicks[0][0].toPoint(), QPoint(200, 100));
}

TEST_F(XInput, rightDragPansOneUnitPerPixel)
{
    const CameraState before = widget().cameraState();
    drag("3", QPoint(160, 120), QPoint(190, 110));
    const CameraState after = widget().cameraState();
    // the scene follows the pointer: the camera moves down when the pointer moves up
    const QVector3D moved = after.interestPoint() - before.interestPoint();
    EXPECT_NEAR(moved.length(), std::hypot(30, 10), 1e-3);
    EXPECT_NEAR(moved.y(), -10, 1e-3);
    EXPECT_EQ(after.eye() - after.interestPoint(), before.eye() - before.interestPoint());
    EXPECT_EQ(after.azimuth(), before.azimuth());
}

TEST_F(XInput, leftDragWithShiftPans)
{
    QSignalSpy finished(&viewer, &KVGamut3DViewer::moveFinished);
    xdotool({"keydown", "shift"});
    ASSERT_TRUE(kvtest::spinUntil([&] { return widget().panMode() && finished.count() > 0; }));
    kvtest::spinUntil([&] { return !widget().isMoving(); });
    const CameraState before = widget().cameraState();
    pointTo(QPoint(160, 120));
    xdotool({"mousedown", "1"});
    pointTo(QPoint(180, 120));
    xdotool({"mouseup", "1"});
    const CameraState after = widget().cameraState();
    xdotool({"keyup", "shift"});
    ASSERT_TRUE(kvtest::spinUntil([&] { return !widget().panMode(); }));
    EXPECT_NEAR((after.interestPoint() - before.interestPoint()).length(), 20, 1e-3);
    EXPECT_EQ(after.azimuth(), before.azimuth());
}

TEST_F(XInput, wheelZoomsBySixUnitsPerNotch)
{
    pointTo(QPoint(160, 120));
    const float before = widget().cameraState().distance();
    xdotool({"click", "4"});
    ASSERT_TRUE(kvtest::spinUntil([&] { return widget().cameraState().distance() < before; }));
    EXPECT_NEAR(widget().cameraState().distance(), before - 6, 1e-3);
    xdotool({"click", "5"});
    ASSERT_TRUE(kvtest::spinUntil([&] { return widget().cameraState().distance() > before - 1; }));
    EXPECT_NEAR(widget().cameraState().distance(), before, 1e-3);
}

TEST_F(XInput, arrowKeyTurnsTheCamera)
{
    QSignalSpy finished(&viewer, &KVGamut3DViewer::moveFinished);
    const float before = widget().cameraState().azimuth();
    xdotool({"key", "Left"});
    ASSERT_TRUE(kvtest::spinUntil([&] { return finished.count() > 0; }));
    EXPECT_NEAR(widget().cameraState().azimuth() - before, pi / 20, 1e-5);
}

TEST_F(XInput, clickOnAMarkerGivesARayThroughIt)
{
    const QVector3D marker(70, 30, -20);
    viewer.setCamera(QVector3D(160, -180, -260), 0, QVector3D(50, 0, 0));
    viewer.addMarkerSet(QStringLiteral("m"), KVGamut3DViewer::Sphere, {{Qt::red, marker}}, 8, 0);
    kvtest::spinUntil([&] { return viewer.isSettled(); });
    // its position in the picture is the mean position of the red pixels
    const QImage picture = viewer.picture();
    double x = 0, y = 0;
    int n = 0;
    for (int row = 0; row < picture.height(); ++row)
        for (int column = 0; column < picture.width(); ++column)
            if (picture.pixelColor(column, row) == QColor(255, 0, 0)) {
                x += column + 0.5;
                y += row + 0.5;
                ++n;
            }
    ASSERT_GT(n, 10);
    pointTo(QPointF(x / n, y / n).toPoint());
    xdotool({"click", "1"});
    ASSERT_TRUE(kvtest::spinUntil([&] { return clicks.count() > 0; }));
    ASSERT_EQ(clicks.count(), 1);
    const std::pair ray(clicks[0][1].value<QVector3D>(), clicks[0][2].value<QVector3D>());
    EXPECT_LT(std::sqrt(KVGamut3DViewer::squaredDistanceToRay(marker, ray)), 0.5f);
}

TEST_F(XInput, doubleClickIsReportedBetweenItsClicks)
{
    QStringList order;
    QObject::connect(&viewer, &KVGamut3DViewer::click, &viewer, [&] { order += QStringLiteral("click"); });
    QObject::connect(&viewer, &KVGamut3DViewer::doubleClick, &viewer,
                     [&] { order += QStringLiteral("double"); });
    // The click of SetUp() must not count as the first one: a move in between prevents that. A long interval,
    // so that a slow machine still sends two clicks within it.
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(20000);
    pointTo(QPoint(60, 60));
    xdotool({"click", "--repeat", "2", "--delay", "40", "1"});
    ASSERT_TRUE(kvtest::spinUntil([&] { return order.size() >= 3; }));
    kvtest::spinFor(100);
    EXPECT_EQ(order,
              QStringList({QStringLiteral("click"), QStringLiteral("double"), QStringLiteral("click")}));
}
