// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"

#include <vector>

namespace velmora {

/// A corner of the outline: a vertex of the surface, or a place between vertices (vertex -1).
struct OutlinePoint
{
    int vertex = -1;
    LabPoint lab;
};
using OutlineLoop = std::vector<OutlinePoint>; ///< closed: the last point joins the first

/// Outline of a closed mesh's projection onto the ab plane: outer loops counter-clockwise, holes
/// clockwise, seen along -L*.
///
/// Its edges come from the silhouette: those between a face that looks up and one that does not.
/// Directed as the upper faces have them they form closed loops that wind around each point as often
/// as upper faces cover it; their union by the non-zero rule (Clipper, after Vatti 1992) is the
/// projection, at a hundredth of the cost of uniting all faces.
std::vector<OutlineLoop> outlineOf(const Mesh& mesh);

} // namespace velmora
