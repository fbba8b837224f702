// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QSurfaceFormat>

#include <EGL/egl.h>

/// Desktop OpenGL without a display server: the drivers are asked through EGL, and everything is drawn into
/// memory. Uses a graphics processor if a driver offers one, otherwise the software renderer.
class SurfacelessDisplay
{
public:
    /// Opens the display. isValid() says whether that succeeded.
    SurfacelessDisplay();
    ~SurfacelessDisplay();
    Q_DISABLE_COPY_MOVE(SurfacelessDisplay)

    [[nodiscard]] bool isValid() const { return m_display != EGL_NO_DISPLAY; }
    [[nodiscard]] EGLDisplay handle() const { return m_display; }

    /// The configuration for pixel buffers that is nearest to @p format.
    [[nodiscard]] EGLConfig config(const QSurfaceFormat& format) const;

    /// Whether a context of desktop OpenGL can be created.
    [[nodiscard]] bool hasOpenGL() const;

private:
    EGLDisplay m_display = EGL_NO_DISPLAY;
};
