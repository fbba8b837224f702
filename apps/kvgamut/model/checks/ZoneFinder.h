// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/points/MeasuredPoint.h"

#include <platform/KVVelmoraFramework.h>

#include <array>
#include <cmath>
#include <map>

/// A cubic cell of Lab, by its number along L*, a*, b*.
using LabPlace = std::array<int, 3>;

inline LabPlace labPlace(const KVGamut::LabPoint& lab, float edge)
{
    const auto at = [edge](float value) { return static_cast<int>(std::floor(value / edge)); };
    return {at(lab.L), at(lab.a), at(lab.b)};
}

inline KVGamut::LabPoint labCentre(const LabPlace& place, float edge)
{
    const auto at = [edge](int value) { return (static_cast<float>(value) + 0.5f) * edge; };
    return {at(place[0]), at(place[1]), at(place[2])};
}

/// The zones of many colours. Each colour of a block is no farther from its centre than half the diagonal,
/// and so its distance from the surface differs from that of the centre by no more; only where that does not
/// decide the zone is the distance of the colour itself computed.
class ZoneFinder
{
public:
    /// @param tolerance dE76; colours nearer to the surface are on the edge
    ZoneFinder(const KVGamut::GamutObject& gamut, float tolerance) : m_gamut(gamut), m_tolerance(tolerance) {}

    Side sideOfColour(const KVGamut::LabPoint& lab)
    {
        const float ofCentre = distanceOfBlock(labPlace(lab, blockEdge));
        constexpr float halfDiagonal = 0.8661f * blockEdge;
        if (std::abs(ofCentre) > m_tolerance + halfDiagonal)
            return sideOf(ofCentre, m_tolerance);
        return sideOf(distanceOf(lab), m_tolerance);
    }

private:
    static constexpr float blockEdge = 4.0f;

    float distanceOf(const KVGamut::LabPoint& lab) const
    {
        return m_gamut.nearest(std::array{lab.L, lab.a, lab.b}.data()).distance;
    }
    float distanceOfBlock(const LabPlace& place)
    {
        const auto known = m_blocks.find(place);
        if (known != m_blocks.end())
            return known->second;
        return m_blocks[place] = distanceOf(labCentre(place, blockEdge));
    }

    const KVGamut::GamutObject m_gamut;
    const float m_tolerance;
    std::map<LabPlace, float> m_blocks;
};
