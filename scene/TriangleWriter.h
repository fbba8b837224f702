// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <scene/VertexWriter.h>

/// The unit normal of a triangle, counter-clockwise seen from where it points; host coordinates.
/// (0, 0, 0) where there is none: collinear corners, and corners that are not finite.
QVector3D kvFlatNormal(const QVector3D& a, const QVector3D& b, const QVector3D& c);

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
