#pragma once

#include "SurfaceMesh.h"

namespace velmora {

/// Volume, in dE76 cubed, of what two closed meshes both contain. Identical meshes give their volume,
/// meshes apart from each other exactly 0; else the error is about 1e-5 of the smaller volume.
double intersectionVolume(const SurfaceMesh& first, const SurfaceMesh& second);

} // namespace velmora
