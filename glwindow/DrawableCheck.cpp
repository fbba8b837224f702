// SPDX-License-Identifier: Apache-2.0
#include <glwindow/DrawableCheck.h>

#include <QtCore/QVersionNumber>
#include <QtGui/QOpenGLFunctions>
#include <QtGui/QScreen>
#include <QtOpenGL/QOpenGLFramebufferObject>
#include <QtOpenGL/QOpenGLFunctions_1_2>
#include <QtOpenGL/QOpenGLShaderProgram>

namespace {

const QVersionNumber minVersion(2, 1);
const QVersionNumber minShaderVersion(1, 20); // "#version 120"

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

DrawableCheck::DrawableCheck(const QWindow& window)
    : m_formerContext(QOpenGLContext::currentContext()),
      m_formerSurface(m_formerContext ? m_formerContext->surface() : nullptr), m_surface(window.screen())
{
    QSurfaceFormat format = window.requestedFormat();
    format.setSamples(0);
    m_context.setFormat(format);
    m_context.setScreen(window.screen());
    m_problem = find();
}

DrawableCheck::~DrawableCheck()
{
    QOpenGLContext* current = QOpenGLContext::currentContext();
    if (!current || current->surface() != &m_surface)
        return;
    current->doneCurrent();
    if (m_formerContext)
        m_formerContext->makeCurrent(m_formerSurface);
}

std::optional<KVProblem> DrawableCheck::find()
{
    if (!m_context.create())
        return KVProblem{KVProblemCode::NoOpenGL, {}, {}};
    m_surface.setFormat(m_context.format());
    m_surface.create();
    if (!m_context.makeCurrent(&m_surface))
        return KVProblem{KVProblemCode::OpenGLNotUsable, {}, {}};
    return problemOf(m_context);
}
