// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Result.h>
#include <engine/mesh/Mesh.h>

#include <platform/KVVelmoraFramework.h>

#include <vector>

namespace velmora {

using Ramp = std::vector<LabPoint>;

/// All that a gamut is; what can be derived from it is derived again when it is restored.
struct GamutRecord
{
    Mesh mesh;
    KVGamut::Method method = KVGamut::Method::None;
    KVVMRenderType intent = KVVMRenderRelativeColorimetric;
    bool blackPointCompensation = false;
    bool decorated = false; ///< with primaries and outline
    int gridPoints = 0;
    double foldShare = 0.0;
    double volumeUncertainty = 0.0;
    double seconds = 0.0;
    LabPoint white;
    LabPoint black;
    LabPoint origin; ///< the device colour without colorants
    std::vector<Ramp> primaries;
};

/// Solids of less volume, in dE76 cubed, have no gamut: TooSmall.
inline constexpr double minVolume = 1.0;

/// Checks that a surface is closed, manifold, oriented outwards, within the range of Lab, and that it
/// encloses at least minVolume.
[[nodiscard]] Result<void> checkSurface(const Mesh& mesh);

} // namespace velmora
