// SPDX-License-Identifier: Apache-2.0
#include "SlicePoints.h"

#include "model/text/SafeText.h"

#include <QtCore/QSet>
#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

struct Placed
{
    QPointF at;
    const SlicePoint* point;
};

/// The points in @p plot, one for each cell and symbol, so that the work depends on the size of the drawing
/// only. Points inside the gamut come last, on top.
QList<Placed> distinct(const QList<SlicePoint>& points, const QTransform& toPlot, const QRectF& plot,
                       qreal cell)
{
    QList<Placed> result;
    QSet<std::pair<qint64, qint64>> used;
    for (const bool inside : {false, true}) {
        used.clear();
        for (const SlicePoint& point : points) {
            const QPointF at = toPlot.map(point.place);
            if (point.isInside != inside || !plot.contains(at))
                continue;
            const auto key = std::make_pair(qint64(at.x() / cell), qint64(at.y() / cell));
            if (used.contains(key))
                continue;
            used.insert(key);
            result.append({at, &point});
        }
    }
    return result;
}

QRectF around(const QPointF& at, qreal size)
{
    return QRectF(at - QPointF(0.5 * size, 0.5 * size), QSizeF(size, size));
}

bool isFree(const QRectF& box, const QList<QRectF>& taken)
{
    return std::none_of(taken.begin(), taken.end(),
                        [&](const QRectF& other) { return box.intersects(other); });
}

} // namespace

SlicePoint slicePoint(const MeasuredPoint& point, const SlicePlane& plane, bool isInside)
{
    return {viewOf(point.lab, plane).place, point.shownColor(), point.name, isInside};
}

QList<SlicePoint> slicePoints(const QList<MeasuredPoint>& points, const SlicePlane& plane, double within,
                              const KVGamut::GamutObject& gamut)
{
    QList<SlicePoint> near;
    for (const MeasuredPoint& point : points) {
        if (!(viewOf(point.lab, plane).distance <= within))
            continue;
        const std::array<float, 3> lab{point.lab.L, point.lab.a, point.lab.b};
        near.append(slicePoint(point, plane, gamut.isInside(lab.data())));
    }
    return near;
}

void PointSymbols::paint(QPainter& painter, const QPointF& at, const QColor& color, bool isInside) const
{
    constexpr qreal line = 0.14; // widths relative to the size
    constexpr qreal haloWidth = 0.4;
    const qreal half = 0.5 * size;
    const auto pen = [&](const QColor& c, qreal width) {
        return QPen(c, width * size, Qt::SolidLine, Qt::RoundCap);
    };
    if (isInside) {
        painter.setBrush(color);
        if (halo) {
            painter.setPen(pen(paper, haloWidth));
            painter.drawEllipse(at, half, half);
        }
        painter.setPen(pen(ink, line));
        painter.drawEllipse(at, half, half);
        return;
    }
    for (const QPen& stroke : {pen(paper, haloWidth + line), pen(ink, 1.6 * line)}) {
        if (!halo && stroke.color() == paper)
            continue;
        painter.setPen(stroke);
        painter.drawLine(at - QPointF(half, half), at + QPointF(half, half));
        painter.drawLine(at - QPointF(half, -half), at + QPointF(half, -half));
    }
}

void PointSymbols::paint(QPainter& painter, const QList<SlicePoint>& points, const QTransform& toPlot,
                         const QRectF& plot, const QFont& font) const
{
    constexpr qreal cellShare = 0.125; // of the size
    const QList<Placed> placed = distinct(points, toPlot, plot, cellShare * size);
    if (placed.size() > maxClose) {
        PointSymbols crowd = *this;
        crowd.halo = false;
        for (const Placed& symbol : distinct(points, toPlot, plot, size))
            crowd.paint(painter, symbol.at, symbol.point->color, symbol.point->isInside);
        return;
    }
    QList<QRectF> taken;
    for (const Placed& symbol : placed) {
        paint(painter, symbol.at, symbol.point->color, symbol.point->isInside);
        taken.append(around(symbol.at, 1.4 * size));
    }
    if (placed.size() > maxNamed)
        return;
    painter.setFont(font);
    for (const Placed& symbol : placed)
        if (const QString name = SafeText::shown(symbol.point->name); !name.isEmpty())
            paintName(painter, name, symbol.at, plot, taken);
}

/// Draws @p name to the right or to the left of a symbol, if there is room.
void PointSymbols::paintName(QPainter& painter, const QString& name, const QPointF& at, const QRectF& plot,
                             QList<QRectF>& taken) const
{
    const QFontMetricsF metrics(painter.font());
    const QSizeF room(metrics.horizontalAdvance(name), metrics.ascent());
    for (const qreal left : {0.8 * size, -0.8 * size - room.width()}) {
        const QRectF box(at + QPointF(left, -0.5 * room.height()), room);
        if (!plot.contains(box) || !isFree(box, taken))
            continue;
        taken.append(box);
        QColor ground = paper;
        ground.setAlphaF(0.75f);
        painter.fillRect(box.adjusted(-0.15 * size, 0, 0.15 * size, 0.15 * size), ground);
        painter.setPen(ink);
        painter.drawText(box.bottomLeft(), name);
        return;
    }
}
