// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QList>

#include <utility>

/// Closed surfaces with known cuts.
namespace kvtest {

using Solid = KVGamut::Mesh;
using Corner = KVGamut::LabPoint;

/// Adds a triangle with its own vertices; weldedMesh() later merges vertices at the same position.
inline void addFace(Solid& solid, const Corner& p, const Corner& q, const Corner& r)
{
    const int first = static_cast<int>(solid.lab.size());
    solid.lab.insert(solid.lab.end(), {p, q, r});
    solid.triangles.push_back({first, first + 1, first + 2});
}

inline void addQuad(Solid& solid, const Corner& p, const Corner& q, const Corner& r, const Corner& s)
{
    addFace(solid, p, q, r);
    addFace(solid, p, r, s);
}

/// Both surfaces as one mesh, without shared vertices.
inline Solid operator+(Solid one, const Solid& other)
{
    const int first = static_cast<int>(one.lab.size());
    one.lab.insert(one.lab.end(), other.lab.begin(), other.lab.end());
    for (const auto& [i, j, k] : other.triangles)
        one.triangles.push_back({first + i, first + j, first + k});
    return one;
}

/// A prism between two lightnesses over the (a*, b*) corners @p base, counter-clockwise seen from above
/// and convex. Its faces point outwards, or inwards as the surface of a cavity.
inline Solid prism(float bottom, float top, const QList<QPair<float, float>>& base, bool hollow = false)
{
    Solid solid;
    const auto corner = [&](qsizetype i, float L) {
        const auto& [a, b] = base[i % base.size()];
        return Corner{L, a, b};
    };
    for (qsizetype i = 0; i < base.size(); ++i)
        addQuad(solid, corner(i, bottom), corner(i + 1, bottom), corner(i + 1, top), corner(i, top));
    for (qsizetype i = 1; i + 1 < base.size(); ++i) {
        addFace(solid, corner(0, top), corner(i, top), corner(i + 1, top));
        addFace(solid, corner(0, bottom), corner(i + 1, bottom), corner(i, bottom));
    }
    if (hollow)
        for (auto& triangle : solid.triangles)
            std::swap(triangle[1], triangle[2]);
    return KVGamut::weldedMesh(solid);
}

inline Solid box(const Corner& low, const Corner& high, bool hollow = false)
{
    return prism(low.L, high.L, {{low.a, low.b}, {high.a, low.b}, {high.a, high.b}, {low.a, high.b}}, hollow);
}

} // namespace kvtest
