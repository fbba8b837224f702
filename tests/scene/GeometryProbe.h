// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "support/Vec3d.h"

#include <scene/GeometryData.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <vector>

/// Checks generated geometry in double precision.
namespace kvtest {

inline constexpr float quietNaN = std::numeric_limits<float>::quiet_NaN();
inline constexpr float infinite = std::numeric_limits<float>::infinity();

/// One generated vertex, decoded.
struct GeneratedVertex
{
    Vec3d position; ///< scene
    Vec3d normal;   ///< host
    std::array<float, 4> color{};
};

inline std::vector<GeneratedVertex> decode(const QList<float>& floats)
{
    EXPECT_EQ(floats.size() % GeometryData::floatsPerVertex, 0) << "incomplete record";
    std::vector<GeneratedVertex> vertices;
    const float* f = floats.constData();
    for (qsizetype i = 0; i + GeometryData::floatsPerVertex <= floats.size();
         i += GeometryData::floatsPerVertex) {
        const float* v = f + i;
        vertices.push_back({{v[0], v[1], v[2]}, {v[3], v[4], v[5]}, {v[6], v[7], v[8], v[9]}});
    }
    return vertices;
}

inline std::array<float, 4> rgba(const QColor& c)
{
    return {c.redF(), c.greenF(), c.blueF(), c.alphaF()};
}

using TriangleCorners = std::array<Vec3d, 3>;

/// The triangles of a generated surface, in scene coordinates.
inline std::vector<TriangleCorners> trianglesOf(const GeometryData& geometry)
{
    EXPECT_EQ(geometry.primitiveMode, KVPrimitiveTriangles);
    const std::vector<GeneratedVertex> vertices = decode(geometry.vertices);
    EXPECT_EQ(vertices.size() % 3, 0u);
    std::vector<TriangleCorners> triangles;
    for (std::size_t i = 0; i + 3 <= vertices.size(); i += 3)
        triangles.push_back({vertices[i].position, vertices[i + 1].position, vertices[i + 2].position});
    return triangles;
}

using PositionKey = std::array<double, 3>;

inline PositionKey keyOf(const Vec3d& p)
{
    return {p.x + 0.0, p.y + 0.0, p.z + 0.0}; // -0.0 and 0.0 are the same position
}

/// Compares exactly: vertices at a seam must have identical positions.
inline std::set<PositionKey> distinctPositions(const std::vector<TriangleCorners>& triangles)
{
    std::set<PositionKey> keys;
    for (const TriangleCorners& t : triangles) {
        for (const Vec3d& p : t)
            keys.insert(keyOf(p));
    }
    return keys;
}

/// Whether every edge is used equally often in both directions: no holes, consistent orientation.
inline bool isClosedSurface(const std::vector<TriangleCorners>& triangles)
{
    std::map<std::pair<PositionKey, PositionKey>, int> balance;
    for (const TriangleCorners& t : triangles) {
        for (int i = 0; i < 3; ++i) {
            const PositionKey a = keyOf(t[i]);
            const PositionKey b = keyOf(t[(i + 1) % 3]);
            ++balance[{a, b}];
            --balance[{b, a}];
        }
    }
    for (const auto& [edge, count] : balance) {
        if (count != 0 && edge.first != edge.second)
            return false;
    }
    return true;
}

/// Positive if the faces are counter-clockwise seen from outside.
inline double signedVolume(const std::vector<TriangleCorners>& triangles)
{
    double sum = 0.0;
    if (triangles.empty())
        return sum;
    const Vec3d origin = triangles.front()[0]; // avoids cancellation for solids far from zero
    for (const TriangleCorners& t : triangles)
        sum += dot(t[0] - origin, cross(t[1] - origin, t[2] - origin)) / 6.0;
    return sum;
}

/// Winding number of the surface around @p p: 0 outside, 1 inside, more where solids overlap.
inline double windingNumber(const std::vector<TriangleCorners>& triangles, const Vec3d& p)
{
    double sum = 0.0;
    for (const TriangleCorners& t : triangles) {
        const Vec3d a = t[0] - p;
        const Vec3d b = t[1] - p;
        const Vec3d c = t[2] - p;
        const double la = length(a);
        const double lb = length(b);
        const double lc = length(c);
        const double numerator = dot(a, cross(b, c));
        const double denominator = la * lb * lc + dot(a, b) * lc + dot(b, c) * la + dot(c, a) * lb;
        sum += 2.0 * std::atan2(numerator, denominator);
    }
    return sum / (4.0 * M_PI);
}

/// Every normal has length 1 and agrees with the orientation of its triangle.
inline void expectFlatOutwardNormals(const GeometryData& geometry)
{
    const std::vector<GeneratedVertex> vertices = decode(geometry.vertices);
    for (std::size_t i = 0; i + 3 <= vertices.size(); i += 3) {
        const Vec3d face = unit(cross(vertices[i + 1].position - vertices[i].position,
                                      vertices[i + 2].position - vertices[i].position));
        for (std::size_t k = i; k < i + 3; ++k) {
            ASSERT_NEAR(length(vertices[k].normal), 1.0, 1e-5) << "vertex " << k;
            ASSERT_GT(dot(sceneFromHost(vertices[k].normal), face), 0.999) << "vertex " << k;
        }
    }
}

inline bool allFinite(const QList<float>& floats)
{
    return std::all_of(floats.cbegin(), floats.cend(), [](float f) { return std::isfinite(f); });
}

} // namespace kvtest
