// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"

#include <engine/base/Ciede2000.h>

#include <optional>
#include <vector>

namespace velmora {

/// Finds points of a mesh by their lightness, chroma and hue: a bounding volume hierarchy over the triangles
/// whose cells are ranges of the three, searched branch and bound.
class LchIndex
{
public:
    LchIndex() = default;
    /// If @p task is cancelled, the index must not be used.
    explicit LchIndex(const Mesh& mesh, const Task& task = {});

    /// The point with the smallest CIEDE2000 from @p x, which must be finite. The mesh must have triangles.
    ///
    /// Cells that cannot contain a smaller difference are left out, by Ciede2000Bound. What remains is
    /// divided into pieces of a few dE, and in each the difference is minimised by Gauss-Newton steps.
    /// @param start a point of the mesh; the search is faster if it is near
    [[nodiscard]] Vec3 nearestByCiede2000(Vec3 x, Vec3 start) const;

    /// The point with the hue of @p x that is nearest to it (dE76), or nullopt if there is no point of this
    /// hue. Points on the L* axis have every hue. If @p x is on the axis, only these are taken.
    [[nodiscard]] std::optional<Vec3> nearestAtHue(Vec3 x) const;

private:
    using TrianglePoints = std::array<Vec3, 3>;
    struct Leaf
    {
        TrianglePoints points;
        LchRange range;
    };
    // The first child of an inner node is the next node.
    struct Node
    {
        LchRange range;
        int secondChild = 0; // 0: a leaf
        int leaf = 0;
    };

    void build(std::vector<Leaf>& leaves, int first, int count, const Task& task);
    template <typename Bound, typename Visit>
    void search(const Bound& bound, const Visit& visit) const;

    std::vector<Leaf> m_leaves; // one for each triangle
    std::vector<Node> m_nodes;
};

} // namespace velmora
