// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"

#include <vector>

namespace velmora {

/// The neighbours of each triangle: entry i is the triangle behind the edge from corner i to
/// corner i+1, or -1 where there is none that traverses the edge the other way.
std::vector<std::array<int, 3>> triangleNeighbours(const Mesh& mesh);

/// What a mesh is as a surface, whatever its vertices' places.
struct MeshTopology
{
    bool indicesValid = false; ///< every triangle names three different vertices that exist
    bool closed = false;       ///< every edge lies in exactly two triangles, in opposite directions
    bool manifold = false;     ///< closed, and the triangles around each vertex form one fan
    int components = 0;
    int eulerCharacteristic = 0; ///< vertices in use - edges + faces; 2 per component without a hole
};

MeshTopology topology(const Mesh& mesh);

} // namespace velmora
