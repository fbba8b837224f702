// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/Mesh.h>
#include <engine/profile/DeviceNodes.h>

namespace velmora {

/// Surface of a device with three or more channels whose map may fold, provided that its gamut is
/// star-shaped: every point of it is visible from a centre c.
///
/// Samples all two-dimensional faces of the device hypercube; with three channels the whole cube, because the
/// image of its surface may lie inside the gamut if the map folds. Each sample p is mapped to
/// c + |p - c|^0.05 · (p - c)/|p - c|, which makes the solid nearly a ball, so that samples of concave parts
/// are on its convex hull, too. The triangles of that hull, with the samples' own coordinates, are the
/// surface (after Balasubramanian and Dalal 1997, "A method for quantifying the color gamut of an output
/// device", with a smaller exponent).
/// @param added further device colours that are taken as samples
/// @return fails as DeviceTransform::toLab(), or with NoVolume if the samples are coplanar
[[nodiscard]] Result<Mesh> radialHull(const DeviceTransform& transform, const DeviceNodes& nodes,
                                      const Task& task, const std::vector<float>& added = {});

/// Device colours of all two-dimensional faces of the hypercube at the given nodes, each once.
/// Incomplete if @p task is cancelled.
[[nodiscard]] std::vector<float> hypercubeFaceSamples(const DeviceNodes& nodes, const Task& task = {});
/// Device colours of the whole cube of three channels at the given nodes. Incomplete if @p task is cancelled.
[[nodiscard]] std::vector<float> cubeSamples(const DeviceNodes& nodes, const Task& task = {});
/// Whether any channel turns before its end, see turningPoints().
[[nodiscard]] bool doTurn(const std::vector<float>& turns);
/// radialHull() of the smaller hypercube whose channels end at their @p turns, for eight and more channels.
/// Of the samples of the whole hypercube those are taken that lie outside.
/// @return fails as radialHull()
[[nodiscard]] Result<Mesh> turnedHull(const DeviceTransform& transform, const DeviceNodes& nodes,
                                      const std::vector<float>& turns, const Task& task,
                                      const std::vector<float>& added = {});
/// Device colours of all two-dimensional faces of that smaller hypercube, with as many of the nodes as give
/// no more than 20,000 colours. Empty if no channel turns before its end. Incomplete if @p task is cancelled.
[[nodiscard]] std::vector<float> samplesOfTurnedFaces(const DeviceNodes& nodes,
                                                      const std::vector<float>& turns, const Task& task);
/// Number of samples that radialHull() would take without a limit.
[[nodiscard]] std::size_t hullSampleCount(int channels, int nodesPerAxis);

/// Limit of samples for a number of channels. Six inks have 240 two-dimensional faces, fifteen have 860,160,
/// and nearly all of them lie deep inside. If there are more samples than this, only the outermost faces are
/// sampled: those whose corners are least deep below the convex hull of all corners. From eleven channels on
/// a transform takes tens of microseconds, and twice as many for each further channel; the limit decreases.
[[nodiscard]] std::size_t maxHullSamples(int channels);

/// Nodes per axis, at most @p wanted, with which the samples of the outermost faces stay within
/// maxHullSamples(). A zonotope of n vectors has n (n - 1) faces; three times as many are sampled.
[[nodiscard]] int nodesForOutermostFaces(int channels, int wanted);

/// Nodes per axis, at most @p wanted, with which radialHull() takes at most maxHullSamples(): those of the
/// outermost faces from seven channels on, where there are too many faces to sample all of them.
[[nodiscard]] int nodesForHull(int channels, int wanted);

} // namespace velmora
