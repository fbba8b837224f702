// SPDX-License-Identifier: Apache-2.0
// A viewer that draws into a framebuffer instead of a window.

#include "support/FaultyDriver.h"
#include "support/ShownViewer.h"

#include <KVGamutCanvas.h>

#include <gtest/gtest.h>

#include <QtGui/QFocusEvent>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtGui/QWheelEvent>
#include <QtOpenGL/QOpenGLFramebufferObject>
#include <QtTest/QSignalSpy>

#include <memory>

using kvtest::ShownViewer;
using kvtest::spinFor;
using kvtest::spinUntil;

namespace {

const QString g = QStringLiteral("g");
const QString profile = QStringLiteral("/usr/share/color/icc/colord/AdobeRGB1998.icc");

void fill(KVGamut3DViewer& viewer)
{
    viewer.load(g, {{QStringLiteral("ProfilePath"), profile}}, nullptr);
    viewer.changeGamutAlpha(g, 0.6f, 0);
    viewer.setCamera(QVector3D(150, 300, 260), 0, QVector3D(50, 0, 0));
    viewer.addMarkerSet(QStringLiteral("m"), KVGamut3DViewer::Star, {{Qt::blue, {80, 40, 60}}}, 20, 0.5f);
}

/// A host that draws when it is asked to, from the event loop.
class Host : public QObject
{
public:
    explicit Host(const QSize& size = {200, 150}, qreal ratio = 1.0, KVGamutCanvas::Target* target = nullptr)
        : canvas(target)
    {
        connect(&canvas, &KVGamutCanvas::drawWanted, this, &Host::post);
        canvas.setSize(size, ratio);
        canvas.setShown(true);
    }

    bool settle()
    {
        return spinUntil([this] { return canvas.viewer()->isSettled() && frames > 0; });
    }
    QImage settledFrame()
    {
        settle();
        return canvas.frame();
    }
    void pass(QEvent&& event) { lastUsed = canvas.passOn(event); }
    void mouse(QEvent::Type type, const QPointF& at, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        // Global positions of an item that was moved and scaled are of no use to the viewer.
        pass(QMouseEvent(type, at, at * 3 + QPointF(700, 500), button, buttons, Qt::NoModifier));
    }
    void drag(const QPointF& from, const QPointF& to, Qt::MouseButton button = Qt::LeftButton)
    {
        mouse(QEvent::MouseButtonPress, from, button, button);
        mouse(QEvent::MouseMove, to, Qt::NoButton, button);
        mouse(QEvent::MouseButtonRelease, to, button, Qt::NoButton);
    }
    void key(int code, QEvent::Type type = QEvent::KeyPress) { pass(QKeyEvent(type, code, Qt::NoModifier)); }

    KVGamutCanvas canvas;
    int frames = 0;
    int calls = 0;
    bool lastUsed = false;

private:
    void post()
    {
        if (m_posted)
            return;
        m_posted = true;
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_posted = false;
                ++calls;
                if (canvas.draw())
                    ++frames;
            },
            Qt::QueuedConnection);
    }
    bool m_posted = false;
};

/// A context and a framebuffer, as a host may have them.
class OwnTarget : public KVGamutCanvas::Target
{
public:
    explicit OwnTarget(const QSize& size) : m_size(size)
    {
        m_context.setFormat(KVGamutCanvas::format());
        EXPECT_TRUE(m_context.create());
        m_surface.setFormat(m_context.format());
        m_surface.create();
        EXPECT_TRUE(m_context.makeCurrent(&m_surface));
        QOpenGLFramebufferObjectFormat format;
        format.setSamples(KVGamutCanvas::format().samples());
        format.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
        m_framebuffer = std::make_unique<QOpenGLFramebufferObject>(size, format);
        m_context.doneCurrent();
    }
    ~OwnTarget() override
    {
        EXPECT_TRUE(m_context.makeCurrent(&m_surface));
        m_framebuffer.reset();
        m_context.doneCurrent();
    }
    QOpenGLContext* context() const override { return const_cast<QOpenGLContext*>(&m_context); }
    bool makeCurrent() override { return m_context.makeCurrent(&m_surface) && m_framebuffer->bind(); }
    void doneCurrent() override { m_context.doneCurrent(); }
    unsigned int framebuffer() const override { return m_framebuffer->handle(); }
    QImage content()
    {
        EXPECT_TRUE(makeCurrent());
        const QImage image = m_framebuffer->toImage();
        m_context.doneCurrent();
        return image.convertToFormat(QImage::Format_RGB32);
    }

private:
    QSize m_size;
    QOpenGLContext m_context;
    QOffscreenSurface m_surface;
    std::unique_ptr<QOpenGLFramebufferObject> m_framebuffer;
};

} // namespace

TEST(Canvas, drawsThePictureOfTheWindow)
{
    ShownViewer window;
    fill(window.viewer);
    const QImage expected = window.settledPicture();
    ASSERT_EQ(expected.size(), QSize(200, 150));

    Host host;
    fill(*host.canvas.viewer());
    EXPECT_EQ(host.settledFrame(), expected);
    EXPECT_FALSE(host.canvas.viewer()->isVisible());
}

TEST(Canvas, drawsWithThePixelRatioOfTheHost)
{
    Host host(QSize(100, 75), 2.0);
    fill(*host.canvas.viewer());
    const QImage frame = host.settledFrame();
    EXPECT_EQ(frame.size(), QSize(200, 150));
    EXPECT_EQ(frame.devicePixelRatio(), 2.0);
    Host large(QSize(200, 150), 1.0);
    fill(*large.canvas.viewer());
    QImage same = large.settledFrame();
    same.setDevicePixelRatio(2.0);
    EXPECT_EQ(frame, same);
}

TEST(Canvas, drawsOnlyWhatChanged)
{
    Host host;
    fill(*host.canvas.viewer());
    ASSERT_TRUE(host.settle());
    EXPECT_FALSE(host.canvas.draw());
    const int frames = host.frames, calls = host.calls;
    spinFor(300);
    EXPECT_EQ(host.frames, frames);
    EXPECT_EQ(host.calls, calls) << "drawWanted() while nothing changes";

    host.canvas.viewer()->setDisplayMode(g, KVGamut3DViewer::Wireframe);
    EXPECT_TRUE(spinUntil([&] { return host.frames > frames && host.canvas.viewer()->isSettled(); }));
}

TEST(Canvas, drawsAtOnceIfItMust)
{
    Host host;
    ASSERT_TRUE(host.settle());
    KVGamut3DViewer& viewer = *host.canvas.viewer();
    for (const Qt::GlobalColor color : {Qt::red, Qt::green, Qt::blue}) { // much faster than one in 33 ms
        viewer.setBackground(color);
        EXPECT_TRUE(host.canvas.draw(KVGamutCanvas::Pace::Now));
        EXPECT_EQ(host.canvas.frame().pixelColor(0, 0), QColor(color));
    }
    EXPECT_FALSE(host.canvas.draw(KVGamutCanvas::Pace::Now)) << "nothing changed";
}

TEST(Canvas, showsMovesAndReportsTheirEnd)
{
    Host host;
    ASSERT_TRUE(host.settle());
    QSignalSpy finished(host.canvas.viewer(), &KVGamut3DViewer::moveFinished);
    QSignalSpy settled(host.canvas.view(), &KVGamutView::settled);
    const int frames = host.frames;
    host.canvas.viewer()->setCamera({50, 400, 0}, 300, {50, 0, 0});
    EXPECT_TRUE(spinUntil([&] { return finished.count() == 1 && host.canvas.viewer()->isSettled(); }));
    EXPECT_GE(host.frames, frames + 2) << "frames on the way";
    EXPECT_TRUE(spinUntil([&] { return !settled.isEmpty(); }));
    EXPECT_EQ(host.canvas.viewer()->camera(), QVector3D(50, 400, 0));
}

TEST(Canvas, doesNothingWhileItIsNotShown)
{
    Host host;
    ASSERT_TRUE(host.settle());
    host.canvas.setShown(false);
    spinFor(100);
    const int frames = host.frames, calls = host.calls;
    QSignalSpy finished(host.canvas.viewer(), &KVGamut3DViewer::moveFinished);
    host.canvas.viewer()->setCamera({50, 400, 0}, 50, {50, 0, 0});
    host.canvas.viewer()->setBackground(Qt::red);
    spinFor(300);
    EXPECT_EQ(host.calls, calls);
    EXPECT_FALSE(host.canvas.draw());
    EXPECT_EQ(host.frames, frames);
    EXPECT_TRUE(finished.isEmpty());
    host.canvas.setShown(true);
    EXPECT_TRUE(spinUntil([&] { return finished.count() == 1; }));
    EXPECT_EQ(host.settledFrame().pixelColor(0, 0), QColor(Qt::red));
}

TEST(Canvas, drawsInEachNewSize)
{
    Host host;
    fill(*host.canvas.viewer());
    ASSERT_TRUE(host.settle());
    host.canvas.setSize(QSize(120, 180), 1.5);
    EXPECT_EQ(host.canvas.frame().size(), QSize(200, 150)) << "the last frame, until there is a new one";
    EXPECT_FALSE(host.canvas.viewer()->isSettled());
    EXPECT_EQ(host.settledFrame().size(), QSize(180, 270));

    ShownViewer window(180, 270);
    fill(window.viewer);
    QImage expected = window.settledPicture();
    expected.setDevicePixelRatio(1.5);
    EXPECT_EQ(host.canvas.frame(), expected);

    host.canvas.setSize(QSize(), 1.0);
    host.canvas.viewer()->setBackground(Qt::green);
    spinFor(100);
    EXPECT_FALSE(host.canvas.draw());
    host.canvas.setSize(QSize(200, 150), 1.0);
    EXPECT_TRUE(spinUntil([&] { return host.canvas.frame().size() == QSize(200, 150); }));
    EXPECT_EQ(host.settledFrame().pixelColor(0, 0), QColor(Qt::green));
}

TEST(Canvas, turnsAndMovesTheCameraAsTheWindowDoes)
{
    ShownViewer window;
    Host host;
    KVGamut3DViewer& viewer = *host.canvas.viewer();
    for (KVGamut3DViewer* v : {&window.viewer, &viewer})
        v->setCamera(QVector3D(150, 300, 260), 0, QVector3D(50, 0, 0));
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        QTest::mouseMove(&window.viewer, QPoint(40, 40));
        QTest::mousePress(&window.viewer, button, Qt::NoModifier, QPoint(40, 40));
        QTest::mouseMove(&window.viewer, QPoint(70, 60));
        QTest::mouseRelease(&window.viewer, button, Qt::NoModifier, QPoint(70, 60));
        host.drag({40, 40}, {70, 60}, button);
        EXPECT_TRUE(host.lastUsed);
        EXPECT_NEAR((viewer.camera() - window.viewer.camera()).length(), 0, 1e-3) << button;
        EXPECT_NEAR((viewer.interestPt() - window.viewer.interestPt()).length(), 0, 1e-3) << button;
        EXPECT_GT((viewer.camera() - QVector3D(150, 300, 260)).length(), 1) << button;
    }
}

TEST(Canvas, beginsADragWhereTheButtonWasPressed)
{
    Host host;
    KVGamut3DViewer& viewer = *host.canvas.viewer();
    host.drag({10, 10}, {20, 20});
    const QVector3D camera = viewer.camera();
    host.drag({150, 100}, {150, 100}); // the pointer came here without being seen
    EXPECT_EQ(viewer.camera(), camera);
}

TEST(Canvas, usesOnlyTheKeysOfTheCamera)
{
    Host host;
    ASSERT_TRUE(host.settle());
    KVGamut3DViewer& viewer = *host.canvas.viewer();
    QSignalSpy finished(&viewer, &KVGamut3DViewer::moveFinished);
    const QVector3D camera = viewer.camera();
    for (const int code : {Qt::Key_Tab, Qt::Key_A, Qt::Key_Escape, Qt::Key_Return}) {
        host.key(code);
        EXPECT_FALSE(host.lastUsed) << code;
    }
    spinFor(150);
    EXPECT_TRUE(finished.isEmpty());
    for (const int code : {Qt::Key_Left, Qt::Key_Plus}) {
        finished.clear();
        host.key(code);
        EXPECT_TRUE(host.lastUsed) << code;
        EXPECT_TRUE(spinUntil([&] { return finished.count() == 1; }));
    }
    EXPECT_NE(viewer.camera(), camera);
}

TEST(Canvas, forgetsTheShiftKeyWhenItLosesTheFocus)
{
    const auto turnedBy = [](bool losesFocus) {
        Host host;
        KVGamut3DViewer& viewer = *host.canvas.viewer();
        host.key(Qt::Key_Shift);
        if (losesFocus)
            host.pass(QFocusEvent(QEvent::FocusOut));
        host.drag({40, 40}, {70, 40});
        return viewer.interestPt();
    };
    EXPECT_NE(turnedBy(false), QVector3D(50, 0, 0)) << "with Shift, a drag moves the interest point";
    EXPECT_EQ(turnedBy(true), QVector3D(50, 0, 0));
}

TEST(Canvas, zoomsWithTheWheel)
{
    Host host;
    KVGamut3DViewer& viewer = *host.canvas.viewer();
    const float before = (viewer.camera() - viewer.interestPt()).length();
    host.pass(QWheelEvent({50, 50}, {750, 550}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false));
    EXPECT_TRUE(host.lastUsed);
    EXPECT_NEAR((viewer.camera() - viewer.interestPt()).length(), before - 6, 1e-3);
    host.pass(QEvent(QEvent::Enter));
    EXPECT_FALSE(host.lastUsed);
}

TEST(Canvas, reportsWhatWasClickedAndHovered)
{
    Host host;
    fill(*host.canvas.viewer());
    QSignalSpy clicked(host.canvas.view(), &KVGamutView::clicked);
    QSignalSpy hovered(host.canvas.view(), &KVGamutView::hovered);
    ASSERT_TRUE(host.settle());
    host.mouse(QEvent::MouseMove, {100, 75}, Qt::NoButton, Qt::NoButton);
    ASSERT_TRUE(spinUntil([&] { return !hovered.isEmpty(); }));
    EXPECT_EQ(hovered[0][0].value<KVHit>().id, g);
    EXPECT_EQ(hovered[0][0].value<KVHit>().pixel, QPoint(100, 75));
    host.drag({100, 75}, {100, 75});
    ASSERT_TRUE(spinUntil([&] { return !clicked.isEmpty(); }));
    const auto hit = clicked[0][0].value<KVHit>();
    EXPECT_EQ(hit.kind, KVHit::Kind::Gamut);
    EXPECT_EQ(hit.pixel, QPoint(100, 75));
    EXPECT_FALSE(hit.endsDrag);
}

TEST(Canvas, drawsIntoTheFramebufferOfTheHost)
{
    ShownViewer window;
    fill(window.viewer);
    const QImage expected = window.settledPicture();
    OwnTarget target(QSize(200, 150));
    {
        Host host({200, 150}, 1.0, &target);
        fill(*host.canvas.viewer());
        EXPECT_EQ(host.settledFrame(), expected);
        EXPECT_EQ(target.content(), expected);
    }
    EXPECT_EQ(target.content(), expected); // what was drawn stays
}

TEST(Canvas, leavesTheContextOfTheHostCurrent)
{
    QOpenGLContext context;
    ASSERT_TRUE(context.create());
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    KVGamutCanvas canvas;
    canvas.setSize(QSize(100, 75), 1.0);
    canvas.setShown(true);
    ASSERT_TRUE(canvas.draw());
    EXPECT_EQ(QOpenGLContext::currentContext(), nullptr);
    ASSERT_TRUE(context.makeCurrent(&surface));
    canvas.viewer()->setBackground(Qt::red);
    EXPECT_TRUE(canvas.draw());
    EXPECT_EQ(QOpenGLContext::currentContext(), &context);
    EXPECT_EQ(canvas.frame().pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(QOpenGLContext::currentContext(), &context);
    context.doneCurrent();
}

TEST(Canvas, continuesInANewContextWhenTheDriverWasReset)
{
    Host host;
    auto* widget = host.canvas.viewer()->findChild<KVGLWidget*>();
    QSurfaceFormat format = widget->requestedFormat();
    format.setVersion(2, 1); // Qt passes options on for versions from 2.0 on only
    format.setOption(QSurfaceFormat::ResetNotification);
    widget->setFormat(format);
    fill(*host.canvas.viewer());
    const QImage before = host.settledFrame();
    kvtest::driverFaults().wasReset = true;
    host.canvas.viewer()->setBackground(Qt::red);
    ASSERT_TRUE(spinUntil([&] { return !kvtest::driverFaults().wasReset; }));
    EXPECT_TRUE(spinUntil([&] { return host.settledFrame().pixelColor(0, 0) == QColor(Qt::red); }));
    host.canvas.viewer()->setBackground(Qt::gray);
    EXPECT_EQ(host.settledFrame(), before);
}

TEST(Canvas, withoutOpenGLEverythingButDrawingWorks)
{
    kvtest::driverFaults().createsNoContext = true;
    Host host;
    fill(*host.canvas.viewer());
    EXPECT_TRUE(spinUntil([&] { return host.calls > 0; }));
    EXPECT_FALSE(host.canvas.view()->isDrawable());
    EXPECT_FALSE(host.canvas.draw());
    EXPECT_TRUE(host.canvas.frame().isNull());
    EXPECT_GT(host.canvas.viewer()->volume(g), 1e6f);
    const int calls = host.calls;
    spinFor(200);
    EXPECT_EQ(host.calls, calls) << "there is nothing to try again";

    kvtest::driverFaults().createsNoContext = false;
    host.canvas.setShown(false); // looked for again when it is shown
    host.canvas.setShown(true);
    EXPECT_TRUE(host.settle());
    EXPECT_TRUE(host.canvas.view()->isDrawable());
    EXPECT_FALSE(host.canvas.frame().isNull());
}
