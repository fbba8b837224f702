// SPDX-License-Identifier: Apache-2.0
#include "Picker.h"

#include <array>
#include <cmath>

namespace {

struct Vec
{
    double x, y, z;
};

Vec vec(const QVector3D& v)
{
    return {v.x(), v.y(), v.z()};
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
double length(const Vec& v)
{
    return std::sqrt(dot(v, v));
}

Vec unit(const QVector3D& direction)
{
    const Vec v = vec(direction);
    const double l = length(v);
    return {v.x / l, v.y / l, v.z / l};
}

/// Distance along the ray to the triangle, or nothing (Möller and Trumbore 1997). The edges belong to
/// it, with a little room so that no ray slips between two faces.
std::optional<double> distanceToFace(const Vec& origin, const Vec& direction, const Picker::Face& face)
{
    constexpr double room = 1e-9;
    const Vec corner = vec(face[0]);
    const Vec edge1 = vec(face[1]) - corner;
    const Vec edge2 = vec(face[2]) - corner;
    const Vec p = cross(direction, edge2);
    const double determinant = dot(edge1, p);
    if (determinant == 0.0) // parallel to the face, or a face without area
        return {};
    const Vec fromCorner = origin - corner;
    const double u = dot(fromCorner, p) / determinant;
    if (!(u >= -room && u <= 1.0 + room))
        return {};
    const Vec q = cross(fromCorner, edge1);
    const double v = dot(direction, q) / determinant;
    if (!(v >= -room && u + v <= 1.0 + room))
        return {};
    const double distance = dot(edge2, q) / determinant;
    if (distance < 0.0)
        return {};
    return distance;
}

} // namespace

std::optional<Picker::Hit> Picker::firstHit(const Ray& ray, const QList<Face>& faces, float clip)
{
    if (ray.second.isNull())
        return {};
    const Vec origin = vec(ray.first);
    const Vec direction = unit(ray.second);
    std::optional<Hit> first;
    for (const Face& face : faces) {
        const auto distance = distanceToFace(origin, direction, face);
        if (!distance || (first && *distance >= static_cast<double>(first->distance)))
            continue;
        const QVector3D lab(static_cast<float>(origin.x + *distance * direction.x),
                            static_cast<float>(origin.y + *distance * direction.y),
                            static_cast<float>(origin.z + *distance * direction.z));
        if (lab.x() <= clip)
            first = Hit{static_cast<float>(*distance), lab};
    }
    return first;
}

std::optional<Picker::PointHit> Picker::firstBall(const Ray& ray, const QList<QVector3D>& positions,
                                                  float radius)
{
    if (ray.second.isNull())
        return {};
    const Vec origin = vec(ray.first);
    const Vec direction = unit(ray.second);
    std::optional<PointHit> first;
    for (qsizetype i = 0; i < positions.size(); ++i) {
        const Vec toCentre = vec(positions[i]) - origin;
        const double along = dot(toCentre, direction);
        const double besideSquared = dot(toCentre, toCentre) - along * along;
        const double halfChord = static_cast<double>(radius) * static_cast<double>(radius) - besideSquared;
        if (halfChord < 0.0 || along < 0.0)
            continue;
        const auto distance = static_cast<float>(std::max(0.0, along - std::sqrt(halfChord)));
        if (!first || distance < first->distance)
            first = PointHit{i, distance};
    }
    return first;
}
