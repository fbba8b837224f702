// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPointer>
#include <QtGui/QOpenGLContext>
#include <QtOpenGL/QOpenGLWindow>

/// Makes a window's GL context current for as long as it lives. Every change of the scene from outside
/// a paint event happens inside one.
///
/// Nests: where the context is current already (inside a paint event, or an outer scope), nothing
/// changes and nothing is released at the end. Otherwise the context is released at the end, and a
/// foreign context that was current before becomes current again, so that a host that calls from
/// its own painting finds things as it left them.
/// Without a context yet it does nothing. The window may be destroyed inside the scope.
class ContextScope
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
