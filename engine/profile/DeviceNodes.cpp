// SPDX-License-Identifier: Apache-2.0
#include "DeviceNodes.h"

#include <algorithm>
#include <random>

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

Result<std::vector<double>> axisCurvatures(const DeviceTransform& transform, const DeviceNodes& nodes,
                                           const Task& task)
{
    constexpr std::size_t count = 33;
    const std::size_t n = nodes.size();
    std::vector<double> result;
    for (std::size_t axis = 0; axis < n; ++axis) {
        const std::vector<float> steps = thinnedAxis(nodes[axis], count);
        std::vector<float> device;
        const auto addLine = [&](std::vector<float> colour) {
            for (float x : steps) {
                colour[axis] = x;
                device.insert(device.end(), colour.begin(), colour.end());
            }
        };
        addLine(std::vector<float>(n, 0.5f));
        for (unsigned corner = 0; corner < 1u << n; ++corner) {
            std::vector<float> colour(n);
            for (std::size_t c = 0; c < n; ++c)
                colour[c] = static_cast<float>(corner >> c & 1u);
            if (!(corner >> axis & 1u))
                addLine(colour);
        }
        const Task part = task.part(double(axis) / double(n), double(axis + 1) / double(n));
        const auto converted = transform.toLab(device, part);
        if (!converted)
            return failure(converted);
        const std::vector<Vec3>& lab = *converted;
        double sum = 0.0;
        for (std::size_t first = 0; first < lab.size(); first += steps.size())
            for (std::size_t i = first + 1; i + 1 < first + steps.size(); ++i)
                sum += length(lab[i - 1] + lab[i + 1] - 2.0 * lab[i]);
        result.push_back(sum / double(lab.size()));
    }
    return result;
}

namespace {

// Index of a device value among nodes at equal steps in Lab, and back; with fractions.
double indexOf(const std::vector<float>& axis, float value)
{
    const auto above = std::upper_bound(axis.begin() + 1, axis.end() - 1, value);
    const auto i = above - axis.begin();
    const double low = double(above[-1]), high = double(*above);
    return double(i - 1) + (high > low ? (double(value) - low) / (high - low) : 0.0);
}
float valueAt(const std::vector<float>& axis, double index)
{
    const auto i = std::min(static_cast<std::size_t>(index), axis.size() - 2);
    return axis[i] + static_cast<float>(index - double(i)) * (axis[i + 1] - axis[i]);
}

// The table's nodes of one axis, with the longest steps between them divided.
std::vector<float> dividedAxis(const std::vector<float>& table, const std::vector<float>& equalised,
                               std::size_t count)
{
    struct Step
    {
        double from, length;
        int parts;
    };
    std::vector<Step> steps;
    for (std::size_t i = 0; i + 1 < table.size(); ++i) {
        const double from = indexOf(equalised, table[i]);
        steps.push_back({from, indexOf(equalised, table[i + 1]) - from, 1});
    }
    for (std::size_t nodes = table.size(); nodes < count; ++nodes)
        ++std::max_element(steps.begin(), steps.end(), [](const Step& p, const Step& q) {
              return p.length / p.parts < q.length / q.parts;
          })->parts;
    std::vector<float> axis;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        axis.push_back(table[i]);
        for (int part = 1; part < steps[i].parts; ++part)
            axis.push_back(valueAt(equalised, steps[i].from + steps[i].length * part / steps[i].parts));
    }
    axis.push_back(table.back());
    return axis;
}

} // namespace

std::vector<std::size_t> nodeCounts(const std::vector<double>& curvatures, std::size_t count)
{
    constexpr double minNodes = 3.0, maxNodes = 129.0;
    const auto at = [&](double scale) {
        std::vector<std::size_t> counts;
        for (double curvature : curvatures)
            counts.push_back(
                static_cast<std::size_t>(std::clamp(scale * std::sqrt(curvature), minNodes, maxNodes)));
        return counts;
    };
    const auto product = [](const std::vector<std::size_t>& counts) {
        double all = 1.0;
        for (std::size_t nodes : counts)
            all *= double(nodes);
        return all;
    };
    const double limit = product(std::vector<std::size_t>(curvatures.size(), count));
    double low = 0.0, high = 1e6;
    constexpr int halvings = 60;
    for (int i = 0; i < halvings; ++i) {
        const double middle = 0.5 * (low + high);
        (product(at(middle)) <= limit ? low : high) = middle;
    }
    return at(low);
}

namespace {

// The place along each axis, among those given, at which the colour is farthest from that of all zeros: the
// last one, unless another one is farther by more than @p minFall, dE, and not far from the last one.
Result<std::vector<std::size_t>> farthestPlaces(const DeviceTransform& transform, const DeviceNodes& places,
                                                double minFall, const Task& task)
{
    const std::size_t n = places.size();
    std::vector<float> device(n, 0.0f);
    for (std::size_t axis = 0; axis < n; ++axis)
        for (float value : places[axis]) {
            device.insert(device.end(), n, 0.0f);
            device[device.size() - n + axis] = value;
        }
    const auto lab = transform.toLab(device, task);
    if (!lab)
        return failure(lab);
    std::vector<std::size_t> farthest;
    std::size_t first = 1;
    for (const auto& axis : places) {
        const auto distance = [&](std::size_t i) { return length((*lab)[first + i] - lab->front()); };
        std::size_t found = axis.size() - 1;
        const std::size_t last = found;
        double most = distance(found) + minFall;
        for (std::size_t i = 0; i < axis.size(); ++i)
            if (distance(i) > most) {
                most = distance(i);
                found = i;
            }
        constexpr double maxReturn = 0.3; // of the way; a circle goes on
        const bool returns =
            length((*lab)[first + last] - (*lab)[first + found]) <= maxReturn * distance(found);
        farthest.push_back(returns ? found : last);
        first += axis.size();
    }
    return farthest;
}

} // namespace

Result<std::vector<float>> turningPoints(const DeviceTransform& transform, const Task& task)
{
    constexpr double minFall = 0.1; // dE; less is noise
    constexpr std::size_t coarseSteps = 64, steps = 32;
    std::vector<float> even;
    for (std::size_t i = 0; i <= coarseSteps; ++i)
        even.push_back(float(i) / float(coarseSteps));
    const DeviceNodes all(static_cast<std::size_t>(transform.channels()), even);
    const auto coarse = farthestPlaces(transform, all, minFall, task);
    if (!coarse)
        return failure(coarse);
    // then between its neighbours
    DeviceNodes around;
    for (const std::size_t found : *coarse) {
        std::vector<float> places(1, even[found]);
        if (found > 0 && found < coarseSteps)
            for (std::size_t i = 0; i <= steps; ++i)
                places.push_back(even[found - 1] + 2.0f * float(i) / float(steps * coarseSteps));
        around.push_back(std::move(places));
    }
    const auto fine = farthestPlaces(transform, around, 0.0, task);
    if (!fine)
        return failure(fine);
    std::vector<float> turns;
    for (std::size_t axis = 0; axis < around.size(); ++axis)
        turns.push_back(around[axis][(*fine)[axis]]);
    return turns;
}

namespace {

// Moves the inner node that is nearest to a place there.
std::vector<float> withNodeAt(std::vector<float> axis, float place)
{
    if (place >= 1.0f || axis.size() < 3)
        return axis;
    const auto isNearer = [place](float p, float q) { return std::abs(p - place) < std::abs(q - place); };
    *std::min_element(axis.begin() + 1, axis.end() - 1, isNearer) = place;
    return axis;
}

} // namespace

DeviceNodes alignedNodes(const DeviceTransform& transform, const DeviceNodes& equalised,
                         const std::vector<float>& turns, const std::vector<std::size_t>& counts,
                         std::size_t maxTableNodes)
{
    const auto table = transform.tableNodes();
    DeviceNodes nodes;
    for (std::size_t axis = 0; axis < equalised.size(); ++axis)
        nodes.push_back(axis < table.size() && table[axis].size() <= maxTableNodes
                            ? dividedAxis(table[axis], equalised[axis], counts[axis])
                            : withNodeAt(thinnedAxis(equalised[axis], counts[axis]), turns[axis]));
    return nodes;
}

Result<bool> isLinearBetweenTableNodes(const DeviceTransform& transform, const Task& task)
{
    const auto table = transform.tableNodes();
    const auto channels = static_cast<std::size_t>(transform.channels());
    if (table.size() != channels)
        return false;
    // a step between two nodes along one axis, at random nodes of the others: both ends, and the middle
    constexpr std::size_t samples = 400;
    std::mt19937 random(1);
    std::vector<float> colours;
    std::vector<float> colour(channels);
    for (std::size_t i = 0; i < samples; ++i) {
        for (std::size_t c = 0; c < channels; ++c)
            colour[c] = table[c][random() % table[c].size()];
        const std::size_t axis = i % channels;
        const std::size_t step = random() % (table[axis].size() - 1);
        const float low = table[axis][step], high = table[axis][step + 1];
        for (float value : {low, 0.5f * (low + high), high}) {
            colour[axis] = value;
            colours.insert(colours.end(), colour.begin(), colour.end());
        }
    }
    const auto lab = transform.toLab(colours, task);
    if (!lab)
        return failure(lab);
    double sum = 0.0;
    for (std::size_t i = 0; i < lab->size(); i += 3)
        sum += length((*lab)[i + 1] - nearestOnSegment((*lab)[i + 1], (*lab)[i], (*lab)[i + 2]));
    constexpr double maxMean = 0.005; // dE; about what the encoding of a table rounds by
    return sum <= maxMean * double(samples);
}

std::vector<float> thinnedAxis(const std::vector<float>& axis, std::size_t count)
{
    const std::size_t kept = std::min(count, axis.size());
    std::vector<float> thin;
    for (std::size_t i = 0; i < kept; ++i)
        thin.push_back(axis[thinnedPlace(i, axis.size(), kept)]);
    return thin;
}

DeviceNodes thinnedNodes(const DeviceNodes& nodes, std::size_t count)
{
    DeviceNodes result;
    for (const auto& axis : nodes)
        result.push_back(thinnedAxis(axis, count));
    return result;
}

DeviceNodes halvedNodes(const DeviceNodes& nodes)
{
    DeviceNodes result;
    for (const auto& axis : nodes)
        result.push_back(thinnedAxis(axis, halfOf(axis.size())));
    return result;
}

} // namespace velmora
