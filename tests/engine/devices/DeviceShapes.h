// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ProfileWriter.h"
#include "Random.h"

namespace kvdevices {

/// Primaries near those of usual displays.
cmsCIExyYTRIPLE randomPrimaries(Random& random);

/// Maps from places in a table of three channels, each 0..1, to Lab. All are random.
TableMap displayShape(Random& random);                                 ///< a display, smoothly distorted
TableMap foldedShape(Random& random, std::size_t axes, bool isSmooth); ///< channels that turn back
TableMap ringShape(Random& random, double maxTurns); ///< a part of a ring around the L* axis
TableMap dentedShape(Random& random);                ///< a display with hollows in its surface
TableMap sheetShape(Random& random);                 ///< thin in one direction, bent
TableMap stickShape(Random& random);                 ///< thin in two directions, bent
/// Four channels: a solid that two channels extend most where both are inside their range.
TableMap bulgingShape(Random& random);

/// @p map with noise: a random vector of the root mean square length @p amount at each call.
TableMap noisy(TableMap map, double amount, Random& random);

} // namespace kvdevices
