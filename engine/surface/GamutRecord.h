// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Result.h>
#include <engine/base/Task.h>
#include <engine/mesh/Mesh.h>

#include <platform/KVVelmoraFramework.h>

#include <vector>

namespace velmora {

/// Lab along one colorant channel, from just above 0 to full.
using Ramp = std::vector<LabPoint>;

/// Everything about a gamut that is computed from its profile, and saved. The members are documented at
/// KVGamut::Report; indexes, faces and outline are derived from the mesh on demand.
struct GamutRecord
{
    Mesh mesh;
    KVGamut::Method method = KVGamut::Method::None;
    KVVMRenderType intent = KVVMRenderRelativeColorimetric;
    bool blackPointCompensation = false;
    bool decorated = false; ///< whether primaries and outline are available
    int gridPoints = 0;
    double foldShare = 0.0;
    double volume = 0.0; ///< of the device's colours; that of the mesh differs slightly
    double volumeUncertainty = 0.0;
    double seconds = 0.0;
    LabPoint white;
    LabPoint black;
    LabPoint origin; ///< the device colour without colorants
    KVGamut::Conversion conversion;
    std::vector<Ramp> primaries; ///< one for each channel; empty for channels that are not colorants
};

/// Solids with less volume, in dE76 cubed, are refused with TooSmall.
inline constexpr double minVolume = 1.0;

/// Checks that a surface is closed, manifold, oriented outwards, within the range of Lab, and that it
/// encloses at least minVolume. Fails if @p task is cancelled.
[[nodiscard]] Result<void> checkSurface(const Mesh& mesh, const Task& task = {});

} // namespace velmora
