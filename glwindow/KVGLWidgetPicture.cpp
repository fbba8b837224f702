// SPDX-License-Identifier: Apache-2.0
#include <annotation/OverlayPainter.h>
#include <glwindow/ContextScope.h>
#include <glwindow/KVGLWidget.h>
#include <glwindow/PictureTiles.h>

#include <QtGui/QOpenGLExtraFunctions>
#include <QtOpenGL/QOpenGLFramebufferObject>

#include <algorithm>
#include <cstring>
#include <new>

namespace {

// With multisampling and depth about 256 MB; supported by every OpenGL.
constexpr int maxTileSide = 2048;

/// Restores the present framebuffer and viewport in its destructor.
class TargetKeeper
{
public:
    explicit TargetKeeper(QOpenGLFunctions* gl) : m_gl(gl)
    {
        m_gl->glGetIntegerv(GL_FRAMEBUFFER_BINDING, &m_framebuffer);
        m_gl->glGetIntegerv(GL_VIEWPORT, m_viewport);
    }
    ~TargetKeeper()
    {
        m_gl->glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(m_framebuffer));
        m_gl->glViewport(m_viewport[0], m_viewport[1], m_viewport[2], m_viewport[3]);
    }
    Q_DISABLE_COPY_MOVE(TargetKeeper)

private:
    QOpenGLFunctions* m_gl;
    GLint m_framebuffer = 0;
    GLint m_viewport[4] = {};
};

/// A row of @p read in the format RGB32, with alpha 1.
void copyRow(const QImage& read, int y, QRgb* to)
{
    const uchar* bytes = read.constScanLine(y);
    if (read.format() == QImage::Format_RGBA8888_Premultiplied) {
        for (int x = 0; x < read.width(); ++x, bytes += 4)
            to[x] = qRgb(bytes[0], bytes[1], bytes[2]);
    } else {
        const auto* from = reinterpret_cast<const QRgb*>(bytes);
        std::transform(from, from + read.width(), to, [](QRgb pixel) { return pixel | 0xff000000u; });
    }
}

/// The picture in a framebuffer that was @p read. Where translucent objects were blended, alpha is below 1.
/// The window shows the colours without regard to alpha, so the picture takes them unchanged and is opaque.
/// Null if there is not enough memory.
QImage opaque(const QImage& read)
{
    // Not QImage::convertToFormat(): it waits for ever for a thread that cannot be started.
    QImage picture(read.size(), QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y)
        copyRow(read, y, reinterpret_cast<QRgb*>(picture.scanLine(y)));
    return picture;
}

/// Copies @p drawn, the picture of a tile without its margin, to its position in @p whole.
void place(const PictureTile& tile, const QImage& drawn, QImage& whole)
{
    const QPoint from = tile.part.topLeft() - tile.drawn.topLeft();
    const auto bytes = static_cast<size_t>(tile.part.width()) * sizeof(QRgb);
    for (int y = 0; y < tile.part.height(); ++y)
        std::memcpy(whole.scanLine(tile.part.y() + y) + static_cast<size_t>(tile.part.x()) * sizeof(QRgb),
                    drawn.constScanLine(from.y() + y) + static_cast<size_t>(from.x()) * sizeof(QRgb), bytes);
}

} // namespace

/// The contents of a multisampled framebuffer; null if there is not enough memory.
QImage KVGLWidget::resolved(GLuint framebuffer, const QSize& size)
{
    // A multisampled framebuffer cannot be read directly: resolve it into a plain one and read that.
    QOpenGLFramebufferObject plain(size, QOpenGLFramebufferObject::NoAttachment);
    if (!plain.isValid())
        return {};
    QOpenGLExtraFunctions* gl = glContext()->extraFunctions();
    const TargetKeeper keeper(gl);
    gl->glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer);
    gl->glBindFramebuffer(GL_DRAW_FRAMEBUFFER, plain.handle());
    gl->glBlitFramebuffer(0, 0, size.width(), size.height(), 0, 0, size.width(), size.height(),
                          GL_COLOR_BUFFER_BIT, GL_NEAREST);
    gl->glBindFramebuffer(GL_FRAMEBUFFER, plain.handle());
    return opaque(plain.toImage());
}

void KVGLWidget::releaseFrames()
{
    if (!m_hasPicture || !usableContext() || QOpenGLContext::currentContext() != glContext())
        return;
    // llvmpipe frees the triangles of a frame when it uses their memory for the next one. It has several such
    // memories, and uses another one only while the first is busy: so these frames must not be too small.
    constexpr int side = 1024;
    constexpr int frames = 4;
    const TargetKeeper keeper(glContext()->functions());
    QOpenGLFramebufferObjectFormat format;
    format.setSamples(requestedFormat().samples());
    QOpenGLFramebufferObject target(QSize(side, side), format);
    if (!target.isValid())
        return;
    for (int i = 0; i < frames; ++i) {
        m_functions.glClear(GL_COLOR_BUFFER_BIT);
        m_functions.glFlush();
    }
    m_functions.glFinish();
}

QImage KVGLWidget::picture()
{
    if (!m_hasPicture || !usableContext())
        return {};
    QImage image;
    // A target has an empty framebuffer from a change of its size to the next frame.
    if (m_motion.showsCoarse() || (m_target && deviceSize() != m_drawnSize)) {
        image = picture(m_drawnSize);
    } else {
        const ContextScope scope(this);
        image = resolved(framebuffer(), m_drawnSize);
    }
    if (image.isNull())
        return {};
    image.setDevicePixelRatio(pixelRatio());
    return image;
}

QImage KVGLWidget::picture(const QSize& size)
{
    if (size.isEmpty() || !m_hasPicture || !usableContext())
        return {};
    QImage whole(size, QImage::Format_RGB32);
    if (whole.isNull())
        return {};
    // after the allocation: a size for which there is not enough memory could have billions of tiles
    const QList<PictureTile> tiles = pictureTiles(size, std::min(maxTileSide, m_maxFramebufferSide));

    const ContextScope scope(this);
    QOpenGLFramebufferObjectFormat format; // like that of the window
    format.setSamples(requestedFormat().samples());
    format.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
    const QSize tileSize = tiles.first().drawn.size();
    QOpenGLFramebufferObject target(tileSize, format);
    if (!target.isValid())
        return {};
    const TargetKeeper keeper(glContext()->functions());

    CameraState camera = m_camera;
    camera.setAspect(size.width(), size.height());
    m_mustDraw = m_mustDraw ||
                 !m_root.isSettled(); // drawScene() marks changes as drawn, but the window has not shown them
    m_root.showCoarse(false);
    for (const PictureTile& tile : tiles) {
        target.bind();
        m_functions.glViewport(0, 0, tileSize.width(), tileSize.height());
        drawScene(camera, tile.fromWhole(size) * camera.projectionMatrix());
        const QImage drawn = resolved(target.handle(), tileSize);
        if (drawn.isNull())
            return {};
        place(tile, drawn, whole);
    }
    try {
        kvPaintOverlay(whole, overlay(size));
    } catch (const std::bad_alloc&) {
        return {};
    }
    return whole;
}
