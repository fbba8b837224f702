#include <scene/Generators.h>

#include <QtGui/QPainterPath>

#include <algorithm>

namespace {
constexpr int steps = 200;           // 0, 0.005 ... 1: counted, since adding up 0.005 drifts
constexpr double jumpDistance = 1.0; // in units of the path; further apart is another contour
} // namespace

GeometryData kvTextOutline(const QString& text, const QMatrix4x4& transform, const QFont& font,
                           const QColor& color, int width)
{
    QPainterPath path;
    path.addText(0, 0, font, text);

    QList<ColoredSegment> segments;
    if (!path.isEmpty()) {
        const auto placed = [&](const QPointF& p) {
            const QVector3D onPath(static_cast<float>(p.x()), static_cast<float>(p.y()), 0.0f);
            return ColoredPoint{color, transform.map(onPath)};
        };
        QPointF previous = path.pointAtPercent(0.0);
        for (int i = 1; i <= steps; ++i) {
            const QPointF sample = path.pointAtPercent(std::min(1.0, i * 0.005));
            const QPointF step = sample - previous;
            if (QPointF::dotProduct(step, step) < jumpDistance * jumpDistance)
                segments.append({placed(previous), placed(sample)});
            previous = sample;
        }
    }
    return kvSegments(segments, false, static_cast<float>(width));
}
