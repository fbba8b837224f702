// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GivenGamut.h"
#include "model/photos/PhotoColors.h"
#include "model/points/PointSet.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

/// Convex hulls of colours that have no device values.
namespace ColourHull {

/// The hull of the colours of a list. A problem does not name the file.
/// @param task progress and cancellation; may be null
Result<GivenGamut> ofList(const PointSet& set, KVCompletionProtocolPtr task = {});
/// The hull of the colours of all pixels of a photo. As sure as the cells are small in which they are
/// counted.
Result<GivenGamut> ofPhoto(const PhotoColors& photo, KVCompletionProtocolPtr task = {});

} // namespace ColourHull
