// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtGui/QPolygonF>

/// A plane in Lab: one lightness or one hue.
struct SlicePlane
{
    enum Kind
    {
        Lightness, ///< all colours of one L*; its coordinates are a* and b*
        Hue,       ///< all colours of one hue angle; its coordinates are C*, never negative, and L*
    };
    Kind kind = Lightness;
    double value = 50.0; ///< L*, or the hue angle in degrees from +a* towards +b*
};

/// A colour of a plane, in double precision.
struct PlaneLab
{
    double L, a, b;
};
/// The colour at @p place, in the coordinates of @p plane.
PlaneLab labOf(const QPointF& place, const SlicePlane& plane);

/// Where a colour is seen in a drawing of a plane.
struct PlaneView
{
    QPointF place;   ///< of the colour of the plane that is nearest, in the coordinates of the plane
    double distance; ///< from it, dE76
};
PlaneView viewOf(const KVGamut::LabPoint& lab, const SlicePlane& plane);

/// The cut of a gamut by a plane, in the coordinates of the plane.
struct GamutSlice
{
    /// The boundary of the cut: closed rings that do not cross each other. The last point connects to the
    /// first, which is not repeated. The gamut lies to the left: an outer boundary is counter-clockwise (with
    /// the second coordinate up), the boundary of a hole clockwise.
    QList<QPolygonF> rings;

    /// Area inside the gamut, dE76 squared.
    double area() const;
};

/// Area inside @p ring; negative if it is clockwise.
double ringArea(const QPolygonF& ring);

/// The exact cut through a closed surface: one point, interpolated linearly, for each edge that the plane
/// crosses. A cut at a hue ends at the L* axis, which closes its rings. Empty if the plane misses the
/// surface.
GamutSlice gamutSlice(const KVGamut::Mesh& surface, const SlicePlane& plane);
