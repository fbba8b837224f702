// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPointer>
#include <QtGui/QOpenGLContext>
#include <QtOpenGL/QOpenGLWindow>

/// Makes the GL context of a window current during its lifetime. Every change of the scene outside a paint
/// event needs one.
///
/// Scopes may be nested: if the context is already current (in a paint event or an outer scope), the scope
/// does nothing. Otherwise its destructor releases the context and makes the previous context current again,
/// so that a host may call the viewer from its own painting. Does nothing if the window has no context yet.
/// The window may be destroyed inside the scope.
class [[nodiscard]] ContextScope
{
public:
    explicit ContextScope(QOpenGLWindow* window)
        : m_window(window), m_before(QOpenGLContext::currentContext()),
          m_surfaceBefore(m_before ? m_before->surface() : nullptr)
    {
        QOpenGLContext* own = window ? window->context() : nullptr;
        m_acquired = own && own != m_before.data();
        if (m_acquired)
            window->makeCurrent();
    }

    ~ContextScope()
    {
        if (!m_acquired)
            return;
        if (m_window)
            m_window->doneCurrent();
        if (m_before && !QOpenGLContext::currentContext())
            m_before->makeCurrent(m_surfaceBefore);
    }

    Q_DISABLE_COPY_MOVE(ContextScope)

private:
    QPointer<QOpenGLWindow> m_window;
    QPointer<QOpenGLContext> m_before;
    QSurface* m_surfaceBefore;
    bool m_acquired = false;
};
