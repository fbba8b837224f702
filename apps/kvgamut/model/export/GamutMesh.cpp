// SPDX-License-Identifier: Apache-2.0
#include "GamutMesh.h"

#include <map>

GamutMesh GamutMesh::of(const QList<QList<KVHull::Node>>& faces)
{
    GamutMesh mesh;
    std::map<std::array<float, 3>, int> places;
    const auto vertexAt = [&](const QList<float>& lab) {
        const auto [place, isNew] =
            places.try_emplace({lab[0], lab[1], lab[2]}, static_cast<int>(mesh.vertices.size()));
        if (isNew) {
            const QList<float> rgb = KVColorConversionHelper::KVHLab2RGB(lab);
            const auto step = [&rgb](qsizetype i) { return static_cast<int>(rgb.value(i)); };
            mesh.vertices.append({QVector3D(lab[0], lab[1], lab[2]), qRgb(step(0), step(1), step(2))});
        }
        return place->second;
    };
    mesh.triangles.reserve(faces.size());
    for (const auto& face : faces) {
        const Triangle triangle{vertexAt(face[0].lab), vertexAt(face[1].lab), vertexAt(face[2].lab)};
        if (triangle[0] != triangle[1] && triangle[1] != triangle[2] && triangle[2] != triangle[0])
            mesh.triangles.append(triangle); // what has no width is no part of the surface
    }
    return mesh;
}
