// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <cstddef>

namespace kvdevices {

/// The volume of the set of colours that a device reaches.
struct TrueVolume
{
    double volume; ///< dE76 cubed
    double error;  ///< estimate; the true volume is within volume ± error
};

/// How much work a volume is worth.
struct Effort
{
    std::size_t columns = 40'000; ///< from five channels on fewer
    double twist = 2e-3; ///< cells are divided until they are so close to affine, in units of the standard
                         ///< deviation of its colours
};

/// Computes the volume of the union of the images of all cells of the device grid, without the engine.
///
/// The nodes are those of the profile's own table. Lab is converted by Little CMS and interpolated as Little
/// CMS does between the nodes. Where the map bends between the nodes (XYZ, curves behind the table), cells
/// are divided and the limit is extrapolated.
/// @param profile relative colorimetric intent, three to seven channels, monotone curves in front of the
/// table
TrueVolume trueVolume(const QByteArray& profile, const Effort& effort = {});

} // namespace kvdevices
