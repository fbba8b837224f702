// SPDX-License-Identifier: Apache-2.0
#include <scene/VertexBindings.h>

VertexBindings::~VertexBindings()
{
    destroy();
}

void VertexBindings::create()
{
    destroy();
    m_object = std::make_unique<QOpenGLVertexArrayObject>();
    m_object->create();
    m_context = QOpenGLContext::currentContext();
}

void VertexBindings::destroy()
{
    if (!m_object)
        return;
    QOpenGLContext* const current = QOpenGLContext::currentContext();
    if (!current || current == m_context) {
        m_object.reset();
        return;
    }
    QSurface* const surface = current->surface();
    current->doneCurrent();
    m_object.reset();
    current->makeCurrent(surface);
}

void VertexBindings::bind()
{
    if (m_object)
        m_object->bind();
}

void VertexBindings::release()
{
    if (m_object)
        m_object->release();
}
