// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PhotoFile.h"
#include "PhotoReading.h"

#include <platform/KVVelmoraFramework.h>

#include <QtGui/QImage>

#include <functional>

/// What stands for a pixel of a photo in a picture of it.
struct PhotoPixel
{
    QRgb color = 0;
    float rank = 0.0f; ///< of several pixels that become one, the one with the highest rank is shown
};

/// A picture in which @p pixelOf says how each colour (Lab, D50) of @p photo is shown; fully transparent
/// pixels stay transparent. It has as many pixels as the photo, or, if that has more than
/// maxPhotoPicturePixels, 1/2, 1/3 ... of them along each side.
/// @param pixelOf called on the calling thread, and not again for most colours that it was called for
/// @param task progress and cancellation; may be null
Result<QImage> photoPicture(PhotoFile& photo, const PhotoReading& reading,
                            const std::function<PhotoPixel(const KVGamut::LabPoint&)>& pixelOf,
                            const KVCompletionProtocolPtr& task = {});

constexpr qint64 maxPhotoPicturePixels = 24'000'000;
