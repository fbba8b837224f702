// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"

#include <engine/base/Task.h>

#include <vector>

namespace velmora {

/// A vertex of the outline: a vertex of the surface, or -1 where two silhouette edges cross in projection.
struct OutlinePoint
{
    int vertex = -1;
    LabPoint lab;
};
using OutlineLoop = std::vector<OutlinePoint>; ///< closed: the last point joins the first

/// Outline of a closed mesh's projection onto the ab plane: outer loops counter-clockwise, holes
/// clockwise, seen along -L*.
///
/// Its edges come from the silhouette: the edges between a face that faces up and one that does not. In the
/// direction that they have in the upper faces they form closed loops, whose winding number at a point is
/// the number of upper faces there. Their union by the non-zero rule (Clipper, after Vatti 1992) is the
/// projection, at a hundredth of the cost of uniting all faces.
/// If @p task is cancelled, the result is incomplete.
[[nodiscard]] std::vector<OutlineLoop> outlineOf(const Mesh& mesh, const Task& task = {});

} // namespace velmora
