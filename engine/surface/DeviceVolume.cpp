// SPDX-License-Identifier: Apache-2.0
#include "DeviceVolume.h"

#include "GamutRecord.h"
#include "MissedColours.h"
#include <engine/mesh/MeshVolume.h>

#include <cmath>

namespace velmora {
namespace {

// Largest difference between the quick look and a hull of the same device, by the number of channels.
constexpr std::array<double, 4> lookTolerancesFromFour{3e-4, 3e-3, 5e-3, 1e-2};
// Colours outside a hull that are accepted: their volume, and their share of random device colours.
constexpr double maxMissedVolume = 2e-4;
constexpr double maxMissedShare = 1e-3;
// What lies between the lines of a measurement, and the curvature of cells with many channels.
constexpr std::array<double, 4> ofLinesFromFour{3e-4, 1e-3, 2e-3, 1.5e-3};

// A relative uncertainty above which more cells are measured.
constexpr std::array<double, 4> maxUncertaintyFromFour{5e-4, 1e-3, 1e-3, 1e-3};

double ofInks(const std::array<double, 4>& fromFour, int channels)
{
    return fromFour[static_cast<std::size_t>(channels - 4)];
}

double ofLinesOfInks(int channels)
{
    return ofInks(ofLinesFromFour, channels);
}

} // namespace

DeviceVolume::DeviceVolume(const DeviceTransform& transform, DeviceCells& cells, const Task& task)
    : m_transform(transform), m_cells(cells), m_task(task)
{
}

void DeviceVolume::set(double value, double uncertainty)
{
    m_value = value;
    m_uncertainty = uncertainty;
}

Result<void> DeviceVolume::take(Grid grid, double volume, double uncertainty)
{
    if (volume < minVolume)
        return failure(KVProblemCode::TooSmall);
    m_measuredWith = grid;
    m_measured = volume;
    set(volume, uncertainty);
    return {};
}

Result<void> DeviceVolume::measure(const Mesh& surface, double ofLines, const Task& task)
{
    if (m_isExact)
        return measureTable(surface, ofLines, task);
    const auto coarse = m_cells.volume(Grid::Coarse, surface, task.part(0.0, 0.3));
    if (!coarse)
        return failure(coarse);
    const auto fine = m_cells.volume(Grid::Fine, surface, task.part(0.3, 1.0));
    if (!fine && fine.error().code == KVProblemCode::TooManyOverlaps)
        return takeCoarse(*coarse, surface);
    if (!fine)
        return failure(fine);
    const double difference = *fine - *coarse;
    constexpr double extrapolation = 1.0 / 3.0; // of Richardson, for half of the step
    constexpr double shareOfDifference = 0.6;
    if (auto taken = take(Grid::Fine, *fine, shareOfDifference * std::abs(difference) + ofLines * *fine);
        !taken)
        return taken;
    m_value += extrapolation * difference;
    return {};
}

Result<void> DeviceVolume::measureTable(const Mesh& surface, double ofLines, const Task& task)
{
    const auto volume = m_cells.volume(Grid::OfTable, surface, task);
    if (!volume)
        return failure(volume);
    return take(Grid::OfTable, *volume, ofLines * *volume);
}

// The cells overlap too often for a fine grid.
Result<void> DeviceVolume::takeCoarse(double volume, const Mesh& surface)
{
    constexpr double ofCells = 0.01;
    return take(Grid::Coarse, volume,
                ofCells * volume + 0.5 * std::abs(signedVolume(surface, m_task) - volume));
}

Result<void> DeviceVolume::measureInks(const Mesh& hull, double ofHull, const Task& task)
{
    const auto missed = findMissedColours(hull, m_transform, task.part(0.0, 0.2));
    if (!missed)
        return failure(missed);
    const double volume = signedVolume(hull, m_task);
    m_hasInterior = missed->volume > maxMissedVolume * volume || missed->share > maxMissedShare;
    if (m_hasInterior)
        return measure(hull, ofLinesOfInks(m_transform.channels()), task.part(0.2, 1.0));
    const auto look = m_cells.volume(Grid::Look, hull, task.part(0.2, 0.4));
    if (!look)
        return failure(look);
    if (*look < minVolume && volume < minVolume)
        return failure(KVProblemCode::TooSmall);
    const int channels = m_transform.channels();
    const double difference = std::abs(*look - volume);
    if (difference > ofInks(lookTolerancesFromFour, channels) * volume)
        return measureSmoothInks(hull, *look, task.part(0.4, 1.0));
    const double ofLook = channels > 4 ? 1.5 : 1.0; // with more channels its grid is coarser
    const double uncertainty = ofHull + missed->volume + ofLook * difference;
    if (channels == 4 && uncertainty > ofInks(maxUncertaintyFromFour, channels) * volume)
        return measure(hull, ofLinesOfInks(channels), task.part(0.4, 1.0));
    set(volume, uncertainty);
    return {};
}

// The coarse cells are enough if they agree with the quick look.
Result<void> DeviceVolume::measureSmoothInks(const Mesh& hull, double look, const Task& task)
{
    const auto coarse = m_cells.volume(Grid::Coarse, hull, task.part(0.0, 0.3));
    if (!coarse)
        return failure(coarse);
    constexpr double shareOfDifference = 0.5;
    const double maxUncertainty = ofInks(maxUncertaintyFromFour, m_transform.channels());
    const double uncertainty =
        shareOfDifference * std::abs(*coarse - look) + ofLinesOfInks(m_transform.channels()) * *coarse;
    if (uncertainty <= maxUncertainty * *coarse)
        return take(Grid::Coarse, *coarse, uncertainty);
    return measure(hull, ofLinesOfInks(m_transform.channels()), task.part(0.3, 1.0));
}

Result<void> DeviceVolume::measureAgain(const Mesh& surface, const Task& task)
{
    if (m_measured <= 0.0)
        return {};
    const auto volume = m_cells.volume(m_measuredWith, surface, task);
    if (!volume)
        return failure(volume);
    m_value += *volume - m_measured;
    m_measured = *volume;
    return {};
}

} // namespace velmora
