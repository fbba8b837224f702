// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <array>
#include <vector>

/// Answers found the long and obvious way, to compare clever code with. All work on faces as a host
/// gets them and know nothing of the engine's inside.
namespace slow {

using Point = std::array<double, 3>;
using Face = std::array<Point, 3>;

std::vector<Face> facesOf(const KVGamut::GamutObject& gamut);

double determinant(const Point& u, const Point& v, const Point& w);
Point minus(const Point& p, const Point& q);

/// Gauss' theorem about the origin.
double volume(const std::vector<Face>& faces);

/// How often the surface winds around a point: the sum of the faces' solid angles over 4 pi
/// (van Oosterom and Strackee 1983).
double windingNumber(const std::vector<Face>& faces, const Point& point);

/// The point of all faces that is nearest to a given one: region by region of each triangle
/// (Ericson 2005, "Real-time collision detection", 5.1.5).
Point nearest(const std::vector<Face>& faces, const Point& point);

struct Shape
{
    bool everyEdgeOnceEachWay = false;
    int euler = 0; ///< vertices - edges + faces, vertices being told apart by their coordinates
    double volume = 0.0;
};
Shape shapeOf(const std::vector<Face>& faces);

/// Area of the union of all faces' projections onto the ab plane: sorted intervals along lines of
/// constant b*, @p pitch apart.
double projectedArea(const std::vector<Face>& faces, double pitch);

/// Volume common to two closed surfaces: areas of the common part of their sections at constant
/// L*, @p pitch apart, through a polygon library.
double commonVolume(const KVGamut::GamutObject& first, const KVGamut::GamutObject& second, double pitch);

} // namespace slow
