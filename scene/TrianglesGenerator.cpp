// SPDX-License-Identifier: Apache-2.0
#include <scene/Finite.h>
#include <scene/Generators.h>
#include <scene/TriangleWriter.h>

#include <cmath>

namespace {

/// Normal in double precision, for cross products that overflow in float.
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

} // namespace

QVector3D kvFlatNormal(const QVector3D& a, const QVector3D& b, const QVector3D& c)
{
    const QVector3D ab = b - a, ac = c - a;
    const QVector3D normal = QVector3D::crossProduct(ab, ac).normalized();
    return kvIsFinite(normal) ? normal : hugeNormal(ab, ac);
}

GeometryData kvTriangles(const QList<ColoredTriangle>& triangles)
{
    GeometryData data;
    data.primitiveMode = KVPrimitiveTriangles;
    TriangleWriter writer(data.vertices, triangles.size());
    for (const ColoredTriangle& t : triangles)
        writer.add(t[0], t[1], t[2]);
    return data;
}
