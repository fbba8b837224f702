// SPDX-License-Identifier: Apache-2.0
#include <scene/CoarseTriangles.h>
#include <scene/Coordinates.h>
#include <scene/TriangleWriter.h>
#include <scene/VertexStride.h>

#include <QtGui/QVector3D>

#include <meshoptimizer.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

namespace {

constexpr float maxError = 0.02f; // of the extent

/// Where a corner is and what it looks like. Corners that are equal in both are one vertex of the mesh.
struct Corner
{
    float position[3];
    float color[4];
};

std::vector<Corner> cornersOf(std::span<const float> records)
{
    std::vector<Corner> corners(records.size() / kvVertexFloats);
    const auto* record = reinterpret_cast<const VertexStride*>(records.data());
    for (Corner& corner : corners) {
        // -0 and 0 are the same position, but not the same bytes
        std::transform(std::begin(record->position), std::end(record->position), corner.position,
                       [](float v) { return v + 0.0f; });
        std::copy_n(record->baseColor, 4, corner.color);
        ++record;
    }
    return corners;
}

bool areFinite(const std::vector<Corner>& corners)
{
    return std::all_of(corners.begin(), corners.end(), [](const Corner& corner) {
        return std::all_of(std::begin(corner.position), std::end(corner.position),
                           [](float v) { return std::isfinite(v); });
    });
}

/// Triangles that share their corners.
struct IndexedMesh
{
    std::vector<Corner> corners;
    std::vector<unsigned> indices;
};

IndexedMesh indexed(const std::vector<Corner>& corners)
{
    std::vector<unsigned> remap(corners.size());
    IndexedMesh mesh;
    mesh.corners.resize(meshopt_generateVertexRemap(remap.data(), nullptr, corners.size(), corners.data(),
                                                    corners.size(), sizeof(Corner)));
    meshopt_remapVertexBuffer(mesh.corners.data(), corners.data(), corners.size(), sizeof(Corner),
                              remap.data());
    mesh.indices = std::move(remap); // the input has no indices, so that they are the table itself
    return mesh;
}

void simplify(IndexedMesh& mesh, std::size_t maxTriangles)
{
    std::vector<unsigned> fewer(mesh.indices.size());
    fewer.resize(meshopt_simplify(fewer.data(), mesh.indices.data(), mesh.indices.size(),
                                  mesh.corners.front().position, mesh.corners.size(), sizeof(Corner),
                                  std::min(3 * maxTriangles, mesh.indices.size()), maxError, 0, nullptr));
    mesh.indices.swap(fewer);
}

QVector3D hostPositionOf(const Corner& corner)
{
    return kvHostFromScene({corner.position[0], corner.position[1], corner.position[2]});
}

/// Writes the vertices of the triangle whose corners are those of @p mesh at @p corners.
void writeTriangle(const IndexedMesh& mesh, const unsigned* corners, float* to)
{
    const Corner* const at[] = {&mesh.corners[corners[0]], &mesh.corners[corners[1]],
                                &mesh.corners[corners[2]]};
    const QVector3D normal =
        kvFlatNormal(hostPositionOf(*at[0]), hostPositionOf(*at[1]), hostPositionOf(*at[2]));
    for (const Corner* corner : at) {
        to = std::copy_n(corner->position, 3, to);
        for (int i = 0; i < 3; ++i)
            *to++ = normal[i];
        to = std::copy_n(corner->color, 4, to);
    }
}

} // namespace

QList<float> kvCoarseTriangles(const QList<float>& records, qsizetype maxTriangles)
{
    const qsizetype whole = records.size() - records.size() % (qsizetype(3) * kvVertexFloats);
    const std::vector<Corner> corners = cornersOf({records.constData(), static_cast<std::size_t>(whole)});
    if (corners.empty() || !areFinite(corners))
        return {};
    IndexedMesh mesh = indexed(corners);
    simplify(mesh, static_cast<std::size_t>(std::max<qsizetype>(maxTriangles, 1)));

    QList<float> vertices(static_cast<qsizetype>(mesh.indices.size()) * kvGeneratedFloats);
    float* to = vertices.data();
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3, to += 3 * kvGeneratedFloats)
        writeTriangle(mesh, &mesh.indices[i], to);
    return vertices;
}
