// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"
#include <engine/base/Task.h>

namespace velmora {

/// Removes the components of a surface that enclose less than a ten-thousandth of its volume: small cavities
/// and fragments between the tetrahedra of a solid that folds. If @p task is cancelled, the result has no
/// meaning.
void removeTinyComponents(Mesh& mesh, const Task& task = {});

} // namespace velmora
