// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointSet.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

/// Reads the points of @p file: the positions in a text file, or the pixels of a picture. The problem names
/// the file. Callable from any thread.
/// @param task progress and cancellation; may be null
/// @param options have no effect on a picture
Result<PointSet> readPoints(const QString& file, const KVCompletionProtocolPtr& task = {},
                            const PointOptions& options = {});
