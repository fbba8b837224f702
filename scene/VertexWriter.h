// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <scene/Coordinates.h>
#include <scene/GeometryData.h>

#include <algorithm>
#include <iterator>

/// Appends generated vertices, GeometryData::floatsPerVertex floats each, to a list. Reserves memory for the
/// given number of vertices.
class VertexWriter
{
public:
    VertexWriter(QList<float>& out, qsizetype vertexCount) : m_out(out)
    {
        m_out.reserve(m_out.size() + vertexCount * GeometryData::floatsPerVertex);
    }

    /// Position and normal are given in host coordinates. The position is written in scene coordinates.
    void add(const QColor& color, const QVector3D& position, const QVector3D& normal)
    {
        const QVector3D placed = kvSceneFromHost(position);
        const float record[GeometryData::floatsPerVertex] = {
            placed.x(), placed.y(),   placed.z(),     normal.x(),    normal.y(),
            normal.z(), color.redF(), color.greenF(), color.blueF(), color.alphaF(),
        };
        const qsizetype at = m_out.size();
        m_out.resize(at + GeometryData::floatsPerVertex);
        std::copy(std::begin(record), std::end(record), m_out.data() + at);
    }

private:
    QList<float>& m_out;
};
