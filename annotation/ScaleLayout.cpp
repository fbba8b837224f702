// SPDX-License-Identifier: Apache-2.0
#include <annotation/ScaleLayout.h>

#include <annotation/OverlayFont.h>
#include <scene/Coordinates.h>

#include <QtCore/QRectF>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

namespace {

double lengthOf(const QPointF& v)
{
    return std::hypot(v.x(), v.y());
}

/// From host coordinates to pixels.
class Projection
{
public:
    Projection(const QMatrix4x4& toClip, const QSize& size) : m_toClip(toClip), m_size(size) {}

    /// Nullopt behind the eye.
    std::optional<QPointF> pixelOf(const QVector3D& lab) const
    {
        const QVector4D clip = m_toClip * QVector4D(kvSceneFromHost(lab), 1.0f);
        constexpr float minW = 1e-3f;
        if (!(clip.w() > minW))
            return std::nullopt;
        return QPointF((1.0 + double(clip.x() / clip.w())) / 2.0 * m_size.width(),
                       (1.0 - double(clip.y() / clip.w())) / 2.0 * m_size.height());
    }

private:
    QMatrix4x4 m_toClip;
    QSize m_size;
};

/// An edge of the box, along one of the axes.
struct Edge
{
    QVector3D from;
    QVector3D to;
    QPointF first; ///< pixels
    QPointF last;

    QPointF middle() const { return (first + last) / 2.0; }
};

std::vector<Edge> edgesAlong(int axis, const LabBox& box, const Projection& projection)
{
    const int u = (axis + 1) % 3, v = (axis + 2) % 3;
    std::vector<Edge> edges;
    for (int corner = 0; corner < 4; ++corner) {
        QVector3D from = box.low;
        from[u] = corner & 1 ? box.high[u] : box.low[u];
        from[v] = corner & 2 ? box.high[v] : box.low[v];
        const bool isAtBottom = from.x() == box.low.x();
        if (axis != 0 && !isAtBottom)
            continue;
        QVector3D to = from;
        to[axis] = box.high[axis];
        const auto first = projection.pixelOf(from), last = projection.pixelOf(to);
        if (first && last)
            edges.push_back({from, to, *first, *last});
    }
    return edges;
}

/// The edge at the side of the box, for the scale of L*: the left or right one, whichever is in the picture.
std::optional<Edge> sideEdge(std::vector<Edge> edges, const QSize& size)
{
    const QRectF picture(QPointF(0.0, 0.0), QSizeF(size));
    const auto isLeftOf = [](const Edge& p, const Edge& q) { return p.middle().x() < q.middle().x(); };
    if (edges.empty())
        return std::nullopt;
    const auto [left, right] = std::minmax_element(edges.begin(), edges.end(), isLeftOf);
    const auto isShown = [&](const Edge& edge) {
        return picture.contains(edge.first) && picture.contains(edge.last);
    };
    return !isShown(*left) && isShown(*right) ? *right : *left;
}

/// The edge that is farthest from the centre of the box in the picture, for the scales of a* and b*; of two
/// that are equally far the lower one.
std::optional<Edge> outerEdge(const std::vector<Edge>& edges, const QPointF& centre)
{
    const auto distance = [&](const Edge& edge) {
        constexpr double preference = 0.15;
        const QPointF d = edge.middle() - centre;
        return lengthOf(d) + preference * d.y();
    };
    const auto best = std::max_element(
        edges.begin(), edges.end(), [&](const Edge& p, const Edge& q) { return distance(p) < distance(q); });
    return best == edges.end() ? std::nullopt : std::optional(*best);
}

/// One scale, beside an edge.
class Scale
{
public:
    Scale(const Overlay& overlay, int axis, const Edge& edge, const Projection& projection,
          const QPointF& centre)
        : m_overlay(&overlay), m_axis(axis), m_edge(edge), m_projection(&projection)
    {
        const QPointF along = edge.last - edge.first;
        m_length = lengthOf(along);
        m_outwards = QPointF(along.y(), -along.x()) / std::max(m_length, 1.0);
        if (QPointF::dotProduct(m_outwards, edge.middle() - centre) < 0.0)
            m_outwards = -m_outwards;
        chooseStep();
    }

    double length() const { return m_length; }

    struct Number
    {
        QString text;
        QVector3D place; ///< on the edge
        QPointF at;      ///< the same in the picture
        QRectF rect;
    };
    const std::vector<Number>& numbers() const { return m_numbers; }
    QPointF endOfTick(const Number& number) const { return number.at + tickLength() * m_outwards; }
    const Edge& edge() const { return m_edge; }

    QString title() const { return QStringLiteral("Lab").mid(m_axis, 1) + QLatin1Char('*'); }
    /// Where the title may be: beside the middle of the scale, or beyond an end of it.
    std::array<QRectF, 3> titleRects() const
    {
        const QSizeF extent = kvTextExtent(*m_overlay, title(), true);
        double distance = 0.0;
        for (const Number& number : m_numbers)
            distance = std::max(distance, reachOf(number.rect.size(), m_outwards));
        const QPointF along = (m_edge.last - m_edge.first) / std::max(m_length, 1.0);
        return {besides(m_edge.middle(), extent, tickLength() + 2.0 * gap() + 2.0 * distance, m_outwards),
                besides(m_edge.last, extent, 2.0 * gap(), along),
                besides(m_edge.first, extent, 2.0 * gap(), -along)};
    }

private:
    double tickLength() const { return 0.45 * m_overlay->textHeight; }
    double gap() const { return 0.3 * m_overlay->textHeight; }
    /// Half the extent of a rectangle in a direction.
    static double reachOf(const QSizeF& size, const QPointF& direction)
    {
        return (std::abs(direction.x()) * size.width() + std::abs(direction.y()) * size.height()) / 2.0;
    }
    QRectF besides(const QPointF& point, const QSizeF& size, double distance, const QPointF& direction) const
    {
        QRectF rect(QPointF(0.0, 0.0), size);
        rect.moveCenter(point + (distance + gap() + reachOf(size, direction)) * direction);
        rect.moveTopLeft(rect.topLeft().toPoint());
        return rect;
    }

    void chooseStep()
    {
        constexpr std::size_t maxNumbers = 100;
        for (const int step : kvScaleSteps()) {
            const auto values = kvScaleNumbers(m_edge.from[m_axis], m_edge.to[m_axis], step);
            m_numbers.clear();
            if (values.size() > maxNumbers)
                continue;
            for (const int value : values)
                add(value);
            if (!overlap())
                return;
        }
    }

    void add(int value)
    {
        QVector3D place = m_edge.from;
        place[m_axis] = static_cast<float>(value);
        const auto at = m_projection->pixelOf(place);
        if (!at)
            return;
        const QString text = kvScaleText(value);
        m_numbers.push_back({text, place, *at,
                             besides(*at, kvTextExtent(*m_overlay, text, false), tickLength(), m_outwards)});
    }

    bool overlap() const
    {
        const double space = 0.4 * m_overlay->textHeight;
        for (std::size_t i = 1; i < m_numbers.size(); ++i)
            if (m_numbers[i - 1].rect.adjusted(-space, 0.0, space, 0.0).intersects(m_numbers[i].rect))
                return true;
        return false;
    }

    const Overlay* m_overlay;
    int m_axis;
    Edge m_edge;
    const Projection* m_projection;
    double m_length = 0.0;
    QPointF m_outwards;
    std::vector<Number> m_numbers;
};

/// Adds texts that neither overlap others nor leave the picture.
class Texts
{
public:
    Texts(Overlay& overlay, const QSize& size) : m_overlay(overlay), m_all(QPointF(), QSizeF(size))
    {
        for (const OverlayText& text : overlay.texts)
            m_taken.append(QRectF(text.topLeft, kvTextExtent(overlay, text.text, text.bold)));
        for (const OverlayBox& box : overlay.boxes)
            m_taken.append(box.rect);
    }

    /// @return false if there is no room
    bool add(const QString& text, const QRectF& rect, bool bold)
    {
        const bool isFree = std::none_of(m_taken.cbegin(), m_taken.cend(),
                                         [&](const QRectF& other) { return other.intersects(rect); });
        if (!isFree || !m_all.contains(rect))
            return false;
        m_taken.append(rect);
        m_overlay.texts.append({text, rect.topLeft(), bold});
        return true;
    }

private:
    Overlay& m_overlay;
    QRectF m_all;
    QList<QRectF> m_taken;
};

/// Removes scales that are seen nearly end-on.
void removeShort(std::vector<Scale>& scales, double minLength)
{
    constexpr double minShare = 0.2; // of the longest
    for (const Scale& scale : scales)
        minLength = std::max(minLength, minShare * scale.length());
    std::erase_if(scales, [minLength](const Scale& scale) { return scale.length() < minLength; });
}

void addLines(Overlay& overlay, const Scale& scale)
{
    const double width = std::max(1.0, overlay.textHeight / 12.0);
    overlay.lines.append({scale.edge().first, scale.edge().last, width, overlay.ink});
    for (const Scale::Number& number : scale.numbers())
        overlay.lines.append({number.at, scale.endOfTick(number), width, overlay.ink});
}

std::vector<Scale> scalesOf(const Overlay& overlay, const LabBox& box, const Projection& projection,
                            const QSize& size)
{
    std::vector<Scale> scales;
    const auto centre = projection.pixelOf((box.low + box.high) / 2.0f);
    if (!centre)
        return scales;
    for (int axis = 0; axis < 3; ++axis) {
        const auto edges = edgesAlong(axis, box, projection);
        const auto edge = axis == 0 ? sideEdge(edges, size) : outerEdge(edges, *centre);
        if (edge)
            scales.emplace_back(overlay, axis, *edge, projection, *centre);
    }
    removeShort(scales, 3.0 * overlay.textHeight);
    return scales;
}

} // namespace

void kvAddScales(Overlay& overlay, const LabBox& box, const QMatrix4x4& toClip, const QSize& size)
{
    const Projection projection(toClip, size);
    const std::vector<Scale> scales = scalesOf(overlay, box, projection, size);
    Texts texts(overlay, size);
    for (const Scale& scale : scales) {
        for (const QRectF& place : scale.titleRects())
            if (texts.add(scale.title(), place, true))
                break; // the title stands at the first place that is free
    }
    for (const Scale& scale : scales) {
        addLines(overlay, scale);
        for (const Scale::Number& number : scale.numbers())
            texts.add(number.text, number.rect, false);
    }
}

ScaleExtent kvScaleExtent(const Overlay& style, const LabBox& box, const QMatrix4x4& toClip,
                          const QSize& size)
{
    ScaleExtent extent;
    const Projection projection(toClip, size);
    const std::vector<Scale> scales = scalesOf(style, box, projection, size);
    for (const Scale& scale : scales) {
        const Edge& edge = scale.edge();
        extent.positions << edge.from << edge.to;
        extent.texts.append(
            {(edge.from + edge.to) / 2.0f, scale.titleRects().front().translated(-edge.middle())});
        for (const Scale::Number& number : scale.numbers())
            extent.texts.append({number.place, number.rect.translated(-number.at)});
    }
    return extent;
}
