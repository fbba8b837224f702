// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Task.h>

#include <platform/KVVelmoraFramework.h>

namespace velmora {

/// Compares two gamuts; null is an empty one. White and black points are not filled in.
///
/// The surfaces enclose slightly more or less than what the devices reach. The intersection has a part of the
/// difference: the share of the surface that is inside the other solid. The uncertainty of a volume is spread
/// over the surface in the same way, but a part of a surface is less certain than its share of the whole.
[[nodiscard]] KVGamut::ComparisonReport compared(const KVGamut::GamutData* first,
                                                 const KVGamut::GamutData* second, const Task& task);

} // namespace velmora
