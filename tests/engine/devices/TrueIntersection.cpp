// SPDX-License-Identifier: Apache-2.0
#include "TrueIntersection.h"

#include "Frame.h"

namespace kvdevices {
namespace {

// Covers the rounding of the tables and of Little CMS.
constexpr double roundingShare = 2e-5;

// One approximation of what a device reaches. The weighted sum of what all of them give is the limit; the
// weights add up to 1.
struct Approximation
{
    GridImage image;
    std::size_t slices; // 0 for three channels
    double weight;
};

std::vector<Approximation> ofImage(GridImage image, double weight, double maxTwist)
{
    if (image.nodes.size() == 3)
        return {{std::move(image), 0, weight}};
    const std::size_t slices = slicesFor(image, maxTwist);
    return {{image, slices / 2, -weight},
            {image, slices, 2.0 * weight}}; // the error is proportional to 1 / slices
}

// The finest one is the last.
std::vector<Approximation> approximations(const ProfileMap& map, const Frame& frame, double maxTwist)
{
    if (!map.bends())
        return ofImage(frame.seen(map.gridImage(1)), 1.0, maxTwist);
    const std::size_t wanted = map.channels() == 3 ? 32 : 8,
                      parts = (wanted + map.minSteps() - 1) / map.minSteps();
    auto all = ofImage(frame.seen(map.gridImage(parts)), -1.0 / 3.0, maxTwist); // to the square of the step
    for (auto& finer : ofImage(frame.seen(map.gridImage(2 * parts)), 4.0 / 3.0, maxTwist))
        all.push_back(std::move(finer));
    return all;
}

ColumnUnion columnsOf(const Approximation& approximation, const Box& bounds, std::size_t count)
{
    ColumnUnion columns(bounds, count);
    if (approximation.slices == 0)
        insertTetrahedra(approximation.image, columns);
    else
        insertCells(approximation.image, approximation.slices, columns);
    return columns;
}

Box boundsOf(const GridImage& image)
{
    Box box;
    for (const Point& p : image.lab)
        box.include(p);
    return box;
}

Box commonBounds(const Box& p, const Box& q)
{
    Box box;
    for (std::size_t i = 0; i < 3; ++i) {
        box.low[i] = std::max(p.low[i], q.low[i]);
        box.high[i] = std::min(p.high[i], q.high[i]);
    }
    return box;
}

// That of the smaller device, because a thin solid has few columns in the frame of another one.
Frame smallerFrame(const ProfileMap& first, const ProfileMap& second)
{
    const Frame frames[]{Frame(first.gridImage(1).lab), Frame(second.gridImage(1).lab)};
    return frames[0].scale() < frames[1].scale() ? frames[0] : frames[1];
}

} // namespace

TrueVolume trueIntersection(const QByteArray& first, const QByteArray& second, const Effort& effort)
{
    const std::array<ProfileMap, 2> maps{ProfileMap(first), ProfileMap(second)};
    const Frame frame = smallerFrame(maps[0], maps[1]);
    const std::array all{approximations(maps[0], frame, effort.twist),
                         approximations(maps[1], frame, effort.twist)};
    const Box bounds = commonBounds(boundsOf(all[0].back().image), boundsOf(all[1].back().image));
    if (bounds.low[0] >= bounds.high[0] || bounds.low[1] >= bounds.high[1])
        return {0.0, 0.0};
    const bool areCubes = maps[0].channels() == 3 && maps[1].channels() == 3;
    const std::size_t count = areCubes ? effort.columns : effort.columns / 3;
    const std::array finest{columnsOf(all[0].back(), bounds, count), columnsOf(all[1].back(), bounds, count)};
    const auto both = finest[0].common(finest[1]);
    TrueVolume truth{both.volume, both.error};
    for (std::size_t device = 0; device < 2; ++device) {
        double limit = both.volume * all[device].back().weight;
        for (std::size_t i = 0; i + 1 < all[device].size(); ++i)
            limit += all[device][i].weight *
                     columnsOf(all[device][i], bounds, count).common(finest[1 - device]).volume;
        truth.volume += limit - both.volume;
        truth.error += 0.15 * std::abs(limit - both.volume);
    }
    return {frame.scale() * truth.volume, frame.scale() * (truth.error + roundingShare * truth.volume)};
}

} // namespace kvdevices
