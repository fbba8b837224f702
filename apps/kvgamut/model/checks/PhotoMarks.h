// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/photos/PhotoPicture.h"
#include "model/pictures/LossMap.h"

/// Pictures of a photo that show where a gamut cannot make its colours.
///
/// What can be made is grey, in the photo's lightness and lighter, so that the marks are seen in photos of
/// any colour. Sizes and transparency as photoPicture().
namespace PhotoMarks {

/// Marks the pixels outside @p gamut, by more than @p tolerance (dE76): the zones of PhotoCheck.
Result<QImage> mask(PhotoFile& photo, const PhotoReading& reading, const KVGamut::GamutObject& gamut,
                    float tolerance, const KVCompletionProtocolPtr& task = {});

/// Colours the pixels outside by their CIEDE2000 to the nearest colour of @p gamut, on @p scale. Far
/// from its threshold distances are those of the middle of cells of 1 dE.
Result<QImage> map(PhotoFile& photo, const PhotoReading& reading, const KVGamut::GamutObject& gamut,
                   const LossScale& scale, const KVCompletionProtocolPtr& task = {});

} // namespace PhotoMarks
