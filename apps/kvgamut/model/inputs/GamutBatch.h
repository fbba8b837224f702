// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutSource.h"

#include <functional>

/// The gamuts of several sources, computed at the same time on the machine's cores.
namespace GamutBatch {

/// Computes the gamuts of @p sources, in their order; the gamut of what is not open is empty.
/// Blocks, and calls @p progress on the calling thread a few times each second with the share of the
/// work that is done, 0..1.
QList<KVGamut::GamutObject> compute(const QList<GamutSource>& sources, const GamutSettings& settings,
                                    const std::function<void(float)>& progress);

} // namespace GamutBatch
