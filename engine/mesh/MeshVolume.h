// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"

namespace velmora {

/// Volume enclosed by a closed mesh, in dE76 cubed: positive if its faces point outwards, 0 if it is empty.
/// Gauss' theorem: a sixth of the sum of the faces' determinants, relative to the first vertex.
/// If @p task is cancelled, the result has no meaning.
[[nodiscard]] double signedVolume(const Mesh& mesh, const Task& task = {});

} // namespace velmora
