// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"
#include "support/ShownViewer.h"

#include <KVGamutView.h>

#include <glwindow/ContextScope.h>

#include <gtest/gtest.h>

#include <QtGui/QOpenGLFunctions>
#include <QtGui/QRasterWindow>
#include <QtGui/QScreen>
#include <QtTest/QSignalSpy>

using kvtest::ShownViewer;
using kvtest::spinFor;
using kvtest::spinUntil;

namespace {

QColor pixel(const QImage& image, double x, double y)
{
    return image.pixelColor(static_cast<int>(x * image.width()), static_cast<int>(y * image.height()));
}

/// An opaque square facing the eye of the default camera, as a direct child of the root.
QSharedPointer<KV3DObject> addSquare(ShownViewer& shown, const QColor& color, float half, float z = 0.0f)
{
    // host coordinates (L*, a*, b*) of a square in the scene's XY plane at depth z
    const auto corner = [&](float x, float y) { return ColoredPoint{color, QVector3D(y, -x, z)}; };
    QSharedPointer<KV3DObject> object(new KV3DObject(QStringLiteral("Square")));
    const ContextScope scope(&shown.widget());
    object->initializeGL(shown.widget().context());
    object->setTriangles({ColoredTriangle{corner(-half, -half), corner(half, -half), corner(half, half)},
                          ColoredTriangle{corner(-half, -half), corner(half, half), corner(-half, half)}});
    shown.root().addChild(object);
    return object;
}

void hideAxesAndGrid(ShownViewer& shown)
{
    shown.viewer.setDisplayAxes(false);
    shown.viewer.setDisplayGrid(false);
    // the default camera looks from -b* at the origin
    shown.viewer.setCamera(QVector3D(0, 0, -350), 0, QVector3D(0, 0, 0));
}

} // namespace

TEST(GLWindow, requestsTheDocumentedSurfaceFormat)
{
    KVGLWidget widget;
    const QSurfaceFormat format = widget.requestedFormat();
    EXPECT_EQ(format.depthBufferSize(), 24);
    EXPECT_EQ(format.stencilBufferSize(), 8);
    EXPECT_EQ(format.samples(), 8);
    EXPECT_EQ(format.renderableType(), QSurfaceFormat::OpenGL);
    EXPECT_EQ(format.profile(), QSurfaceFormat::CoreProfile);
    EXPECT_EQ(format.majorVersion(), 1);
    EXPECT_EQ(format.minorVersion(), 2);
    EXPECT_EQ(widget.updateBehavior(), QOpenGLWindow::PartialUpdateBlit);
}

TEST(GLWindow, logsOneLineThatDescribesTheContext)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    QString version;
    QSurfaceFormat::OpenGLContextProfile profile{};
    {
        const ContextScope scope(&shown.widget());
        version = QString::fromLatin1(reinterpret_cast<const char*>(
            QOpenGLContext::currentContext()->functions()->glGetString(GL_VERSION)));
        profile = shown.widget().format().profile();
    }
    ASSERT_FALSE(version.isEmpty());
    const QString profileName = profile == QSurfaceFormat::CoreProfile ? QStringLiteral("CoreProfile")
                                : profile == QSurfaceFormat::CompatibilityProfile
                                    ? QStringLiteral("CompatibilityProfile")
                                    : QStringLiteral("NoProfile");
    const QString expected =
        QStringLiteral("OpenGL ") + version + QStringLiteral(" (") + profileName + QStringLiteral(")");
    EXPECT_EQ(kvtest::messages().count(expected), 1) << qPrintable(kvtest::messages().join(u'\n'));
}

TEST(GLWindow, drawsNoFrameWithoutAChange)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    ASSERT_TRUE(shown.comeToRest());
    const int before = shown.widget().drawnFrames();
    spinFor(300);
    EXPECT_EQ(shown.widget().drawnFrames(), before);
    EXPECT_EQ(pixel(shown.viewer.picture(), 0.01, 0.01),
              QColor(Qt::gray).toRgb()); // the last picture is kept
}

TEST(GLWindow, frameLoopFindsChangesWithoutBeingAsked)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(shown.comeToRest());
        const int before = shown.widget().drawnFrames();
        shown.viewer.setDisplayGrid(i % 2 != 0); // nothing tells the window that the scene changed
        EXPECT_TRUE(spinUntil([&] { return shown.widget().drawnFrames() > before; }));
    }
}

TEST(GLWindow, moveOfAnIdleViewerEndsWithoutAnyOtherEvent)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    ASSERT_TRUE(shown.comeToRest());
    QSignalSpy finished(&shown.viewer, &KVGamut3DViewer::moveFinished);
    shown.viewer.setCamera(shown.viewer.camera(), 1, shown.viewer.interestPt());
    EXPECT_TRUE(spinUntil([&] { return finished.count() == 1; }));
}

TEST(GLWindow, exposureShowsTheLastPictureAgain)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    ASSERT_TRUE(shown.comeToRest());
    const QImage before = shown.viewer.picture();
    const int drawn = shown.widget().drawnFrames();
    QSignalSpy swaps(&shown.widget(), &QOpenGLWindow::frameSwapped);
    QRasterWindow cover;
    cover.setGeometry(shown.viewer.geometry());
    cover.show();
    cover.raise();
    ASSERT_TRUE(spinUntil([&] { return cover.isExposed(); }));
    cover.hide();
    EXPECT_TRUE(spinUntil([&] { return swaps.count() > 0; }));
    EXPECT_EQ(shown.widget().drawnFrames(), drawn);
    const auto onScreen = [&] {
        const QRect area(shown.viewer.mapToGlobal(QPoint()), shown.viewer.size());
        return shown.viewer.screen()
            ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
            .toImage()
            .convertToFormat(before.format());
    };
    EXPECT_TRUE(spinUntil([&] { return onScreen() == before; }));
}

TEST(GLWindow, drawsAtMostOneFrameIn33Milliseconds)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    shown.viewer.setFramerate(1000);
    EXPECT_EQ(shown.viewer.framerate(), 1000);
    const int before = shown.widget().drawnFrames();
    QElapsedTimer timer;
    timer.start();
    float angle = 0.0f;
    const auto drawn = [&] { return shown.widget().drawnFrames() - before; };
    while (timer.elapsed() < 500 || drawn() < 3) {
        shown.viewer.setCamera(QVector3D(300, angle += 0.1f, 10), 0, QVector3D(50, 0, 0));
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    }
    EXPECT_LE(drawn(), timer.elapsed() / 33 + 1);
}

TEST(GLWindow, lightChangeAloneCausesNoFrame)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    hideAxesAndGrid(shown);
    addSquare(shown, Qt::white, 40)->setAmbientStrength(0.0f);
    shown.viewer.setLightPos(QVector3D(0, 0, -350));
    ASSERT_TRUE(shown.comeToRest());
    const QColor lit = pixel(shown.viewer.picture(), 0.5, 0.5);
    EXPECT_EQ(lit, QColor(Qt::white).toRgb());

    const int before = shown.widget().drawnFrames();
    shown.viewer.setLightColor(Qt::black);
    shown.viewer.setLightPos(QVector3D(0, 0, -300));
    spinFor(150);
    EXPECT_EQ(shown.widget().drawnFrames(), before);
    EXPECT_EQ(pixel(shown.viewer.picture(), 0.5, 0.5), lit);

    shown.viewer.setCamera(QVector3D(0, 1, -350), 0, QVector3D(0, 0, 0));
    const QColor unlit = pixel(shown.settledPicture(), 0.5, 0.5);
    EXPECT_LT(unlit.red(), 100); // only fill light
    EXPECT_GT(unlit.red(), 30);
}

TEST(GLWindow, newBackgroundTakesEffectAtOnce)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    shown.viewer.setBackground(QColor(10, 20, 30));
    ASSERT_TRUE(spinUntil([&] { return pixel(shown.viewer.picture(), 0.01, 0.01) == QColor(10, 20, 30); }));
}

namespace {

/// A viewer at rest with the only camera with which a new background does not cause a frame.
class DefaultCamera : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(shown.shown);
        shown.viewer.setCamera(QVector3D(0, 0, -350), 0, QVector3D(0, 0, 0));
        ASSERT_TRUE(shown.comeToRest());
        ASSERT_TRUE(shown.widget().cameraState() == CameraState());
    }

    QColor corner() { return pixel(shown.viewer.picture(), 0.01, 0.01); }

    ShownViewer shown{150, 150}; // aspect 1, like the default camera
};

} // namespace

TEST_F(DefaultCamera, backgroundChangeCausesNoFrame)
{
    const int before = shown.widget().drawnFrames();
    shown.viewer.setBackground(Qt::red);
    spinFor(150);
    EXPECT_EQ(shown.widget().drawnFrames(), before);
}

TEST_F(DefaultCamera, isNotSettledUntilTheBackgroundIsDrawn)
{
    shown.viewer.setBackground(Qt::red);
    spinFor(150);
    EXPECT_FALSE(shown.viewer.isSettled());
    shown.viewer.setDisplayGrid(false); // causes a frame
    EXPECT_TRUE(shown.settle());
    EXPECT_EQ(corner(), QColor(Qt::red));
}

TEST_F(DefaultCamera, themeOfAViewIsShownAtOnce)
{
    KVGamutView view(&shown.viewer);
    KVViewTheme theme;
    theme.background = Qt::blue;
    view.setTheme(theme);
    EXPECT_TRUE(shown.settle());
    EXPECT_EQ(corner(), QColor(Qt::blue));

    shown.viewer.setBackground(Qt::red);
    theme.background = Qt::red;
    ASSERT_EQ(view.theme(), theme);
    view.setTheme(theme); // the present theme, but not shown yet
    EXPECT_TRUE(shown.settle());
    EXPECT_EQ(corner(), QColor(Qt::red));
}

TEST_F(DefaultCamera, lightOfAViewIsShownAtOnce)
{
    KVGamutView view(&shown.viewer);
    const int before = shown.widget().drawnFrames();
    view.setLight(QVector3D(100, 100, 0), Qt::yellow);
    EXPECT_TRUE(spinUntil([&] { return shown.widget().drawnFrames() > before; }));
}

TEST(GLWindow, moveEndsExactlyAtItsTargetWithOneSignal)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    QSignalSpy finished(&shown.viewer, &KVGamut3DViewer::moveFinished);
    const QVector3D target(123.25f, -45.5f, 210.75f), interest(40, 1, 2);
    const QVector3D start = shown.viewer.camera();
    QElapsedTimer timer;
    timer.start();
    shown.viewer.setCamera(target, 200, interest);
    EXPECT_EQ(shown.viewer.camera(), start); // the call itself does not change the camera
    ASSERT_TRUE(spinUntil([&] { return finished.count() > 0; }));
    EXPECT_GT(timer.elapsed(), 200);
    EXPECT_EQ(shown.viewer.camera(), target);
    EXPECT_EQ(shown.viewer.interestPt(), interest);
    EXPECT_TRUE(shown.widget().cameraState().projectionOverride().isIdentity());
    shown.settle();
    spinFor(100);
    EXPECT_EQ(finished.count(), 1);
}

TEST(GLWindow, moveShowsIntermediatePositions)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    const QVector3D start = shown.viewer.camera();
    const QVector3D target(start.x() - 300, 0, start.z());
    bool between = false;
    for (int duration = 300; !between && duration < 30000; duration *= 3) { // a busy machine may skip frames
        shown.viewer.setCamera(start, 0, QVector3D(50, 0, 0));
        shown.viewer.setCamera(target, duration, QVector3D(50, 0, 0));
        float last = start.x();
        QSignalSpy finished(&shown.viewer, &KVGamut3DViewer::moveFinished);
        ASSERT_TRUE(spinUntil(
            [&] {
                const float now = shown.viewer.camera().x();
                EXPECT_LE(now, last); // monotonic
                between = between || (now < start.x() - 1 && now > target.x() + 1);
                last = now;
                return finished.count() > 0;
            },
            60000));
    }
    EXPECT_TRUE(between);
}

TEST(GLWindow, viewingAngleReturnsTheOldValueDuringItsMove)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    QSignalSpy finished(&shown.viewer, &KVGamut3DViewer::moveFinished);
    shown.viewer.setViewingAngle(60.0f, 150);
    ASSERT_TRUE(spinUntil([&] {
        if (finished.count() == 0) {
            EXPECT_EQ(shown.viewer.viewingAngle(), 30.0f);
        }
        return finished.count() > 0;
    }));
    EXPECT_EQ(shown.viewer.viewingAngle(), 60.0f);
    EXPECT_EQ(finished.count(), 1);
}

TEST(GLWindow, secondMoveReplacesTheFirstWithoutASignal)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    QSignalSpy finished(&shown.viewer, &KVGamut3DViewer::moveFinished);
    shown.viewer.setCamera(QVector3D(200, 100, 0), 60000, QVector3D());
    spinFor(50);
    shown.viewer.setCamera(QVector3D(100, 200, 0), 150, QVector3D());
    ASSERT_TRUE(spinUntil([&] { return finished.count() > 0; }));
    spinFor(250);
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(shown.viewer.camera(), QVector3D(100, 200, 0));
}

TEST(GLWindow, immediateChangeCancelsAMoveWithoutASignal)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    QSignalSpy finished(&shown.viewer, &KVGamut3DViewer::moveFinished);
    shown.viewer.setCamera(QVector3D(200, 100, 0), 60000, QVector3D());
    spinFor(40);
    shown.viewer.setViewingAngle(45.0f, 0);
    const QVector3D stopped = shown.viewer.camera();
    spinFor(300);
    EXPECT_EQ(finished.count(), 0);
    EXPECT_EQ(shown.viewer.camera(), stopped);
    EXPECT_EQ(shown.viewer.viewingAngle(), 45.0f);
}

TEST(GLWindow, keyPressTurnsByNineDegreesWithOneSignal)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    shown.viewer.setCamera(QVector3D(50, 0, -300), 0, QVector3D(50, 0, 0));
    const float before = shown.widget().cameraState().azimuth();
    QSignalSpy finished(&shown.viewer, &KVGamut3DViewer::moveFinished);
    QTest::keyPress(&shown.viewer, Qt::Key_Left);
    ASSERT_TRUE(spinUntil([&] { return finished.count() > 0; }));
    EXPECT_NEAR(shown.widget().cameraState().azimuth() - before, 3.14159265358979 / 20, 1e-6);
    QTest::keyRelease(&shown.viewer, Qt::Key_Left);

    const QVector3D at = shown.viewer.camera();
    QTest::keyClick(&shown.viewer, Qt::Key_Q);
    ASSERT_TRUE(spinUntil([&] { return finished.count() > 1; }));
    spinFor(120);
    EXPECT_EQ(finished.count(), 2);
    EXPECT_EQ(shown.viewer.camera(), at);
}

TEST(GLWindow, cameraKeysMoveTheCameraByTheirStep)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    QSignalSpy finished(&shown.viewer, &KVGamut3DViewer::moveFinished);
    constexpr double turn = 3.14159265358979 / 20;
    struct Row
    {
        Qt::Key key;
        float startDistance;
        double azimuth, polar, distance;
    };
    const Row rows[] = {
        {Qt::Key_Left, 300, turn, 0, 0},  {Qt::Key_Right, 300, -turn, 0, 0}, {Qt::Key_Up, 300, 0, turn, 0},
        {Qt::Key_Down, 300, 0, -turn, 0}, {Qt::Key_Plus, 300, 0, 0, -20},    {Qt::Key_Minus, 300, 0, 0, 20},
        {Qt::Key_Plus, 15, 0, 0, 0},      {Qt::Key_Shift, 300, 0, 0, 0},     {Qt::Key_A, 300, 0, 0, 0},
    };
    for (const Row& row : rows) {
        shown.viewer.setCamera(QVector3D(50, 0, -row.startDistance), 0, QVector3D(50, 0, 0));
        const CameraState before = shown.widget().cameraState();
        finished.clear();
        QTest::keyPress(&shown.viewer, row.key);
        ASSERT_TRUE(spinUntil([&] { return finished.count() > 0; }));
        const CameraState& after = shown.widget().cameraState();
        EXPECT_NEAR(after.azimuth() - before.azimuth(), row.azimuth, 1e-6) << row.key;
        EXPECT_NEAR(after.polarAngle() - before.polarAngle(), row.polar, 1e-6) << row.key;
        EXPECT_NEAR(after.distance() - before.distance(), row.distance, 1e-4) << row.key;
        QTest::keyRelease(&shown.viewer, row.key);
        EXPECT_EQ(finished.count(), 1) << row.key;
    }
}

TEST(GLWindow, slotsOfMoveFinishedMayReleaseTheContext)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    hideAxesAndGrid(shown);
    addSquare(shown, Qt::red, 60);
    int calls = 0;
    QObject::connect(&shown.viewer, &KVGamut3DViewer::moveFinished, &shown.viewer, [&] {
        ++calls;
        shown.widget().makeCurrent();
        shown.widget().doneCurrent(); // the worst case
        shown.viewer.setDisplayGrid(true);
        shown.viewer.setDisplayGrid(false);
        shown.viewer.addPointSet(QStringLiteral("p"), {{Qt::blue, QVector3D(30, 0, -60)}});
    });
    shown.viewer.setCamera(QVector3D(0, 0, -300), 60, QVector3D(0, 0, 0));
    ASSERT_TRUE(spinUntil([&] { return calls == 1; }));
    const QImage picture = shown.settledPicture();
    EXPECT_EQ(pixel(picture, 0.5, 0.5), QColor(Qt::red).toRgb());
    // the point added in the slot is drawn above the middle of the picture
    const double pixelsPerUnit = 75.0 / (240.0 * 0.26794919243); // 240 away, tan 15 degrees
    EXPECT_EQ(pixel(picture, 0.5, 0.5 - 30 * pixelsPerUnit / 150), QColor(Qt::blue).toRgb());
}

TEST(GLWindow, slotsOfMoveFinishedMayStartAMove)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    int calls = 0;
    QObject::connect(&shown.viewer, &KVGamut3DViewer::moveFinished, &shown.viewer, [&] {
        if (++calls == 1)
            shown.viewer.setCamera(QVector3D(10, 20, 300), 60, QVector3D(0, 0, 0));
    });
    shown.viewer.setCamera(QVector3D(0, 0, -300), 60, QVector3D(0, 0, 0));
    ASSERT_TRUE(spinUntil([&] { return calls == 2; }));
    EXPECT_EQ(shown.viewer.camera(), QVector3D(10, 20, 300));
}

TEST(GLWindow, resizeNeverShowsAnEmptyFramebuffer)
{
    ShownViewer shown(200, 150);
    ASSERT_TRUE(shown.shown);
    ASSERT_TRUE(shown.comeToRest());
    const QColor background = pixel(shown.viewer.picture(), 0.01, 0.01);
    int empty = 0;
    QObject::connect(&shown.widget(), &QOpenGLWindow::frameSwapped, &shown.viewer, [&] {
        if (pixel(shown.viewer.picture(), 0.01, 0.01) != background)
            ++empty;
    });
    shown.viewer.resize(240, 180);
    ASSERT_TRUE(spinUntil([&] { return shown.viewer.picture().size() == QSize(240, 180); }));
    ASSERT_TRUE(shown.comeToRest());
    EXPECT_EQ(pixel(shown.viewer.picture(), 0.01, 0.01), background);
    EXPECT_EQ(empty, 0);
}

TEST(GLWindow, aspectFollowsTheWindowSize)
{
    ShownViewer shown(200, 100);
    ASSERT_TRUE(shown.shown);
    EXPECT_FLOAT_EQ(shown.widget().cameraState().aspect(), 2.0f);
    shown.viewer.resize(100, 200);
    ASSERT_TRUE(spinUntil([&] { return shown.widget().cameraState().aspect() == 0.5f; }));
}

TEST(GLWindow, restoresDepthWritingAndBlendingAfterAFrame)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    const ContextScope scope(&shown.widget());
    auto* gl = QOpenGLContext::currentContext()->functions();
    GLboolean mask = GL_FALSE;
    gl->glGetBooleanv(GL_DEPTH_WRITEMASK, &mask);
    EXPECT_EQ(mask, GL_TRUE);
    EXPECT_FALSE(gl->glIsEnabled(GL_BLEND));
    EXPECT_TRUE(gl->glIsEnabled(GL_DEPTH_TEST));
    EXPECT_TRUE(gl->glIsEnabled(0x809D /* GL_MULTISAMPLE */));
    EXPECT_TRUE(gl->glIsEnabled(0x0B20 /* GL_LINE_SMOOTH */));
    EXPECT_EQ(gl->glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(GLWindow, paintingContinuesAfterTeardown)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    hideAxesAndGrid(shown);
    auto square = addSquare(shown, Qt::red, 60);
    square->setAlpha(0.5f, 0);
    ASSERT_NE(pixel(shown.settledPicture(), 0.5, 0.5), QColor(Qt::gray).toRgb());
    ASSERT_FALSE(shown.root().sortedVertices().isEmpty());

    QMetaObject::invokeMethod(&shown.widget(), "teardownGL", Qt::DirectConnection);
    EXPECT_EQ(QOpenGLContext::currentContext(), nullptr);
    EXPECT_FALSE(shown.root().hasProgram());
    EXPECT_FALSE(shown.root().hasBuffer());
    EXPECT_TRUE(shown.root().children().isEmpty());
    EXPECT_TRUE(shown.root().sortedVertices().isEmpty());
    EXPECT_FALSE(square->hasProgram());
    EXPECT_FALSE(square->hasBuffer());

    const int before = shown.widget().drawnFrames();
    shown.viewer.setBackground(QColor(1, 2, 3));
    ASSERT_TRUE(spinUntil([&] { return shown.widget().drawnFrames() > before; }));
    EXPECT_EQ(pixel(shown.viewer.picture(), 0.5, 0.5), QColor(1, 2, 3)); // the scene is empty
}

TEST(GLWindow, repeatedInitializeGLDoesNotDuplicateConnections)
{
    struct Widget : KVGLWidget
    {
        using KVGLWidget::initializeGL;
        int swapReceivers() const { return receivers(SIGNAL(frameSwapped())); }
    };
    Widget widget;
    widget.resize(100, 100);
    widget.show();
    ASSERT_TRUE(spinUntil([&] { return widget.drawnFrames() > 0; }));
    EXPECT_EQ(widget.swapReceivers(), 1);
    {
        const ContextScope scope(&widget);
        widget.initializeGL();
    }
    EXPECT_EQ(widget.swapReceivers(), 1);
}

namespace {

/// A viewer whose windows exist and have a size but have not been exposed, as in a hidden tab or just after
/// show().
struct UnexposedViewer
{
    UnexposedViewer()
    {
        viewer.resize(200, 150);
        viewer.create();
        widget().create();
        QResizeEvent resized(QSize(200, 150), QSize());
        QCoreApplication::sendEvent(&widget(), &resized);
        if (QOpenGLContext* current = QOpenGLContext::currentContext())
            current->doneCurrent(); // as another OpenGL window would do
    }

    KVGLWidget& widget() { return *viewer.findChild<KVGLWidget*>(); }

    KVGamut3DViewer viewer;
};

} // namespace

TEST(GLWindow, changesBeforeTheFirstExposureAreInTheFirstPicture)
{
    UnexposedViewer unexposed;
    unexposed.viewer.setDisplayAxes(false);
    unexposed.viewer.setDisplayGrid(false);
    unexposed.viewer.addPointSet(QStringLiteral("dot"),
                                 {{Qt::red, QVector3D(50, 0, 0)}, {Qt::red, QVector3D(60, 0, 0)}});
    unexposed.viewer.show();
    ASSERT_TRUE(
        spinUntil([&] { return unexposed.widget().drawnFrames() > 0 && unexposed.viewer.isSettled(); }));
    const QImage picture = unexposed.viewer.picture();
    EXPECT_EQ(pixel(picture, 0.5, 0.5), QColor(Qt::red)); // the default view is from above
    EXPECT_EQ(pixel(picture, 0.25, 0.25), QColor(Qt::gray));
}

TEST(GLWindow, destroyingAnUnexposedViewerReleasesTheScene)
{
    QWeakPointer<KV3DObject> object;
    {
        UnexposedViewer unexposed;
        QSharedPointer<KV3DObject> square(new KV3DObject(QStringLiteral("Square")));
        object = square.toWeakRef();
        unexposed.widget().root().addChild(square);
    }
    EXPECT_TRUE(object.isNull());
}

TEST(GLWindow, destroyingAShownViewerReleasesItsBuffers)
{
    QSharedPointer<KV3DObject> kept;
    {
        ShownViewer shown;
        ASSERT_TRUE(shown.shown);
        hideAxesAndGrid(shown);
        kept = addSquare(shown, Qt::red, 60);
        shown.settle();
        ASSERT_TRUE(kept->hasBuffer());
    }
    EXPECT_FALSE(kept->hasBuffer());
    EXPECT_FALSE(kept->hasProgram());
}

TEST(ContextScope, releasesOnlyAContextThatItMadeCurrent)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    shown.widget().doneCurrent(); // Qt leaves the context current after painting
    {
        const ContextScope outer(&shown.widget());
        EXPECT_EQ(QOpenGLContext::currentContext(), shown.widget().context());
        {
            const ContextScope inner(&shown.widget());
            EXPECT_EQ(QOpenGLContext::currentContext(), shown.widget().context());
        }
        EXPECT_EQ(QOpenGLContext::currentContext(), shown.widget().context());
    }
    EXPECT_EQ(QOpenGLContext::currentContext(), nullptr);
}

TEST(ContextScope, restoresThePreviousContext)
{
    ShownViewer one, two;
    ASSERT_TRUE(one.shown && two.shown);
    one.widget().makeCurrent();
    two.viewer.setDisplayGrid(false); // called while the context of the first viewer is current
    EXPECT_EQ(QOpenGLContext::currentContext(), one.widget().context());
    one.widget().doneCurrent();
}
