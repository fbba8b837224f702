// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtGui/QRgb>

#include <vector>

/// A gamut's surface with shared vertices and their colours: closed and oriented, so that each edge belongs
/// to two triangles, in opposite directions.
struct ColoredMesh
{
    std::vector<KVGamut::LabPoint> lab; ///< no two vertices at the same place
    std::vector<QRgb> colors;           ///< sRGB colour of each vertex
    std::vector<KVGamut::Mesh::Triangle> triangles;

    /// Merges the vertices of @p surface that are at the same place. Vertices are in the order in which the
    /// triangles use them.
    static ColoredMesh of(const KVGamut::Mesh& surface);
};
