// SPDX-License-Identifier: Apache-2.0
#include "GamutLines.h"

#include <array>
#include <cmath>
#include <numbers>

namespace {

using KVGamut::LabPoint;
using Plane = std::array<float, 4>;

QList<Plane> planes()
{
    QList<Plane> all;
    for (int L = 10; L <= 90; L += 10)
        all.append(Plane{1.0f, 0.0f, 0.0f, static_cast<float>(-L)});
    for (int hue = 0; hue < 180; hue += 30) { // each plane contains two opposite hues
        const double h = hue * std::numbers::pi / 180.0;
        all.append(Plane{0.0f, static_cast<float>(-std::sin(h)), static_cast<float>(std::cos(h)), 0.0f});
    }
    return all;
}

float distance(const LabPoint& p, const LabPoint& q)
{
    return std::hypot(p.L - q.L, p.a - q.a, p.b - q.b);
}

/// The pieces of a closed line, without points that are nearer than @p minLength to the one before.
void appendPieces(QList<LabSegment>& pieces, const KVGamut::SectionLoop& loop, float minLength)
{
    if (loop.empty())
        return;
    LabPoint from = loop.front();
    for (const LabPoint& to : loop) {
        if (distance(from, to) < minLength)
            continue;
        pieces.append({from, to});
        from = to;
    }
    if (from != loop.front())
        pieces.append({from, loop.front()});
}

} // namespace

QList<LabSegment> gamutLines(const KVGamut::Mesh& surface, float minLength)
{
    QList<LabSegment> pieces;
    const QList<Plane> all = planes();
    for (const Plane& plane : all)
        for (const KVGamut::SectionLoop& loop : KVGamut::sectionLoops(plane.data(), surface))
            appendPieces(pieces, loop, minLength);
    return pieces;
}
