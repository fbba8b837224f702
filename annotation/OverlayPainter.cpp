// SPDX-License-Identifier: Apache-2.0
#include <annotation/OverlayPainter.h>

#include <annotation/OverlayFont.h>

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <cmath>

namespace {

QPainterPath pathOf(const Overlay& overlay, const OverlayText& text, const QPointF& topLeft)
{
    const QFont font = kvOverlayFont(overlay, text.bold);
    QPainterPath path;
    path.setFillRule(Qt::WindingFill); // glyphs may overlap
    path.addText(topLeft + QPointF(0.0, QFontMetricsF(font).ascent()), font, text.text);
    return path;
}

void drawText(QPainter& painter, const Overlay& overlay, const OverlayText& text, const QPointF& topLeft)
{
    const QPainterPath path = pathOf(overlay, text, topLeft);
    const QPen around(overlay.halo, 2.0 * kvHaloWidth(overlay), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.strokePath(path, around);
    painter.fillPath(path, overlay.ink);
}

void drawShapes(QPainter& painter, const Overlay& overlay)
{
    for (const OverlayBox& box : overlay.boxes)
        painter.fillRect(box.rect, box.color);
    for (const OverlayLine& line : overlay.lines) {
        painter.setPen(QPen(line.color, line.width, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(line.from, line.to);
    }
}

} // namespace

QImage kvTextImage(const Overlay& overlay, const OverlayText& text)
{
    const QSizeF extent = kvTextExtent(overlay, text.text, text.bold);
    const int halo = kvHaloWidth(overlay);
    QImage image(static_cast<int>(std::ceil(extent.width())) + 2 * halo,
                 static_cast<int>(std::ceil(extent.height())) + 2 * halo,
                 QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawText(painter, overlay, text, QPointF(halo, halo));
    return image;
}

void kvPaintOverlay(QImage& picture, const Overlay& overlay)
{
    if (overlay.isEmpty())
        return;
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    drawShapes(painter, overlay);
    const int halo = kvHaloWidth(overlay);
    for (const OverlayText& text : overlay.texts)
        painter.drawImage(text.topLeft.toPoint() - QPoint(halo, halo), kvTextImage(overlay, text));
}

void kvDrawOverlay(QPainter& painter, const Overlay& overlay)
{
    drawShapes(painter, overlay);
    for (const OverlayText& text : overlay.texts)
        drawText(painter, overlay, text, text.topLeft);
}
