// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"

namespace velmora {

/// Volume that a closed mesh encloses, in dE76 cubed: positive when its faces look outwards.
/// Gauss' theorem: a sixth of the sum of the faces' determinants, taken about the first vertex.
double signedVolume(const Mesh& mesh);

} // namespace velmora
