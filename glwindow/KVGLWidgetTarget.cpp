// SPDX-License-Identifier: Apache-2.0
#include <glwindow/DrawableCheck.h>
#include <glwindow/KVGLWidget.h>

#include <QtCore/QPointer>
#include <QtGui/QOpenGLFunctions>

#include <utility>

void KVGLWidget::setTarget(FrameTarget* target)
{
    m_target = target;
}

void KVGLWidget::setTargetSize(const QSize& size, qreal pixelRatio)
{
    if (size == m_targetSize && pixelRatio == m_targetPixelRatio)
        return;
    resize(size);
    m_targetSize = size;
    m_targetPixelRatio = pixelRatio;
    m_camera.setAspect(size.width(), size.height());
    redraw();
}

void KVGLWidget::setTargetShown(bool shown)
{
    if (m_targetShown == shown)
        return;
    m_targetShown = shown;
    m_mustCheck = shown;
    if (shown)
        update();
    else
        m_lookTimer.stop();
}

bool KVGLWidget::drawInTarget(Pace pace)
{
    if (!m_target || !mayRun())
        return false;
    if (pace == Pace::Now)
        m_frameTimer.invalidate();
    if (isIdle()) {
        lookForChanges();
        return false;
    }
    const QPointer<QOpenGLContext> before(QOpenGLContext::currentContext());
    QSurface* const surface = before ? before->surface() : nullptr;
    const int frames = m_drawnFrames;
    const QPointer<KVGLWidget> self(this);
    const bool painted = prepareTarget();
    if (painted) {
        paintGL(); // a slot of the host may destroy this object
        if (self) {
            m_functions.glFlush();
            lookAgainLater();
        }
    }
    if (before && before != QOpenGLContext::currentContext())
        before->makeCurrent(surface);
    else if (!before && self)
        releaseContext();
    return painted && self && m_drawnFrames != frames;
}

/// Makes the context of the target current and prepares it. False if nothing can be drawn now.
bool KVGLWidget::prepareTarget()
{
    if (m_initialized && !usableContext())
        loseTargetContext();
    if (!m_initialized && !m_mustCheck && m_drawingProblem)
        return false;
    if (!m_initialized && !prepareTargetContext())
        return false;
    if (!m_target->prepare(deviceSize(), requestedFormat()) || !m_target->makeCurrent()) {
        retryLater();
        return false;
    }
    if (m_mustRelease)
        releaseScene();
    if (!m_initialized)
        initializeGL();
    setDrawingProblem(m_initialized ? std::nullopt
                                    : std::optional(KVProblem{KVProblemCode::OpenGLNotUsable, {}, {}}));
    if (!m_initialized)
        return false;
    // The host has made a new framebuffer, which is empty.
    if (std::exchange(m_drawnFramebuffer, m_target->framebuffer()) != m_target->framebuffer()) {
        m_mustDraw = true;
        m_frameTimer.invalidate();
    }
    m_functions.glViewport(0, 0, deviceSize().width(), deviceSize().height());
    return true;
}

/// Whether there is OpenGL, found out without the target, whose owner may report what it lacks.
bool KVGLWidget::prepareTargetContext()
{
    m_mustCheck = false;
    const std::optional<KVProblem> problem = DrawableCheck(*this).problem();
    if (problem)
        setDrawingProblem(problem);
    return !problem;
}

/// The system has invalidated the context: nothing can be done in it any more. See renewContext().
void KVGLWidget::loseTargetContext()
{
    if (QOpenGLContext* lost = glContext())
        QObject::disconnect(lost, SIGNAL(aboutToBeDestroyed()), nullptr, nullptr);
    m_mustRelease = true;
    m_initialized = false;
    m_hasPicture = false;
    m_mustDraw = true;
    m_root.abandonBindings();
    m_overlayRenderer.abandon();
}
