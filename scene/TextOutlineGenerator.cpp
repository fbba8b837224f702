// SPDX-License-Identifier: Apache-2.0
#include <scene/Generators.h>

#include <QtGui/QPainterPath>

#include <algorithm>
#include <vector>

namespace {
constexpr int steps = 200;           // 0, 0.005 ... 1: counted, since adding up 0.005 drifts
constexpr double jumpDistance = 1.0; // in units of the path; further apart is another contour

/// Answers QPainterPath::pointAtPercent() for many shares of one path. The path itself measures all its
/// curves anew for each of them, which takes longer than all the rest of a label; here each is measured
/// once and then asked by itself.
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
            } else { // a curve: two control points, then its end
                piece.cubicTo(element, path.elementAt(i + 1), path.elementAt(i + 2));
                i += 2;
            }
            const double length = piece.length();
            m_length += length;
            m_pieces.push_back({piece, length, m_length});
        }
    }

    bool isEmpty() const { return !(m_length > 0.0); }

    /// The point at @p share (0..1) of the whole length. Shares must not fall from call to call.
    QPointF at(double share)
    {
        const double target = m_length * share;
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
        double end; ///< length of the path up to and with this piece
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
            if (QPointF::dotProduct(step, step) < jumpDistance * jumpDistance)
                segments.append({placed(previous), placed(sample)});
            previous = sample;
        }
    }
    return kvSegments(segments, false, static_cast<float>(width));
}
