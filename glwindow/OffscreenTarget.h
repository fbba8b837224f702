// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <glwindow/FrameTarget.h>

#include <QtCore/QPointer>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtOpenGL/QOpenGLFramebufferObject>

#include <memory>

/// A context and a multisampled framebuffer of its own.
class OffscreenTarget : public FrameTarget
{
public:
    OffscreenTarget() = default;
    ~OffscreenTarget() override;

    QOpenGLContext* context() const override { return m_context.get(); }
    bool makeCurrent() override;
    void doneCurrent() override;
    GLuint framebuffer() const override;
    /// Creates the context in the first call, and again after it was lost.
    bool prepare(const QSize& size, const QSurfaceFormat& format) override;

private:
    bool createContext(const QSurfaceFormat& format);

    std::unique_ptr<QOffscreenSurface> m_surface;
    std::unique_ptr<QOpenGLContext> m_context;
    std::unique_ptr<QOpenGLFramebufferObject> m_framebuffer;
};
