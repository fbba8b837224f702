// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/LabGeometry.h>
#include <engine/base/Result.h>
#include <engine/base/Task.h>

#include <QtCore/QByteArray>

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace velmora {

/// What the channels of a device are.
enum class ChannelKind
{
    Additive,    ///< lights: nothing is black, everything is white
    Subtractive, ///< colorants on paper: nothing is white
    Coordinates, ///< no colorants, as in YCbCr or HSV
};

/// From device coordinates, 0..1 for each channel, to CIELAB (D50) through an ICC profile.
///
/// Doubles all the way, since the 16-bit paths of Little CMS end at a*, b* of ±128.
class DeviceTransform
{
public:
    /// Fails if the profile has no gamut that could be computed.
    [[nodiscard]] static Result<std::unique_ptr<DeviceTransform>>
    create(const QByteArray& profile, int intent, bool blackPointCompensation);
    virtual ~DeviceTransform() = default;

    virtual int channels() const = 0;
    virtual ChannelKind kind() const = 0;
    /// Device colours of white, black and no colorants at all; `channels()` values.
    virtual std::vector<float> white() const = 0;
    virtual std::vector<float> black() const = 0;
    virtual std::vector<float> origin() const = 0;

    /// Converts device colours of channels() values each, and reports progress from 0 to 1 to @p task.
    /// @return one Lab value for each colour; fails with Cancelled or LabOutOfRange
    [[nodiscard]] Result<std::vector<Vec3>> toLab(std::span<const float> device, const Task& task) const;

protected:
    /// @p block holds at most maxBlock device colours.
    virtual void convertBlock(const float* block, Vec3* lab, std::size_t count) const = 0;

    /// Colours between two looks at the cancellation: 1 to 3 ms of Little CMS, and some 20 with very
    /// many channels.
    static constexpr std::size_t maxBlock = 4096;

private:
    std::size_t blockSize() const;
};

} // namespace velmora
