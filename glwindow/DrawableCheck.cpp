// SPDX-License-Identifier: Apache-2.0
#include <glwindow/DrawableCheck.h>

#include <QtCore/QPointer>
#include <QtCore/QVersionNumber>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtGui/QScreen>
#include <QtOpenGL/QOpenGLFramebufferObject>
#include <QtOpenGL/QOpenGLFunctions_1_2>
#include <QtOpenGL/QOpenGLShaderProgram>

namespace {

const QVersionNumber minVersion(2, 1);
const QVersionNumber minShaderVersion(1, 20); // "#version 120"

/// Makes the context that is current now current again in its destructor.
class CurrentKeeper
{
public:
    CurrentKeeper() : m_context(QOpenGLContext::currentContext())
    {
        m_surface = m_context ? m_context->surface() : nullptr;
    }
    ~CurrentKeeper()
    {
        if (m_context)
            m_context->makeCurrent(m_surface);
    }
    Q_DISABLE_COPY_MOVE(CurrentKeeper)

private:
    QPointer<QOpenGLContext> m_context;
    QSurface* m_surface;
};

KVProblem problem(KVProblemCode code, const QVersionNumber& version)
{
    return {code, {QStringLiteral("%1.%2").arg(version.majorVersion()).arg(version.minorVersion())}, {}};
}

QString textOf(QOpenGLContext& context, GLenum name)
{
    return QString::fromLatin1(reinterpret_cast<const char*>(context.functions()->glGetString(name)));
}

/// Not the version of the format, which the platform "offscreen" copies from the request.
QVersionNumber versionOf(QOpenGLContext& context)
{
    return QVersionNumber::fromString(textOf(context, GL_VERSION).remove(QStringLiteral("OpenGL ES ")));
}

/// What the context, which must be current, lacks.
std::optional<KVProblem> problemOf(QOpenGLContext& context)
{
    const QVersionNumber version = versionOf(context);
    if (context.isOpenGLES())
        return problem(KVProblemCode::OnlyOpenGLES, version);
    if (version < minVersion)
        return problem(KVProblemCode::OpenGLTooOld, version);
    QOpenGLFunctions_1_2 functions;
    if (!functions.initializeOpenGLFunctions())
        return problem(KVProblemCode::OpenGLCoreOnly, version);
    if (!QOpenGLShaderProgram::hasOpenGLShaderPrograms(&context) ||
        QVersionNumber::fromString(textOf(context, GL_SHADING_LANGUAGE_VERSION)) < minShaderVersion)
        return problem(KVProblemCode::OpenGLWithoutShaders, version);
    if (!QOpenGLFramebufferObject::hasOpenGLFramebufferObjects() ||
        !QOpenGLFramebufferObject::hasOpenGLFramebufferBlit())
        return problem(KVProblemCode::OpenGLWithoutFramebuffers, version);
    return {};
}

} // namespace

std::optional<KVProblem> kvDrawingProblem(QWindow& window)
{
    const CurrentKeeper keeper;
    QOffscreenSurface offscreen(window.screen());
    QOpenGLContext context;
    context.setFormat(window.requestedFormat());
    context.setScreen(window.screen());
    if (!context.create())
        return KVProblem{KVProblemCode::NoOpenGL, {}, {}};
    if (!window.handle()) {
        offscreen.setFormat(context.format());
        offscreen.create();
    }
    if (!context.makeCurrent(window.handle() ? static_cast<QSurface*>(&window) : &offscreen))
        return KVProblem{KVProblemCode::OpenGLNotUsable, {}, {}};
    const auto found = problemOf(context);
    context.doneCurrent();
    return found;
}
