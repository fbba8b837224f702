// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/surface/GamutBuilder.h>

#include <functional>
#include <utility>

/// A device whose map is a function, so that its gamut is known exactly, without a profile's table in
/// between.
class MappedDevice final : public velmora::DeviceTransform
{
public:
    using Map = std::function<velmora::Vec3(const float* device)>;

    MappedDevice(int channels, Map map) : m_channels(channels), m_map(std::move(map)) {}

    int channels() const override { return m_channels; }
    velmora::ChannelKind kind() const override { return velmora::ChannelKind::Coordinates; }
    std::vector<float> white() const override { return std::vector<float>(std::size_t(m_channels), 1.0f); }
    std::vector<float> black() const override { return std::vector<float>(std::size_t(m_channels), 0.0f); }
    std::vector<float> origin() const override { return black(); }

protected:
    void convertBlock(const float* block, velmora::Vec3* lab, std::size_t count) const override
    {
        for (std::size_t i = 0; i < count; ++i)
            lab[i] = m_map(block + i * std::size_t(m_channels));
    }

private:
    int m_channels;
    Map m_map;
};
