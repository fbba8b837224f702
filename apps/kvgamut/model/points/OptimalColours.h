// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <array>
#include <vector>

/// The surface of the solid of object colours in Lab: no reflecting surface without fluorescence has a
/// colour outside, with illuminant D50 and the CIE 1931 2 degree observer.
///
/// The colours of the surface have reflectances of 0 and 1 with two transitions (Schroedinger 1920, MacAdam
/// 1935). The weights are those of SpectralWeights for steps of 5 nm from 380 to 780 nm; transitions may lie
/// within a step. The surface consists of rings of equal lightness, with points in equal directions from the
/// grey axis, so that it cannot intersect itself.
struct OptimalColours
{
    std::vector<KVGamut::LabPoint> points; ///< black first, white last; none repeated
    std::vector<std::array<int, 3>> faces; ///< closed, manifold; counter-clockwise seen from outside

    /// How sure the enclosed volume is, dE76 cubed. With many rings and directions it is 3,600 more; with
    /// weights for steps of 10 nm it is 7,800 less, so that steps of 5 nm lack about 2,600.
    static constexpr double volumeUncertainty = 7000.0;

    static OptimalColours create();
};
