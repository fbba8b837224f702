// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Result.h>
#include <engine/mesh/Columns.h>

namespace velmora {

/// Share of the volume in which a surface's winding number may be neither 0 nor 1.
inline constexpr double maxInvalidShare = 0.001;

/// The winding numbers of a surface along columns at about 64 places across. Fails if @p task is cancelled.
[[nodiscard]] Result<WindingCheck> windingOf(const Mesh& mesh, const Task& task);

/// Whether any two faces of a surface pierce each other. Fails if @p task is cancelled.
[[nodiscard]] Result<bool> hasIntersections(const Mesh& mesh, const Task& task);

enum class CoincidentSheets
{
    Allowed,
    Refused
};

/// Whether a surface bounds a solid: its winding number is 1 almost everywhere inside, and it does not
/// intersect itself. Coincident sheets do not intersect, and where three of them coincide the winding number
/// is still 0 or 1; so they can be refused as well. Fails if @p task is cancelled.
[[nodiscard]] Result<bool> isSimple(const Mesh& mesh, CoincidentSheets coincident, const Task& task);

} // namespace velmora
