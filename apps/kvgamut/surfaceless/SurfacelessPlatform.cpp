// SPDX-License-Identifier: Apache-2.0
#include "SurfacelessPlatform.h"

#include <QtGui/QImage>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/private/qeglpbuffer_p.h>
#include <QtGui/private/qeglplatformcontext_p.h>
#include <QtGui/private/qgenericunixeventdispatcher_p.h>
#include <QtGui/private/qgenericunixfontdatabase_p.h>
#include <QtGui/qpa/qplatformbackingstore.h>
#include <QtGui/qpa/qplatformnativeinterface.h>
#include <QtGui/qpa/qplatformscreen.h>
#include <QtGui/qpa/qplatformwindow.h>
#include <QtGui/qpa/qwindowsysteminterface.h>

namespace {

class Screen : public QPlatformScreen
{
public:
    QRect geometry() const override { return {0, 0, 1280, 1024}; }
    int depth() const override { return 32; }
    QImage::Format format() const override { return QImage::Format_RGB32; }
};

/// A window that exists in memory only.
class Window : public QPlatformWindow
{
public:
    Window(QWindow* window, const SurfacelessDisplay& display) : QPlatformWindow(window), m_display(display)
    {
        if (geometry().isEmpty())
            QPlatformWindow::setGeometry(initialGeometry(window, geometry(), 1, 1));
    }
    ~Window() override { releaseSurface(); }

    void setVisible(bool visible) override
    {
        m_visible = visible;
        expose();
    }

    void setGeometry(const QRect& rect) override
    {
        QPlatformWindow::setGeometry(rect);
        QWindowSystemInterface::handleGeometryChange(window(), rect);
        if (m_visible)
            expose();
    }

    bool isExposed() const override { return m_visible; }

    // Nothing to do. The base class would warn that it does nothing.
    void setParent(const QPlatformWindow*) override {}
    void raise() override {}
    void lower() override {}
    void propagateSizeHints() override {}

    /// What the context of @p config draws into. Recreated when the size of the window has changed.
    EGLSurface surface(EGLConfig config)
    {
        const QSize size = geometry().size();
        if (m_surface == EGL_NO_SURFACE || size != m_size || config != m_config) {
            releaseSurface();
            const EGLint attributes[] = {EGL_WIDTH, size.width(), EGL_HEIGHT, size.height(), EGL_NONE};
            m_surface = eglCreatePbufferSurface(m_display.handle(), config, attributes);
            m_size = size;
            m_config = config;
        }
        return m_surface;
    }

private:
    void expose()
    {
        const QRegion region = m_visible ? QRegion(QRect(QPoint(), geometry().size())) : QRegion();
        QWindowSystemInterface::handleExposeEvent(window(), region);
    }

    void releaseSurface()
    {
        if (m_surface != EGL_NO_SURFACE)
            eglDestroySurface(m_display.handle(), std::exchange(m_surface, EGL_NO_SURFACE));
    }

    const SurfacelessDisplay& m_display;
    EGLSurface m_surface = EGL_NO_SURFACE;
    EGLConfig m_config = nullptr;
    QSize m_size;
    bool m_visible = false;
};

class Context : public QEGLPlatformContext
{
public:
    using QEGLPlatformContext::QEGLPlatformContext;

protected:
    EGLSurface eglSurfaceForPlatformSurface(QPlatformSurface* surface) override
    {
        if (surface->surface()->surfaceClass() == QSurface::Offscreen)
            return static_cast<QEGLPbuffer*>(surface)->pbuffer();
        return static_cast<Window*>(surface)->surface(eglConfig());
    }
};

class BackingStore : public QPlatformBackingStore
{
public:
    using QPlatformBackingStore::QPlatformBackingStore;

    QPaintDevice* paintDevice() override { return &m_image; }
    void flush(QWindow*, const QRegion&, const QPoint&) override {}
    void resize(const QSize& size, const QRegion&) override
    {
        m_image = QImage(size, QImage::Format_ARGB32_Premultiplied);
    }

private:
    QImage m_image;
};

} // namespace

SurfacelessPlatform::SurfacelessPlatform()
    : m_fonts(std::make_unique<QGenericUnixFontDatabase>()),
      m_native(std::make_unique<QPlatformNativeInterface>())
{
}

SurfacelessPlatform::~SurfacelessPlatform() = default;

void SurfacelessPlatform::initialize()
{
    m_screen = new ::Screen;
    QWindowSystemInterface::handleScreenAdded(m_screen);
}

void SurfacelessPlatform::destroy()
{
    QWindowSystemInterface::handleScreenRemoved(std::exchange(m_screen, nullptr));
}

bool SurfacelessPlatform::hasCapability(Capability capability) const
{
    switch (capability) {
    case OpenGL:
    case ThreadedOpenGL:
    case ThreadedPixmaps:
    case MultipleWindows:
    case NonFullScreenWindows:
        return true;
    default:
        return QPlatformIntegration::hasCapability(capability);
    }
}

QPlatformWindow* SurfacelessPlatform::createPlatformWindow(QWindow* window) const
{
    return new Window(window, m_display);
}

QPlatformBackingStore* SurfacelessPlatform::createPlatformBackingStore(QWindow* window) const
{
    return new BackingStore(window);
}

QPlatformOpenGLContext* SurfacelessPlatform::createPlatformOpenGLContext(QOpenGLContext* context) const
{
    if (!m_display.isValid())
        return nullptr;
    EGLConfig config = m_display.config(context->format());
    return new Context(context->format(), context->shareHandle(), m_display.handle(), &config);
}

QPlatformOffscreenSurface*
SurfacelessPlatform::createPlatformOffscreenSurface(QOffscreenSurface* surface) const
{
    return new QEGLPbuffer(m_display.handle(), surface->requestedFormat(), surface);
}

QAbstractEventDispatcher* SurfacelessPlatform::createEventDispatcher() const
{
    return createUnixEventDispatcher();
}
