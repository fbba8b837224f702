// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Require.h"

#include <platform/KVVelmoraFramework.h>

#include <array>
#include <cmath>

namespace kvfuzz {

/// Calls all queries of a gamut and checks properties that every gamut has.
inline void queryAll(const KVGamut::GamutObject& gamut)
{
    const KVGamut::Report report = gamut.report();
    const bool empty = gamut.faceCount() == 0;
    require(empty == gamut.problem().has_value(), "there is either a gamut or a problem");
    require(empty == (report.method == KVGamut::Method::None), "each gamut has a method");
    require(empty == gamut.referenceLab().isEmpty(), "each gamut has a reference colour");
    require(std::isfinite(gamut.volume()) && (empty || gamut.volume() >= 0.99f), "volumes are sensible");
    const auto faces = gamut.faces();
    require(faces.size() == gamut.faceCount(), "all faces are handed out");
    for (const auto& segment : gamut.outline())
        require(segment.size() == 2, "an outline is made of segments");
    gamut.primaries();

    std::array<std::array<float, 3>, 5> points{
        {{50, 0, 0}, {0, 0, 0}, {100, 3, -7}, {1e30f, -1e30f, 5}, {50, NAN, 0}}};
    if (!empty)
        points[1] = {faces[0][0].lab[0], faces[0][0].lab[1], faces[0][0].lab[2]};
    for (const auto& p : points) {
        const bool inside = gamut.isInside(p.data());
        const KVGamut::Nearest nearest = gamut.nearest(p.data());
        require(!(empty && inside), "nothing is inside an empty gamut");
        require(!std::isnan(nearest.distance) && (nearest.distance < 0.0f) <= inside,
                "a negative distance is that of a point inside");
    }
    for (const std::array<float, 4>& plane :
         {std::array{1.0f, 0.0f, 0.0f, -50.0f}, std::array{0.3f, 1.0f, -0.7f, -points[1][1]}})
        for (const auto& piece : KVGamut::computeRing(plane.data(), faces))
            require(piece.size() == 2, "a ring is made of pieces");
    const KVGamut::Comparison self = gamut.compare(gamut);
    require(std::isfinite(self.intersection) && std::isfinite(self.unionVolume) &&
                std::isfinite(self.firstCovered),
            "comparisons are numbers");
}

} // namespace kvfuzz
