// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <scene/GeometryData.h>

/// Appends generated vertices to a list whose final size is reserved or known to be small.
/// The one place where host coordinates become scene coordinates and colours become floats.
class VertexWriter
{
public:
    explicit VertexWriter(QList<float>& out, qsizetype vertexCount) : m_out(out)
    {
        m_out.reserve(m_out.size() + vertexCount * GeometryData::floatsPerVertex);
    }

    void add(const QColor& color, const QVector3D& position, const QVector3D& normal)
    {
        const float record[GeometryData::floatsPerVertex] = {
            -position.y(), position.x(), position.z(),   normal.x(),    normal.y(),
            normal.z(),    color.redF(), color.greenF(), color.blueF(), color.alphaF(),
        };
        const qsizetype at = m_out.size();
        m_out.resize(at + GeometryData::floatsPerVertex);
        std::copy(std::begin(record), std::end(record), m_out.data() + at);
    }

private:
    QList<float>& m_out;
};
