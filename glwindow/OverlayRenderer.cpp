// SPDX-License-Identifier: Apache-2.0
#include <glwindow/OverlayRenderer.h>

#include <annotation/OverlayFont.h>
#include <annotation/OverlayPainter.h>
#include <scene/VertexBindings.h>

#include <QtGui/QImage>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtOpenGL/QOpenGLBuffer>
#include <QtOpenGL/QOpenGLShaderProgram>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace {

constexpr int textureSide = 2048; // supported by every OpenGL 2.1
constexpr int solidSide = 4;      // opaque white pixels at the corner of the texture, for boxes and lines

constexpr const char* vertexShader = R"(#version 120
attribute vec2 place;
attribute vec2 texturePlace;
attribute vec4 color;
uniform vec2 size;
varying vec2 at;
varying vec4 tint;
void main()
{
    at = texturePlace;
    tint = color;
    gl_Position = vec4(2.0 * place.x / size.x - 1.0, 1.0 - 2.0 * place.y / size.y, 0.0, 1.0);
}
)";

constexpr const char* fragmentShader = R"(#version 120
uniform sampler2D images;
varying vec2 at;
varying vec4 tint;
void main()
{
    gl_FragColor = texture2D(images, at) * tint;
}
)";

// Colours are premultiplied by their alpha.
struct Tint
{
    float r = 1.0f, g = 1.0f, b = 1.0f, a = 1.0f;
};

Tint tintOf(const QColor& color)
{
    const auto a = static_cast<float>(color.alphaF());
    return {static_cast<float>(color.redF()) * a, static_cast<float>(color.greenF()) * a,
            static_cast<float>(color.blueF()) * a, a};
}

bool isOfSameStyle(const Overlay& p, const Overlay& q)
{
    return p.fontFamily == q.fontFamily && p.textHeight == q.textHeight && p.ink == q.ink && p.halo == q.halo;
}

} // namespace

struct OverlayRenderer::Vertex
{
    float x, y;
    float u, v;
    Tint tint;
};

/// The GL objects.
struct OverlayRenderer::Gpu
{
    QOpenGLShaderProgram program;
    QOpenGLBuffer vertices{QOpenGLBuffer::VertexBuffer};
    VertexBindings attributes; // the scene leaves its own bound
    GLuint texture = 0;
};

OverlayRenderer::OverlayRenderer() = default;
OverlayRenderer::~OverlayRenderer() = default;

bool OverlayRenderer::prepare(QOpenGLContext& context)
{
    if (m_gpu)
        return m_gpu->program.isLinked();
    m_gpu = std::make_unique<Gpu>();
    QOpenGLShaderProgram& program = m_gpu->program;
    program.addShaderFromSourceCode(QOpenGLShader::Vertex, vertexShader);
    program.addShaderFromSourceCode(QOpenGLShader::Fragment, fragmentShader);
    program.bindAttributeLocation("place", 0);
    program.bindAttributeLocation("texturePlace", 1);
    program.bindAttributeLocation("color", 2);
    m_gpu->vertices.create();
    m_gpu->attributes.create();
    QOpenGLFunctions& gl = *context.functions();
    gl.glGenTextures(1, &m_gpu->texture);
    gl.glBindTexture(GL_TEXTURE_2D, m_gpu->texture);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    gl.glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, textureSide, textureSide, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                    nullptr);
    gl.glBindTexture(GL_TEXTURE_2D, 0);
    clearTexture({});
    return program.link();
}

void OverlayRenderer::clearTexture(const Overlay& overlay)
{
    m_style = {};
    m_style.fontFamily = overlay.fontFamily;
    m_style.textHeight = overlay.textHeight;
    m_style.ink = overlay.ink;
    m_style.halo = overlay.halo;
    m_places.clear();
    m_next = QPoint(0, solidSide);
    m_rowHeight = 0;
    const std::vector<quint32> white(solidSide * solidSide, 0xffffffffu);
    QOpenGLFunctions& gl = *QOpenGLContext::currentContext()->functions();
    gl.glBindTexture(GL_TEXTURE_2D, m_gpu->texture);
    gl.glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, solidSide, solidSide, GL_RGBA, GL_UNSIGNED_BYTE, white.data());
}

bool OverlayRenderer::place(const Overlay& overlay, const OverlayText& text)
{
    const QImage image = kvTextImage(overlay, text);
    if (image.isNull() || image.width() > textureSide)
        return true; // it cannot be drawn at all
    if (m_next.x() + image.width() > textureSide) {
        m_next = QPoint(0, m_next.y() + m_rowHeight);
        m_rowHeight = 0;
    }
    if (m_next.y() + image.height() > textureSide)
        return false;
    QByteArray
        bytes; // RGBA. Not QImage::convertToFormat(): it waits for ever for a thread that cannot be started
    bytes.reserve(qsizetype(4) * image.width() * image.height());
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            for (const int value : {qRed(row[x]), qGreen(row[x]), qBlue(row[x]), qAlpha(row[x])})
                bytes.append(static_cast<char>(value));
    }
    QOpenGLFunctions& gl = *QOpenGLContext::currentContext()->functions();
    gl.glTexSubImage2D(GL_TEXTURE_2D, 0, m_next.x(), m_next.y(), image.width(), image.height(), GL_RGBA,
                       GL_UNSIGNED_BYTE, bytes.constData());
    m_places[{text.text, text.bold}] = QRect(m_next, image.size());
    m_next.rx() += image.width();
    m_rowHeight = std::max(m_rowHeight, image.height());
    return true;
}

bool OverlayRenderer::placeTexts(const Overlay& overlay)
{
    return std::all_of(overlay.texts.cbegin(), overlay.texts.cend(), [&](const OverlayText& text) {
        return m_places.contains({text.text, text.bold}) || place(overlay, text);
    });
}

std::vector<OverlayRenderer::Vertex> OverlayRenderer::verticesOf(const Overlay& overlay) const
{
    std::vector<Vertex> vertices;
    const auto add = [&vertices](const std::array<QPointF, 4>& corners, const QRectF& image,
                                 const Tint& tint) {
        constexpr float scale = 1.0f / textureSide;
        const std::array<QPointF, 4> images{image.topLeft(), image.topRight(), image.bottomRight(),
                                            image.bottomLeft()};
        for (const std::size_t i : {0u, 1u, 2u, 0u, 2u, 3u})
            vertices.push_back({static_cast<float>(corners[i].x()), static_cast<float>(corners[i].y()),
                                static_cast<float>(images[i].x()) * scale,
                                static_cast<float>(images[i].y()) * scale, tint});
    };
    const auto addRect = [&add](const QRectF& r, const QRectF& image, const Tint& tint) {
        add({r.topLeft(), r.topRight(), r.bottomRight(), r.bottomLeft()}, image, tint);
    };
    const QRectF solid(solidSide / 2.0, solidSide / 2.0, 0.0, 0.0);
    for (const OverlayBox& box : overlay.boxes)
        addRect(box.rect, solid, tintOf(box.color));
    for (const OverlayLine& line : overlay.lines) {
        const QPointF along = line.to - line.from;
        const double length = std::hypot(along.x(), along.y());
        if (length <= 0.0)
            continue;
        const QPointF side = QPointF(-along.y(), along.x()) * (0.5 * line.width / length);
        add({line.from + side, line.to + side, line.to - side, line.from - side}, solid, tintOf(line.color));
    }
    const int halo = kvHaloWidth(overlay);
    for (const OverlayText& text : overlay.texts)
        if (const auto at = m_places.find({text.text, text.bold}); at != m_places.end())
            addRect(QRectF(text.topLeft.toPoint() - QPoint(halo, halo), at->second.size()), at->second, {});
    return vertices;
}

void OverlayRenderer::draw(const Overlay& overlay, const QSize& size)
{
    QOpenGLContext* context = QOpenGLContext::currentContext();
    if (!context || overlay.isEmpty() || !prepare(*context))
        return;
    QOpenGLFunctions& gl = *context->functions();
    gl.glActiveTexture(GL_TEXTURE0);
    gl.glBindTexture(GL_TEXTURE_2D, m_gpu->texture);
    if (!isOfSameStyle(overlay, m_style))
        clearTexture(overlay);
    if (!placeTexts(overlay)) {
        clearTexture(overlay); // of texts that are not shown any more
        placeTexts(overlay);
    }
    const std::vector<Vertex> vertices = verticesOf(overlay);

    gl.glDisable(GL_DEPTH_TEST);
    gl.glEnable(GL_BLEND);
    gl.glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    QOpenGLShaderProgram& program = m_gpu->program;
    program.bind();
    program.setUniformValue("size", QSizeF(size));
    program.setUniformValue("images", 0);
    m_gpu->attributes.bind();
    m_gpu->vertices.bind();
    m_gpu->vertices.allocate(vertices.data(), static_cast<int>(vertices.size() * sizeof(Vertex)));
    constexpr int stride = sizeof(Vertex);
    program.setAttributeBuffer(0, GL_FLOAT, offsetof(Vertex, x), 2, stride);
    program.setAttributeBuffer(1, GL_FLOAT, offsetof(Vertex, u), 2, stride);
    program.setAttributeBuffer(2, GL_FLOAT, offsetof(Vertex, tint), 4, stride);
    for (int i = 0; i < 3; ++i)
        program.enableAttributeArray(i);
    gl.glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(vertices.size()));
    for (int i = 0; i < 3; ++i)
        program.disableAttributeArray(i);
    m_gpu->vertices.release();
    m_gpu->attributes.release();
    program.release();
    gl.glBindTexture(GL_TEXTURE_2D, 0);
    gl.glDisable(GL_BLEND);
}

void OverlayRenderer::release()
{
    if (QOpenGLContext* context = QOpenGLContext::currentContext(); context && m_gpu && m_gpu->texture)
        context->functions()->glDeleteTextures(1, &m_gpu->texture);
    m_gpu.reset();
}

void OverlayRenderer::abandon()
{
    if (m_gpu)
        m_gpu->attributes.abandon();
    m_gpu.reset();
}
