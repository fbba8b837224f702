// SPDX-License-Identifier: Apache-2.0
#include <glwindow/ContextScope.h>
#include <glwindow/KVGLWidget.h>
#include <glwindow/WaylandPlatform.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtCore/QTimerEvent>
#include <QtGui/QPaintEvent>
#include <QtGui/QSurfaceFormat>

#include <algorithm>
#include <new>

namespace {

constexpr qint64 frameMs = 33;

} // namespace

KVGLWidget::KVGLWidget(QWindow* parent)
    : QOpenGLWindow(QOpenGLWindow::PartialUpdateBlit, parent), m_root(QStringLiteral("root"), QString())
{
    QSurfaceFormat format = surfaceFormat();
    // Without alpha Qt declares the window opaque. A compositor then treats the window behind as covered, and
    // sends it no frame callbacks. Qt concludes that both windows are not exposed, and drawing stops.
    if (isOnWayland())
        format.setAlphaBufferSize(8);
    setFormat(format);

    m_clock.start();
    m_background = Qt::gray;
    m_lightPos = QVector3D(0, 300, 0);
    m_lightColor = Qt::white;
    connect(&m_visibility, &VisibilityWatch::appeared, this, [this] { m_mustCheck = true; });
    connect(&m_visibility, &VisibilityWatch::mayHaveAppeared, this, &KVGLWidget::update);
}

QSurfaceFormat KVGLWidget::surfaceFormat()
{
    // A core profile of version 1.2 is unusual, but with it the 1.2 function table resolves everywhere. Newer
    // versions do not provide it.
    QSurfaceFormat format;
    format.setDepthBufferSize(24);
    format.setStencilBufferSize(8);
    format.setSamples(8);
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setVersion(1, 2);
    return format;
}

KVGLWidget::~KVGLWidget()
{
    // A child window that was never shown: Qt 6.8 creates its platform window when the destructor removes it
    // from its parent, and does not destroy it. The next event for that window then crashes.
    if (!handle())
        hide();
    // When the base class destroys the context, this object is only a QOpenGLWindow. So GPU objects are
    // released here, and teardownGL() must not be called any more.
    if (QOpenGLContext* own = glContext())
        own->disconnect(this);
    {
        const ContextScope scope(this);
        m_root.releaseGL();
        m_overlayRenderer.release();
    }
    m_animation.reset();
}

void KVGLWidget::setBackground(QColor color)
{
    m_background = color;
    m_frameTimer.invalidate();
    m_lastDrawnCamera = CameraState();
    update(); // not only when the loop next looks for changes
}

void KVGLWidget::redraw()
{
    m_mustDraw = true;
    m_frameTimer.invalidate();
    update();
}

void KVGLWidget::setCoarseWhileMoving(bool coarse)
{
    if (m_coarseWhileMoving == coarse)
        return;
    m_coarseWhileMoving = coarse;
    m_motion = MotionDetail();
    redraw();
}

void KVGLWidget::setOverlaySource(OverlaySource source)
{
    m_overlaySource = std::move(source);
    redraw();
}

Overlay KVGLWidget::overlay(const QSize& size) const
{
    if (!m_overlaySource || size.isEmpty())
        return {};
    CameraState camera = m_camera;
    camera.setAspect(size.width(), size.height());
    return m_overlaySource(camera.projectionMatrix() * camera.viewMatrix(), size);
}

void KVGLWidget::drawOverlay()
{
    if (!m_overlaySource)
        return;
    try {
        m_overlayRenderer.draw(overlay(deviceSize()), deviceSize());
    } catch (const std::bad_alloc&) { // Qt's event loop does not survive it; the frame has no overlay
    }
}

void KVGLWidget::update()
{
    if (!canBeSeen())
        return;
    if (!m_target)
        QPaintDeviceWindow::update();
    else if (m_hooks.frameWanted)
        m_hooks.frameWanted();
}

bool KVGLWidget::canBeSeen()
{
    return m_target ? m_targetShown : m_visibility.canBeSeen();
}

bool KVGLWidget::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::UpdateRequest:
        if (m_target || !mayRun())
            return true;
        if (isIdle()) {
            lookForChanges();
            return true;
        }
        [[fallthrough]];
    case QEvent::Expose:
    case QEvent::Paint:
        return m_target || !isReadyFor(event->type()) || QOpenGLWindow::event(event);
    default:
        return QOpenGLWindow::event(event);
    }
}

bool KVGLWidget::mayRun()
{
    m_lookTimer.stop();
    return canPaint() && canBeSeen();
}

bool KVGLWidget::isIdle() const
{
    return m_frameTimer.isValid() && hasNothingToDraw() && !m_motion.mustRefine(m_clock.elapsed());
}

/// A turn of the loop without painting. To paint would mean that Qt copies and swaps the last picture, which
/// is the whole cost of an idle window.
void KVGLWidget::lookForChanges()
{
    isFrameDue();
    lookAgainLater();
}

/// At the time of the next frame.
void KVGLWidget::lookAgainLater()
{
    m_lookTimer.start(static_cast<int>(std::max<qint64>(1, frameMs - m_frameTimer.elapsed())),
                      Qt::PreciseTimer, this);
}

void KVGLWidget::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_lookTimer.timerId()) {
        QOpenGLWindow::timerEvent(event);
        return;
    }
    if (!mayRun())
        return;
    if (isIdle())
        lookForChanges();
    else
        paintNow();
}

void KVGLWidget::paintNow()
{
    if (m_target) {
        update();
        return;
    }
    // An update request would cost some milliseconds more.
    QPaintEvent paint(QRect(QPoint(), size()));
    QCoreApplication::sendEvent(this, &paint);
}

void KVGLWidget::resizeEvent(QResizeEvent* event)
{
    // Qt would create the context in the first resize, but its framebuffer only in the first paint. Until
    // then it dereferences a null framebuffer if the context is made current or the window is destroyed.
    // Without a context the event is not passed on; the first paint creates both.
    if (context())
        QOpenGLWindow::resizeEvent(event);
    update();
}

void KVGLWidget::resizeGL(int w, int h)
{
    m_frameTimer.invalidate();
    m_camera.setAspect(w, h);
    m_mustDraw = true; // Qt has just created an empty framebuffer
}

void KVGLWidget::advanceCamera()
{
    const QSharedPointer<CameraAnimation> move = m_animation; // a slot of the host may replace m_animation
    if (!move)
        return;
    m_moveGoesOn = true;
    const qint64 elapsed = move->timer.elapsed();
    m_camera.setBetween(move->start, move->target, move->progressAt(elapsed));
    if (elapsed <= move->duration) {
        noteCamera();
        return;
    }
    m_camera = move->target;
    m_camera.resetProjectionOverride();
    m_animation.reset();
    noteCamera();

    // Slots of the host run here, inside the paint event. They may call setters that release the context, or
    // destroy this window.
    const QPointer<KVGLWidget> self(this);
    Q_EMIT moveFinised();
    if (self && glContext())
        makeContextCurrent();
}

/// Whether the frame that is considered now must be drawn.
bool KVGLWidget::isFrameDue()
{
    m_camera.setAspect(geometry().width(), geometry().height());

    // Qt creates an empty framebuffer for a new size before it calls resizeGL(), and for a new device pixel
    // ratio without calling it.
    if (deviceSize() != m_drawnSize) {
        m_mustDraw = true;
        m_frameTimer.invalidate();
    }
    if (m_frameTimer.isValid() && m_frameTimer.elapsed() < frameMs)
        return false;
    m_frameTimer.start();

    if (!m_mustDraw && m_root.isSettled() && m_camera == m_lastDrawnCamera &&
        !m_motion.mustRefine(m_clock.elapsed())) {
        noteSettled();
        return false;
    }
    return true;
}

void KVGLWidget::paintGL()
{
    const QPointer<KVGLWidget> self(this);
    advanceCamera();
    if (!self || !usableContext())
        return;
    if (m_sizeToRestore)
        QMetaObject::invokeMethod(this, &KVGLWidget::restoreSize, Qt::QueuedConnection);
    if (!isFrameDue())
        return;
    drawFrame();
    m_lastDrawnCamera = m_camera;
    m_drawnBackground = m_background;
    m_mustDraw = false;
    m_drawnSize = deviceSize();
    ++m_drawnFrames;
    m_hasPicture = true;
    m_settledNoted = false;
}

void KVGLWidget::drawFrame()
{
    const qint64 startedAt = m_clock.elapsed();
    const MotionDetail::Move move = moveOfFrame();
    const bool coarse = m_root.showCoarse(m_coarseWhileMoving && m_motion.isCoarse(startedAt, move));
    if (coarse)
        m_functions.glDisable(GL_MULTISAMPLE); // saves a quarter of the time of software renderers
    drawScene(m_camera, m_camera.projectionMatrix());
    m_functions.glEnable(GL_MULTISAMPLE);
    drawOverlay();
    if (m_target || requestedFormat().hasAlpha())
        makeOpaque();
    if (m_coarseWhileMoving)
        noteFrame(move, coarse, startedAt);
    m_moveGoesOn = false;
}

MotionDetail::Move KVGLWidget::moveOfFrame() const
{
    if (m_camera == m_lastDrawnCamera)
        return MotionDetail::Move::None;
    return m_moveGoesOn ? MotionDetail::Move::Ongoing : MotionDetail::Move::Set;
}

void KVGLWidget::noteFrame(MotionDetail::Move move, bool coarse, qint64 startedAt)
{
    m_functions.glFinish(); // without it, the time would only be that of queuing the commands
    const bool wanted = wantsCoarse();
    const qint64 now = m_clock.elapsed();
    m_motion.noteFrame(now, move, coarse, now - startedAt);
    if (!wanted && wantsCoarse() && m_hooks.coarseWanted)
        m_hooks.coarseWanted();
}

void KVGLWidget::noteCamera() const
{
    if (m_hooks.cameraMayHaveChanged)
        m_hooks.cameraMayHaveChanged();
}

void KVGLWidget::noteSettled()
{
    if (m_settledNoted || !isSettled())
        return;
    m_settledNoted = true;
    if (m_hooks.settled)
        m_hooks.settled();
}

void KVGLWidget::drawScene(const CameraState& camera, const QMatrix4x4& projection)
{
    QOpenGLFunctions_1_2& gl = m_functions;
    gl.glEnable(GL_DEPTH_TEST);
    gl.glDepthMask(GL_TRUE);
    gl.glClearColor(m_background.redF(), m_background.greenF(), m_background.blueF(), m_background.alphaF());
    gl.glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);

    const QMatrix4x4 view = camera.viewMatrix();
    const QMatrix4x4 model;

    // Opaque pass: writes depth, which hides translucent objects behind opaque ones.
    gl.glDepthMask(GL_TRUE);
    gl.glDisable(GL_BLEND);
    m_root.draw(&gl, view, projection, model, camera, m_lightPos, m_lightColor, KVPassOpaque);

    // Translucent pass: tests depth without writing it.
    gl.glEnable(GL_BLEND);
    gl.glDepthMask(GL_FALSE);
    gl.glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    m_root.draw(&gl, view, projection, model, camera, m_lightPos, m_lightColor, KVPassTranslucent);

    gl.glDepthMask(GL_TRUE);
    gl.glDisable(GL_BLEND);
}

/// Sets the alpha of the picture to 1. It is lower where translucent objects were blended, and a compositor
/// would blend these parts with what is behind the window.
void KVGLWidget::makeOpaque()
{
    m_functions.glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_TRUE);
    m_functions.glClearColor(0, 0, 0, 1);
    m_functions.glClear(GL_COLOR_BUFFER_BIT);
    m_functions.glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}

bool KVGLWidget::isSettled() const
{
    return hasNothingToDraw() && m_background == m_drawnBackground && !m_motion.showsCoarse();
}

bool KVGLWidget::hasNothingToDraw() const
{
    return !m_mustDraw && deviceSize() == m_drawnSize && !m_animation && m_root.isSettled() &&
           m_camera == m_lastDrawnCamera;
}

QSize KVGLWidget::deviceSize() const
{
    if (m_target)
        return size() * pixelRatio(); // rounded, as QOpenGLWidget does for its framebuffer
    // truncated, as QOpenGLWindow does
    return {static_cast<int>(width() * pixelRatio()), static_cast<int>(height() * pixelRatio())};
}

bool KVGLWidget::canPaint() const
{
    // For an empty window (for example while a host collapses a dock) and for one larger than the maximum
    // framebuffer size, Qt would create an incomplete framebuffer. The next resize schedules a paint again.
    const QSize size = deviceSize();
    return !size.isEmpty() && std::max(size.width(), size.height()) <= m_maxFramebufferSide;
}
