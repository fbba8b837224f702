// SPDX-License-Identifier: Apache-2.0
#include "PlaneColors.h"

#include <QtGui/QPaintEngine>
#include <QtGui/QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

int channel(float value)
{
    return std::clamp(static_cast<int>(std::lround(value)), 0, 255);
}

/// The pixels of the row whose centres have the second coordinate @p y.
void fillRow(QRgb* pixels, const SlicePlane& plane, const PlaneColors& colors, double y, double step)
{
    const auto count = static_cast<std::size_t>(colors.image.width());
    std::vector<KVGamut::LabPoint> lab(count);
    std::vector<std::array<float, 3>> rgb(count);
    for (std::size_t i = 0; i < count; ++i) {
        const PlaneLab at = labOf({colors.range.left() + (static_cast<double>(i) + 0.5) * step, y}, plane);
        lab[i] = {static_cast<float>(at.L), static_cast<float>(at.a), static_cast<float>(at.b)};
    }
    KVColorConversionHelper::KVHLab2RGB(lab, rgb);
    std::transform(rgb.begin(), rgb.end(), pixels, [](const std::array<float, 3>& color) {
        return qRgb(channel(color[0]), channel(color[1]), channel(color[2]));
    });
}

void fillOutlines(QPainter& painter, const QList<QPainterPath>& outlines, const PlaneColors& colors,
                  const QTransform& toPlot)
{
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (const QPainterPath& outline : outlines) {
        painter.save();
        painter.setClipPath(outline, Qt::IntersectClip);
        painter.drawImage(toPlot.mapRect(colors.range), colors.image);
        painter.restore();
    }
}

} // namespace

PlaneColors PlaneColors::of(const SlicePlane& plane, const QRectF& range, double step)
{
    PlaneColors colors;
    if (!(range.width() > 0.0 && range.height() > 0.0))
        return colors;
    step = std::max({step, range.width() / (maxPixels - 1), range.height() / (maxPixels - 1)});
    const QSize size(static_cast<int>(std::ceil(range.width() / step)),
                     static_cast<int>(std::ceil(range.height() / step)));
    colors.range = QRectF(range.topLeft(), QSizeF(size) * step);
    colors.image = QImage(size, QImage::Format_RGB32);
    for (int row = 0; row < size.height(); ++row)
        fillRow(reinterpret_cast<QRgb*>(colors.image.scanLine(row)), plane, colors,
                colors.range.bottom() - (row + 0.5) * step, step);
    return colors;
}

void paintPlaneColors(QPainter& painter, const SlicePlane& plane, const QList<QPainterPath>& outlines,
                      const QTransform& toPlot, const QRectF& plot)
{
    QRectF filled;
    for (const QPainterPath& outline : outlines)
        filled |= outline.boundingRect();
    const double pixel = 1.0 / (toPlot * painter.combinedTransform()).m11();
    const PlaneColors colors = PlaneColors::of(plane, toPlot.inverted().mapRect(filled & plot),
                                               std::max(PlaneColors::finestStep, pixel));
    if (painter.paintEngine()->type() != QPaintEngine::SVG)
        return fillOutlines(painter, outlines, colors, toPlot);
    // Qt writes no clipping into an SVG. The edge of this picture lies below the outline.
    constexpr qreal pixelsPerUnit = 2.0;
    QImage picture((plot.size() * pixelsPerUnit).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter target(&picture);
    target.setRenderHint(QPainter::Antialiasing);
    target.scale(picture.width() / plot.width(), picture.height() / plot.height());
    target.translate(-plot.topLeft());
    fillOutlines(target, outlines, colors, toPlot);
    target.end();
    painter.drawImage(plot, picture);
}
