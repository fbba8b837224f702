// SPDX-License-Identifier: Apache-2.0
#include <scene/Generators.h>

#include <QtGui/QPainterPath>

#include <algorithm>
#include <vector>

namespace {

constexpr int steps = 200;         // of 0.005; an integer counter does not accumulate rounding errors
constexpr double contourGap = 1.0; // path units; samples this far apart belong to different contours

/// QPainterPath::pointAtPercent() for many ascending fractions of one path. QPainterPath measures all its
/// curves again in every call, which would take longer than the rest of a label; this class measures each
/// curve once.
class PathSampler
{
public:
    explicit PathSampler(const QPainterPath& path)
    {
        for (int i = 1; i < path.elementCount(); ++i) {
            const QPainterPath::Element element = path.elementAt(i);
            if (element.isMoveTo())
                continue;
            QPainterPath piece(path.elementAt(i - 1));
            if (element.isLineTo()) {
                piece.lineTo(element);
            } else { // a curve: two control points and its end
                piece.cubicTo(element, path.elementAt(i + 1), path.elementAt(i + 2));
                i += 2;
            }
            const double length = piece.length();
            m_length += length;
            m_pieces.push_back({piece, length, m_length});
        }
    }

    bool isEmpty() const { return !(m_length > 0.0); }

    /// The point at @p fraction (0..1) of the whole length. Fractions must not decrease between calls.
    QPointF at(double fraction)
    {
        const double target = m_length * fraction;
        while (m_at + 1 < m_pieces.size() && m_pieces[m_at].end < target)
            ++m_at;
        const Piece& piece = m_pieces[m_at];
        const double along = piece.length > 0.0 ? (target - piece.end + piece.length) / piece.length : 0.0;
        return piece.path.pointAtPercent(std::clamp(along, 0.0, 1.0));
    }

private:
    struct Piece
    {
        QPainterPath path;
        double length;
        double end; ///< length of the path up to the end of this piece
    };
    std::vector<Piece> m_pieces;
    double m_length = 0.0;
    std::size_t m_at = 0;
};

} // namespace

GeometryData kvTextOutline(const QString& text, const QMatrix4x4& transform, const QFont& font,
                           const QColor& color, int width)
{
    QPainterPath path;
    path.addText(0, 0, font, text);

    QList<ColoredSegment> segments;
    PathSampler sampler(path);
    if (!sampler.isEmpty()) {
        const auto placed = [&](const QPointF& p) {
            const QVector3D onPath(static_cast<float>(p.x()), static_cast<float>(p.y()), 0.0f);
            return ColoredPoint{color, transform.map(onPath)};
        };
        QPointF previous = sampler.at(0.0);
        for (int i = 1; i <= steps; ++i) {
            const QPointF sample = sampler.at(std::min(1.0, i * 0.005));
            const QPointF step = sample - previous;
            if (QPointF::dotProduct(step, step) < contourGap * contourGap)
                segments.append({placed(previous), placed(sample)});
            previous = sample;
        }
    }
    return kvSegments(segments, false, static_cast<float>(width));
}
