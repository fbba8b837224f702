// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtGui/QPolygonF>

/// A plane through Lab: one lightness, or one hue.
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

/// Where a plane cuts a gamut, in the coordinates of the plane.
struct GamutSlice
{
    /// The boundary of the cut: closed rings of which none crosses another. The last point is joined to
    /// the first and not repeated. What belongs to the gamut lies to the left: an outer boundary runs
    /// counter-clockwise (with the second coordinate up), the boundary of a hole clockwise.
    QList<QPolygonF> rings;

    /// Area of what belongs to the gamut, dE76 squared.
    double area() const;
};

/// Area that @p ring encloses; negative where it runs clockwise.
double ringArea(const QPolygonF& ring);

/// The exact cut through a closed surface, as GamutObject::faces() gives it: one point for each edge that
/// the plane crosses, interpolated on it. A cut at a hue ends on the L* axis, along which its rings run.
/// Empty where the plane misses the surface.
GamutSlice gamutSlice(const QList<QList<KVHull::Node>>& faces, const SlicePlane& plane);
