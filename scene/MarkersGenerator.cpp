// SPDX-License-Identifier: Apache-2.0
#include <scene/Generators.h>
#include <scene/VertexWriter.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace {

constexpr double pi = std::numbers::pi;

/// Unit vector in spherical coordinates: @p polar angle from +L*, @p azimuth from +a* towards +b*.
QVector3D onSphere(double polar, double azimuth)
{
    return QVector3D(static_cast<float>(std::cos(polar)),
                     static_cast<float>(std::sin(polar) * std::cos(azimuth)),
                     static_cast<float>(std::sin(polar) * std::sin(azimuth)));
}

/// Triangle corners of a unit sphere, counter-clockwise seen from outside: @p rings bands from pole to pole,
/// twice as many sectors around the axis.
std::vector<QVector3D> unitSphere(int rings)
{
    const int sectors = 2 * rings;
    const auto corner = [=](int ring, int sector) {
        return onSphere(ring * pi / rings, (sector % sectors) * 2.0 * pi / sectors);
    };
    std::vector<QVector3D> corners;
    corners.reserve(std::size_t{6} * static_cast<std::size_t>(sectors) * static_cast<std::size_t>(rings - 1));
    for (int r = 0; r < rings; ++r) {
        for (int s = 0; s < sectors; ++s) {
            const QVector3D a = corner(r, s), b = corner(r + 1, s), c = corner(r + 1, s + 1),
                            d = corner(r, s + 1);
            // at the poles one of the two triangles of the quad is degenerate
            if (r + 1 < rings)
                corners.insert(corners.end(), {a, b, c});
            if (r > 0)
                corners.insert(corners.end(), {a, c, d});
        }
    }
    return corners;
}

/// The unit sphere for @p count markers of radius @p radius. Large sets get coarser spheres, which limits the
/// memory for their vertices; the facets of one marker among thousands are not visible.
const std::vector<QVector3D>& sphereFor(qsizetype count, float radius)
{
    static const std::vector<QVector3D> spheres[] = {unitSphere(8), unitSphere(4), unitSphere(3),
                                                     unitSphere(2)};
    constexpr float smallRadius = 1.0f; // a few pixels when the whole gamut is in view
    const qsizetype maxVertices = radius <= smallRadius ? 500'000 : 1'500'000;
    for (const auto& sphere : spheres)
        if (count * static_cast<qsizetype>(sphere.size()) <= maxVertices)
            return sphere;
    return spheres[std::size(spheres) - 1];
}

/// Triangle corners of a star of unit radius: eight vertices on the equator in steps of π/4, every second one
/// at half the radius, connected to both poles.
std::vector<QVector3D> unitStar()
{
    constexpr int steps = 8;
    const auto corner = [](int i) {
        return onSphere(pi / 2, (i % steps) * pi / 4) * (i % 2 == 0 ? 1.0f : 0.5f);
    };
    const QVector3D north(1, 0, 0), south(-1, 0, 0);
    std::vector<QVector3D> corners;
    for (int i = 0; i < steps; ++i) {
        corners.insert(corners.end(), {north, corner(i), corner(i + 1)});
        corners.insert(corners.end(), {south, corner(i + 1), corner(i)});
    }
    return corners;
}

GeometryData spheres(const QList<ColoredPoint>& markers, float radius)
{
    const std::vector<QVector3D>& unit = sphereFor(markers.size(), radius);
    GeometryData data;
    VertexWriter writer(data.vertices, markers.size() * static_cast<qsizetype>(unit.size()));
    for (const auto& [color, center] : markers)
        for (const QVector3D& direction : unit)
            writer.add(color, center + radius * direction, direction);
    return data;
}

GeometryData stars(const QList<ColoredPoint>& markers, float radius)
{
    static const std::vector<QVector3D> unit = unitStar();
    QList<ColoredTriangle> triangles;
    triangles.reserve(markers.size() * static_cast<qsizetype>(unit.size() / 3));
    for (const auto& [color, center] : markers)
        for (std::size_t i = 0; i < unit.size(); i += 3)
            triangles.append(ColoredTriangle{ColoredPoint{color, center + radius * unit[i]},
                                             ColoredPoint{color, center + radius * unit[i + 1]},
                                             ColoredPoint{color, center + radius * unit[i + 2]}});
    return kvTriangles(triangles);
}

GeometryData bracketedCubes(const QList<ColoredPoint>& markers, float size, float param)
{
    const float radius = 0.5f * size;
    const float arm = size / 3.0f;
    QList<ColoredSegment> segments;
    segments.reserve(24 * markers.size());
    for (const auto& [color, center] : markers) {
        for (int corner = 0; corner < 8; ++corner) {
            const QVector3D side(corner & 4 ? 1.0f : -1.0f, corner & 2 ? 1.0f : -1.0f,
                                 corner & 1 ? 1.0f : -1.0f);
            const QVector3D from = center + radius * side;
            for (int axis = 0; axis < 3; ++axis) {
                QVector3D to = from;
                to[axis] -= side[axis] * arm;
                segments.append({{color, from}, {color, to}});
            }
        }
    }
    return kvSegments(segments, false, 1.0f, param);
}

} // namespace

GeometryData kvMarkers(int markerType, const QList<ColoredPoint>& markers, float size, float param)
{
    GeometryData data;
    data.primitiveMode = KVPrimitiveLines; // documented result for an empty list
    if (!markers.isEmpty()) {
        if (markerType == 2)
            data = bracketedCubes(markers, size, param);
        else if (markerType == 3)
            data = stars(markers, 0.5f * size);
        else
            data = spheres(markers, 0.5f * size);
    }
    data.markerType = markerType;
    data.markers = markers;
    data.markerSize = size;
    data.markerParam = param;
    return data;
}
