// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointReading.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

#include <span>
#include <vector>

/// Converts device values to Lab relative to D50 with the profile of @p options.
/// @param values RGB from 0 to 1, or CMYK from 0 to 100: as many for each colour as there are channels
/// @param space a built-in profile or the name of an ICC file
/// @param task cancels the conversion; may be null
/// @return fails with PointSpaceUnusable, with a cause, PointSpaceDiffers, or Cancelled
Result<std::vector<KVGamut::LabPoint>> labOfDevice(std::span<const double> values, int channels,
                                                   const QString& space, KVVMRenderType intent,
                                                   const KVCompletionProtocolPtr& task);
/// The same with an opened profile, which failures call @p space.
Result<std::vector<KVGamut::LabPoint>> labOfDevice(std::span<const double> values, int channels,
                                                   const KVProfilePtr& opened, const QString& space,
                                                   KVVMRenderType intent,
                                                   const KVCompletionProtocolPtr& task);
