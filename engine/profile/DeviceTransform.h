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

/// Meaning of a device's channels.
enum class ChannelKind
{
    Additive,    ///< lights: all 0 is black, all 1 is white
    Subtractive, ///< colorants on paper: all 0 is white
    Coordinates, ///< not amounts of colorants, as in YCbCr or HSV; there are no primaries
};

/// From device coordinates, 0..1 for each channel, to CIELAB (D50) through an ICC profile.
///
/// In double precision, because the 16-bit paths of Little CMS clip a* and b* at ±128. An object may be used
/// on one thread at a time.
class DeviceTransform
{
public:
    /// Fails if no gamut can be computed for the profile, or if @p task is cancelled. Of the settings the
    /// number of grid points is not used.
    [[nodiscard]] static Result<std::unique_ptr<DeviceTransform>>
    create(const QByteArray& profile, const KVGamut::Settings& settings, const Task& task = {});
    /// The same with the adaptation that the profile contains.
    [[nodiscard]] static Result<std::unique_ptr<DeviceTransform>>
    create(const QByteArray& profile, int intent, bool blackPointCompensation, const Task& task = {});
    virtual ~DeviceTransform() = default;

    virtual int channels() const = 0; ///< 3..15
    virtual ChannelKind kind() const = 0;
    /// Device colours of white, of black, and without any colorant; channels() values each.
    virtual std::vector<float> white() const = 0;
    virtual std::vector<float> black() const = 0;
    virtual std::vector<float> origin() const = 0;

    /// How the profile's data become colours.
    virtual KVGamut::Conversion conversion() const { return {}; }
    /// The device values of each channel, ascending, at which the map has kinks: the nodes of the profile's
    /// table. Empty if it has no table, or if the nodes are unknown.
    virtual std::vector<std::vector<float>> tableNodes() const { return {}; }

    /// Converts device colours of channels() values each, and reports progress from 0 to 1 to @p task.
    /// @return one Lab value for each colour; fails with Cancelled or LabOutOfRange
    [[nodiscard]] Result<std::vector<Vec3>> toLab(std::span<const float> device, const Task& task) const;

protected:
    /// Converts @p count device colours, at most maxBlock, to @p lab.
    virtual void convertBlock(const float* block, Vec3* lab, std::size_t count) const = 0;

    /// Colours between two checks for cancellation with up to six channels, with more channels fewer: 1 to 3
    /// ms in Little CMS.
    static constexpr std::size_t maxBlock = 4096;

private:
    std::size_t blockSize() const;
};

} // namespace velmora
