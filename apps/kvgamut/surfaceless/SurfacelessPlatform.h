// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "SurfacelessDisplay.h"

#include <QtGui/qpa/qplatformintegration.h>
#include <QtGui/qpa/qplatformscreen.h>

#include <memory>

/// A platform for Qt without a display server, a screen and input. Windows are never seen. They can be drawn
/// into with desktop OpenGL, so that the viewer can take pictures.
class SurfacelessPlatform : public QPlatformIntegration
{
public:
    SurfacelessPlatform();
    ~SurfacelessPlatform() override;

    void initialize() override;
    void destroy() override;
    bool hasCapability(Capability capability) const override;
    QPlatformWindow* createPlatformWindow(QWindow* window) const override;
    QPlatformBackingStore* createPlatformBackingStore(QWindow* window) const override;
    QPlatformOpenGLContext* createPlatformOpenGLContext(QOpenGLContext* context) const override;
    QPlatformOffscreenSurface* createPlatformOffscreenSurface(QOffscreenSurface* surface) const override;
    QAbstractEventDispatcher* createEventDispatcher() const override;
    QPlatformFontDatabase* fontDatabase() const override { return m_fonts.get(); }
    /// Qt 6.8 asks it how to draw fonts on the screen, without a check whether there is one.
    QPlatformNativeInterface* nativeInterface() const override { return m_native.get(); }

private:
    SurfacelessDisplay m_display;
    std::unique_ptr<QPlatformFontDatabase> m_fonts;
    std::unique_ptr<QPlatformNativeInterface> m_native;
    QPlatformScreen* m_screen = nullptr; ///< owned by Qt
};
