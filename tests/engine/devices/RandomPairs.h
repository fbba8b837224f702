// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "RandomDevices.h"
#include "TrueVolume.h"

#include <platform/KVVelmoraFramework.h>

namespace kvdevices {

/// A random device, see deviceProfile().
struct DeviceName
{
    std::string deviceClass;
    unsigned seed;
};

/// Two random devices to compare.
struct DevicePair
{
    DeviceName first, second;
};

/// The same number and seed give the same pairs. The devices have three to five channels, and their volumes
/// are known truths.
std::vector<DevicePair> devicePairs(std::size_t count, unsigned seed = 1);

/// Whether both devices are displays or presses without noise, folds or ink inversion.
bool isSmooth(const DevicePair& pair);

/// Whether true values lie within value ± uncertainty, allowing for the error of the truth.
struct PairHeld
{
    bool intersection, unionVolume, firstCovered, secondCovered;

    bool all() const { return intersection && unionVolume && firstCovered && secondCovered; }
};
/// @param common what trueIntersection() gives for the pair
PairHeld heldBy(const KVGamut::ComparisonReport& report, const DevicePair& pair, const TrueVolume& common);

} // namespace kvdevices
