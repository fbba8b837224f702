// SPDX-License-Identifier: Apache-2.0
#include <glwindow/DrawableCheck.h>
#include <glwindow/KVGLWidget.h>
#include <platform/KVCoreCommon.h>
#include <scene/ShaderPrograms.h>

#include <QtCore/QTimer>
#include <QtGui/QOpenGLFunctions>
#include <QtGui/QPaintEvent>
#include <QtGui/QResizeEvent>
#include <QtGui/QSurfaceFormat>

namespace {

constexpr int retryMs = 500;

QString profileName(QSurfaceFormat::OpenGLContextProfile profile)
{
    switch (profile) {
    case QSurfaceFormat::NoProfile:
        return QStringLiteral("NoProfile");
    case QSurfaceFormat::CoreProfile:
        return QStringLiteral("CoreProfile");
    case QSurfaceFormat::CompatibilityProfile:
        return QStringLiteral("CompatibilityProfile");
    }
    return {};
}

} // namespace

void KVGLWidget::initializeGL()
{
    if (QOpenGLContext::currentContext() != glContext() || !m_functions.initializeOpenGLFunctions())
        return;
    m_initialized = true;

    // Unique connections, because this function is called again for a new context.
    connect(glContext(), SIGNAL(aboutToBeDestroyed()), this, SLOT(teardownGL()),
            static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::UniqueConnection));
    connect(this, SIGNAL(frameSwapped()), this, SLOT(update()),
            static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::UniqueConnection));

    logContext();

    m_functions.glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &m_maxFramebufferSide);
    m_functions.glEnable(GL_MULTISAMPLE);
    m_functions.glEnable(GL_LINE_SMOOTH);
    glContext()->functions()->glBlendEquation(GL_FUNC_ADD);
    m_functions.glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    m_camera.setAspect(geometry().width(), geometry().height());
    m_root.initializeGL(glContext());
    if (ShaderPrograms::problemOf(glContext()) && m_hooks.drawingProblemChanged)
        m_hooks.drawingProblemChanged();
    m_mustDraw = true;
}

void KVGLWidget::logContext()
{
    const auto* version = reinterpret_cast<const char*>(m_functions.glGetString(GL_VERSION));
    KVLogDebug(QStringLiteral("%1 %2 (%3)")
                   .arg(glContext()->isOpenGLES() ? QStringLiteral("OpenGL ES") : QStringLiteral("OpenGL"),
                        QString::fromLatin1(version),
                        profileName((m_target ? glContext()->format() : format()).profile())));
}

std::optional<KVProblem> KVGLWidget::drawingProblem()
{
    if (!m_drawingChecked)
        setDrawingProblem(DrawableCheck(*this).problem());
    return m_drawingProblem ? m_drawingProblem : ShaderPrograms::problemOf(usableContext());
}

QOpenGLContext* KVGLWidget::usableContext() const
{
    QOpenGLContext* own = glContext();
    return m_initialized && own && own->isValid() ? own : nullptr;
}

void KVGLWidget::setDrawingProblem(const std::optional<KVProblem>& problem)
{
    m_drawingChecked = true;
    if (problem == m_drawingProblem)
        return;
    m_drawingProblem = problem;
    if (m_hooks.drawingProblemChanged)
        m_hooks.drawingProblemChanged();
}

/// Whether Qt may process an event of @p type that paints. Without a current context it would crash.
bool KVGLWidget::isReadyFor(QEvent::Type type)
{
    if (type == QEvent::Expose) {
        m_mustCheck = m_mustCheck || (isExposed() && !m_exposed);
        m_exposed = isExposed();
    }
    if (!canPaint())
        return false;
    // Qt keeps a lost context as the current one, even beyond its end. So the present context is released
    // first, while that is possible.
    if (m_initialized && QOpenGLContext::currentContext() == context())
        context()->doneCurrent();
    if (m_initialized && context()->makeCurrent(this))
        return true;
    if (m_initialized && context()->isValid())
        retryLater(); // at present the window has no surface
    else if (type != QEvent::Expose && isExposed() && (m_mustCheck || !m_drawingProblem))
        prepareContext();
    return false; // prepareContext() has painted
}

/// Creates the context, or one that replaces a lost one, and paints the first frame in it.
void KVGLWidget::prepareContext()
{
    m_mustCheck = false;
    // Its context is current in case that of the window cannot be. Qt crashes if there is none.
    DrawableCheck check(*this);
    if (check.problem()) {
        setDrawingProblem(check.problem());
        return;
    }
    const bool isFirst = !context();
    bool needsFramebuffer = false;
    if (!isFirst) {
        needsFramebuffer = renewContext();
    } else {
        QResizeEvent initial(size(), size()); // creates the context without painting
        QOpenGLWindow::resizeEvent(&initial);
    }
    if (m_initialized)
        setDrawingProblem({});
    else
        setDrawingProblem(
            KVProblem{isValid() ? KVProblemCode::OpenGLNotUsable : KVProblemCode::NoOpenGL, {}, {}});
    m_mustRenew = QOpenGLContext::currentContext() != context();
    if (m_mustRenew && !(isFirst && check.makeCurrent(*context())))
        return;
    // Qt creates its framebuffer in the first paint, and elsewhere it relies on it, even in its destructor.
    QPaintEvent first(QRect(QPoint(), size()));
    QOpenGLWindow::event(&first);
    if (needsFramebuffer)
        renewFramebuffer();
}

/// Initialises the scene in a new context. Returns whether Qt's framebuffer was lost with the old one.
bool KVGLWidget::renewContext()
{
    // A host that has made a new context itself has caused a teardown. Otherwise the system has invalidated
    // the context: nothing can be done in the old one any more. Qt creates a new one in the same object.
    const bool isLost = m_mustRenew || !context()->isValid();
    if (isLost) {
        m_mustRelease = m_mustRelease || m_initialized;
        m_initialized = false;
        m_hasPicture = false;
        m_root.abandonBindings();
        m_overlayRenderer.abandon();
        // Nobody can release anything in the lost context. Qt's vertex array objects would try and warn.
        QObject::disconnect(context(), SIGNAL(aboutToBeDestroyed()), nullptr, nullptr);
        context()->create();
    }
    if (!context()->makeCurrent(this))
        return false;
    if (m_mustRelease)
        releaseScene();
    const bool hasFramebuffer = context()->functions()->glIsFramebuffer(defaultFramebufferObject());
    initializeGL();
    return isLost || !hasFramebuffer;
}

/// Makes Qt replace its framebuffer, which it does only for a new size: the window gets another size for one
/// frame.
void KVGLWidget::renewFramebuffer()
{
    m_sizeToRestore = size();
    resize(width(), height() == 1 ? 2 : height() - 1);
}

void KVGLWidget::restoreSize()
{
    if (!m_sizeToRestore || size() == *m_sizeToRestore)
        return;
    const QSize wanted = parent() ? parent()->size() : *m_sizeToRestore;
    m_sizeToRestore.reset();
    resize(wanted);
}

/// Paints again soon, but not in a loop that would keep a core busy.
void KVGLWidget::retryLater()
{
    if (std::exchange(m_retryPosted, true))
        return;
    QTimer::singleShot(retryMs, this, [this] {
        m_retryPosted = false;
        update();
    });
}

void KVGLWidget::makeContextCurrent()
{
    if (m_target)
        m_target->makeCurrent();
    else
        makeCurrent();
}

void KVGLWidget::releaseContext()
{
    if (m_target)
        m_target->doneCurrent();
    else
        doneCurrent();
}

void KVGLWidget::teardownGL()
{
    makeContextCurrent();
    releaseScene();
    releaseContext();
}

void KVGLWidget::releaseScene()
{
    if (m_keepsScene)
        m_root.releaseGpuObjects();
    else
        m_root.releaseGL();
    m_overlayRenderer.release();
    m_mustRelease = false;
    m_initialized = false;
    m_hasPicture = false;
    m_mustDraw = true;
}
