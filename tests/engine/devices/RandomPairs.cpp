// SPDX-License-Identifier: Apache-2.0
#include "RandomPairs.h"

#include "KnownTruths.h"
#include "Random.h"

#include <algorithm>
#include <cmath>

namespace kvdevices {
namespace {

constexpr unsigned maxSeed = 3; // of the known truths

bool startsWith(const std::string& name, const char* start)
{
    return name.rfind(start, 0) == 0;
}

bool isSmooth(const std::string& name)
{
    return startsWith(name, "matrix") || (startsWith(name, "rgb-") && name != "rgb-noise") ||
           name == "cmyk" || name == "cmyk-v4" || name == "cmyk-xyz";
}

TrueVolume knownVolume(const DeviceName& device)
{
    for (const KnownTruth& known : knownTruths)
        if (known.deviceClass == device.deviceClass && known.seed == device.seed)
            return known.truth;
    return {NAN, NAN}; // holds nothing
}

bool isHeld(double value, double uncertainty, const TrueVolume& truth)
{
    constexpr double rounding = 1e-7; // values are floats
    return std::abs(value - truth.volume) <= uncertainty + truth.error + rounding * std::abs(truth.volume);
}

// Of the true volumes of a part and the whole.
TrueVolume share(const TrueVolume& part, const TrueVolume& whole)
{
    const double value = std::min(1.0, part.volume / whole.volume);
    return {value, (part.error + value * whole.error) / whole.volume};
}

} // namespace

std::vector<DevicePair> devicePairs(std::size_t count, unsigned seed)
{
    std::vector<std::string> classes = deviceClasses();
    // the truths of pairs with more channels take minutes
    std::erase_if(classes, [](const std::string& name) {
        return startsWith(name, "inks6") || startsWith(name, "inks7");
    });
    Random random(seed);
    const auto device = [&] {
        return DeviceName{random.oneOf(classes), 1 + unsigned(random.below(maxSeed))};
    };
    std::vector<DevicePair> pairs;
    while (pairs.size() < count) {
        const DeviceName first = device(), second = device();
        if (first.deviceClass != second.deviceClass || first.seed != second.seed)
            pairs.push_back({first, second});
    }
    return pairs;
}

bool isSmooth(const DevicePair& pair)
{
    return isSmooth(pair.first.deviceClass) && isSmooth(pair.second.deviceClass);
}

PairHeld heldBy(const KVGamut::ComparisonReport& report, const DevicePair& pair, const TrueVolume& common)
{
    const auto& [values, uncertainty, problem] = report;
    const TrueVolume first = knownVolume(pair.first), second = knownVolume(pair.second);
    const TrueVolume both{first.volume + second.volume - common.volume,
                          first.error + second.error + common.error};
    return {isHeld(double(values.intersection), uncertainty.intersection, common),
            isHeld(double(values.unionVolume), uncertainty.unionVolume, both),
            isHeld(double(values.firstCovered), uncertainty.firstCovered, share(common, first)),
            isHeld(double(values.secondCovered), uncertainty.secondCovered, share(common, second))};
}

} // namespace kvdevices
