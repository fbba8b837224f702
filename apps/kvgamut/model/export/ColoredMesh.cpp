// SPDX-License-Identifier: Apache-2.0
#include "ColoredMesh.h"

#include "model/points/MeasuredPoint.h"

ColoredMesh ColoredMesh::of(const KVGamut::Mesh& surface)
{
    const KVGamut::Mesh welded = KVGamut::weldedMesh(surface);
    ColoredMesh result;
    result.triangles = welded.triangles;
    std::vector<int> renamed(welded.lab.size(), -1);
    for (KVGamut::Mesh::Triangle& triangle : result.triangles)
        for (int& vertex : triangle) {
            int& number = renamed[static_cast<std::size_t>(vertex)];
            if (number < 0) {
                number = static_cast<int>(result.lab.size());
                result.lab.push_back(welded.lab[static_cast<std::size_t>(vertex)]);
                result.colors.push_back(screenColor(result.lab.back()).rgb());
            }
            vertex = number;
        }
    return result;
}
