// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

class QOpenGLContext;

/// GL objects that live in a context.
struct GLCensus
{
    int buffers = 0;
    int vertexArrays = 0;
    int programs = 0;
    int shaders = 0;
    int textures = 0;
    int framebuffers = 0;
    int renderbuffers = 0;

    bool operator==(const GLCensus&) const = default;
    int total() const
    {
        return buffers + vertexArrays + programs + shaders + textures + framebuffers + renderbuffers;
    }
    QString text() const;
};

/// Counts the objects of @p context, which is current, by asking for each name that a driver hands out:
/// drivers give the lowest free names, so that tens of thousands are more than ever lived at once.
GLCensus countGLObjects(QOpenGLContext* context);

/// What the process holds.
struct MemoryUse
{
    qint64 allocated = 0; ///< bytes allocated and not freed, of all libraries
    qint64 resident = 0;  ///< bytes in main memory

    static MemoryUse now();
};
