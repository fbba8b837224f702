// SPDX-License-Identifier: Apache-2.0
#include <gamut/Picking.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Double precision: the eye may be far away, and a triangle small.
struct Vec
{
    double x, y, z;
};

Vec vec(const QVector3D& v)
{
    return {v.x(), v.y(), v.z()};
}
Vec vec(const KVGamut::LabPoint& p)
{
    return {p.L, p.a, p.b};
}
Vec operator-(const Vec& a, const Vec& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
double dot(const Vec& a, const Vec& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
Vec cross(const Vec& a, const Vec& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Vec unit(const QVector3D& direction)
{
    const Vec v = vec(direction);
    const double length = std::sqrt(dot(v, v));
    return {v.x / length, v.y / length, v.z / length};
}

/// Distance along the ray to a triangle (Möller and Trumbore 1997). The tolerance closes the gaps that
/// rounding would leave between neighbouring triangles.
std::optional<double> distanceTo(const std::array<Vec, 3>& triangle, const Vec& origin, const Vec& direction)
{
    constexpr double tolerance = 1e-9;
    const Vec edge1 = triangle[1] - triangle[0];
    const Vec edge2 = triangle[2] - triangle[0];
    const Vec p = cross(direction, edge2);
    const double determinant = dot(edge1, p);
    if (determinant == 0.0) // parallel to the triangle, or a degenerate triangle
        return {};
    const Vec fromCorner = origin - triangle[0];
    const double u = dot(fromCorner, p) / determinant;
    if (!(u >= -tolerance && u <= 1.0 + tolerance))
        return {};
    const Vec q = cross(fromCorner, edge1);
    const double v = dot(direction, q) / determinant;
    if (!(v >= -tolerance && u + v <= 1.0 + tolerance))
        return {};
    const double distance = dot(edge2, q) / determinant;
    if (distance < 0.0)
        return {};
    return distance;
}

} // namespace

std::optional<SurfaceHit> kvPickSurface(const KVRay& ray, const KVGamut::Mesh& mesh, float clip)
{
    if (ray.second.isNull())
        return {};
    const Vec origin = vec(ray.first);
    const Vec direction = unit(ray.second);
    const auto vertexAt = [&mesh](int i) { return vec(mesh.lab[static_cast<std::size_t>(i)]); };
    std::optional<SurfaceHit> first;
    for (const KVGamut::Mesh::Triangle& t : mesh.triangles) {
        const auto distance = distanceTo({vertexAt(t[0]), vertexAt(t[1]), vertexAt(t[2])}, origin, direction);
        if (!distance || (first && *distance >= static_cast<double>(first->distance)))
            continue;
        const QVector3D lab(static_cast<float>(origin.x + *distance * direction.x),
                            static_cast<float>(origin.y + *distance * direction.y),
                            static_cast<float>(origin.z + *distance * direction.z));
        if (lab.x() <= clip)
            first = SurfaceHit{static_cast<float>(*distance), lab};
    }
    return first;
}

std::optional<MarkerHit> kvPickMarker(const KVRay& ray, const QList<ColoredPoint>& markers, float radius)
{
    if (ray.second.isNull())
        return {};
    const Vec origin = vec(ray.first);
    const Vec direction = unit(ray.second);
    const double squaredRadius = static_cast<double>(radius) * static_cast<double>(radius);
    std::optional<MarkerHit> first;
    for (qsizetype i = 0; i < markers.size(); ++i) {
        const Vec toCentre = vec(markers[i].second) - origin;
        const double along = dot(toCentre, direction);
        const double squaredHalfChord = squaredRadius - (dot(toCentre, toCentre) - along * along);
        if (!(squaredHalfChord >= 0.0 && along >= 0.0)) // NaN is a miss, too
            continue;
        const auto distance = static_cast<float>(std::max(0.0, along - std::sqrt(squaredHalfChord)));
        if (!first || distance < first->distance)
            first = MarkerHit{static_cast<int>(i), distance};
    }
    return first;
}
