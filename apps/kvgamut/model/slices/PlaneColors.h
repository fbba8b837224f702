// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutSlice.h"

#include <QtCore/QRectF>
#include <QtGui/QImage>
#include <QtGui/QPainterPath>
#include <QtGui/QTransform>

class QPainter;

/// The colours of a part of a plane, as they are shown on an sRGB screen.
///
/// Colours that the screen cannot show are those that KVColorConversionHelper::KVHLab2RGB() gives for them:
/// of the same CIELAB hue and of almost the same lightness.
struct PlaneColors
{
    QImage image; ///< each pixel has the colour at its centre; the top row has the largest second coordinate
    QRectF range; ///< what the image covers, in the coordinates of the plane

    /// The colours of @p range, or a little more, in pixels of @p step dE76. The image has at most maxPixels
    /// columns and rows; its pixels are larger then. Empty if @p range is.
    static PlaneColors of(const SlicePlane& plane, const QRectF& range, double step);

    static constexpr int maxPixels = 2048;
    static constexpr double finestStep = 0.25; ///< dE76; neighbours differ by less than can be seen
};

/// Fills each of @p outlines with the colours of @p plane.
/// @param outlines in units of @p painter
/// @param toPlot from coordinates of the plane to units of the painter; scales alike in both directions
/// @param plot what lies outside is not drawn
void paintPlaneColors(QPainter& painter, const SlicePlane& plane, const QList<QPainterPath>& outlines,
                      const QTransform& toPlot, const QRectF& plot);
