// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TrueVolume.h"

namespace kvdevices {

/// Computes the volume of what both devices reach, without the engine: the same cells as for trueVolume(),
/// along the same columns for both devices. In each column the intersection is exact.
TrueVolume trueIntersection(const QByteArray& first, const QByteArray& second,
                            const Effort& effort = {.columns = 100'000});

} // namespace kvdevices
