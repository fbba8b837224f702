// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"

#include <engine/base/Task.h>

#include <vector>

namespace velmora {

/// The neighbours of each triangle: entry i is the triangle beyond the edge from its vertex i to its vertex
/// i+1, or -1 if no triangle has that edge in the opposite direction. All indices must be valid.
/// If @p task is cancelled, the result is incomplete.
[[nodiscard]] std::vector<std::array<int, 3>> triangleNeighbours(const Mesh& mesh, const Task& task = {});

/// Topology of a mesh; the positions of the vertices do not matter.
struct MeshTopology
{
    bool indicesValid = false;   ///< every triangle has three different vertices, which exist
    bool closed = false;         ///< every edge belongs to exactly two triangles, in opposite directions
    bool manifold = false;       ///< closed, and the triangles around each vertex form one fan
    int components = 0;          ///< connected components
    int eulerCharacteristic = 0; ///< used vertices - edges + faces; 2 for each component of genus 0
};

/// Members after `indicesValid` are computed only if it is true, and after `closed` only if that is true.
/// If @p task is cancelled, the result has no meaning.
[[nodiscard]] MeshTopology topology(const Mesh& mesh, const Task& task = {});

} // namespace velmora
