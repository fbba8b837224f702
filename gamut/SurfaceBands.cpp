// SPDX-License-Identifier: Apache-2.0
#include <gamut/SurfaceBands.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

using Stops = QList<std::pair<float, QRgb>>;

/// A corner of a part of a triangle.
struct Corner
{
    KVGamut::LabPoint lab;
    float value;
};

/// A part of a triangle: at most two of its corners are cut off.
struct Piece
{
    std::array<Corner, 5> corners;
    std::size_t size = 0;

    void add(const Corner& corner)
    {
        if (size < corners.size())
            corners[size++] = corner;
    }
};

/// Independent of the order of both, so that triangles with a common edge have the same points there.
Corner crossing(Corner one, Corner other, float level)
{
    if (other.value < one.value)
        std::swap(one, other);
    const float share = (level - one.value) / (other.value - one.value);
    const auto mix = [share](float from, float to) { return from + share * (to - from); };
    return {{mix(one.lab.L, other.lab.L), mix(one.lab.a, other.lab.a), mix(one.lab.b, other.lab.b)}, level};
}

/// What of @p part is above @p level (@p sign 1) or below it (-1).
Piece cut(const Piece& part, float level, float sign)
{
    Piece rest;
    for (std::size_t i = 0; i < part.size; ++i) {
        const Corner& corner = part.corners[i];
        const Corner& next = part.corners[(i + 1) % part.size];
        const float here = sign * (corner.value - level), there = sign * (next.value - level);
        if (here >= 0.0f)
            rest.add(corner);
        if ((here > 0.0f && there < 0.0f) || (here < 0.0f && there > 0.0f))
            rest.add(crossing(corner, next, level));
    }
    return rest;
}

int channel(int from, int to, float share)
{
    return static_cast<int>(std::lround(static_cast<float>(from) + share * static_cast<float>(to - from)));
}

/// Between two stops.
QRgb colorOf(float value, const std::pair<float, QRgb>& from, const std::pair<float, QRgb>& to)
{
    const float length = to.first - from.first;
    const float share = length > 0.0f ? std::clamp((value - from.first) / length, 0.0f, 1.0f) : 0.0f;
    return qRgb(channel(qRed(from.second), qRed(to.second), share),
                channel(qGreen(from.second), qGreen(to.second), share),
                channel(qBlue(from.second), qBlue(to.second), share));
}

void append(ColoredSurface& surface, const Piece& part, const std::pair<float, QRgb>& from,
            const std::pair<float, QRgb>& to)
{
    const int first = static_cast<int>(surface.mesh.lab.size());
    for (std::size_t i = 0; i < part.size; ++i) {
        surface.mesh.lab.push_back(part.corners[i].lab);
        surface.colors.append(colorOf(part.corners[i].value, from, to));
    }
    for (int i = 2; i < static_cast<int>(part.size); ++i)
        surface.mesh.triangles.push_back({first, first + i - 1, first + i});
}

/// Adds the bands of a triangle: below the first stop, between stops and above the last one.
void split(ColoredSurface& surface, Piece rest, const Stops& stops)
{
    const auto reaches = [&rest](float level) {
        return std::any_of(rest.corners.begin(),
                           rest.corners.begin() + static_cast<std::ptrdiff_t>(rest.size),
                           [level](const Corner& corner) { return corner.value > level; });
    };
    for (qsizetype i = 0; i < stops.size(); ++i) {
        const float level = stops[i].first;
        const Piece below = cut(rest, level, -1.0f);
        const bool isAbove = reaches(level);
        if (below.size >= 3)
            append(surface, below, stops[std::max<qsizetype>(i - 1, 0)], stops[i]);
        if (!isAbove)
            return;
        rest = cut(rest, level, 1.0f);
    }
    append(surface, rest, stops.last(), stops.last());
}

} // namespace

ColoredSurface kvColoredBands(const KVGamut::Mesh& mesh, const SurfaceValues& values)
{
    constexpr float largest = std::numeric_limits<float>::max() / 2.0f;
    ColoredSurface surface;
    if (values.values.size() != mesh.lab.size() || values.stops.isEmpty())
        return surface;
    surface.mesh.lab.reserve(3 * mesh.triangles.size());
    surface.mesh.triangles.reserve(mesh.triangles.size());
    for (const KVGamut::Mesh::Triangle& triangle : mesh.triangles) {
        Piece whole;
        for (const int vertex : triangle) {
            const auto v = static_cast<std::size_t>(vertex);
            const float value = values.values[v];
            whole.add({mesh.lab[v], std::isnan(value) ? -largest : std::clamp(value, -largest, largest)});
        }
        split(surface, whole, values.stops);
    }
    return surface;
}
