// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSize>
#include <QtGui/qopengl.h>

class QOpenGLContext;
class QSurfaceFormat;

/// Where a viewer draws that has no window on the screen: an OpenGL context with a framebuffer.
class FrameTarget
{
public:
    FrameTarget() = default;
    virtual ~FrameTarget() = default;
    Q_DISABLE_COPY_MOVE(FrameTarget)

    /// Null if there is no context now. It may be another one in each frame; before a context is destroyed,
    /// it emits QOpenGLContext::aboutToBeDestroyed().
    [[nodiscard]] virtual QOpenGLContext* context() const = 0;
    /// Makes the context current and binds the framebuffer. False if that is not possible now.
    virtual bool makeCurrent() = 0;
    virtual void doneCurrent() = 0;
    [[nodiscard]] virtual GLuint framebuffer() const = 0;
    /// Before each frame, while nothing needs to be current: provides a context of @p format and a
    /// framebuffer of @p size pixels. False if that is not possible.
    virtual bool prepare(const QSize& size, const QSurfaceFormat& format) = 0;
};
