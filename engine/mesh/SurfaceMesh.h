// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/LabGeometry.h>

#include <array>
#include <cstddef>
#include <vector>

namespace velmora {

using Triangle = std::array<int, 3>; ///< vertex indices, counter-clockwise seen from outside

/// A triangle mesh in CIELAB whose vertices know the device colour that they show.
struct SurfaceMesh
{
    int channels = 0;
    std::vector<float> device; ///< 0..1, `channels` values for each vertex; empty where unknown
    std::vector<Vertex> lab;
    std::vector<Triangle> triangles;

    const float* deviceOf(int vertex) const
    {
        return device.data() + static_cast<std::size_t>(vertex) * static_cast<std::size_t>(channels);
    }
};

std::vector<LatticePoint> latticePoints(const SurfaceMesh& mesh);

/// Turns the surface inside out.
void flip(SurfaceMesh& mesh);

/// Drops the vertices that no triangle names; the others keep their order.
void dropUnusedVertices(SurfaceMesh& mesh);

} // namespace velmora
