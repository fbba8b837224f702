// SPDX-License-Identifier: Apache-2.0
#include "TrueVolume.h"

#include "Cells.h"
#include "Frame.h"

namespace kvdevices {
namespace {

// Covers the rounding of the tables and of Little CMS.
constexpr double minErrorShare = 1e-5;

// The limit of an error that is proportional to a power of the step, from two steps with the given ratio of
// errors; a part of what is extrapolated remains as error.
TrueVolume extrapolated(const TrueVolume& coarse, const TrueVolume& fine, double ratio)
{
    const double correction = (fine.volume - coarse.volume) / (ratio - 1.0);
    return {fine.volume + correction, fine.error + 0.15 * std::abs(correction)};
}

// All measurements of a device use the same columns, so that most of their errors are the same, too.
class Measurement
{
public:
    Measurement(const GridImage& finest, std::size_t columns) : m_frame(finest.lab), m_columns(columns)
    {
        for (const Point& p : finest.lab)
            m_bounds.include(m_frame(p));
    }

    // The sum of all tetrahedra is exact; the columns only measure what is covered repeatedly.
    TrueVolume ofTetrahedra(const GridImage& image) const
    {
        ColumnUnion columns(m_bounds, m_columns);
        const double sum = insertTetrahedra(m_frame.seen(image), columns).volume;
        const auto overlap = columns.overlap();
        return {m_frame.scale() * (sum - overlap.volume),
                m_frame.scale() * (overlap.error + minErrorShare * overlap.volume)};
    }

    // For four channels and more.
    TrueVolume ofCells(const GridImage& image, double maxTwist) const
    {
        const GridImage seen = m_frame.seen(image);
        const std::size_t slices = slicesFor(seen, maxTwist);
        return extrapolated(ofSlices(seen, slices / 2), ofSlices(seen, slices), 2.0);
    }

private:
    TrueVolume ofSlices(const GridImage& seen, std::size_t slices) const
    {
        ColumnUnion columns(m_bounds, m_columns);
        insertCells(seen, slices, columns);
        const auto volume = columns.volume();
        return {m_frame.scale() * volume.volume, m_frame.scale() * volume.error};
    }

    Frame m_frame;
    Box m_bounds;
    std::size_t m_columns;
};

TrueVolume ofMap(const ProfileMap& map, const Effort& effort)
{
    const bool isThree = map.channels() == 3;
    const std::size_t wanted = isThree ? 32 : 8;
    const std::size_t parts = map.bends() ? (wanted + map.minSteps() - 1) / map.minSteps() : 1;
    const GridImage finest = map.gridImage(map.bends() ? 2 * parts : 1);
    const Measurement measurement(
        finest,
        isThree ? effort.columns : std::max<std::size_t>(effort.columns >> (map.channels() - 4), 10'000));
    const auto of = [&](const GridImage& image) {
        return isThree ? measurement.ofTetrahedra(image) : measurement.ofCells(image, effort.twist);
    };
    return map.bends() ? extrapolated(of(map.gridImage(parts)), of(finest), 4.0) : of(finest);
}

} // namespace

TrueVolume trueVolume(const QByteArray& profile, const Effort& effort)
{
    TrueVolume truth = ofMap(ProfileMap(profile), effort);
    truth.error += minErrorShare * truth.volume;
    return truth;
}

} // namespace kvdevices
