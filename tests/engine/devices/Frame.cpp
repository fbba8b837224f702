// SPDX-License-Identifier: Apache-2.0
#include "Frame.h"

namespace kvdevices {

std::size_t slicesFor(const GridImage& seen, double maxTwist)
{
    const std::size_t linear = seen.nodes.size() - 3, max = linear == 1 ? 16 : 4;
    std::size_t slices = 2;
    for (double twist = twistOf(seen); slices < max && twist / double(slices) > maxTwist;)
        slices *= 2;
    return slices;
}

} // namespace kvdevices
