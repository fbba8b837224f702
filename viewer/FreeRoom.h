// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QMarginsF>
#include <QtCore/QRectF>
#include <QtCore/QSize>

#include <vector>

/// @file
/// Room beside rectangles of a picture that are taken, such as those of a legend. Pixels from the top left.

/// Choices of distances from the edges of a picture of @p size. Each rectangle of @p taken can be passed at
/// the edges that cost least; choices in between pass it at its corner. The first choice has no distances.
[[nodiscard]] std::vector<QMarginsF> kvRoomChoices(const QList<QRectF>& taken, const QSize& size);

/// The corners of the convex hull of @p points, in order; fewer than three if it has no area.
[[nodiscard]] std::vector<QPointF> kvConvexHull(std::vector<QPointF> points);

/// What is seen in a picture.
struct SeenShapes
{
    std::vector<QPointF> points; ///< of bodies; the convex hull of all counts as covered
    std::vector<QRectF> rects;   ///< of labels
};

/// Whether @p seen covers nothing of @p taken.
[[nodiscard]] bool kvIsRoomFree(const SeenShapes& seen, const QList<QRectF>& taken);
