// SPDX-License-Identifier: Apache-2.0
#include "CameraOracle.h"
#include "InputProbe.h"

#include <KVGamut3DViewer.h>
#include <glwindow/KVGLWidget.h>

#include <QtTest/QSignalSpy>

#include <random>

using namespace kvtest;

namespace {

constexpr int width = 400;
constexpr int height = 300;

CameraState oblique(bool orthogonal = false)
{
    CameraState c({200, 180, -160}, {5, 50, -3});
    c.setViewingAngle(40.0f);
    c.setAspect(width, height);
    c.setOrthogonal(orthogonal);
    return c;
}

/// A window of a known size that is never shown, with an oblique camera.
struct Window
{
    KVGLWidget widget;
    QSignalSpy moveFinished{&widget, SIGNAL(moveFinised())};
    QSignalSpy click{&widget, SIGNAL(click(QPoint, QVector3D, QVector3D))};
    QSignalSpy doubleClick{&widget, SIGNAL(doubleClick(QPoint, QVector3D, QVector3D))};

    explicit Window(const CameraState& camera = oblique())
    {
        widget.resize(width, height);
        widget.setCameraState(camera, 0);
    }

    const CameraState& camera() const { return widget.cameraState(); }

    /// Hovers to one global position and drags to another.
    void drag(QPointF from, QPointF to, Qt::MouseButtons buttons)
    {
        moveMouse(widget, from);
        moveMouse(widget, to, buttons);
    }

    void expectSilentAndStill() const
    {
        EXPECT_EQ(moveFinished.count(), 0);
        EXPECT_EQ(click.count(), 0);
        EXPECT_EQ(doubleClick.count(), 0);
        EXPECT_FALSE(widget.isMoving());
    }
};

/// The expected angles after a rotation, in double precision.
void expectTurned(const CameraState& after, const CameraState& before, double dAzimuth, double dPolar)
{
    EXPECT_NEAR(after.azimuth(), before.azimuth() + dAzimuth, 2e-5);
    EXPECT_NEAR(after.polarAngle(), before.polarAngle() + dPolar, 2e-5);
    EXPECT_EQ(after.interestPoint(), before.interestPoint());
    EXPECT_EQ(after.distance(), before.distance());
    OrbitOracle o{Vec3d(before.eye()), Vec3d(before.interestPoint())};
    o.azimuth += dAzimuth;
    o.polar += dPolar;
    o.moveEye();
    expectVector(after.eye(), o.eye, 1e-2);
}

void expectPanned(const CameraState& after, const CameraState& before, double dx, double dy)
{
    const Axes axes(before);
    const Vec3d offset = dx * axes.right - dy * axes.up;
    expectVector(after.eye(), Vec3d(before.eye()) + offset, 2e-3);
    expectVector(after.interestPoint(), Vec3d(before.interestPoint()) + offset, 2e-3);
    EXPECT_EQ(after.azimuth(), before.azimuth());
    EXPECT_EQ(after.polarAngle(), before.polarAngle());
    EXPECT_EQ(after.distance(), before.distance());
}

/// The expected ray through a pixel, computed from the geometry of the view.
std::pair<Vec3d, Vec3d> rayOracle(const CameraState& c, double px, double py, double w, double h)
{
    const Axes a(c);
    const double x = 2.0 * px / w - 1.0;
    const double y = 1.0 - 2.0 * py / h;
    const double tangent = std::tan(radians(c.viewingAngle()) / 2.0);
    const double aspect = c.aspect();
    if (!c.orthogonal()) {
        return {Vec3d(c.eye()), a.forward + x * aspect * tangent * a.right + y * tangent * a.up};
    }
    const Vec3d view = Vec3d(c.interestPoint()) - Vec3d(c.eye());
    const double half = length(view) * tangent;
    return {Vec3d(c.eye()) + nearPlane * a.forward + x * half * aspect * a.right + y * half * a.up, view};
}

void expectRay(const std::pair<QVector3D, QVector3D>& actual, const std::pair<Vec3d, Vec3d>& expected)
{
    expectVector(actual.first, expected.first, 2e-3, "origin");
    expectVector(actual.second, expected.second, 1e-4 * std::max(1.0, length(expected.second)), "direction");
}

} // namespace

// ---- keys -----------------------------------------------------------------------------------

TEST(Keys, everyKeyPressStartsAMove)
{
    for (const int key : {int(Qt::Key_Left), int(Qt::Key_Right), int(Qt::Key_Up), int(Qt::Key_Down),
                          int(Qt::Key_Plus), int(Qt::Key_Minus), int(Qt::Key_Shift), int(Qt::Key_A),
                          int(Qt::Key_Escape), int(Qt::Key_unknown)}) {
        Window x;
        pressKey(x.widget, key);
        EXPECT_TRUE(x.widget.isMoving()) << key;
        EXPECT_TRUE(x.camera() == oblique()) << key;
        EXPECT_EQ(x.moveFinished.count(), 0) << key;
        EXPECT_EQ(x.widget.panMode(), key == Qt::Key_Shift) << key;
    }
}

TEST(Keys, releaseOfShiftEndsPanMode)
{
    Window x;
    pressKey(x.widget, Qt::Key_Shift);
    x.widget.setCameraState(oblique(), 0); // cancels the move of the key press
    releaseKey(x.widget, Qt::Key_Left);
    releaseKey(x.widget, Qt::Key_Plus);
    EXPECT_TRUE(x.widget.panMode());
    releaseKey(x.widget, Qt::Key_Shift);
    EXPECT_FALSE(x.widget.panMode());
    EXPECT_TRUE(x.camera() == oblique());
    x.expectSilentAndStill();
}

TEST(Keys, releaseOfOtherKeysKeepsPanMode)
{
    Window x;
    pressKey(x.widget, Qt::Key_Shift);
    pressKey(x.widget, Qt::Key_Left);
    EXPECT_TRUE(x.widget.panMode());
}

TEST(Keys, areIgnoredWithoutInteraction)
{
    Window x;
    x.widget.setEnableInteraction(false);
    for (const int key : {int(Qt::Key_Left), int(Qt::Key_Plus), int(Qt::Key_Shift), int(Qt::Key_A)})
        pressKey(x.widget, key);
    EXPECT_FALSE(x.widget.panMode());
    EXPECT_TRUE(x.camera() == oblique());
    x.expectSilentAndStill();
}

TEST(Keys, releaseOfShiftWithoutInteractionKeepsPanMode)
{
    Window x;
    pressKey(x.widget, Qt::Key_Shift);
    x.widget.setEnableInteraction(false);
    releaseKey(x.widget, Qt::Key_Shift);
    EXPECT_TRUE(x.widget.panMode());
    x.widget.setEnableInteraction(true);
    EXPECT_TRUE(x.widget.panMode());
    releaseKey(x.widget, Qt::Key_Shift);
    EXPECT_FALSE(x.widget.panMode());
}

// ---- wheel ----------------------------------------------------------------------------------

struct WheelRow
{
    int delta;
    int units; ///< change of the distance
};

TEST(Wheel, zoomsByATwentiethOfTheDeltaTruncated)
{
    for (const WheelRow row : {WheelRow{120, -6},
                               {-120, 6},
                               {119, -5},
                               {-119, 5},
                               {121, -6},
                               {-121, 6},
                               {19, 0},
                               {-19, 0},
                               {20, -1},
                               {-20, 1},
                               {39, -1},
                               {-39, 1},
                               {240, -12},
                               {0, 0}}) {
        Window x;
        const double before = x.camera().distance();
        turnWheel(x.widget, {0, row.delta});
        EXPECT_NEAR(x.camera().distance(), before + row.units, 1e-4) << row.delta;
        const Vec3d view = Vec3d(oblique().eye()) - Vec3d(oblique().interestPoint());
        expectVector(x.camera().eye(),
                     Vec3d(oblique().interestPoint()) + (before + row.units) / length(view) * view, 5e-3);
        EXPECT_EQ(x.camera().interestPoint(), oblique().interestPoint());
        x.expectSilentAndStill();
    }
}

TEST(Wheel, ignoresHorizontalDeltas)
{
    Window x;
    const float before = x.camera().distance();
    turnWheel(x.widget, {1200, 0});
    EXPECT_EQ(x.camera().distance(), before);
    turnWheel(x.widget, {1200, -120});
    EXPECT_NEAR(x.camera().distance(), before + 6.0, 1e-4);
}

TEST(Wheel, doesNotZoomBelowTheMinimumDistance)
{
    Window x(CameraState({0, 0, -7.0f}, {0, 0, 0}));
    turnWheel(x.widget, {0, 120}); // 7 - 6 is below 1.1
    EXPECT_FLOAT_EQ(x.camera().distance(), 7.0f);
    turnWheel(x.widget, {0, 100});
    EXPECT_FLOAT_EQ(x.camera().distance(), 2.0f);
    for (int i = 0; i < 20; ++i)
        turnWheel(x.widget, {0, 20});
    EXPECT_FLOAT_EQ(x.camera().distance(), 2.0f);
}

TEST(Wheel, zoomsDuringAMoveWithoutEndingIt)
{
    Window x;
    x.widget.setCamera({1, 2, 3}, {0, 0, 0}, 10000);
    const float before = x.camera().distance();
    turnWheel(x.widget, {0, 120});
    EXPECT_NEAR(x.camera().distance(), before - 6.0, 1e-4);
    EXPECT_TRUE(x.widget.isMoving());
}

TEST(Wheel, isIgnoredWithoutInteraction)
{
    Window x;
    x.widget.setEnableInteraction(false);
    turnWheel(x.widget, {0, 120});
    EXPECT_TRUE(x.camera() == oblique());
}

// ---- moves ----------------------------------------------------------------------------------

TEST(MouseMove, storesTheGlobalPositionWithAndWithoutButtons)
{
    Window x;
    moveMouse(x.widget, {123.25, 45.5});
    EXPECT_EQ(x.widget.lastMousePosition(), QPointF(123.25, 45.5));
    EXPECT_TRUE(x.camera() == oblique());
    moveMouse(x.widget, {-8, 9}, Qt::LeftButton);
    EXPECT_EQ(x.widget.lastMousePosition(), QPointF(-8, 9));
    moveMouse(x.widget, {77, 7}, Qt::MiddleButton);
    EXPECT_EQ(x.widget.lastMousePosition(), QPointF(77, 7));
    x.expectSilentAndStill();
}

TEST(MouseMove, leftDragAcrossTheWindowIsTwoTurns)
{
    struct Row
    {
        QPointF by;
        double azimuth;
        double polar;
    };
    for (const Row& row :
         {Row{{10, 0}, 10.0 * 4 * M_PI / width, 0}, Row{{-37.5, 0}, -37.5 * 4 * M_PI / width, 0},
          Row{{0, 10}, 0, -10.0 * 4 * M_PI / height}, Row{{0, -22}, 0, 22.0 * 4 * M_PI / height},
          Row{{15, -8}, 15.0 * 4 * M_PI / width, 8.0 * 4 * M_PI / height}, Row{{width / 2.0, 0}, 2 * M_PI, 0},
          Row{{width, height}, 4 * M_PI, -4 * M_PI}}) {
        Window x;
        x.drag({700, 500}, QPointF(700, 500) + row.by, Qt::LeftButton);
        expectTurned(x.camera(), oblique(), row.azimuth, row.polar);
        x.expectSilentAndStill();
    }
}

TEST(MouseMove, dragIsTheSumOfItsSteps)
{
    Window x;
    moveMouse(x.widget, {100, 100});
    for (const QPointF p : {QPointF(103, 101), QPointF(110, 95), QPointF(108, 80), QPointF(140, 90)})
        moveMouse(x.widget, p, Qt::LeftButton);
    expectTurned(x.camera(), oblique(), 40.0 * 4 * M_PI / width, 10.0 * 4 * M_PI / height);
}

TEST(MouseMove, dragByHalfTheWidthIsOneTurn)
{
    Window x;
    x.drag({0, 0}, {width / 2.0, 0}, Qt::LeftButton);
    expectVector(x.camera().eye(), Vec3d(oblique().eye()), 1e-2);
}

TEST(MouseMove, rotationDependsOnTheWindowSize)
{
    Window x;
    x.widget.resize(1000, 50);
    x.drag({0, 0}, {25, 5}, Qt::LeftButton);
    expectTurned(x.camera(), oblique(), 25.0 * 4 * M_PI / 1000, -5.0 * 4 * M_PI / 50);
}

TEST(MouseMove, leftDragWithShiftPansOneUnitPerPixel)
{
    Window x;
    pressKey(x.widget, Qt::Key_Shift);
    x.widget.setCameraState(oblique(), 0);
    x.drag({100, 100}, {100 + width / 2.0, 100}, Qt::LeftButton);
    expectPanned(x.camera(), oblique(), -width / 2.0, 0);
    x.widget.setCameraState(oblique(), 0);
    x.drag({100, 100}, {93, 114.5}, Qt::LeftButton);
    expectPanned(x.camera(), oblique(), 7, -14.5);
    releaseKey(x.widget, Qt::Key_Shift);
    x.widget.setCameraState(oblique(), 0);
    x.drag({100, 100}, {110, 100}, Qt::LeftButton);
    expectTurned(x.camera(), oblique(), 10.0 * 4 * M_PI / width, 0);
}

TEST(MouseMove, rightDragPansWithAndWithoutShift)
{
    Window x;
    x.drag({100, 100}, {112, 91}, Qt::RightButton);
    expectPanned(x.camera(), oblique(), -12, 9);
    pressKey(x.widget, Qt::Key_Shift);
    x.widget.setCameraState(oblique(), 0);
    x.drag({100, 100}, {112, 91}, Qt::RightButton);
    expectPanned(x.camera(), oblique(), -12, 9);
    EXPECT_EQ(x.moveFinished.count(), 0);
}

TEST(MouseMove, draggingToTheRightMovesTheSceneToTheRight)
{
    Window x;
    const QVector3D point = oblique().interestPoint();
    const auto onScreen = [&] {
        return (x.camera().projectionMatrix() * x.camera().viewMatrix()).map(point);
    };
    const QVector3D before = onScreen();
    x.drag({100, 100}, {120, 100}, Qt::RightButton);
    EXPECT_GT(onScreen().x(), before.x() + 0.01f);
    EXPECT_NEAR(onScreen().y(), before.y(), 1e-4);
    x.drag({100, 100}, {100, 120}, Qt::RightButton);
    EXPECT_LT(onScreen().y(), before.y() - 0.01f) << "must move down on the screen";
}

TEST(MouseMove, leftButtonTakesPrecedence)
{
    Window x;
    x.drag({100, 100}, {110, 104}, Qt::LeftButton | Qt::RightButton);
    expectTurned(x.camera(), oblique(), 10.0 * 4 * M_PI / width, -4.0 * 4 * M_PI / height);
}

TEST(MouseMove, otherButtonsOnlyUpdateThePosition)
{
    Window x;
    x.drag({100, 100}, {150, 170}, Qt::MiddleButton);
    x.drag({100, 100}, {150, 170}, Qt::BackButton | Qt::ForwardButton);
    EXPECT_TRUE(x.camera() == oblique());
    x.expectSilentAndStill();
}

TEST(MouseMove, withoutInteractionThePositionIsNotUpdated)
{
    Window x;
    moveMouse(x.widget, {100, 100});
    x.widget.setEnableInteraction(false);
    moveMouse(x.widget, {130, 90});
    moveMouse(x.widget, {140, 80}, Qt::LeftButton);
    EXPECT_EQ(x.widget.lastMousePosition(), QPointF(100, 100));
    EXPECT_TRUE(x.camera() == oblique());
    x.widget.setEnableInteraction(true);
    moveMouse(x.widget, {150, 70}, Qt::RightButton); // the distance since the last stored position
    expectPanned(x.camera(), oblique(), -50, 30);
}

TEST(MouseMove, rotatesDuringAMoveWithoutEndingIt)
{
    Window x;
    x.widget.setCamera({1, 2, 3}, {0, 0, 0}, 10000);
    x.drag({100, 100}, {110, 100}, Qt::LeftButton);
    expectTurned(x.camera(), oblique(), 10.0 * 4 * M_PI / width, 0);
    EXPECT_TRUE(x.widget.isMoving());
    EXPECT_EQ(x.moveFinished.count(), 0);
}

// ---- rays -----------------------------------------------------------------------------------

class Rays : public testing::TestWithParam<bool>
{
};

TEST_P(Rays, goThroughTheirPixel)
{
    for (const CameraState& view : {oblique(GetParam()), [] {
                                        CameraState c({0, 0, -350}, {0, 0, 0});
                                        c.setAspect(width, height);
                                        c.setOrthogonal(GetParam());
                                        return c;
                                    }()}) {
        Window x(view);
        for (const QPoint p : {QPoint(0, 0), QPoint(200, 150), QPoint(400, 300), QPoint(13, 287),
                               QPoint(399, 1), QPoint(-50, 500)})
            expectRay(x.widget.rayToPoint(p), rayOracle(view, p.x(), p.y(), width, height));
    }
}

TEST_P(Rays, pointsOnARayAreProjectedToItsPixel)
{
    Window x(oblique(GetParam()));
    const Axes a(x.camera());
    const double tangent = std::tan(radians(20.0));
    const double half = length(Vec3d(oblique().interestPoint()) - Vec3d(oblique().eye())) * tangent;
    for (const QPoint p : {QPoint(30, 40), QPoint(333, 211)}) {
        const auto [origin, direction] = asDouble(x.widget.rayToPoint(p));
        for (const double t : {0.5, 1.0, 3.0}) {
            const Vec3d d = origin + t * direction - Vec3d(x.camera().eye());
            const double depth = dot(d, a.forward);
            const double scale = GetParam() ? half : depth * tangent;
            EXPECT_NEAR((dot(d, a.right) / (scale * width / height) + 1.0) / 2.0 * width, p.x(), 0.01);
            EXPECT_NEAR((1.0 - dot(d, a.up) / scale) / 2.0 * height, p.y(), 0.01);
        }
    }
}

TEST_P(Rays, throughTheCentreGoToTheInterestPoint)
{
    Window x(oblique(GetParam()));
    const auto [origin, direction] = asDouble(x.widget.rayToPoint({width / 2, height / 2}));
    const Vec3d view = unit(Vec3d(oblique().interestPoint()) - Vec3d(oblique().eye()));
    EXPECT_NEAR(dot(unit(direction), view), 1.0, 1e-6);
    EXPECT_LT(length(cross(Vec3d(oblique().interestPoint()) - origin, unit(direction))), 0.01);
}

TEST_P(Rays, dependOnWindowSizeAndCamera)
{
    CameraState view = oblique(GetParam());
    view.setAspect(90, 600);
    Window x(view);
    x.widget.resize(90, 600);
    expectRay(x.widget.rayToPoint({10, 500}), rayOracle(view, 10, 500, 90, 600));
    x.widget.setViewingAngle(100.0f, 0);
    view.setViewingAngle(100.0f);
    expectRay(x.widget.rayToPoint({10, 500}), rayOracle(view, 10, 500, 90, 600));
}

TEST_P(Rays, emptyWindowGivesNonFiniteRays)
{
    Window x(oblique(GetParam()));
    x.widget.resize(0, 0);
    const auto ray = x.widget.rayToPoint({5, 5});
    const QVector3D& open = GetParam() ? ray.first : ray.second;
    EXPECT_FALSE(std::isfinite(open.x()) && std::isfinite(open.y()) && std::isfinite(open.z()));
    releaseMouse(x.widget, {5, 5});
    EXPECT_EQ(x.click.count(), 1);
    x.widget.resize(width, height);
    expectRay(x.widget.rayToPoint({5, 5}), rayOracle(oblique(GetParam()), 5, 5, width, height));
}

INSTANTIATE_TEST_SUITE_P(Picking, Rays, testing::Bool(),
                         [](const auto& row) { return row.param ? "orthogonal" : "perspective"; });

TEST(Picking, perspectiveRaysStartAtTheEye)
{
    Window x;
    for (const QPoint p : {QPoint(0, 0), QPoint(200, 150), QPoint(390, 17)})
        EXPECT_EQ(x.widget.rayToPoint(p).first, oblique().eye());
}

TEST(Picking, orthogonalRaysAreParallelAndStartOnTheNearPlane)
{
    Window x(oblique(true));
    const Axes a(x.camera());
    const auto first = x.widget.rayToPoint({0, 0});
    const auto second = x.widget.rayToPoint({390, 17});
    EXPECT_EQ(first.second, oblique().interestPoint() - oblique().eye());
    EXPECT_EQ(second.second, first.second);
    EXPECT_NE(second.first, first.first);
    for (const auto& ray : {first, second})
        EXPECT_NEAR(dot(Vec3d(ray.first) - Vec3d(oblique().eye()), a.forward), 0.1, 2e-3);
}

// ---- clicks ---------------------------------------------------------------------------------

TEST(Clicks, reportThePixelAndItsRayInHostCoordinates)
{
    for (const bool orthogonal : {false, true}) {
        Window x(oblique(orthogonal));
        releaseMouse(x.widget, {123, 45});
        ASSERT_EQ(x.click.count(), 1);
        EXPECT_EQ(x.doubleClick.count(), 0);
        doubleClickMouse(x.widget, {123, 45});
        ASSERT_EQ(x.doubleClick.count(), 1);
        EXPECT_EQ(x.click.count(), 1);
        const auto expected = rayOracle(oblique(orthogonal), 123, 45, width, height);
        for (const QSignalSpy* spy : {&x.click, &x.doubleClick}) {
            EXPECT_EQ(spy->at(0).at(0).toPoint(), QPoint(123, 45));
            const auto host = [](const Vec3d& v) { return Vec3d(v.y, -v.x, v.z); };
            expectVector(spy->at(0).at(1).value<QVector3D>(), host(expected.first), 2e-3, "origin");
            expectVector(spy->at(0).at(2).value<QVector3D>(), host(expected.second),
                         1e-4 * std::max(1.0, length(expected.second)), "direction");
        }
    }
}

TEST(Clicks, areEmittedForEveryButton)
{
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton, Qt::BackButton}) {
        Window x;
        releaseMouse(x.widget, {10, 20}, button);
        doubleClickMouse(x.widget, {10, 20}, button);
        EXPECT_EQ(x.click.count(), 1);
        EXPECT_EQ(x.doubleClick.count(), 1);
    }
}

TEST(Clicks, areEmittedWithoutInteraction)
{
    Window x;
    x.widget.setEnableInteraction(false);
    releaseMouse(x.widget, {10, 20});
    doubleClickMouse(x.widget, {10, 20});
    EXPECT_EQ(x.click.count(), 1);
    EXPECT_EQ(x.doubleClick.count(), 1);
    EXPECT_TRUE(x.camera() == oblique());
    EXPECT_EQ(x.moveFinished.count(), 0);
    EXPECT_EQ(x.widget.lastMousePosition(), QPointF(0, 0));
}

TEST(Clicks, roundPositionsToTheNearestPixel)
{
    struct Row
    {
        QPointF at;
        QPoint pixel;
    };
    for (const Row& row :
         {Row{{10.4, 20.6}, {10, 21}}, Row{{10.5, 20.5}, {11, 21}}, Row{{-2.5, -0.5}, {-3, -1}},
          Row{{-2.4, 0.49}, {-2, 0}}, Row{{0, 399.5}, {0, 400}}}) {
        Window x;
        releaseMouse(x.widget, row.at);
        doubleClickMouse(x.widget, row.at);
        for (const QSignalSpy* spy : {&x.click, &x.doubleClick}) {
            ASSERT_EQ(spy->count(), 1);
            EXPECT_EQ(spy->at(0).at(0).toPoint(), row.pixel);
            const auto ray = x.widget.rayToPoint(row.pixel);
            EXPECT_EQ(spy->at(0).at(1).value<QVector3D>(), kvHostFromScene(ray.first));
            EXPECT_EQ(spy->at(0).at(2).value<QVector3D>(), kvHostFromScene(ray.second));
        }
    }
}

TEST(Clicks, areEmittedAtTheEndOfADrag)
{
    Window x;
    x.drag({100, 100}, {140, 90}, Qt::LeftButton);
    releaseMouse(x.widget, {140, 90});
    ASSERT_EQ(x.click.count(), 1);
    const auto ray = rayOracle(x.camera(), 140, 90, width, height);
    expectVector(x.click.at(0).at(2).value<QVector3D>(), {ray.second.y, -ray.second.x, ray.second.z}, 1e-4);
}

TEST(Clicks, doubleClickGivesClickDoubleClickClick)
{
    Window x;
    QStringList order;
    QObject::connect(&x.widget, &KVGLWidget::click, [&] { order << QStringLiteral("click"); });
    QObject::connect(&x.widget, &KVGLWidget::doubleClick, [&] { order << QStringLiteral("doubleClick"); });
    releaseMouse(x.widget, {10, 20});
    doubleClickMouse(x.widget, {10, 20});
    releaseMouse(x.widget, {10, 20});
    EXPECT_EQ(order,
              QStringList({QStringLiteral("click"), QStringLiteral("doubleClick"), QStringLiteral("click")}));
}

// ---- every handler --------------------------------------------------------------------------

TEST(Handlers, doNotChangeTheAcceptedStateOfEvents)
{
    Window x;
    for (const bool accepted : {true, false}) {
        for (const bool enabled : {true, false}) {
            x.widget.setEnableInteraction(enabled);
            const auto check = [&](auto&& event, auto handler) {
                event.setAccepted(accepted);
                (x.widget.*handler)(&event);
                EXPECT_EQ(event.isAccepted(), accepted);
            };
            check(QKeyEvent(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier), &KVGLWidget::keyPressEvent);
            check(QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier), &KVGLWidget::keyPressEvent);
            check(QKeyEvent(QEvent::KeyRelease, Qt::Key_Shift, Qt::NoModifier), &KVGLWidget::keyReleaseEvent);
            check(QMouseEvent(QEvent::MouseMove, QPointF(1, 2), QPointF(3, 4), Qt::NoButton, Qt::LeftButton,
                              Qt::NoModifier),
                  &KVGLWidget::mouseMoveEvent);
            check(QMouseEvent(QEvent::MouseButtonRelease, QPointF(1, 2), QPointF(3, 4), Qt::LeftButton,
                              Qt::NoButton, Qt::NoModifier),
                  &KVGLWidget::mouseReleaseEvent);
            check(QMouseEvent(QEvent::MouseButtonDblClick, QPointF(1, 2), QPointF(3, 4), Qt::LeftButton,
                              Qt::LeftButton, Qt::NoModifier),
                  &KVGLWidget::mouseDoubleClickEvent);
            check(QWheelEvent(QPointF(1, 2), QPointF(3, 4), QPoint(), QPoint(0, 120), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false),
                  &KVGLWidget::wheelEvent);
        }
    }
}

TEST(Handlers, dragInAnEmptyWindowDoesNotCrash)
{
    Window x;
    x.widget.resize(0, 0);
    x.drag({100, 100}, {110, 105}, Qt::LeftButton);
    EXPECT_FALSE(std::isfinite(x.camera().eye().x()));
    x.widget.setCameraState(oblique(), 0);
    x.widget.resize(width, height);
    x.drag({100, 100}, {110, 100}, Qt::LeftButton);
    expectTurned(x.camera(), oblique(), 10.0 * 4 * M_PI / width, 0);
}

// ---- public class ------------------------------------------------------------------------

TEST(HostInput, interactionSwitchIsThatOfTheWindow)
{
    KVGamut3DViewer viewer;
    auto* widget = viewer.findChild<KVGLWidget*>();
    ASSERT_NE(widget, nullptr);
    EXPECT_TRUE(viewer.enableInteraction());
    viewer.setEnableInteraction(false);
    EXPECT_FALSE(viewer.enableInteraction());
    EXPECT_FALSE(widget->enableInteraction());
    viewer.setEnableInteraction(true);
    EXPECT_TRUE(widget->enableInteraction());
}

TEST(HostInput, clicksCarryTheResultOfRayToPoint)
{
    KVGamut3DViewer viewer;
    auto* widget = viewer.findChild<KVGLWidget*>();
    ASSERT_NE(widget, nullptr);
    widget->resize(width, height);
    QSignalSpy click(&viewer, SIGNAL(click(QPoint, QVector3D, QVector3D)));
    QSignalSpy doubleClick(&viewer, SIGNAL(doubleClick(QPoint, QVector3D, QVector3D)));
    viewer.setCamera({120, 40, -200}, 0, {50, 0, 0});
    for (const bool orthogonal : {false, true}) {
        viewer.setOrthogonalProjection(orthogonal, 0);
        click.clear();
        doubleClick.clear();
        releaseMouse(*widget, {77, 200});
        doubleClickMouse(*widget, {77, 200});
        const auto ray = viewer.rayToPoint({77, 200});
        for (const QSignalSpy* spy : {&click, &doubleClick}) {
            ASSERT_EQ(spy->count(), 1);
            EXPECT_EQ(spy->at(0).at(0).toPoint(), QPoint(77, 200));
            EXPECT_EQ(spy->at(0).at(1).value<QVector3D>(), ray.first);
            EXPECT_EQ(spy->at(0).at(2).value<QVector3D>(), ray.second);
        }
        const auto scene = widget->rayToPoint({77, 200});
        EXPECT_EQ(ray.first, QVector3D(scene.first.y(), -scene.first.x(), scene.first.z()));
        EXPECT_EQ(ray.second, QVector3D(scene.second.y(), -scene.second.x(), scene.second.z()));
        if (!orthogonal) {
            EXPECT_EQ(ray.first, QVector3D(120, 40, -200)) << "the eye that the host has set";
        }
    }
}

TEST(HostInput, squaredDistanceToRayIsThatToTheLine)
{
    using Ray = std::pair<QVector3D, QVector3D>;
    const Ray ray{{10, -20, 30}, {3, 4, 12}};
    for (const float t : {-2.0f, 0.0f, 0.5f, 7.0f})
        EXPECT_NEAR(KVGamut3DViewer::squaredDistanceToRay(ray.first + t * ray.second, ray), 0.0f, 1e-6f) << t;
    const QVector3D across(4, -3, 0); // perpendicular, 5 long
    for (const float t : {0.0f, -1.0f, 3.0f}) {
        EXPECT_NEAR(KVGamut3DViewer::squaredDistanceToRay(ray.first + t * ray.second + across, ray), 25.0f,
                    1e-4f)
            << t;
    }
    std::mt19937 random(6);
    std::uniform_real_distribution<float> any(-100.0f, 100.0f);
    for (int i = 0; i < 100; ++i) {
        const Ray r{{any(random), any(random), any(random)}, {any(random), any(random), any(random)}};
        const QVector3D q(any(random), any(random), any(random));
        const Vec3d w = Vec3d(q) - Vec3d(r.first);
        const Vec3d c = cross(w, Vec3d(r.second));
        const double expected = dot(c, c) / dot(Vec3d(r.second), Vec3d(r.second));
        EXPECT_NEAR(KVGamut3DViewer::squaredDistanceToRay(q, r), expected, 1e-4 * std::max(1.0, expected));
    }
}

TEST(HostInput, squaredDistanceToARayWithoutDirectionIsNaN)
{
    EXPECT_FALSE(std::isfinite(KVGamut3DViewer::squaredDistanceToRay({1, 2, 3}, {{0, 0, 0}, {0, 0, 0}})));
}
