// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

/// Zooming towards a place, as a wheel or two fingers on a touchpad do it.
namespace PointerZoom {

/// The factor of @p angle of a wheel, in eighths of a degree: 1.15 for a notch of 15 degrees, also in parts,
/// as wheels of high resolution send it; less than 1 towards the user.
[[nodiscard]] double factorOf(int angle);

/// @p camera so near that everything is @p factor times as large, seen in the same direction. The place on
/// @p ray, which begins at its first position, that is as deep as the point of interest keeps its pixel. The
/// distance from the point of interest stays between 5 and 1,300.
[[nodiscard]] KVCamera zoomed(const KVCamera& camera, const std::pair<QVector3D, QVector3D>& ray,
                              double factor);

} // namespace PointerZoom
