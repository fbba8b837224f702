// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"

#include <vector>

namespace velmora {

/// Answers whether points lie inside a closed mesh: an ab grid of cells that name the triangles over
/// them, and the winding number along L* from the point upwards. Decided in integers, on the lattice
/// that the vertices lie on; a point's coordinates are brought to it first (2^-17 dE at most). Points
/// of the surface itself count as inside, save on its silhouette seen along L*.
class WindingIndex
{
public:
    WindingIndex() = default;
    explicit WindingIndex(const Mesh& mesh);

    bool isInside(Vec3 point) const;

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
