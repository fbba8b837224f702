// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"
#include "TriangleGroup.h"

#include <vector>

namespace velmora {

/// The point of the triangle p, q, r that is nearest to @p x. The triangle may be degenerate.
[[nodiscard]] Vec3 nearestOnTriangle(Vec3 x, Vec3 p, Vec3 q, Vec3 r);

/// Finds the point of a mesh that is nearest to a given one: a bounding volume hierarchy over the triangles
/// with four children at each node, searched branch and bound.
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
    using TrianglePoints = std::array<Vec3, 3>;
    /// Its children are nodes, or leaves: then the number is that of the leaf, inverted.
    struct Node
    {
        LanesVec3 low, high; ///< of the boxes of the children; a missing child is infinitely far away
        std::array<int, laneCount> children{};
        Lanes squaredDistances(const LanesVec3& x) const
        {
            const LanesVec3 beyond =
                x - LanesVec3{upper(low.L, lower(high.L, x.L)), upper(low.a, lower(high.a, x.a)),
                              upper(low.b, lower(high.b, x.b))};
            return dot(beyond, beyond);
        }
    };
    struct Leaf
    {
        TriangleGroup group;
        int first; ///< in m_triangles
        int count;
    };
    struct Found
    {
        Vec3 point;
        double squaredDistance;
    };

    int buildNode(std::span<TrianglePoints> triangles, int first, const Task& task);
    int buildChild(std::span<TrianglePoints> triangles, int first, const Task& task);
    Vec3 nearestOfAll(Vec3 x) const;
    void searchLeaf(const Leaf& leaf, Vec3 x, Found& best) const;

    std::vector<TrianglePoints> m_triangles; // sorted by leaf
    std::vector<Leaf> m_leaves;
    std::vector<Node> m_nodes;
};

} // namespace velmora
