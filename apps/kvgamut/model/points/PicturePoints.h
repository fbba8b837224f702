// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointSet.h"
#include "model/photos/PhotoColors.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

#include <span>

/// The colours of a picture as points: all its pixels in Lab, converted with the absolute colorimetric intent
/// of its profile and gathered into cells of equal size. Each cell gives one point at the mean of its
/// colours. The weight of a point is its share of the pixels, 0..1.
///
/// An RGB or grey picture without a profile is read as sRGB, with a note that says so. A CMYK picture without
/// a profile is a problem, and so is a damaged profile. Problem and note do not name the file.
/// @param content of a file that PhotoFile::isPhoto() recognised
/// @param task progress and cancellation; may be null
Result<PointSet> pointsOfPicture(const QByteArray& content, const KVCompletionProtocolPtr& task = {});

/// Gathers colours into cells of @p edge Lab units, or larger ones if there would be more than @p maxPoints
/// points. The order follows the cells, not the order of the colours.
QList<MeasuredPoint> gatherColours(std::span<const LabCells::Cell> colours, float edge, qsizetype maxPoints);
