// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceRoundTrip.h"
#include "model/photos/PhotoColors.h"
#include "model/problems/Result.h"

#include <platform/KVVelmoraFramework.h>

#include <optional>

/// A difference over all pixels of a photo.
struct PixelDifferences
{
    double mean = 0.0;
    double p95 = 0.0; ///< 95 % of the pixels have this difference or less
    double max = 0.0;
};

/// How a photo fits a gamut.
struct PhotoCheck
{
    /// Shares of the pixels, 0..1. On the edge means at most the tolerance (dE76) from the surface, on either
    /// side.
    double inside = 0.0, edge = 0.0, outside = 0.0;
    PixelDifferences de76; ///< to the nearest colour of the gamut; 0 inside
    PixelDifferences de00; ///< to the colour of the gamut with the smallest CIEDE2000; 0 inside
    /// CIEDE2000 between each colour and what the profile makes of it with its intent; nullopt without a
    /// profile.
    std::optional<PixelDifferences> made;
};

/// The zone of each pixel is exact for the mean of its cell in @p colors, at most 0.5 dE from it. The
/// differences are computed for cells of 1 dE, the largest ones for the cells of @p colors.
/// @param device of the profile of the gamut; may be null
/// @param task progress and cancellation; may be null
Result<PhotoCheck> checkPhoto(const KVGamut::GamutObject& gamut, const PhotoColors& colors, float tolerance,
                              const DeviceRoundTrip* device, const KVCompletionProtocolPtr& task = {});
