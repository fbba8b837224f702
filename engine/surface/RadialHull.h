// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/Mesh.h>
#include <engine/profile/DeviceNodes.h>

namespace velmora {

/// Surface of a device of three or more channels whose map may fold, provided that its gamut is
/// star-shaped: every point of it is seen from a centre.
///
/// Samples of all two-dimensional faces of the device hypercube, or of the whole cube of three
/// channels, whose surface may lie inside when the map folds; each sample p goes to
/// c + |p - c|^0.05 · (p - c)/|p - c|, which turns the solid into nearly a ball and lets concave parts
/// reach its rim; the convex hull of that; the samples' own coordinates back (after Balasubramanian and
/// Dalal 1997, "A method for quantifying the color gamut of an output device", with a milder exponent).
/// Fails with NoVolume if the samples lie in one plane.
[[nodiscard]] Result<Mesh> radialHull(const DeviceTransform& transform, const DeviceNodes& nodes,
                                      const Task& task);

/// Device colours of all two-dimensional faces of the hypercube at the given nodes, each once.
std::vector<float> hypercubeFaceSamples(const DeviceNodes& nodes);
/// Device colours of the whole cube of three channels at the given nodes.
std::vector<float> cubeSamples(const DeviceNodes& nodes);
/// How many samples radialHull() takes with the same count of nodes along each axis, when it takes all.
std::size_t hullSampleCount(int channels, int nodesPerAxis);

/// How many samples a device may take. Six inks have 240 two-dimensional faces, fifteen have 860,160,
/// and nearly all of them lie deep inside; beyond this many samples only the outermost faces are taken,
/// those whose corners lie least below the convex hull of all corners. From eleven channels on a colour
/// costs Little CMS tens of microseconds, twice as many for each further channel, and the budget falls.
std::size_t maxHullSamples(int channels);

/// The nodes per axis with which the outermost faces of a device of many channels, three times as
/// many as a zonotope of so many vectors has on its surface, keep to maxHullSamples(). What faces have in
/// common is sampled once.
int nodesForOutermostFaces(int channels, int wanted);

} // namespace velmora
