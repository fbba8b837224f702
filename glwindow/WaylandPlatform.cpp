// SPDX-License-Identifier: Apache-2.0
#include <glwindow/WaylandPlatform.h>

#include <QtGui/QGuiApplication>

bool isOnWayland()
{
    return QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
}
