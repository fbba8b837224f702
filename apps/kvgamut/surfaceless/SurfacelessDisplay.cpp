// SPDX-License-Identifier: Apache-2.0
#include "SurfacelessDisplay.h"

#include "Surfaceless.h"

#include <QtGui/private/qeglconvenience_p.h>

#include <EGL/eglext.h>

#include <array>
#include <cstring>

namespace {

bool hasClientExtension(const char* name)
{
    const char* all = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    return all &&
           QByteArray::fromRawData(all, static_cast<qsizetype>(std::strlen(all))).split(' ').contains(name);
}

EGLDisplay initialised(EGLenum platform, void* native)
{
    const EGLDisplay display = eglGetPlatformDisplay(platform, native, nullptr);
    return display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) ? display : EGL_NO_DISPLAY;
}

/// For drivers without surfaceless displays: the first device that works.
EGLDisplay displayOfADevice()
{
    const auto queryDevices =
        reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
    std::array<EGLDeviceEXT, 16> devices{};
    EGLint count = 0;
    if (!queryDevices || !queryDevices(static_cast<EGLint>(devices.size()), devices.data(), &count))
        return EGL_NO_DISPLAY;
    for (EGLint i = 0; i < count; ++i)
        if (const EGLDisplay display = initialised(EGL_PLATFORM_DEVICE_EXT, devices[static_cast<size_t>(i)]))
            return display;
    return EGL_NO_DISPLAY;
}

} // namespace

SurfacelessDisplay::SurfacelessDisplay()
{
    if (hasClientExtension("EGL_MESA_platform_surfaceless"))
        m_display = initialised(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY);
    if (m_display == EGL_NO_DISPLAY && hasClientExtension("EGL_EXT_platform_device"))
        m_display = displayOfADevice();
}

SurfacelessDisplay::~SurfacelessDisplay()
{
    if (isValid())
        eglTerminate(m_display);
}

EGLConfig SurfacelessDisplay::config(const QSurfaceFormat& format) const
{
    return q_configFromGLFormat(m_display, format, false, EGL_PBUFFER_BIT);
}

bool SurfacelessDisplay::hasOpenGL() const
{
    if (!isValid() || !eglBindAPI(EGL_OPENGL_API))
        return false;
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    const EGLConfig chosen = config(format);
    const EGLContext context =
        chosen ? eglCreateContext(m_display, chosen, EGL_NO_CONTEXT, nullptr) : EGL_NO_CONTEXT;
    if (context == EGL_NO_CONTEXT)
        return false;
    eglDestroyContext(m_display, context);
    return true;
}

bool Surfaceless::isAvailable()
{
    return SurfacelessDisplay().hasOpenGL();
}
