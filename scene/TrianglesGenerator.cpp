#include <scene/Generators.h>
#include <scene/VertexWriter.h>

GeometryData kvTriangles(const QList<ColoredTriangle>& triangles)
{
    GeometryData data;
    data.primitiveMode = KVPrimitiveTriangles;
    VertexWriter writer(data.vertices, 3 * triangles.size());
    for (const ColoredTriangle& t : triangles) {
        const QVector3D normal =
            QVector3D::crossProduct(t[1].second - t[0].second, t[2].second - t[0].second).normalized();
        for (const ColoredPoint& corner : t)
            writer.add(corner.first, corner.second, normal);
    }
    return data;
}
