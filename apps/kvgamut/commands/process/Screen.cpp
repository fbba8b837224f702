// SPDX-License-Identifier: Apache-2.0
#include "Screen.h"

#include "XServer.h"

#include <QtGui/QOpenGLContext>

bool Screen::isPresent()
{
    return XServer::isReachable() || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

void Screen::choosePlatform()
{
    // The viewer needs desktop OpenGL, which Qt provides on X through xcb. Most Wayland desktops also run
    // an X server. Platforms without windows ("offscreen") have no OpenGL.
    if (XServer::isReachable())
        qputenv("QT_QPA_PLATFORM", "xcb");
}

bool Screen::hasOpenGL()
{
    QOpenGLContext context;
    return context.create();
}
