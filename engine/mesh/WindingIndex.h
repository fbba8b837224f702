// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"

#include <vector>

namespace velmora {

/// Point-in-solid test for a closed mesh: the winding number along a ray from the point upwards in L*. An ab
/// grid lists the triangles of each cell. Predicates are exact, on the vertices' lattice; the point is first
/// snapped to it (by at most 2^-17 dE). Points on the surface count as inside, except on its silhouette seen
/// along L*.
class WindingIndex
{
public:
    WindingIndex() = default;
    /// If @p task is cancelled, no point is inside.
    explicit WindingIndex(const Mesh& mesh, const Task& task = {});

    /// False if @p point is not finite or out of range.
    [[nodiscard]] bool isInside(Vec3 point) const;

private:
    std::vector<LatticePoint> m_points;
    std::vector<Triangle> m_triangles;
    LatticePoint m_low;
    LatticePoint m_high;
    int m_shift = 0; // cells are 2^m_shift lattice units wide
    int m_columns = 0;
    std::vector<int> m_first;
    std::vector<int> m_listed;
};

} // namespace velmora
