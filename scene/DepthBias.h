// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QMatrix4x4>

/// Moves an object away from the camera in depth only: each of its pixels stays where it is, but gets the
/// depth of a place farther away.
///
/// The axes, the outlines on the ab plane, the grid and the coloured plane lie within a few tenths of a Lab
/// unit of each other. Without a bias, parts of almost equal depth flicker while the camera moves, and the
/// bars of the grid interrupt the axes and outlines. With the biases below, axes are in front of outlines,
/// outlines in front of the grid and the grid in front of the plane, from every direction and at every
/// distance. The axes have their true depth, so that they never show through a surface in front of them.
struct KVDepthBias
{
    /// By how much the depth is moved: to that of the same object @c above units lower if the camera is above
    /// L* 0, or @c below units higher if it is below. Less if that would be beyond the far plane, which is
    /// possible only if the camera is very close to L* 0.
    float above = 0.0f;
    float below = 0.0f;
    /// Added for the limited resolution of the depth buffer, which is 0.1 units at a distance of 400 and 1
    /// unit at 1,300. In multiples of the smallest difference that it can store.
    int resolutionSteps = 0;

    bool operator==(const KVDepthBias&) const = default;

    /// The projection with the bias. Only depth differs from that of @p cameraToView; it works for
    /// perspective and orthogonal projections and everything in between.
    [[nodiscard]] QMatrix4x4 applied(const QMatrix4x4& worldToCamera, const QMatrix4x4& cameraToView) const;
};

/// Number of gamuts whose outlines are ordered among each other; further ones begin again.
inline constexpr int kvOrderedOutlines = 3;

/// The order from front to back. The values are little more than is needed to keep the bars apart: those of
/// the axes extend 0.5 units from L* 0, those of the outlines from L* 0.08 to 0.52, those of the grid 0.03
/// units; the plane is at L* -0.3.
[[nodiscard]] KVDepthBias kvAxesBias();
[[nodiscard]] KVDepthBias kvSectionBias();
/// @param rank order among the outlines of several gamuts
[[nodiscard]] KVDepthBias kvOutlineBias(int rank);
[[nodiscard]] KVDepthBias kvGridBias();
[[nodiscard]] KVDepthBias kvPlaneBias();
