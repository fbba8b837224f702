// SPDX-License-Identifier: Apache-2.0
#include <annotation/AnnotationLayout.h>

#include <annotation/Contrast.h>
#include <annotation/OverlayFont.h>
#include <annotation/ScaleBar.h>
#include <annotation/ScaleLayout.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double maxWidthOfLegend = 0.6;  // of the picture
constexpr double maxHeightOfLegend = 0.5; // likewise

/// The rows of a legend, from the top.
class LegendRows
{
public:
    LegendRows(Overlay& overlay, const QSize& size) : m_overlay(overlay), m_height(overlay.textHeight)
    {
        m_maxWidth = maxWidthOfLegend * size.width();
        m_maxRows = std::max(1, static_cast<int>(maxHeightOfLegend * size.height() / rowHeight()));
    }

    void add(const QList<KVLegendEntry>& legend, const QString& highlight)
    {
        // the last row says how many more there are
        const auto shown = legend.size() <= m_maxRows ? legend.size() : qsizetype(m_maxRows) - 1;
        for (qsizetype i = 0; i < shown; ++i)
            add(legend[i], !highlight.isEmpty() && legend[i].id == highlight);
        if (shown < legend.size())
            addText(QLatin1Char('+') + QString::number(legend.size() - shown), textLeft(), false);
    }

private:
    double rowHeight() const { return 1.5 * m_height; }
    double top() const { return m_height + m_row * rowHeight(); }
    double textLeft() const { return 2.6 * m_height; }

    void add(const KVLegendEntry& entry, bool isHighlighted)
    {
        const double edge = std::max(1.0, m_height / 12.0);
        const QRectF swatch(m_height, top() + 0.1 * m_height, m_height, m_height);
        m_overlay.boxes.append({swatch.adjusted(-edge, -edge, edge, edge), m_overlay.ink});
        m_overlay.boxes.append({swatch, entry.key.isValid() ? entry.key : m_overlay.halo});
        const double right = addText(entry.name, textLeft(), isHighlighted);
        if (isHighlighted) {
            const double y = top() + 1.3 * m_height;
            m_overlay.lines.append({{textLeft(), y}, {right, y}, 2.0 * edge, m_overlay.ink});
        }
        if (!entry.details.isEmpty())
            addText(entry.details, right + 0.8 * m_height, false);
        ++m_row;
    }

    /// @return the right end of the text
    double addText(const QString& text, double left, bool bold)
    {
        const QString elided = kvElided(m_overlay, text, bold, std::max(0.0, m_maxWidth - left));
        const QSizeF extent = kvTextExtent(m_overlay, elided, bold);
        const double y = top() + 0.6 * m_height - extent.height() / 2.0;
        if (!elided.isEmpty())
            m_overlay.texts.append({elided, QPointF(std::round(left), std::round(y)), bold});
        return left + extent.width();
    }

    Overlay& m_overlay;
    double m_height;
    double m_maxWidth;
    int m_maxRows;
    int m_row = 0;
};

void addCaption(Overlay& overlay, const QString& caption, const QSize& size)
{
    const double margin = overlay.textHeight;
    const QString text = kvElided(overlay, caption, false, std::max(0.0, size.width() - 2.0 * margin));
    if (text.isEmpty())
        return;
    const QSizeF extent = kvTextExtent(overlay, text, false);
    overlay.texts.append({text,
                          QPointF(std::round((size.width() - extent.width()) / 2.0),
                                  std::round(size.height() - extent.height() - margin / 2.0)),
                          false});
}

/// The texts of an overlay, each, and its boxes, as one.
void appendExtents(const Overlay& overlay, QList<QRectF>& extents)
{
    const double space = 0.5 * overlay.textHeight;
    QRectF boxes;
    for (const OverlayBox& box : overlay.boxes)
        boxes |= box.rect;
    if (!boxes.isEmpty())
        extents.append(boxes.adjusted(-space, -space, space, space));
    for (const OverlayText& text : overlay.texts)
        extents.append(QRectF(text.topLeft, kvTextExtent(overlay, text.text, text.bold))
                           .adjusted(-space, -space, space, space));
}

} // namespace

int kvAnnotationTextHeight(const QSize& size, float textScale)
{
    constexpr double share = 0.02;
    constexpr int min = 10, max = 400;
    const double height = share * std::min(size.width(), size.height()) * double(textScale);
    return std::isnan(height) ? min : static_cast<int>(std::lround(std::clamp<double>(height, min, max)));
}

Overlay kvAnnotationStyle(const KVAnnotations& annotations, const QColor& background, const QSize& size)
{
    Overlay overlay;
    overlay.fontFamily = annotations.fontFamily;
    overlay.textHeight = kvAnnotationTextHeight(size, annotations.textScale);
    overlay.ink = kvInkOn(background);
    overlay.halo = background;
    overlay.halo.setAlpha(255);
    return overlay;
}

Overlay kvAnnotationOverlay(const KVAnnotations& annotations, const AnnotatedScene& scene, const QSize& size)
{
    if (size.isEmpty())
        return {};
    Overlay overlay = kvAnnotationStyle(annotations, scene.background, size);
    LegendRows(overlay, size).add(annotations.legend, annotations.highlight);
    addCaption(overlay, annotations.caption, size);
    kvAddScaleBar(overlay, annotations.scaleBar, size);
    if (annotations.scales)
        kvAddScales(overlay, scene.box, scene.toClip, size);
    return overlay;
}

QList<QRectF> kvFixedAnnotations(const KVAnnotations& annotations, const QSize& size)
{
    if (size.isEmpty())
        return {};
    const Overlay style = kvAnnotationStyle(annotations, Qt::white, size);
    Overlay legend = style, caption = style, bar = style;
    LegendRows(legend, size).add(annotations.legend, annotations.highlight);
    addCaption(caption, annotations.caption, size);
    kvAddScaleBar(bar, annotations.scaleBar, size);
    QList<QRectF> extents;
    for (const Overlay* part : {&legend, &caption, &bar})
        appendExtents(*part, extents);
    return extents;
}
