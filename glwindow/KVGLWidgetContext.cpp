// SPDX-License-Identifier: Apache-2.0
#include <glwindow/DrawableCheck.h>
#include <glwindow/KVGLWidget.h>
#include <platform/KVCoreCommon.h>

#include <QtGui/QOpenGLFunctions>
#include <QtGui/QPaintEvent>
#include <QtGui/QResizeEvent>
#include <QtGui/QSurfaceFormat>

namespace {

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
    if (QOpenGLContext::currentContext() != context() || !m_functions.initializeOpenGLFunctions())
        return;
    m_initialized = true;

    // Unique connections, because this function is called again for a new context.
    connect(context(), SIGNAL(aboutToBeDestroyed()), this, SLOT(teardownGL()),
            static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::UniqueConnection));
    connect(this, SIGNAL(frameSwapped()), this, SLOT(update()),
            static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::UniqueConnection));

    logContext();

    m_functions.glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &m_maxFramebufferSide);
    m_functions.glEnable(GL_MULTISAMPLE);
    m_functions.glEnable(GL_LINE_SMOOTH);
    context()->functions()->glBlendEquation(GL_FUNC_ADD);
    m_functions.glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    m_camera.setAspect(geometry().width(), geometry().height());
    m_root.initializeGL(context());
    m_mustDraw = true;
}

void KVGLWidget::logContext()
{
    const auto* version = reinterpret_cast<const char*>(m_functions.glGetString(GL_VERSION));
    KVLogDebug(QStringLiteral("%1 %2 (%3)")
                   .arg(context()->isOpenGLES() ? QStringLiteral("OpenGL ES") : QStringLiteral("OpenGL"),
                        QString::fromLatin1(version), profileName(format().profile())));
}

const std::optional<KVProblem>& KVGLWidget::drawingProblem()
{
    if (!m_drawingChecked)
        checkDrawing();
    return m_drawingProblem;
}

QOpenGLContext* KVGLWidget::usableContext() const
{
    return m_initialized && isValid() ? context() : nullptr;
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

bool KVGLWidget::checkDrawing()
{
    setDrawingProblem(kvDrawingProblem(*this));
    return !m_drawingProblem;
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
    if (context())
        return context()->makeCurrent(this);
    if (type != QEvent::Expose && isExposed() && (m_mustCheck || !m_drawingProblem))
        createContext();
    return false; // createContext() has painted
}

/// Checks first whether the context would be usable. Then the first frame must follow at once: until then Qt
/// has a context without a framebuffer, which it does not expect elsewhere.
void KVGLWidget::createContext()
{
    m_mustCheck = false;
    if (!checkDrawing())
        return;
    QResizeEvent initial(size(), size()); // creates the context without painting
    QOpenGLWindow::resizeEvent(&initial);
    if (!m_initialized)
        setDrawingProblem(KVProblem{KVProblemCode::OpenGLNotUsable, {}, {}});
    if (QOpenGLContext::currentContext() != context())
        return;
    QPaintEvent first(QRect(QPoint(), size()));
    QOpenGLWindow::event(&first);
}

void KVGLWidget::teardownGL()
{
    makeCurrent();
    m_root.releaseGL();
    doneCurrent();
}
