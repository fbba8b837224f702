// SPDX-License-Identifier: Apache-2.0
#include "Cancelling.h"
#include "Problems.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace cancelling {

Runs cancelledAfter(const std::vector<double>& shares, const KVProfilePtr& profile, int gridPoints,
                    float maxEdge)
{
    const auto compute = [&](KVCompletionProtocolPtr protocol) {
        KVGamut::GamutObject gamut;
        const bool done = gamut.init(profile, KVVMRenderRelativeColorimetric, false, true, maxEdge,
                                     gridPoints, 2, &protocol);
        EXPECT_EQ(codeOf(gamut), done ? std::nullopt : std::optional(KVProblemCode::Cancelled));
        return done;
    };
    const work::Work whole = work::of([&] { EXPECT_TRUE(compute({})); });
    Runs runs;
    for (double share : shares) {
        const auto protocol = KVCompletionProtocol::createTask(QStringLiteral("GamutLoader"));
        bool done = false;
        const work::Work rest = work::after(
            static_cast<std::uint64_t>(share * double(whole.total())), [&] { protocol->cancel(); },
            [&] { done = compute(protocol); });
        if (done)
            continue;
        ++runs.cancelled;
        runs.max.colours = std::max(runs.max.colours, rest.colours);
        runs.max.corners = std::max(runs.max.corners, rest.corners);
        runs.max.bytes = std::max(runs.max.bytes, rest.bytes);
    }
    return runs;
}

} // namespace cancelling
