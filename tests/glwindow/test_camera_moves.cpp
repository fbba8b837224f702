// SPDX-License-Identifier: Apache-2.0
#include "CameraOracle.h"

#include <KVGamut3DViewer.h>
#include <glwindow/KVGLWidget.h>

#include <QtCore/QMetaMethod>
#include <QtTest/QSignalSpy>

#include <functional>

using namespace kvtest;

namespace {

CameraState somewhere()
{
    CameraState c({100, 80, -60}, {5, 50, -3});
    c.setViewingAngle(47.0f);
    c.setAspect(4, 3);
    c.setOrthogonal(true);
    return c;
}

/// A widget and spies on its signals.
struct Window
{
    KVGLWidget widget;
    QSignalSpy moveFinished{&widget, SIGNAL(moveFinised())};
    QSignalSpy click{&widget, SIGNAL(click(QPoint, QVector3D, QVector3D))};
    QSignalSpy doubleClick{&widget, SIGNAL(doubleClick(QPoint, QVector3D, QVector3D))};
};

} // namespace

// ---- the window -----------------------------------------------------------------------------

TEST(GLWindow, hasDocumentedDefaults)
{
    KVGLWidget w;
    EXPECT_EQ(w.framerate(), 30);
    EXPECT_EQ(w.lightPos(), QVector3D(0, 300, 0));
    EXPECT_EQ(w.lightColor(), QColor(Qt::white));
    EXPECT_EQ(w.background(), QColor(Qt::gray));
    EXPECT_TRUE(w.enableInteraction());
    EXPECT_FALSE(w.panMode());
    EXPECT_EQ(w.lastMousePosition(), QPointF(0, 0));
    EXPECT_FALSE(w.isMoving());
    EXPECT_TRUE(w.cameraState() == CameraState());
    EXPECT_EQ(w.camera(), QVector3D(0, 0, -350));
    EXPECT_EQ(w.interestPt(), QVector3D(0, 0, 0));
    EXPECT_EQ(w.viewingAngle(), 30.0f);
    EXPECT_FALSE(w.orthogonalProjection());
    EXPECT_EQ(w.drawnFrames(), 0);
    EXPECT_EQ(w.context(), nullptr);
}

TEST(GLWindow, rootIsNamedRootAndHasAUuid)
{
    KVGLWidget w;
    EXPECT_EQ(w.root().name(), QStringLiteral("root"));
    EXPECT_EQ(w.root().id().size(), 38);
    EXPECT_TRUE(w.root().children().isEmpty());
}

TEST(GLWindow, settersStoreTheirValues)
{
    Window x;
    x.widget.setFramerate(60);
    EXPECT_EQ(x.widget.framerate(), 60);
    x.widget.setFramerate(-1);
    EXPECT_EQ(x.widget.framerate(), -1);
    x.widget.setLightPos({1, 2, 3});
    EXPECT_EQ(x.widget.lightPos(), QVector3D(1, 2, 3)) << "not converted";
    x.widget.setLightColor(Qt::red);
    EXPECT_EQ(x.widget.lightColor(), QColor(Qt::red));
    x.widget.setBackground(QColor(1, 2, 3, 4));
    EXPECT_EQ(x.widget.background(), QColor(1, 2, 3, 4));
    EXPECT_TRUE(x.widget.cameraState() == CameraState()) << "the camera must not change";
    EXPECT_EQ(x.moveFinished.count(), 0);
}

TEST(GLWindow, requestsTheDocumentedFormatAndPartialUpdates)
{
    KVGLWidget w;
    const QSurfaceFormat f = w.requestedFormat();
    EXPECT_EQ(f.depthBufferSize(), 24);
    EXPECT_EQ(f.stencilBufferSize(), 8);
    EXPECT_EQ(f.samples(), 8);
    EXPECT_EQ(f.renderableType(), QSurfaceFormat::OpenGL);
    EXPECT_EQ(f.profile(), QSurfaceFormat::CoreProfile);
    EXPECT_EQ(f.majorVersion(), 1);
    EXPECT_EQ(f.minorVersion(), 2);
    EXPECT_EQ(w.updateBehavior(), QOpenGLWindow::PartialUpdateBlit);
}

TEST(GLWindow, hasExactlyFiveMetaMethodsInOrder)
{
    const QMetaObject& meta = KVGLWidget::staticMetaObject;
    EXPECT_STREQ(meta.className(), "KVGLWidget");
    EXPECT_STREQ(meta.superClass()->className(), "QOpenGLWindow");
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 5);
    const auto method = [&](int i) { return meta.method(meta.methodOffset() + i); };
    const std::pair<QByteArray, QMetaMethod::MethodType> expected[] = {
        {"moveFinised()", QMetaMethod::Signal},
        {"click(QPoint,QVector3D,QVector3D)", QMetaMethod::Signal},
        {"doubleClick(QPoint,QVector3D,QVector3D)", QMetaMethod::Signal},
        {"teardownGL()", QMetaMethod::Slot},
        {"update()", QMetaMethod::Slot},
    };
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(method(i).methodSignature(), expected[i].first) << i;
        EXPECT_EQ(method(i).methodType(), expected[i].second) << i;
        EXPECT_EQ(method(i).returnMetaType().id(), int(QMetaType::Void)) << i;
    }
    for (const int i : {1, 2}) {
        EXPECT_EQ(method(i).parameterNames().at(1), "origin");
        EXPECT_EQ(method(i).parameterNames().at(2), "direction");
    }
    EXPECT_EQ(meta.propertyCount(), meta.superClass()->propertyCount());
    EXPECT_EQ(meta.enumeratorCount(), meta.superClass()->enumeratorCount());
}

TEST(GLWindow, metacastFindsItsClassAndBaseClass)
{
    KVGLWidget w;
    EXPECT_EQ(w.qt_metacast("KVGLWidget"), static_cast<void*>(&w));
    EXPECT_NE(w.qt_metacast("QOpenGLWindow"), nullptr);
    EXPECT_NE(w.qt_metacast("QWindow"), nullptr);
    EXPECT_EQ(w.qt_metacast("KVGamut3DViewer"), nullptr);
}

TEST(GLWindow, teardownWithoutAContextReleasesTheScene)
{
    KVGLWidget w;
    QWeakPointer<KV3DObject> child;
    {
        const auto o = QSharedPointer<KV3DObject>::create(QStringLiteral("g"), QStringLiteral("g"));
        child = o;
        w.root().addChild(o);
    }
    ASSERT_TRUE(QMetaObject::invokeMethod(&w, "teardownGL"));
    EXPECT_TRUE(w.root().children().isEmpty());
    EXPECT_TRUE(child.isNull());
    ASSERT_TRUE(QMetaObject::invokeMethod(&w, "teardownGL")) << "second call";
}

TEST(GLWindow, destructorDestroysTheScene)
{
    QWeakPointer<KV3DObject> child;
    {
        KVGLWidget w;
        const auto o = QSharedPointer<KV3DObject>::create(QStringLiteral("g"), QStringLiteral("g"));
        child = o;
        w.root().addChild(o);
    }
    EXPECT_TRUE(child.isNull());
}

TEST(GLWindow, beforeTheFirstFrameThereIsNoPicture)
{
    KVGLWidget w;
    EXPECT_FALSE(w.isSettled());
    EXPECT_TRUE(w.picture().isNull());
}

// ---- immediate changes ----------------------------------------------------------------------

class ImmediateChange : public testing::TestWithParam<int>
{
};

TEST_P(ImmediateChange, takesEffectAtOnceWithoutASignal)
{
    const int duration = GetParam();
    Window x;
    x.widget.setCamera({10, 20, 30}, {1, 2, 3}, duration);
    EXPECT_EQ(x.widget.camera(), QVector3D(10, 20, 30));
    EXPECT_EQ(x.widget.interestPt(), QVector3D(1, 2, 3));
    EXPECT_NEAR(x.widget.cameraState().distance(), std::sqrt(9.0 * 9 + 18 * 18 + 27 * 27), 1e-4);
    x.widget.setOrthogonalProjection(true, duration);
    EXPECT_TRUE(x.widget.orthogonalProjection());
    x.widget.setViewingAngle(61.0f, duration);
    EXPECT_EQ(x.widget.viewingAngle(), 61.0f);
    EXPECT_EQ(x.widget.camera(), QVector3D(10, 20, 30));
    x.widget.setCameraState(somewhere(), duration);
    EXPECT_TRUE(x.widget.cameraState() == somewhere());
    EXPECT_FALSE(x.widget.isMoving());
    QCoreApplication::processEvents();
    EXPECT_EQ(x.moveFinished.count(), 0);
}

TEST_P(ImmediateChange, resetsTheProjectionOverride)
{
    QMatrix4x4 override;
    override.scale(2.0f);
    CameraState overridden;
    overridden.setProjectionOverride(override);
    KVGLWidget w;
    w.setCameraState(overridden, GetParam());
    EXPECT_TRUE(w.cameraState().projectionOverride().isIdentity());
}

TEST_P(ImmediateChange, cancelsAMoveWithoutASignal)
{
    const int duration = GetParam();
    const std::vector<std::function<void(KVGLWidget&)>> changes = {
        [&](KVGLWidget& w) {
            w.setCamera({1, 2, 3}, {0, 0, 0}, duration);
        },
        [&](KVGLWidget& w) { w.setCameraState(somewhere(), duration); },
        [&](KVGLWidget& w) { w.setOrthogonalProjection(true, duration); },
        [&](KVGLWidget& w) { w.setViewingAngle(50.0f, duration); },
    };
    for (const auto& change : changes) {
        Window x;
        x.widget.setCamera({9, 9, 9}, {0, 0, 0}, 1000);
        ASSERT_TRUE(x.widget.isMoving());
        change(x.widget);
        EXPECT_FALSE(x.widget.isMoving());
        QCoreApplication::processEvents();
        EXPECT_EQ(x.moveFinished.count(), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(CameraMoves, ImmediateChange, testing::Values(0, -1, -500),
                         [](const auto& row) { return "minus" + std::to_string(-row.param) + "ms"; });

TEST(CameraMoves, immediateProjectionChangeKeepsTheVisibleHeight)
{
    KVGLWidget w;
    w.setOrthogonalProjection(true, 0);
    expectMatrix(w.cameraState().projectionMatrix(), orthogonalOracle(350.0 * std::tan(radians(15.0)), 1.0));
    w.setOrthogonalProjection(false, 0);
    expectMatrix(w.cameraState().projectionMatrix(), perspectiveOracle(30.0, 1.0));
}

TEST(CameraMoves, acceptsAnyArgument)
{
    KVGLWidget w;
    w.setCamera({3, 4, 5}, {3, 4, 5}, 0);
    EXPECT_EQ(w.camera(), QVector3D(3, 4, 5));
    EXPECT_EQ(w.cameraState().distance(), 0.0f);
    EXPECT_TRUE(std::isnan(w.cameraState().polarAngle()));
    w.setViewingAngle(-720.0f, 0);
    EXPECT_EQ(w.viewingAngle(), -720.0f);
    w.setCamera({0, 0, -350}, {0, 0, 0}, 0);
    EXPECT_EQ(w.cameraState().distance(), 350.0f);
}

// ---- moves ----------------------------------------------------------------------------------

TEST(CameraMoves, startingAMoveDoesNotChangeTheCamera)
{
    const std::vector<std::function<void(KVGLWidget&, int)>> changes = {
        [](KVGLWidget& w, int ms) {
            w.setCamera({1, 2, 3}, {4, 5, 6}, ms);
        },
        [](KVGLWidget& w, int ms) { w.setCameraState(somewhere(), ms); },
        [](KVGLWidget& w, int ms) { w.setOrthogonalProjection(true, ms); },
        [](KVGLWidget& w, int ms) { w.setViewingAngle(60.0f, ms); },
    };
    for (const auto& change : changes) {
        for (const int ms : {1, 50, 500, 100000}) {
            Window x;
            change(x.widget, ms);
            EXPECT_TRUE(x.widget.isMoving());
            EXPECT_FALSE(x.widget.isSettled());
            EXPECT_TRUE(x.widget.cameraState() == CameraState());
            EXPECT_EQ(x.widget.viewingAngle(), 30.0f);
            EXPECT_FALSE(x.widget.orthogonalProjection());
            QCoreApplication::processEvents();
            EXPECT_EQ(x.moveFinished.count(), 0);
        }
    }
}

TEST(CameraMoves, secondMoveReplacesTheFirstWithoutASignal)
{
    Window x;
    x.widget.setViewingAngle(60.0f, 500);
    x.widget.setCamera({1, 2, 3}, {4, 5, 6}, 500);
    EXPECT_TRUE(x.widget.isMoving());
    EXPECT_EQ(x.widget.viewingAngle(), 30.0f);
    EXPECT_EQ(x.moveFinished.count(), 0);
}

TEST(CameraMoves, viewingAngleReturnsTheStartDuringAMove)
{
    Window x;
    x.widget.setViewingAngle(40.0f, 0);
    x.widget.setViewingAngle(60.0f, 500);
    EXPECT_EQ(x.widget.viewingAngle(), 40.0f);
    x.widget.setViewingAngle(80.0f, 500);
    EXPECT_EQ(x.widget.viewingAngle(), 40.0f);
    x.widget.setViewingAngle(20.0f, 0);
    EXPECT_EQ(x.widget.viewingAngle(), 20.0f);
}

// ---- public class ------------------------------------------------------------------------

TEST(HostCamera, startsWithTheTopView)
{
    KVGamut3DViewer viewer;
    EXPECT_EQ(viewer.camera(), QVector3D(522.48712f, 0, -1.1920929e-7f));
    EXPECT_EQ(viewer.interestPt(), QVector3D(50, 0, 0));
    EXPECT_EQ(viewer.viewingAngle(), 30.0f);
    EXPECT_FALSE(viewer.orthogonalProjection());
    EXPECT_EQ(viewer.framerate(), 30);
    EXPECT_TRUE(viewer.enableInteraction());
}

TEST(HostCamera, presetsAreExactAndUnknownViewsGiveTheTop)
{
    KVGamut3DViewer viewer;
    QSignalSpy moveFinished(&viewer, SIGNAL(moveFinished()));
    auto* widget = viewer.findChild<KVGLWidget*>();
    ASSERT_NE(widget, nullptr);
    viewer.resetCamera(KVGamut3DViewer::Bottom, 0);
    EXPECT_EQ(viewer.camera(), QVector3D(-522.48712f, 0, -1.1920929e-7f));
    EXPECT_EQ(viewer.interestPt(), QVector3D(50, 0, 0));
    EXPECT_FLOAT_EQ(widget->cameraState().distance(), 572.48712f);
    EXPECT_FLOAT_EQ(widget->cameraState().polarAngle(), float(M_PI));
    EXPECT_FLOAT_EQ(widget->cameraState().azimuth(), float(-M_PI / 2.0));
    for (const int view : {0, 2, -1, 1000}) {
        viewer.resetCamera(KVGamut3DViewer::Bottom, 0);
        viewer.resetCamera(static_cast<KVGamut3DViewer::View>(view), 0);
        EXPECT_EQ(viewer.camera(), QVector3D(522.48712f, 0, -1.1920929e-7f)) << view;
        EXPECT_TRUE(std::signbit(widget->camera().x())) << view;
        EXPECT_FLOAT_EQ(widget->cameraState().distance(), 472.48712f);
        EXPECT_EQ(widget->cameraState().polarAngle(), 0.0f);
        EXPECT_FLOAT_EQ(widget->cameraState().azimuth(), float(-M_PI / 2.0));
    }
    EXPECT_EQ(moveFinished.count(), 0);
    viewer.resetCamera(KVGamut3DViewer::Bottom, 300);
    EXPECT_TRUE(widget->isMoving());
    EXPECT_EQ(viewer.camera(), QVector3D(522.48712f, 0, -1.1920929e-7f))
        << "a move starts at the present camera";
}

TEST(HostCamera, positionsAreConvertedExactly)
{
    KVGamut3DViewer viewer;
    auto* widget = viewer.findChild<KVGLWidget*>();
    ASSERT_NE(widget, nullptr);
    viewer.setCamera({12.345f, -67.89f, 0.001f}, 0, {54.3f, 2.1f, -9.87f});
    EXPECT_EQ(viewer.camera(), QVector3D(12.345f, -67.89f, 0.001f));
    EXPECT_EQ(viewer.interestPt(), QVector3D(54.3f, 2.1f, -9.87f));
    EXPECT_EQ(widget->camera(), QVector3D(67.89f, 12.345f, 0.001f));
    EXPECT_EQ(widget->interestPt(), QVector3D(-2.1f, 54.3f, -9.87f));
    viewer.setCamera({300, 0.0f, 1}, 0, {50, 0, 0});
    EXPECT_TRUE(std::signbit(widget->camera().x())) << "a* = 0 must give X = -0";
}

TEST(HostCamera, projectionAngleAndLightAreNotConverted)
{
    KVGamut3DViewer viewer;
    auto* widget = viewer.findChild<KVGLWidget*>();
    ASSERT_NE(widget, nullptr);
    viewer.setOrthogonalProjection(true, 0);
    EXPECT_TRUE(viewer.orthogonalProjection() && widget->orthogonalProjection());
    viewer.setViewingAngle(75.0f, 0);
    EXPECT_EQ(viewer.viewingAngle(), 75.0f);
    EXPECT_EQ(widget->viewingAngle(), 75.0f);
    viewer.setViewingAngle(20.0f, 400);
    EXPECT_EQ(viewer.viewingAngle(), 75.0f);
    viewer.setLightPos({1, 2, 3});
    EXPECT_EQ(viewer.lightPos(), QVector3D(1, 2, 3));
    EXPECT_EQ(widget->lightPos(), QVector3D(1, 2, 3));
}
