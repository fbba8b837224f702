// SPDX-License-Identifier: Apache-2.0
#include "Census.h"

#include <QtCore/QFile>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLExtraFunctions>

#include <malloc.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
extern "C" size_t __sanitizer_get_current_allocated_bytes(); // its header is not installed with all compilers
#endif

QString GLCensus::text() const
{
    return QStringLiteral("%1 buffers, %2 vertex arrays, %3 programs, %4 shaders, %5 textures, "
                          "%6 framebuffers, %7 renderbuffers")
        .arg(buffers)
        .arg(vertexArrays)
        .arg(programs)
        .arg(shaders)
        .arg(textures)
        .arg(framebuffers)
        .arg(renderbuffers);
}

GLCensus countGLObjects(QOpenGLContext* context)
{
    constexpr GLuint names = 1u << 16;
    QOpenGLExtraFunctions* gl = context->extraFunctions();
    GLCensus census;
    for (GLuint name = 1; name < names; ++name) {
        census.buffers += gl->glIsBuffer(name) != 0;
        census.vertexArrays += gl->glIsVertexArray(name) != 0;
        census.programs += gl->glIsProgram(name) != 0;
        census.shaders += gl->glIsShader(name) != 0;
        census.textures += gl->glIsTexture(name) != 0;
        census.framebuffers += gl->glIsFramebuffer(name) != 0;
        census.renderbuffers += gl->glIsRenderbuffer(name) != 0;
    }
    return census;
}

namespace {

qint64 allocatedBytes()
{
#if defined(__SANITIZE_ADDRESS__)
    return static_cast<qint64>(__sanitizer_get_current_allocated_bytes());
#else
    const auto info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
#endif
}

qint64 residentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> pages = file.readAll().split(' ');
    return pages.value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

} // namespace

MemoryUse MemoryUse::now()
{
    return {allocatedBytes(), residentBytes()};
}
