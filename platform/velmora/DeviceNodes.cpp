#include "DeviceNodes.h"

namespace velmora {
namespace {

constexpr int finePoints = 129;

// The other channels' corners at which an axis is measured, as bit masks over all channels.
std::vector<unsigned> edgeCorners(int channels, int axis)
{
    std::vector<unsigned> corners{0u};
    for (int c = 0; c < channels; ++c)
        if (c != axis)
            corners.push_back(1u << c);
    if (channels == 3)
        corners.push_back(7u & ~(1u << axis));
    return corners;
}

// Positions at which the running sum of `lengths`, scaled to 1, passes 1/(n-1), 2/(n-1), ...
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

} // namespace

DeviceNodes equalisedNodes(const DeviceTransform& transform, int nodesPerAxis, const Task& task,
                           QString& reason)
{
    const int channels = transform.channels();
    const auto stride = static_cast<std::size_t>(channels);
    DeviceNodes nodes;
    std::vector<float> device;
    std::vector<Vec3> lab;
    for (int axis = 0; axis < channels; ++axis) {
        const auto corners = edgeCorners(channels, axis);
        device.clear();
        for (unsigned corner : corners)
            for (int i = 0; i < finePoints; ++i)
                for (int c = 0; c < channels; ++c)
                    device.push_back(c == axis ? static_cast<float>(i) / float(finePoints - 1)
                                               : static_cast<float>(corner >> c & 1u));
        lab.resize(device.size() / stride);
        if (!transform.toLab(device.data(), lab.data(), lab.size(), task, reason))
            return {};

        // A small share of equal device steps keeps the nodes apart where Lab stands still.
        std::vector<double> lengths(finePoints - 1, 0.0);
        double total = 0.0;
        for (std::size_t e = 0; e < corners.size(); ++e)
            for (std::size_t i = 0; i + 1 < finePoints; ++i) {
                const double d = length(lab[e * finePoints + i + 1] - lab[e * finePoints + i]);
                lengths[i] += d;
                total += d;
            }
        const double floor = total > 0.0 ? 0.02 * total / double(finePoints - 1) : 1.0;
        for (double& l : lengths)
            l += floor;
        nodes.push_back(equalSteps(lengths, nodesPerAxis));
    }
    return nodes;
}

} // namespace velmora
