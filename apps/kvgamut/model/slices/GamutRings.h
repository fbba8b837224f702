// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtGui/QPolygonF>

/// Gamut rings: the volume of a gamut, shown as areas in a plane.
///
/// The ring of lightness L encloses, in each hue sector, an area equal to the gamut's volume in that
/// sector from black up to L: its radius at hue h is
///
///     C*RSS(L, h) = sqrt( integral over the gamut's l <= L at hue h of 2 C dC dl ).
///
/// For a gamut without a gap at that hue it is the root of the sum of its squared chromas. The area between
/// two rings is the volume between their lightnesses, the area of the outermost ring the whole volume; where
/// a ring is far from the one inside it, the gamut is wide at these lightnesses and hues. The definition
/// is that of K. Masaoka, F. Jiang, M. D. Fairchild and R. L. Heckaman, "Analysis of color volume of
/// multi-chromatic displays using gamut rings", J. Soc. Inf. Display 28(3), 273-286 (2020),
/// doi:10.1002/jsid.852, and of the ICDM's Information Display Measurements Standard.
struct GamutRings
{
    QList<double> lightness; ///< upper limit of each ring: 10, 20 ... 100, and more if the gamut is lighter
    /// A polygon each, from the innermost outwards: its corners are at equal steps of hue, from +a*
    /// (hue 0) towards +b*. Coordinates a*RSS and b*RSS, dE76 to the power of 3/2.
    QList<QPolygonF> rings;
};

/// The rings of a closed surface from the exact cuts at @p hues hue angles (even). Volume below the first
/// step belongs to the first ring. Empty for an empty surface.
GamutRings gamutRings(const KVGamut::Mesh& surface, double step = 10.0, int hues = 360);
