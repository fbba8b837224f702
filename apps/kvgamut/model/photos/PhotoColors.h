// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LabCells.h"
#include "PhotoFile.h"
#include "PhotoReading.h"

#include <QtCore/QList>

/// The colours of all pixels of a photo.
struct PhotoColors
{
    PhotoFacts facts;
    std::vector<LabCells::Cell> cells; ///< Lab (D50); how many pixels have which colour
    float cellEdge = 0.0f;             ///< dE
    qint64 pixels = 0;                 ///< that are counted: all that are not fully transparent
    QList<Problem> notes;              ///< what was assumed or left out; without a subject
};

/// Counts the colours of every pixel of @p photo, whatever its size, with about 250 MB at most beside the
/// reader. A colour is at most 0.5 dE from the mean of its cell, unless there are more than three million
/// cells.
/// @param task progress and cancellation; may be null
Result<PhotoColors> photoColors(PhotoFile& photo, const PhotoReading& reading,
                                const KVCompletionProtocolPtr& task = {});
