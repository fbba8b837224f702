// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <array>
#include <vector>

/// Slow and simple reference implementations. They use only the public interface.
namespace slow {

using Point = std::array<double, 3>;
using Face = std::array<Point, 3>;

std::vector<Face> facesOf(const KVGamut::GamutObject& gamut);

double determinant(const Point& u, const Point& v, const Point& w);
Point minus(const Point& p, const Point& q);

/// Volume of all sums of the vectors, each multiplied by a number from 0 to 1: the sum of the parallelepipeds
/// of all triples.
double zonotopeVolume(const std::vector<Point>& vectors);

/// Volume by Gauss' theorem, relative to the origin.
double volume(const std::vector<Face>& faces);

/// Winding number of the surface around a point: the sum of the faces' solid angles divided by 4 pi
/// (van Oosterom and Strackee 1983).
double windingNumber(const std::vector<Face>& faces, const Point& point);

/// The nearest point of all faces, by the Voronoi regions of each triangle
/// (Ericson 2005, "Real-time collision detection", 5.1.5).
Point nearest(const std::vector<Face>& faces, const Point& point);

struct Shape
{
    bool everyEdgeOnceEachWay = false;
    int euler = 0; ///< vertices - edges + faces, vertices with equal coordinates count once
    double volume = 0.0;
};
Shape shapeOf(const std::vector<Face>& faces);

/// Area of the union of the faces' projections onto the ab plane: merged intervals along lines of constant
/// b* with a distance of @p pitch.
double projectedArea(const std::vector<Face>& faces, double pitch);

/// Volume of the intersection of two closed surfaces: the area of the intersection of their sections at
/// constant L*, with a distance of @p pitch, computed by a polygon library.
double commonVolume(const KVGamut::GamutObject& first, const KVGamut::GamutObject& second, double pitch);

} // namespace slow
