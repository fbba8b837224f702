// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"
#include <engine/base/Result.h>
#include <engine/base/Task.h>

#include <platform/KVVelmoraFramework.h>

namespace velmora {

/// The surface of a part of the first solid, cut along the curve where the surfaces meet: the triangles of
/// the first mesh outside (or inside) the second one, and those of the second one inside the first, facing
/// outwards. Triangles that cross are split.
///
/// The result is closed: each edge belongs to as many triangles in one direction as in the other, which are
/// two unless the body touches itself. It encloses what intersectionVolume() states, except for the snapping
/// of the new vertices to the lattice. Parts thinner than 2^-14 dE are left out, such as those between
/// triangles that coincide. Empty if nothing is left. There are no device coordinates.
///
/// Fails as crossingOf() does.
[[nodiscard]] Result<Mesh> bodyOf(const Mesh& first, const Mesh& second, KVGamut::Body body,
                                  const Task& task = {});

} // namespace velmora
