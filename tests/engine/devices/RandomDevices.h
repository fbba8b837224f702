// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <string>
#include <vector>

namespace kvdevices {

/// Names of the classes of random devices, such as "cmyk-noise".
std::vector<std::string> deviceClasses();

/// The profile of a random device. The same class and seed give the same device; empty for an unknown class.
QByteArray deviceProfile(const std::string& deviceClass, unsigned seed);

/// Changes whenever a device or its truth would change. For values that are kept between runs.
constexpr int devicesVersion = 2;

} // namespace kvdevices
