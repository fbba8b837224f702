// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"
#include "TriangleGroup.h"

#include <vector>

namespace velmora {

/// The point of the triangle p, q, r that is nearest to @p x. The triangle may be degenerate.
[[nodiscard]] Vec3 nearestOnTriangle(Vec3 x, Vec3 p, Vec3 q, Vec3 r);

/// Finds the point of a mesh that is nearest to a given one: a bounding volume hierarchy over the triangles,
/// searched branch and bound.
class NearestIndex
{
public:
    NearestIndex() = default;
    /// If @p task is cancelled, the index must not be used.
    explicit NearestIndex(const Mesh& mesh, const Task& task = {});

    /// The mesh must have triangles, and @p x must be finite. Deterministic if several points are equally
    /// near.
    [[nodiscard]] Vec3 nearest(Vec3 x) const;

private:
    struct Box
    {
        Vec3 low;
        Vec3 high;
        double squaredDistance(Vec3 x) const;
    };
    // The first child of an inner node is the next node; a leaf has triangles.
    struct Node
    {
        Box box;
        int secondChild = 0;
        int group = 0; // of a leaf
        int first = 0;
        int count = 0; // 0 for inner nodes
    };
    using TrianglePoints = std::array<Vec3, 3>;

    int build(std::vector<TrianglePoints>& triangles, int first, int count, const Task& task);
    void searchLeaf(const Node& leaf, Vec3 x, Vec3& best, double& bestSquared) const;

    std::vector<TrianglePoints> m_triangles; // sorted by leaf
    std::vector<TriangleGroup> m_groups;     // one for each leaf
    std::vector<Node> m_nodes;
};

} // namespace velmora
