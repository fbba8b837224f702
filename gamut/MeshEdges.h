// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>
#include <scene/CancelPacer.h>

#include <array>
#include <vector>

/// Vertex indices of the start and end of an edge.
using MeshEdge = std::array<int, 2>;

/// Each edge of @p mesh once, in the order and direction of its first occurrence in the triangles.
/// @param cancelled asked every 1024 triangles; if it returns true, the result is incomplete
[[nodiscard]] std::vector<MeshEdge> kvUniqueEdges(const KVGamut::Mesh& mesh,
                                                  const KVCancelCheck& cancelled = {});
