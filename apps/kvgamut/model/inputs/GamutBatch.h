// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutSource.h"

#include <functional>

/// The gamuts of several sources, computed at the same time on the machine's cores.
namespace GamutBatch {

/// Computes the gamuts of @p sources, in their order; a source that could not be opened keeps its problem.
/// Blocks, and calls @p progress on the calling thread a few times each second with the progress, 0..1.
QList<Result<KVGamut::GamutObject>>
compute(const QList<Result<GamutSource>>& sources, const KVGamut::Settings& settings,
        const std::function<void(float)>& progress,
        KVGamut::Construction construction = KVGamut::Construction::Accurate);

} // namespace GamutBatch
