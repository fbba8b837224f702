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

/// Counts the objects of @p context, which must be current, by a query for each of the first 65,536 names.
/// Drivers use the lowest free names, and there are never that many objects at the same time.
GLCensus countGLObjects(QOpenGLContext* context);

/// Memory of the process.
struct MemoryUse
{
    qint64 allocated = 0; ///< bytes allocated and not freed, by all libraries
    qint64 resident = 0;  ///< bytes in main memory

    static MemoryUse now();
};
