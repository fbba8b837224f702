// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <glwindow/ContextOwner.h>

#include <QtCore/QPointer>
#include <QtGui/QOpenGLContext>

#include <memory>

/// Makes the GL context of its owner current during its lifetime. Every change of the scene outside a paint
/// event needs one.
///
/// Scopes may be nested: if the context is already current (in a paint event or an outer scope), the scope
/// does nothing. Otherwise its destructor releases the context and makes the previous context current again,
/// so that a host may call the viewer from its own painting. Does nothing if there is no context yet.
/// The owner may be destroyed inside the scope.
class [[nodiscard]] ContextScope
{
public:
    explicit ContextScope(ContextOwner* owner)
        : m_owner(owner), m_before(QOpenGLContext::currentContext()),
          m_surfaceBefore(m_before ? m_before->surface() : nullptr)
    {
        QOpenGLContext* own = owner ? owner->glContext() : nullptr;
        m_acquired = own && own != m_before.data();
        if (!m_acquired)
            return;
        m_life = owner->life();
        owner->makeContextCurrent();
    }

    ~ContextScope()
    {
        if (!m_acquired)
            return;
        if (!m_life.expired())
            m_owner->releaseContext();
        if (m_before && !QOpenGLContext::currentContext())
            m_before->makeCurrent(m_surfaceBefore);
    }

    Q_DISABLE_COPY_MOVE(ContextScope)

private:
    ContextOwner* m_owner;
    std::weak_ptr<const void> m_life; ///< of the owner
    QPointer<QOpenGLContext> m_before;
    QSurface* m_surfaceBefore;
    bool m_acquired = false;
};
