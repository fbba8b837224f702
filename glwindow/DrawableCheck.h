// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVProblem.h>

#include <QtCore/QPointer>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/QWindow>

#include <optional>

/// Finds out whether the scene can be drawn in a window, before Qt makes the window's own context.
///
/// Makes a context of the format that the window requests, without its samples, and makes it current with a
/// surface of its own. The scene needs desktop OpenGL 2.1 with the functions of version 1.2 and with
/// framebuffer objects that can be copied.
///
/// The context stays current as long as this object exists: Qt crashes without a current context, and there
/// is none if Qt cannot make the window's context current. Afterwards the context that was current before is
/// current again, unless one was made current with another surface meanwhile.
///
/// Samples are left out because they belong to the window. A driver may need ten times as long to make a
/// context with samples, and the software renderer of Mesa does not release all of its memory.
///
/// GUI thread only.
class DrawableCheck
{
public:
    explicit DrawableCheck(const QWindow& window);
    ~DrawableCheck();
    Q_DISABLE_COPY_MOVE(DrawableCheck)

    /// Why the scene cannot be drawn; nullopt if it can.
    [[nodiscard]] const std::optional<KVProblem>& problem() const { return m_problem; }

    /// Makes another context current with the surface of the check. Returns whether that was possible.
    bool makeCurrent(QOpenGLContext& context) { return context.makeCurrent(&m_surface); }

private:
    [[nodiscard]] std::optional<KVProblem> find();

    QPointer<QOpenGLContext> m_formerContext;
    QSurface* m_formerSurface;
    QOffscreenSurface m_surface;
    QOpenGLContext m_context; // destroyed before its surface
    std::optional<KVProblem> m_problem;
};
