// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPointer>
#include <QtGui/QOpenGLContext>
#include <QtOpenGL/QOpenGLVertexArrayObject>

#include <memory>

/// A vertex array object that may outlive its context.
///
/// When a vertex array object is destroyed, Qt 6.8 calls functions of its context, even if that does not
/// exist any more.
class VertexBindings
{
public:
    VertexBindings() = default;
    ~VertexBindings();
    Q_DISABLE_COPY_MOVE(VertexBindings)

    /// Creates the object in the current context, instead of a former one.
    void create();
    /// Destroys the object, or abandons it if its context does not exist any more.
    void destroy();
    /// For an object that ended with its context: nothing of Qt is called.
    void abandon();
    void bind();
    void release();

private:
    std::unique_ptr<QOpenGLVertexArrayObject> m_object;
    QPointer<QOpenGLContext> m_context;
};
