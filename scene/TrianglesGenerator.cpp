#include <scene/Generators.h>
#include <scene/VertexWriter.h>

#include <cmath>

namespace {

bool isFinite(const QVector3D& v)
{
    return std::isfinite(v.x()) && std::isfinite(v.y()) && std::isfinite(v.z());
}

/// The same as the cross product in float would give if float had room for it.
QVector3D hugeNormal(const QVector3D& a, const QVector3D& b)
{
    const double x = double(a.y()) * b.z() - double(a.z()) * b.y();
    const double y = double(a.z()) * b.x() - double(a.x()) * b.z();
    const double z = double(a.x()) * b.y() - double(a.y()) * b.x();
    const double length = std::sqrt(x * x + y * y + z * z);
    if (!std::isfinite(length) || length == 0.0)
        return {};
    return {float(x / length), float(y / length), float(z / length)};
}

QVector3D flatNormal(const ColoredTriangle& t)
{
    const QVector3D a = t[1].second - t[0].second;
    const QVector3D b = t[2].second - t[0].second;
    const QVector3D normal = QVector3D::crossProduct(a, b).normalized();
    return isFinite(normal) ? normal : hugeNormal(a, b);
}

} // namespace

GeometryData kvTriangles(const QList<ColoredTriangle>& triangles)
{
    GeometryData data;
    data.primitiveMode = KVPrimitiveTriangles;
    VertexWriter writer(data.vertices, 3 * triangles.size());
    for (const ColoredTriangle& t : triangles) {
        const QVector3D normal = flatNormal(t);
        for (const ColoredPoint& corner : t)
            writer.add(corner.first, corner.second, normal);
    }
    return data;
}
