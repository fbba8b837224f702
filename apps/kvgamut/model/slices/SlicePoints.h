// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutSlice.h"
#include "model/points/MeasuredPoint.h"

#include <QtCore/QRectF>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QTransform>

class QPainter;

/// A point of a file in a drawing of a plane.
struct SlicePoint
{
    QPointF place; ///< in the coordinates of the plane
    QColor color;  ///< of the symbol
    QString name;  ///< may be empty
    bool isInside; ///< whether the point itself, not its place on the plane, is inside the gamut
};

/// The distance from a plane, dE76, up to which points are drawn in it by default.
constexpr double defaultPointDistance = 2.5;

/// @p point at its nearest place on @p plane.
SlicePoint slicePoint(const MeasuredPoint& point, const SlicePlane& plane, bool isInside);

/// Those of @p points that are at most @p within dE76 from @p plane, each at its nearest place there.
QList<SlicePoint> slicePoints(const QList<MeasuredPoint>& points, const SlicePlane& plane, double within,
                              const KVGamut::GamutObject& gamut);

/// Draws the symbols of points: a filled circle inside the gamut, a cross outside.
struct PointSymbols
{
    qreal size = 9.0;
    QColor ink;   ///< of lines and names
    QColor paper; ///< around the lines

    bool halo = true; ///< whether there is paper around the lines

    static constexpr qsizetype maxNamed = 300; ///< with more points than this none is named
    static constexpr qsizetype maxClose = 1000;

    void paint(QPainter& painter, const QPointF& at, const QColor& color, bool isInside) const;
    /// All of @p points whose places lie in @p plot, with the names for which there is room. Of points with
    /// the same symbol in almost the same place one is drawn. With more than maxClose symbols, only one is
    /// drawn in each square of the size of a symbol, without a halo.
    /// @param toPlot from coordinates of the plane
    void paint(QPainter& painter, const QList<SlicePoint>& points, const QTransform& toPlot,
               const QRectF& plot, const QFont& font) const;

private:
    void paintName(QPainter& painter, const QString& name, const QPointF& at, const QRectF& plot,
                   QList<QRectF>& taken) const;
};
