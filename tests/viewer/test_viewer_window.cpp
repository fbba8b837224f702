// SPDX-License-Identifier: Apache-2.0
#include "ViewerCase.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QResizeEvent>
#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>

#include <cmath>
#include <numbers>

namespace {

using ViewerWindow = ViewerCase;
using ViewerEvents = ViewerCase;
using ViewerSignals = ViewerCase;

QMouseEvent mouse(QEvent::Type type, const QPointF& local, const QPointF& global, Qt::MouseButton button,
                  Qt::MouseButtons buttons)
{
    return QMouseEvent(type, local, global, button, buttons, Qt::NoModifier);
}

QWheelEvent wheel(int angle)
{
    return QWheelEvent(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                       Qt::NoScrollPhase, false);
}

} // namespace

// --- Construction --------------------------------------------------------------------------------

TEST_F(ViewerWindow, registersTheNameOfProfileHandles)
{
    EXPECT_TRUE(QMetaType::fromName("KVProfilePtr").isValid());
    EXPECT_EQ(QMetaType::fromName("KVProfilePtr"), QMetaType::fromType<KVProfilePtr>());
}

TEST_F(ViewerWindow, ownsOneVisibleGlWindowAsItsChild)
{
    const auto widgets = viewer->findChildren<KVGLWidget*>();
    ASSERT_EQ(widgets.size(), 1);
    EXPECT_EQ(static_cast<QWindow*>(widgets.first())->parent(), viewer.get());
    EXPECT_TRUE(widgets.first()->isVisible());
    EXPECT_FALSE(viewer->isVisible());
    const QPointer<KVGLWidget> watch = widgets.first();
    viewer.reset();
    EXPECT_TRUE(watch.isNull());
}

TEST_F(ViewerWindow, givesItsFirstSizeToTheGlWindowAtOnce)
{
    KVGamut3DViewer sized;
    sized.resize(321, 123);
    EXPECT_EQ(sized.findChild<QWindow*>()->size(), QSize(321, 123));
}

TEST_F(ViewerWindow, becomesAChildOfItsParent)
{
    auto host = std::make_unique<QWindow>();
    const QPointer<KVGamut3DViewer> embedded = new KVGamut3DViewer(host.get());
    EXPECT_EQ(static_cast<QWindow*>(embedded)->parent(), host.get());
    host.reset();
    EXPECT_TRUE(embedded.isNull());
}

TEST_F(ViewerWindow, startsWithPlaneAxesAndGrid)
{
    EXPECT_EQ(root().name(), QStringLiteral("root"));
    EXPECT_EQ(root().id().size(), 38);
    EXPECT_TRUE(root().id().startsWith(QLatin1Char('{')));
    EXPECT_EQ(root().childOrder(),
              (QStringList{QStringLiteral("Plane"), QStringLiteral("Axes"), QStringLiteral("Grid")}));
    for (const auto& child : root().children())
        EXPECT_EQ(child->name(), child->id());
    EXPECT_FALSE(group("Plane")->isVisible());
    EXPECT_TRUE(group("Axes")->isVisible());
    EXPECT_TRUE(group("Grid")->isVisible());
}

TEST_F(ViewerWindow, startsWithItsDefaults)
{
    EXPECT_TRUE(viewer->displayGrid());
    EXPECT_TRUE(viewer->displayAxes());
    EXPECT_FALSE(viewer->abPlane());
    EXPECT_EQ(viewer->clipping(), 1000000.0f);
    EXPECT_EQ(viewer->pointSize(), 4.0f);
    EXPECT_TRUE(viewer->markerSet().isEmpty());
    EXPECT_TRUE(viewer->pointSet().isEmpty());
    EXPECT_TRUE(viewer->segmentSet().isEmpty());
    EXPECT_TRUE(viewer->gamuts().isEmpty());
    EXPECT_FALSE(viewer->exists(QStringLiteral("sRGB")));
    EXPECT_EQ(viewer->framerate(), 30);
    EXPECT_EQ(viewer->lightPos(), QVector3D(0, 300, 0));
    EXPECT_EQ(viewer->lightColor(), QColor(Qt::white));
    EXPECT_EQ(viewer->background(), QColor(Qt::gray));
    EXPECT_TRUE(viewer->enableInteraction());
}

TEST_F(ViewerWindow, startsWithTheViewFromAbove)
{
    EXPECT_FALSE(widget().isMoving());
    // QVector3D compares exactly, except that -0.0 equals 0.0.
    EXPECT_EQ(viewer->camera(), QVector3D(522.48712f, 0.0f, -1.1920929e-7f));
    EXPECT_EQ(viewer->interestPt(), QVector3D(50, 0, 0));
    EXPECT_TRUE(std::signbit(widget().camera().x())) << "the sign of the zero decides the azimuth";
    EXPECT_FLOAT_EQ(widget().cameraState().azimuth(), -std::numbers::pi_v<float> / 2);
}

// --- Decorations ---------------------------------------------------------------------------------

TEST_F(ViewerWindow, showsAndHidesGridAxesAndPlaneIndependently)
{
    viewer->setDisplayGrid(false);
    EXPECT_FALSE(viewer->displayGrid());
    EXPECT_TRUE(viewer->displayAxes());
    EXPECT_FALSE(viewer->abPlane());
    EXPECT_FALSE(group("Grid")->isVisible());

    viewer->setDisplayAxes(false);
    viewer->setabPlane(true);
    viewer->setDisplayGrid(true);
    EXPECT_TRUE(viewer->displayGrid());
    EXPECT_FALSE(viewer->displayAxes());
    EXPECT_TRUE(viewer->abPlane());
    EXPECT_TRUE(group("Plane")->isVisible());
    EXPECT_FALSE(group("Axes")->isVisible());
}

TEST_F(ViewerWindow, aRemovedGroupIsNotShownAgain)
{
    for (const char* id : {"Grid", "Axes", "Plane"})
        root().takeChild(QLatin1String(id));
    viewer->setDisplayGrid(true);
    viewer->setDisplayAxes(true);
    viewer->setabPlane(true);
    EXPECT_FALSE(viewer->displayGrid());
    EXPECT_FALSE(viewer->displayAxes());
    EXPECT_FALSE(viewer->abPlane());
    EXPECT_TRUE(root().childOrder().isEmpty());
}

TEST_F(ViewerWindow, onlyAChangeOfVisibilityCausesARedraw)
{
    const auto grid = group("Grid");
    root().draw(nullptr, {}, {}, {}, CameraState(), {}, Qt::white, KVPassOpaque);
    root().draw(nullptr, {}, {}, {}, CameraState(), {}, Qt::white, KVPassTranslucent);
    ASSERT_TRUE(grid->isDrawnSinceChange());
    viewer->setDisplayGrid(true);
    EXPECT_TRUE(grid->isDrawnSinceChange());
    viewer->setDisplayGrid(false);
    EXPECT_FALSE(grid->isDrawnSinceChange());
}

// --- Meta-object ---------------------------------------------------------------------------------

TEST_F(ViewerSignals, areTheOnlyMethodsOfTheMetaObject)
{
    const QMetaObject& meta = KVGamut3DViewer::staticMetaObject;
    EXPECT_STREQ(meta.className(), "KVGamut3DViewer");
    EXPECT_EQ(meta.superClass(), &QWindow::staticMetaObject);
    EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
    EXPECT_EQ(meta.classInfoCount(), meta.classInfoOffset());
    EXPECT_EQ(meta.constructorCount(), 0);
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 4);

    const struct
    {
        const char* signature;
        QList<QByteArray> names;
    } rows[] = {
        {"moveFinished()", {}},
        {"loadingFinished(QString)", {"gamutId"}},
        {"click(QPoint,QVector3D,QVector3D)", {"p", "origin", "direction"}},
        {"doubleClick(QPoint,QVector3D,QVector3D)", {"p", "origin", "direction"}},
    };
    for (int i = 0; i < 4; ++i) {
        const QMetaMethod method = meta.method(meta.methodOffset() + i);
        EXPECT_EQ(method.methodType(), QMetaMethod::Signal);
        EXPECT_EQ(method.methodSignature(), QByteArray(rows[i].signature));
        EXPECT_EQ(method.parameterNames(), rows[i].names);
        EXPECT_EQ(method.returnType(), QMetaType::Void);
    }
}

TEST_F(ViewerSignals, areFoundByTheirFunctions)
{
    const QMetaObject& meta = KVGamut3DViewer::staticMetaObject;
    const int first = meta.methodOffset();
    EXPECT_EQ(QMetaMethod::fromSignal(&KVGamut3DViewer::moveFinished).methodIndex(), first);
    EXPECT_EQ(QMetaMethod::fromSignal(&KVGamut3DViewer::loadingFinished).methodIndex(), first + 1);
    EXPECT_EQ(QMetaMethod::fromSignal(&KVGamut3DViewer::click).methodIndex(), first + 2);
    EXPECT_EQ(QMetaMethod::fromSignal(&KVGamut3DViewer::doubleClick).methodIndex(), first + 3);
}

TEST_F(ViewerWindow, answersCastsByName)
{
    EXPECT_EQ(viewer->qt_metacast("KVGamut3DViewer"), viewer.get());
    EXPECT_EQ(viewer->qt_metacast("QWindow"), static_cast<QWindow*>(viewer.get()));
    EXPECT_EQ(viewer->qt_metacast("KVGLWidget"), nullptr);
    EXPECT_EQ(viewer->qt_metacast("kvgamut3dviewer"), nullptr);
    EXPECT_EQ(viewer->qt_metacast(nullptr), nullptr);
}

TEST_F(ViewerSignals, needNoArgumentTypesRegistered)
{
    const int first = KVGamut3DViewer::staticMetaObject.methodOffset();
    for (int i = 0; i < 4; ++i) {
        QMetaType type = QMetaType::fromType<int>();
        int argument = 0;
        void* arguments[] = {&type, &argument};
        EXPECT_LT(viewer->qt_metacall(QMetaObject::RegisterMethodArgumentMetaType, first + i, arguments), 0);
        EXPECT_FALSE(type.isValid()) << i;
    }
}

TEST_F(ViewerSignals, canBeEmittedThroughTheMetaObject)
{
    QSignalSpy loading(viewer.get(), SIGNAL(loadingFinished(QString)));
    QSignalSpy moved(viewer.get(), SIGNAL(moveFinished()));
    ASSERT_TRUE(loading.isValid());
    ASSERT_TRUE(moved.isValid());
    EXPECT_TRUE(
        QMetaObject::invokeMethod(viewer.get(), "loadingFinished", Q_ARG(QString, QStringLiteral("sRGB"))));
    EXPECT_TRUE(QMetaObject::invokeMethod(viewer.get(), "moveFinished"));
    ASSERT_EQ(loading.count(), 1);
    EXPECT_EQ(loading[0][0].toString(), QStringLiteral("sRGB"));
    EXPECT_EQ(moved.count(), 1);
}

TEST_F(ViewerSignals, forwardThoseOfTheGlWindow)
{
    QSignalSpy moved(viewer.get(), SIGNAL(moveFinished()));
    QSignalSpy clicked(viewer.get(), SIGNAL(click(QPoint, QVector3D, QVector3D)));
    QSignalSpy doubleClicked(viewer.get(), SIGNAL(doubleClick(QPoint, QVector3D, QVector3D)));
    Q_EMIT widget().moveFinised();
    EXPECT_EQ(moved.count(), 1);

    Q_EMIT widget().click(QPoint(1, 2), QVector3D(3, 4, 5), QVector3D(6, 7, 8));
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(doubleClicked.count(), 0);
    Q_EMIT widget().doubleClick(QPoint(9, 8), QVector3D(7, 6, 5), QVector3D(4, 3, 2));
    ASSERT_EQ(doubleClicked.count(), 1);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(moved.count(), 1);
    const QList<QVariant> click{QPoint(1, 2), QVector3D(3, 4, 5), QVector3D(6, 7, 8)};
    const QList<QVariant> doubleClick{QPoint(9, 8), QVector3D(7, 6, 5), QVector3D(4, 3, 2)};
    EXPECT_EQ(clicked[0], click);
    EXPECT_EQ(doubleClicked[0], doubleClick);
}

// --- Events --------------------------------------------------------------------------------------

TEST_F(ViewerEvents, aResizeGivesTheGlWindowTheNewSize)
{
    QResizeEvent resize(QSize(321, 123), QSize(10, 10));
    QCoreApplication::sendEvent(viewer.get(), &resize);
    EXPECT_EQ(widget().size(), QSize(321, 123));
    EXPECT_EQ(widget().position(), QPoint(0, 0));
}

TEST_F(ViewerEvents, keysReachTheGlWindow)
{
    QKeyEvent shift(QEvent::KeyPress, Qt::Key_Shift, Qt::ShiftModifier);
    QCoreApplication::sendEvent(viewer.get(), &shift);
    EXPECT_TRUE(widget().panMode());
    EXPECT_TRUE(widget().isMoving()) << "every key press starts a move";
    QKeyEvent noShift(QEvent::KeyRelease, Qt::Key_Shift, Qt::NoModifier);
    QCoreApplication::sendEvent(viewer.get(), &noShift);
    EXPECT_FALSE(widget().panMode());
}

TEST_F(ViewerEvents, aWheelNotchReachesTheGlWindowOnce)
{
    const float before = widget().cameraState().distance();
    QWheelEvent notch = wheel(120);
    QCoreApplication::sendEvent(viewer.get(), &notch);
    EXPECT_FLOAT_EQ(widget().cameraState().distance(), before - 6);
}

TEST_F(ViewerEvents, aDragReachesTheGlWindowOnce)
{
    widget().resize(400, 200);
    const float before = widget().cameraState().azimuth();
    QMouseEvent hover = mouse(QEvent::MouseMove, {10, 10}, {110, 60}, Qt::NoButton, Qt::NoButton);
    QCoreApplication::sendEvent(viewer.get(), &hover);
    EXPECT_EQ(widget().lastMousePosition(), QPointF(110, 60));
    QMouseEvent drag = mouse(QEvent::MouseMove, {60, 10}, {160, 60}, Qt::NoButton, Qt::LeftButton);
    QCoreApplication::sendEvent(viewer.get(), &drag);
    // An eighth of the width: an eighth of two full turns.
    EXPECT_NEAR(widget().cameraState().azimuth() - before, std::numbers::pi / 2, 1e-5);
}

TEST_F(ViewerEvents, releaseAndDoubleClickAreReportedOnceWithTheRay)
{
    widget().resize(400, 200);
    viewer->setCamera(QVector3D(80, 300, -120), 0, QVector3D(50, 0, 0));
    QSignalSpy clicked(viewer.get(), SIGNAL(click(QPoint, QVector3D, QVector3D)));
    QSignalSpy doubleClicked(viewer.get(), SIGNAL(doubleClick(QPoint, QVector3D, QVector3D)));

    QMouseEvent release =
        mouse(QEvent::MouseButtonRelease, {100.4, 49.5}, {500, 500}, Qt::LeftButton, Qt::NoButton);
    QCoreApplication::sendEvent(viewer.get(), &release);
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(doubleClicked.count(), 0);
    const auto ray = viewer->rayToPoint(QPoint(100, 50));
    EXPECT_EQ(clicked[0][0].toPoint(), QPoint(100, 50));
    EXPECT_EQ(clicked[0][1].value<QVector3D>(), ray.first);
    EXPECT_EQ(clicked[0][2].value<QVector3D>(), ray.second);
    EXPECT_EQ(ray.first, QVector3D(80, 300, -120)) << "a perspective ray starts at the eye";

    QMouseEvent twice =
        mouse(QEvent::MouseButtonDblClick, {7, 9}, {500, 500}, Qt::RightButton, Qt::RightButton);
    QCoreApplication::sendEvent(viewer.get(), &twice);
    ASSERT_EQ(doubleClicked.count(), 1);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(doubleClicked[0][0].toPoint(), QPoint(7, 9));
    EXPECT_EQ(doubleClicked[0][2].value<QVector3D>(), viewer->rayToPoint(QPoint(7, 9)).second);
}

TEST_F(ViewerEvents, aMousePressDoesNotReachTheGlWindow)
{
    struct Watch : QObject
    {
        bool eventFilter(QObject*, QEvent* event) override
        {
            types.append(event->type());
            return false;
        }
        QList<QEvent::Type> types;
    } watch;
    widget().installEventFilter(&watch);
    QSignalSpy clicked(viewer.get(), SIGNAL(click(QPoint, QVector3D, QVector3D)));
    QSignalSpy doubleClicked(viewer.get(), SIGNAL(doubleClick(QPoint, QVector3D, QVector3D)));
    const CameraState before = widget().cameraState();

    QMouseEvent press = mouse(QEvent::MouseButtonPress, {10, 10}, {110, 60}, Qt::LeftButton, Qt::LeftButton);
    QCoreApplication::sendEvent(viewer.get(), &press);
    EXPECT_TRUE(watch.types.isEmpty());
    EXPECT_EQ(widget().lastMousePosition(), QPointF(0, 0));
    EXPECT_TRUE(widget().cameraState() == before);
    EXPECT_FALSE(widget().isMoving());
    EXPECT_EQ(clicked.count(), 0);
    EXPECT_EQ(doubleClicked.count(), 0);
}

TEST_F(ViewerEvents, areAcceptedAsByAPlainWindow)
{
    struct Plain : QWindow
    {
        using QWindow::event;
    } plain;
    viewer->resize(50, 40);
    plain.resize(50, 40);

    QResizeEvent resize(QSize(50, 40), QSize(1, 1));
    QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    QKeyEvent keyUp(QEvent::KeyRelease, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    QWheelEvent notch = wheel(15);
    QMouseEvent move = mouse(QEvent::MouseMove, {1, 1}, {1, 1}, Qt::NoButton, Qt::NoButton);
    QMouseEvent press = mouse(QEvent::MouseButtonPress, {1, 1}, {1, 1}, Qt::LeftButton, Qt::LeftButton);
    QMouseEvent release = mouse(QEvent::MouseButtonRelease, {1, 1}, {1, 1}, Qt::LeftButton, Qt::NoButton);
    QMouseEvent twice = mouse(QEvent::MouseButtonDblClick, {1, 1}, {1, 1}, Qt::LeftButton, Qt::LeftButton);
    QEvent enter(QEvent::Enter);
    QEvent own(QEvent::User);
    QEvent language(QEvent::LanguageChange);
    QEvent* events[] = {&resize,  &key,   &keyUp, &notch, &move,    &press,
                        &release, &twice, &enter, &own,   &language};
    for (QEvent* event : events) {
        event->setAccepted(true);
        const bool plainAnswer = plain.event(event);
        const bool plainAccepted = event->isAccepted();
        event->setAccepted(true);
        EXPECT_EQ(viewer->event(event), plainAnswer) << event->type();
        EXPECT_EQ(event->isAccepted(), plainAccepted) << event->type();
    }
    EXPECT_TRUE(viewer->event(&move));
    EXPECT_FALSE(viewer->event(&language));
}

TEST_F(ViewerEvents, withoutInteractionOnlyClicksAreReported)
{
    viewer->setEnableInteraction(false);
    EXPECT_FALSE(viewer->enableInteraction());
    QSignalSpy clicked(viewer.get(), SIGNAL(click(QPoint, QVector3D, QVector3D)));
    const CameraState before = widget().cameraState();
    QWheelEvent notch = wheel(120);
    QKeyEvent left(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier);
    QMouseEvent move = mouse(QEvent::MouseMove, {9, 9}, {9, 9}, Qt::NoButton, Qt::LeftButton);
    QMouseEvent release = mouse(QEvent::MouseButtonRelease, {1, 1}, {1, 1}, Qt::LeftButton, Qt::NoButton);
    for (QEvent* event : std::initializer_list<QEvent*>{&notch, &left, &move, &release})
        QCoreApplication::sendEvent(viewer.get(), event);
    EXPECT_TRUE(widget().cameraState() == before);
    EXPECT_FALSE(widget().isMoving());
    EXPECT_EQ(widget().lastMousePosition(), QPointF(0, 0));
    EXPECT_EQ(clicked.count(), 1);
}

// --- Calls forwarded to the GL window ------------------------------------------------------------

TEST_F(ViewerWindow, returnsLightAndBackgroundUnchanged)
{
    viewer->setFramerate(60);
    viewer->setLightPos(QVector3D(1, 2, 3));
    viewer->setLightColor(QColor(10, 20, 30));
    viewer->setBackground(QColor(40, 50, 60));
    EXPECT_EQ(widget().framerate(), 60);
    EXPECT_EQ(widget().lightPos(), QVector3D(1, 2, 3)) << "the light is not converted";
    EXPECT_EQ(widget().lightColor(), QColor(10, 20, 30));
    EXPECT_EQ(widget().background(), QColor(40, 50, 60));
    EXPECT_EQ(viewer->framerate(), 60);
    EXPECT_EQ(viewer->lightPos(), QVector3D(1, 2, 3));
    EXPECT_EQ(viewer->lightColor(), QColor(10, 20, 30));
    EXPECT_EQ(viewer->background(), QColor(40, 50, 60));
}

TEST_F(ViewerWindow, convertsTheCameraExactly)
{
    const QVector3D position(81.3f, -120.7f, 33.1f);
    const QVector3D interest(49.9f, 7.7f, -3.3f);
    viewer->setCamera(position, 0, interest);
    EXPECT_EQ(viewer->camera(), position);
    EXPECT_EQ(viewer->interestPt(), interest);
    EXPECT_EQ(widget().camera(), QVector3D(120.7f, 81.3f, 33.1f));
    EXPECT_EQ(widget().interestPt(), QVector3D(-7.7f, 49.9f, -3.3f));
}

TEST_F(ViewerWindow, everyViewExceptBottomIsFromAbove)
{
    viewer->resetCamera(KVGamut3DViewer::Bottom, 0);
    EXPECT_EQ(viewer->camera(), QVector3D(-522.48712f, 0.0f, -1.1920929e-7f));
    EXPECT_EQ(viewer->interestPt(), QVector3D(50, 0, 0));
    EXPECT_FLOAT_EQ(widget().cameraState().distance(), 572.48712f);
    for (const int view : {0, 2, -1}) {
        viewer->resetCamera(KVGamut3DViewer::Bottom, 0);
        viewer->resetCamera(static_cast<KVGamut3DViewer::View>(view), 0);
        EXPECT_EQ(viewer->camera(), QVector3D(522.48712f, 0.0f, -1.1920929e-7f)) << view;
        EXPECT_FLOAT_EQ(widget().cameraState().distance(), 472.48712f);
    }
}

TEST_F(ViewerWindow, passesProjectionAndAngleToTheGlWindow)
{
    viewer->setOrthogonalProjection(true, 0);
    viewer->setViewingAngle(45, 0);
    EXPECT_TRUE(viewer->orthogonalProjection());
    EXPECT_EQ(viewer->viewingAngle(), 45.0f);
    EXPECT_TRUE(widget().orthogonalProjection());
    EXPECT_EQ(widget().viewingAngle(), 45.0f);
    viewer->setViewingAngle(60, 500);
    EXPECT_TRUE(widget().isMoving());
    EXPECT_EQ(viewer->viewingAngle(), 45.0f);
}

TEST_F(ViewerWindow, givesPickingRaysInHostCoordinates)
{
    widget().resize(300, 200);
    viewer->setCamera(QVector3D(80, 300, -120), 0, QVector3D(50, 10, 5));
    for (const bool orthogonal : {false, true}) {
        viewer->setOrthogonalProjection(orthogonal, 0);
        const auto scene = widget().rayToPoint(QPoint(33, 44));
        const auto host = viewer->rayToPoint(QPoint(33, 44));
        EXPECT_EQ(host.first, QVector3D(scene.first.y(), -scene.first.x(), scene.first.z()));
        EXPECT_EQ(host.second, QVector3D(scene.second.y(), -scene.second.x(), scene.second.z()));
    }
    viewer->setOrthogonalProjection(false, 0);
    const auto centre = viewer->rayToPoint(QPoint(150, 100));
    const QVector3D towards = QVector3D(50, 10, 5) - QVector3D(80, 300, -120);
    EXPECT_NEAR(QVector3D::dotProduct(centre.second.normalized(), towards.normalized()), 1.0, 1e-6);
}

TEST_F(ViewerWindow, returnsTheSquaredDistanceToTheLineOfARay)
{
    const std::pair<QVector3D, QVector3D> ray{{1, 2, 3}, {0, 0, 5}};
    EXPECT_EQ(KVGamut3DViewer::squaredDistanceToRay({1, 2, 40}, ray), 0.0f);
    EXPECT_FLOAT_EQ(KVGamut3DViewer::squaredDistanceToRay({4, 6, 3}, ray), 25.0f);
    EXPECT_FLOAT_EQ(KVGamut3DViewer::squaredDistanceToRay({4, 6, -77}, ray), 25.0f) << "a line, not a half";
    EXPECT_FALSE(std::isfinite(KVGamut3DViewer::squaredDistanceToRay({4, 6, 3}, {{1, 2, 3}, {}})));
}
