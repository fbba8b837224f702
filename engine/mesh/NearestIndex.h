// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"

#include <vector>

namespace velmora {

/// The point of a triangle that is nearest to @p x; also of a triangle that is a line or a point.
Vec3 nearestOnTriangle(Vec3 x, Vec3 p, Vec3 q, Vec3 r);

/// Answers which point of a mesh is nearest to a given one: a tree of boxes over the triangles, of
/// which only those are opened that may hold something nearer than what was found before.
class NearestIndex
{
public:
    NearestIndex() = default;
    explicit NearestIndex(const Mesh& mesh);

    /// The mesh must have triangles and @p x must be finite. Of points equally near it is always the
    /// same one.
    Vec3 nearest(Vec3 x) const;

private:
    struct Box
    {
        Vec3 low;
        Vec3 high;
        double squaredDistance(Vec3 x) const;
    };
    // The first child of a node follows it; a leaf has triangles.
    struct Node
    {
        Box box;
        int secondChild = 0;
        int first = 0;
        int count = 0; // 0 for inner nodes
    };
    using Corners = std::array<Vec3, 3>;

    int build(std::vector<Corners>& triangles, int first, int count);

    std::vector<Corners> m_triangles; // in the order of the leaves
    std::vector<Node> m_nodes;
};

} // namespace velmora
