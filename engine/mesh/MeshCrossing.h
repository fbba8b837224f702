// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"
#include <engine/base/Result.h>
#include <engine/base/Task.h>

#include <vector>

namespace velmora {

/// An edge of a mesh, from the vertex with the lower index to that with the higher one.
struct MeshEdge
{
    int from = 0;
    int to = 0;

    auto operator<=>(const MeshEdge&) const = default; // NOLINT(modernize-use-nullptr): of clang-tidy 14
};

/// A point where an edge of one mesh passes through a triangle of the other.
struct CrossingPoint
{
    bool ofFirst = true; ///< the edge is one of the first mesh
    MeshEdge edge;
    int triangle = 0; ///< of the other mesh
    int sign = 1;     ///< +1 where the edge leaves the other solid, -1 where it enters
    double share = 0; ///< place along the edge, 0 to 1
    Vec3 at;          ///< position
};

/// A piece of the curve where the surfaces meet: the line that two triangles have in common. It leads along
/// the cross product of the normals of the second and of the first triangle: the part of the first triangle
/// outside the second solid is on its left.
struct CrossingPiece
{
    int first = 0;  ///< triangle of the first mesh
    int second = 0; ///< triangle of the second mesh
    int start = -1; ///< point
    int end = -1;   ///< point
};

/// How the surfaces of two closed meshes cross.
struct MeshCrossing
{
    std::vector<CrossingPoint> points; ///< sorted: those of the first mesh, each edge's together
    std::vector<CrossingPiece> pieces;
    std::vector<int> firstWinding;  ///< for each vertex of the first mesh, the winding number of the second
    std::vector<int> secondWinding; ///< likewise for the second mesh
};

/// Finds where two closed meshes cross.
///
/// All decisions are exact, and none is ambiguous: the first mesh is regarded as moved by (e, e^2, e^3) in
/// a*, b*, L*, with an infinitely small e > 0 (Edelsbrunner and Mücke 1990, "Simulation of simplicity"). No
/// vertex then lies on the other surface, no edges meet, and no triangles are coplanar. The decisions are
/// those of two solids in such positions, so each piece has two ends, and the pieces form closed loops.
///
/// Fails with TooManyCrossings if there are more than ten million pieces or too many triangles that are close
/// to each other, and with Cancelled.
[[nodiscard]] Result<MeshCrossing> crossingOf(const Mesh& first, const Mesh& second, const Task& task = {});

} // namespace velmora
