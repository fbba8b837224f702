// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QOpenGLContext>

/// Whether windows can draw with OpenGL. Call this before a viewer is shown: Qt crashes if they cannot.
inline bool hasOpenGL()
{
    QOpenGLContext context;
    return context.create();
}
