// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"
#include <engine/base/Task.h>

namespace velmora {

class WindingIndex;

/// The share of a mesh's area that is inside @p solid, 0..1; 0 for an empty mesh. An estimate from the
/// centres of about 2,000 faces. If @p task is cancelled, the result has no meaning.
[[nodiscard]] double shareInside(const Mesh& mesh, const WindingIndex& solid, const Task& task = {});

} // namespace velmora
