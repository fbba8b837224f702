// SPDX-License-Identifier: Apache-2.0
#include <platform/KVVelmoraFramework.h>

#include <engine/base/LabGeometry.h>

#include <array>
#include <tuple>

namespace {

using velmora::Vec3;

struct SideCorner
{
    Vec3 lab;
    double distance; // from the plane, times the length of its normal
};

// Where the edge meets the plane. Taken from the lower end to the upper, whichever face asks, so that
// both faces of an edge find the same point to the last bit.
QList<float> crossing(const SideCorner& p, const SideCorner& q)
{
    const bool ordered = std::tie(p.lab.L, p.lab.a, p.lab.b) <= std::tie(q.lab.L, q.lab.a, q.lab.b);
    const SideCorner& low = ordered ? p : q;
    const SideCorner& high = ordered ? q : p;
    const double t = low.distance / (low.distance - high.distance);
    const Vec3 x = low.lab + t * (high.lab - low.lab);
    return {static_cast<float>(x.L), static_cast<float>(x.a), static_cast<float>(x.b)};
}

} // namespace

QList<QList<QList<float>>> KVGamut::computeRing(const float* plane, const QList<QList<KVHull::Node>>& faces)
{
    QList<QList<QList<float>>> ring;
    if (!plane)
        return ring;
    const Vec3 normal{plane[0], plane[1], plane[2]};
    const double offset = plane[3];
    if (!velmora::isFinite(normal) || !std::isfinite(offset))
        return ring;

    for (const auto& face : faces) {
        if (face.size() != 3)
            continue;
        std::array<SideCorner, 3> corners;
        bool known = true;
        for (qsizetype i = 0; i < 3 && known; ++i) {
            const auto& lab = face[i].lab;
            known = lab.size() >= 3;
            if (!known)
                break;
            SideCorner& c = corners[static_cast<std::size_t>(i)];
            c.lab = {lab[0], lab[1], lab[2]};
            c.distance = velmora::dot(normal, c.lab) + offset;
            known = std::isfinite(c.distance);
        }
        if (!known)
            continue;
        // Each corner is on one side or the other, never on the plane: then a plane through corners
        // cuts as one right below them, and its rings close too. The piece runs from the edge that
        // comes down through the plane to the one that goes up; its neighbours run on from there.
        int down = -1;
        int up = -1;
        for (int e = 0; e < 3; ++e) {
            const bool from = corners[static_cast<std::size_t>(e)].distance >= 0.0;
            const bool to = corners[static_cast<std::size_t>((e + 1) % 3)].distance >= 0.0;
            if (from && !to)
                down = e;
            else if (!from && to)
                up = e;
        }
        if (down < 0)
            continue;
        const auto edge = [&](int e) {
            return crossing(corners[static_cast<std::size_t>(e)],
                            corners[static_cast<std::size_t>((e + 1) % 3)]);
        };
        ring.append({edge(down), edge(up)});
    }
    return ring;
}
