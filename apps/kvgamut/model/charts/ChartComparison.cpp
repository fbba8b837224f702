// SPDX-License-Identifier: Apache-2.0
#include "ChartComparison.h"

#include "model/points/DeviceColours.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

/// As labOfDevice() takes them: RGB from 0 to 1, CMYK from 0 to 100.
std::vector<double> deviceValues(const DeviceChart& chart)
{
    const double scale = chart.channels == 4 ? 100.0 : 1.0;
    std::vector<double> values;
    for (const DeviceChart::Patch& patch : chart.patches)
        for (std::size_t c = 0; c < static_cast<std::size_t>(chart.channels); ++c)
            values.push_back(scale * patch.device[c]);
    return values;
}

} // namespace

Result<ChartComparison> ChartComparison::of(const DeviceChart& chart, const KVProfilePtr& profile,
                                            const QString& name, const KVCompletionProtocolPtr& task)
{
    const auto predicted =
        labOfDevice(deviceValues(chart), chart.channels, profile, name, KVVMRenderAbsoluteColorimetric, task);
    if (!predicted)
        return failure(predicted.error());
    ChartComparison result;
    std::vector<double> differences;
    for (std::size_t i = 0; i < predicted->size(); ++i) {
        const KVGamut::LabPoint& measured = chart.patches[i].lab;
        differences.push_back(KVGamut::ciede2000(measured, (*predicted)[i]));
        if (differences.back() > result.max) {
            result.max = differences.back();
            result.worst = measured;
        }
    }
    const auto count = static_cast<double>(differences.size());
    constexpr double share = 0.95;
    std::sort(differences.begin(), differences.end());
    result.mean = std::accumulate(differences.begin(), differences.end(), 0.0) / count;
    result.p95 = differences[static_cast<std::size_t>(std::lround(share * (count - 1.0)))];
    return result;
}

std::array<Farthest, Farthest::sectors> Farthest::byHue(const KVGamut::GamutObject& gamut,
                                                        const KVGamut::GamutObject& outside)
{
    std::array<Farthest, sectors> farthest{};
    for (const KVGamut::LabPoint& vertex : gamut.mesh().lab) {
        const double turn = std::atan2(double(vertex.b), double(vertex.a)) / (2.0 * M_PI);
        const auto sector = static_cast<std::size_t>((turn + 1.0) * double(sectors)) % sectors;
        const float distance = outside.nearest(std::array{vertex.L, vertex.a, vertex.b}.data()).distance;
        if (distance > farthest[sector].distance)
            farthest[sector] = {distance, vertex};
    }
    return farthest;
}

Farthest Farthest::of(const KVGamut::GamutObject& gamut, const KVGamut::GamutObject& outside)
{
    const auto all = byHue(gamut, outside);
    return *std::max_element(all.begin(), all.end(),
                             [](const Farthest& p, const Farthest& q) { return p.distance < q.distance; });
}
