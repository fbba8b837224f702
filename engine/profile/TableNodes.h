// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <lcms2.h>

#include <vector>

namespace velmora {

/// The device values of each channel, ascending, at which the table of @p tag has its nodes: between them the
/// map from device values to the PCS is smooth, at them it has a kink. A table behind curves has its nodes
/// where the curves reach them.
/// @return empty if the profile has no such tag, or if it has no table that follows directly on curves
[[nodiscard]] std::vector<std::vector<float>> tableNodes(cmsHPROFILE profile, cmsTagSignature tag);

} // namespace velmora
