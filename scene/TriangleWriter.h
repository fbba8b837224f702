// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <scene/VertexWriter.h>

/// Unit normal of a triangle in host coordinates. The corners are counter-clockwise seen from the side to
/// which it points. (0, 0, 0) if the corners are collinear or not finite.
[[nodiscard]] QVector3D kvFlatNormal(const QVector3D& a, const QVector3D& b, const QVector3D& c);

/// Appends triangles, each with its flat normal.
class TriangleWriter
{
public:
    TriangleWriter(QList<float>& out, qsizetype triangleCount) : m_vertices(out, 3 * triangleCount) {}

    void add(const ColoredPoint& a, const ColoredPoint& b, const ColoredPoint& c)
    {
        const QVector3D normal = kvFlatNormal(a.second, b.second, c.second);
        for (const ColoredPoint* corner : {&a, &b, &c})
            m_vertices.add(corner->first, corner->second, normal);
    }

private:
    VertexWriter m_vertices;
};
