// SPDX-License-Identifier: Apache-2.0
#include <glwindow/OffscreenTarget.h>

#include <QtGui/QSurfaceFormat>

OffscreenTarget::~OffscreenTarget()
{
    QOpenGLContext* const before = QOpenGLContext::currentContext();
    QSurface* const surface = before ? before->surface() : nullptr;
    if (m_context && m_context->makeCurrent(m_surface.get())) {
        m_framebuffer.reset();
        m_context->doneCurrent();
    }
    if (before && before != m_context.get())
        before->makeCurrent(surface);
}

bool OffscreenTarget::makeCurrent()
{
    if (!m_context || !m_context->makeCurrent(m_surface.get()))
        return false;
    if (m_framebuffer)
        m_framebuffer->bind();
    return true;
}

void OffscreenTarget::doneCurrent()
{
    if (m_context)
        m_context->doneCurrent();
}

GLuint OffscreenTarget::framebuffer() const
{
    return m_framebuffer ? m_framebuffer->handle() : 0;
}

bool OffscreenTarget::createContext(const QSurfaceFormat& format)
{
    if (m_context && m_context->isValid())
        return true;
    m_framebuffer.reset(); // its name was lost with the context
    // A lost context is created again in the same object, to which the objects of the scene refer.
    if (!m_context)
        m_context = std::make_unique<QOpenGLContext>();
    m_context->setFormat(format);
    if (!m_context->create())
        return false;
    m_surface = std::make_unique<QOffscreenSurface>();
    m_surface->setFormat(m_context->format());
    m_surface->create();
    return m_surface->isValid();
}

bool OffscreenTarget::prepare(const QSize& size, const QSurfaceFormat& format)
{
    if (!createContext(format) || !m_context->makeCurrent(m_surface.get()))
        return false;
    if (m_framebuffer && m_framebuffer->size() == size)
        return true;
    QOpenGLFramebufferObjectFormat buffers;
    buffers.setSamples(format.samples());
    buffers.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
    m_framebuffer.reset(); // first, so that there is room for the new one
    m_framebuffer = std::make_unique<QOpenGLFramebufferObject>(size, buffers);
    if (m_framebuffer->isValid())
        return true;
    m_framebuffer.reset();
    return false;
}
