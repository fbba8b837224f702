// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointSet.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

#include <span>

/// The colours of a picture as points: its pixels (a regular sample of a large picture) in Lab, converted
/// with the absolute colorimetric intent of its profile and gathered into cells of equal size. Each cell
/// gives one point at the mean of its colours. The weight of a point is its share of the pixels, 0..1.
///
/// A picture without a profile is read as sRGB, with a note that says so. A profile that is neither RGB nor
/// grey is a problem, and so is a damaged profile. Problem and note do not name the file.
/// @param content of a file that PictureProfile::isPicture() recognised
/// @param task progress and cancellation; may be null
Result<PointSet> pointsOfPicture(const QByteArray& content, const KVCompletionProtocolPtr& task = {});

/// Gathers colours into cells of @p edge Lab units, or larger ones if there would be more than @p maxPoints
/// points. The order follows the cells, not the order of the colours.
QList<MeasuredPoint> gatherColours(std::span<const KVGamut::LabPoint> colours, float edge,
                                   qsizetype maxPoints);
