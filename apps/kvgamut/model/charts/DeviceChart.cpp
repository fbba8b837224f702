// SPDX-License-Identifier: Apache-2.0
#include "DeviceChart.h"

#include "model/inputs/InputLimits.h"

#include <lcms2.h>

#include <algorithm>
#include <cmath>

namespace {

using Device = DeviceChart::Device;
using Patch = DeviceChart::Patch;

constexpr double sameDevice = 1e-4; // finer than every scale of device values

cmsCIEXYZ xyzOf(const KVGamut::LabPoint& lab)
{
    const cmsCIELab value{double(lab.L), double(lab.a), double(lab.b)};
    cmsCIEXYZ xyz;
    cmsLab2XYZ(cmsD50_XYZ(), &xyz, &value);
    return xyz;
}

/// The largest value of the scale of device values.
double fullScale(const std::vector<Patch>& patches)
{
    double max = 0.0;
    for (const Patch& patch : patches)
        max = std::max(max, *std::max_element(patch.device.begin(), patch.device.end()));
    constexpr double percent = 100.0, byte = 255.0, rounding = 1e-3;
    return max <= 1.0 + rounding ? 1.0 : max <= percent + rounding ? percent : byte;
}

std::vector<Patch> patchesOf(const PointSet& set, int channels)
{
    std::vector<Patch> patches;
    for (const MeasuredPoint& point : set.points) {
        if (point.deviceChannels != channels)
            continue;
        Patch patch{{}, point.lab};
        std::copy_n(point.device.begin(), channels, patch.device.begin());
        patches.push_back(patch);
    }
    const double scale = fullScale(patches);
    for (Patch& patch : patches)
        for (double& value : patch.device)
            value = std::round(std::clamp(value / scale, 0.0, 1.0) / sameDevice) * sameDevice;
    return patches;
}

/// Sorts the patches, and takes the mean of those with the same device values.
std::vector<Patch> averaged(std::vector<Patch> patches)
{
    std::stable_sort(patches.begin(), patches.end(),
                     [](const Patch& p, const Patch& q) { return p.device < q.device; });
    std::vector<Patch> result;
    for (std::size_t i = 0, end = 0; i < patches.size(); i = end) {
        double sum[3] = {};
        for (end = i; end < patches.size() && patches[end].device == patches[i].device; ++end) {
            sum[0] += double(patches[end].lab.L);
            sum[1] += double(patches[end].lab.a);
            sum[2] += double(patches[end].lab.b);
        }
        const auto mean = [&](double total) { return static_cast<float>(total / double(end - i)); };
        result.push_back({patches[i].device, {mean(sum[0]), mean(sum[1]), mean(sum[2])}});
    }
    return result;
}

void findWhite(DeviceChart& chart)
{
    const double white = chart.channels == 3 ? 1.0 : 0.0; // paper, or all primaries
    const auto isWhite = [&](const Patch& patch) {
        return std::all_of(patch.device.begin(), patch.device.begin() + chart.channels,
                           [white](double value) { return std::abs(value - white) < 2.0 * sameDevice; });
    };
    auto found = std::find_if(chart.patches.begin(), chart.patches.end(), isWhite);
    chart.isWhiteMeasured = found != chart.patches.end();
    if (!chart.isWhiteMeasured)
        found = std::max_element(chart.patches.begin(), chart.patches.end(),
                                 [](const Patch& p, const Patch& q) { return p.lab.L < q.lab.L; });
    const cmsCIEXYZ xyz = xyzOf(found->lab);
    chart.white = {xyz.X, xyz.Y, xyz.Z};
}

/// Colours relative to the white of the display, as ICC profiles of displays have them.
void adaptToD50(DeviceChart& chart)
{
    const auto& [x, y, z] = chart.white;
    const cmsCIEXYZ white{x / y, 1.0, z / y};
    for (Patch& patch : chart.patches) {
        const cmsCIEXYZ xyz = xyzOf(patch.lab);
        const cmsCIEXYZ relative{xyz.X / y, xyz.Y / y, xyz.Z / y};
        cmsCIEXYZ adapted;
        cmsCIELab lab;
        cmsAdaptToIlluminant(&adapted, &white, cmsD50_XYZ(), &relative);
        cmsXYZ2Lab(cmsD50_XYZ(), &lab, &adapted);
        patch.lab = {static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b)};
    }
}

/// Whether each channel was varied over at least half of its range.
bool coversItsChannels(const DeviceChart& chart)
{
    for (std::size_t c = 0; c < static_cast<std::size_t>(chart.channels); ++c) {
        const auto [low, high] =
            std::minmax_element(chart.patches.begin(), chart.patches.end(),
                                [c](const Patch& p, const Patch& q) { return p.device[c] < q.device[c]; });
        if (high->device[c] - low->device[c] < 0.5)
            return false;
    }
    return true;
}

int channelsOf(const PointSet& set)
{
    const auto count = [&set](int channels) {
        return std::count_if(set.points.cbegin(), set.points.cend(),
                             [channels](const MeasuredPoint& p) { return p.deviceChannels == channels; });
    };
    return count(4) >= count(3) ? 4 : 3;
}

} // namespace

bool DeviceChart::isIn(const PointSet& set)
{
    const bool isMeasured =
        set.reading.space.isEmpty() && !set.reading.deviceClass.contains(QLatin1String("INPUT"));
    return isMeasured && std::any_of(set.points.cbegin(), set.points.cend(),
                                     [](const MeasuredPoint& p) { return p.deviceChannels > 0; });
}

Result<DeviceChart> DeviceChart::of(const PointSet& set)
{
    DeviceChart chart;
    chart.channels = channelsOf(set);
    std::vector<Patch> patches = patchesOf(set, chart.channels);
    chart.measured = static_cast<qsizetype>(patches.size());
    chart.patches = averaged(std::move(patches));
    const std::size_t corners = std::size_t(1) << chart.channels;
    if (chart.patches.size() < corners || !coversItsChannels(chart))
        return failure(ProblemCode::ChartTooSmall, {QString::number(chart.patches.size())});
    if (chart.patches.size() > static_cast<std::size_t>(InputLimits::maxPatches))
        return failure(ProblemCode::TooManyPatches, {QString::number(InputLimits::maxPatches)});
    findWhite(chart);
    constexpr double minWhite = 1e-3;
    if (!(std::min({chart.white[0], chart.white[1], chart.white[2]}) > minWhite))
        return failure(ProblemCode::ChartWithoutWhite);
    const QString& deviceClass = set.reading.deviceClass;
    chart.isDisplay =
        chart.channels == 3 && (deviceClass.isEmpty() ? set.reading.values == QLatin1String("XYZ")
                                                      : deviceClass == QLatin1String("DISPLAY"));
    if (chart.isDisplay)
        adaptToD50(chart);
    return chart;
}
