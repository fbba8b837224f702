// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <annotation/Overlay.h>

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>

#include <map>
#include <memory>
#include <utility>
#include <vector>

class QOpenGLContext;

/// Draws overlays with OpenGL. The images of texts are kept in one texture, so that moving texts cost little.
///
/// Everything is created by the first draw() that has something to draw. A context must be current for all
/// functions, the destructor excepted.
class OverlayRenderer
{
public:
    OverlayRenderer();
    ~OverlayRenderer();
    Q_DISABLE_COPY_MOVE(OverlayRenderer)

    /// Draws on the bound framebuffer, which is @p size pixels large. Leaves depth test and blending
    /// disabled, and the blend function changed.
    void draw(const Overlay& overlay, const QSize& size);
    /// Destroys all GL objects in the current context.
    void release();
    /// Forgets them, because their context was lost.
    void abandon();

private:
    struct Vertex;
    struct Gpu;
    /// Where the image of a text is in the texture.
    using Places = std::map<std::pair<QString, bool>, QRect>;

    bool prepare(QOpenGLContext& context);
    /// @return false if the texture has no room for all texts
    bool placeTexts(const Overlay& overlay);
    bool place(const Overlay& overlay, const OverlayText& text);
    void clearTexture(const Overlay& overlay);
    std::vector<Vertex> verticesOf(const Overlay& overlay) const;

    std::unique_ptr<Gpu> m_gpu;
    Places m_places;
    QPoint m_next; ///< in the texture
    int m_rowHeight = 0;
    Overlay m_style; ///< of the images in the texture; without content
};
