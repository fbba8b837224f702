// SPDX-License-Identifier: Apache-2.0
#include <scene/VertexBindings.h>

#include <utility>
#include <vector>

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
    if (!m_context)
        abandon();
    m_object.reset();
}

void VertexBindings::abandon()
{
    // Never destroyed, so that no leak is reported. There are a few for each context that the driver lost.
    static auto& abandoned = *new std::vector<std::unique_ptr<QOpenGLVertexArrayObject>>;
    if (m_object)
        abandoned.push_back(std::move(m_object));
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
