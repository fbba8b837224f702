// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PhotoSpace.h"

#include <array>
#include <cstdint>
#include <vector>

/// Packs the device values of a pixel into 32 bits.
///
/// Values of 8 bits are kept exactly. Finer ones are rounded to levels that are equally far apart in Lab
/// along each channel: 1024 for grey and RGB, 256 for CMYK. 0 and 1 stay exact.
class DeviceLevels
{
public:
    DeviceLevels(const PhotoSpace& space, PhotoFacts::Sample sample);

    /// @param sample of channel @p channel: a byte, or a word
    std::uint32_t levelOf(int channel, std::uint32_t sample) const
    {
        return m_levels[static_cast<std::size_t>(channel)][sample];
    }
    int bits() const { return m_bits; } ///< of the level of a channel
    /// The device value, 0..1, in the middle of the samples of this level.
    double valueOf(int channel, std::uint32_t level) const
    {
        return m_values[static_cast<std::size_t>(channel)][level];
    }

private:
    void keepBytes(int channels);
    void spaceEvenly(const PhotoSpace& space, int channel);

    int m_bits = 8;
    std::array<std::vector<std::uint16_t>, 4> m_levels; ///< for each sample
    std::array<std::vector<double>, 4> m_values;        ///< for each level
};
