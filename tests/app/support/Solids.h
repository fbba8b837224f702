// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QList>

/// Closed surfaces whose cuts are known.
namespace kvtest {

using Faces = QList<QList<KVHull::Node>>;

struct Corner
{
    float L, a, b;
};

inline void addFace(Faces& faces, const Corner& p, const Corner& q, const Corner& r)
{
    QList<KVHull::Node> face;
    for (const Corner& c : {p, q, r})
        face.append(KVHull::Node{{}, {c.L, c.a, c.b}});
    faces.append(face);
}

inline void addQuad(Faces& faces, const Corner& p, const Corner& q, const Corner& r, const Corner& s)
{
    addFace(faces, p, q, r);
    addFace(faces, p, r, s);
}

/// A prism between two lightnesses over the (a*, b*) corners @p base, counter-clockwise seen from above
/// and convex. Outward, or inward as the surface of a hollow.
inline Faces prism(float bottom, float top, const QList<QPair<float, float>>& base, bool hollow = false)
{
    Faces faces;
    const auto corner = [&](qsizetype i, float L) {
        const auto& [a, b] = base[i % base.size()];
        return Corner{L, a, b};
    };
    for (qsizetype i = 0; i < base.size(); ++i)
        addQuad(faces, corner(i, bottom), corner(i + 1, bottom), corner(i + 1, top), corner(i, top));
    for (qsizetype i = 1; i + 1 < base.size(); ++i) {
        addFace(faces, corner(0, top), corner(i, top), corner(i + 1, top));
        addFace(faces, corner(0, bottom), corner(i + 1, bottom), corner(i, bottom));
    }
    if (hollow)
        for (auto& face : faces)
            face.swapItemsAt(1, 2);
    return faces;
}

inline Faces box(const Corner& low, const Corner& high, bool hollow = false)
{
    return prism(low.L, high.L, {{low.a, low.b}, {high.a, low.b}, {high.a, high.b}, {low.a, high.b}}, hollow);
}

} // namespace kvtest
