// SPDX-License-Identifier: Apache-2.0
#include "DeviceLevels.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t words = 65536;
constexpr std::size_t steps = 4096; // at which the length along a channel is measured

double distanceBetween(const KVGamut::LabPoint& p, const KVGamut::LabPoint& q)
{
    const double square = std::pow(double(p.L) - double(q.L), 2) + std::pow(double(p.a) - double(q.a), 2) +
                          std::pow(double(p.b) - double(q.b), 2);
    return std::isfinite(square) ? std::sqrt(square) : 0.0;
}

/// The length in Lab from 0 to each step of one channel, while the others have the value @p others.
std::vector<double> lengthsAlong(const PhotoSpace& space, int channel, double others)
{
    const auto channels = static_cast<std::size_t>(space.channels());
    std::vector<double> device((steps + 1) * channels, others);
    for (std::size_t i = 0; i <= steps; ++i)
        device[i * channels + static_cast<std::size_t>(channel)] = double(i) / steps;
    std::vector<KVGamut::LabPoint> labs(steps + 1);
    space.convert(device, labs);
    std::vector<double> lengths(steps + 1, 0.0);
    for (std::size_t i = 1; i <= steps; ++i)
        lengths[i] = lengths[i - 1] + distanceBetween(labs[i - 1], labs[i]);
    return lengths;
}

} // namespace

DeviceLevels::DeviceLevels(const PhotoSpace& space, PhotoFacts::Sample sample)
{
    const int channels = space.channels();
    if (sample == PhotoFacts::Sample::Byte) {
        keepBytes(channels);
        return;
    }
    m_bits = channels > 3 ? 8 : 10;
    for (int channel = 0; channel < channels; ++channel)
        spaceEvenly(space, channel);
}

void DeviceLevels::keepBytes(int channels)
{
    for (std::size_t channel = 0; channel < static_cast<std::size_t>(channels); ++channel)
        for (std::uint16_t value = 0; value < 256; ++value) {
            m_levels[channel].push_back(value);
            m_values[channel].push_back(value / 255.0);
        }
}

void DeviceLevels::spaceEvenly(const PhotoSpace& space, int channel)
{
    // At each step the larger of the lengths with all other channels off, and on: in linear spaces dark
    // colours need finer steps, and with ink only the colours on unprinted paper do. A share of equal steps
    // avoids levels without end where a channel does nothing.
    std::vector<double> position(steps + 1, 0.0);
    const std::vector<double> off = lengthsAlong(space, channel, 0.0), on = lengthsAlong(space, channel, 1.0);
    for (std::size_t i = 1; i <= steps; ++i)
        position[i] = position[i - 1] + std::max(off[i] - off[i - 1], on[i] - on[i - 1]) + 10.0 / steps;
    const std::uint32_t last = (1u << m_bits) - 1;
    auto& levels = m_levels[static_cast<std::size_t>(channel)];
    std::vector<double> sums(last + 1, 0.0), counts(last + 1, 0.0);
    for (std::size_t word = 0; word < words; ++word) {
        const double value = double(word) / (words - 1);
        const double step = value * steps;
        const std::size_t before = std::min(static_cast<std::size_t>(step), steps - 1);
        const double length =
            position[before] + (step - double(before)) * (position[before + 1] - position[before]);
        // the limits have levels of their own: white, black and pure inks are exact
        std::uint32_t level = word == 0 ? 0 : last;
        if (word > 0 && word < words - 1)
            level = 1 + static_cast<std::uint32_t>(length / position[steps] * (last - 1) * 0.999999);
        levels.push_back(static_cast<std::uint16_t>(level));
        sums[level] += value;
        counts[level] += 1.0;
    }
    auto& values = m_values[static_cast<std::size_t>(channel)];
    for (std::size_t level = 0; level <= last; ++level)
        values.push_back(counts[level] > 0 ? sums[level] / counts[level] : 0.0);
}
