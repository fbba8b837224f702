// SPDX-License-Identifier: Apache-2.0
#include "DeviceNodes.h"

#include <algorithm>

namespace velmora {
namespace {

std::size_t finePointsFor(int channels)
{
    return channels > 8 ? 33 : 129;
}

// Corners of the hypercube at which the edges along an axis start, as bit masks over all channels.
std::vector<unsigned> edgeCorners(int channels, int axis)
{
    std::vector<unsigned> corners{0u};
    if (channels > 8)
        return corners;
    for (int c = 0; c < channels; ++c)
        if (c != axis)
            corners.push_back(1u << c);
    if (channels == 3)
        corners.push_back(7u & ~(1u << axis));
    return corners;
}

// Positions where the cumulative sum of the lengths, scaled to 1, reaches 0, 1/(n-1), 2/(n-1), ..., 1.
std::vector<float> equalSteps(const std::vector<double>& lengths, int count)
{
    double total = 0.0;
    for (double l : lengths)
        total += l;
    std::vector<float> nodes{0.0f};
    const double step = 1.0 / static_cast<double>(lengths.size());
    std::size_t segment = 0;
    double before = 0.0;
    for (int i = 1; i < count - 1; ++i) {
        const double wanted = total * i / (count - 1);
        while (segment + 1 < lengths.size() && before + lengths[segment] < wanted)
            before += lengths[segment++];
        const double inside = lengths[segment] > 0.0 ? (wanted - before) / lengths[segment] : 0.0;
        nodes.push_back(static_cast<float>((static_cast<double>(segment) + inside) * step));
    }
    nodes.push_back(1.0f);
    return nodes;
}

void mixInEvenSteps(std::vector<double>& lengths, double share)
{
    double total = 0.0;
    for (double l : lengths)
        total += l;
    const double even = total > 0.0 ? total / static_cast<double>(lengths.size()) : 1.0;
    for (double& l : lengths)
        l += share * (even - l);
    if (total <= 0.0)
        std::fill(lengths.begin(), lengths.end(), 1.0);
}

} // namespace

Result<std::vector<float>> equalisedRamp(const DeviceTransform& transform, std::vector<float> start,
                                         std::size_t channel, int count, const Task& task)
{
    const std::size_t finePoints = finePointsFor(transform.channels());
    std::vector<float> device;
    for (std::size_t i = 0; i < finePoints; ++i) {
        start[channel] = static_cast<float>(i) / float(finePoints - 1);
        device.insert(device.end(), start.begin(), start.end());
    }
    const auto lab = transform.toLab(device, task);
    if (!lab)
        return failure(lab);
    std::vector<double> lengths;
    for (std::size_t i = 0; i + 1 < lab->size(); ++i)
        lengths.push_back(length((*lab)[i + 1] - (*lab)[i]));
    mixInEvenSteps(lengths, minEvenShare);
    return equalSteps(lengths, count);
}

Result<DeviceNodes> equalisedNodes(const DeviceTransform& transform, int nodesPerAxis, double evenShare,
                                   const Task& task)
{
    const int channels = transform.channels();
    const std::size_t finePoints = finePointsFor(channels);
    DeviceNodes nodes;
    std::vector<float> device;
    for (int axis = 0; axis < channels; ++axis) {
        const auto corners = edgeCorners(channels, axis);
        device.clear();
        for (unsigned corner : corners)
            for (std::size_t i = 0; i < finePoints; ++i)
                for (int c = 0; c < channels; ++c)
                    device.push_back(c == axis ? static_cast<float>(i) / float(finePoints - 1)
                                               : static_cast<float>(corner >> c & 1u));
        const Task part = task.part(double(axis) / channels, double(axis + 1) / channels);
        const auto lab = transform.toLab(device, part);
        if (!lab)
            return failure(lab);

        std::vector<double> lengths(finePoints - 1, 0.0);
        for (std::size_t e = 0; e < corners.size(); ++e)
            for (std::size_t i = 0; i + 1 < finePoints; ++i)
                lengths[i] += length((*lab)[e * finePoints + i + 1] - (*lab)[e * finePoints + i]);
        mixInEvenSteps(lengths, evenShare);
        nodes.push_back(equalSteps(lengths, nodesPerAxis));
    }
    return nodes;
}

std::vector<float> thinnedAxis(const std::vector<float>& axis, std::size_t count)
{
    const std::size_t kept = std::min(count, axis.size());
    std::vector<float> thin;
    for (std::size_t i = 0; i < kept; ++i)
        thin.push_back(axis[thinnedPlace(i, axis.size(), kept)]);
    return thin;
}

} // namespace velmora
