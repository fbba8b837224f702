// SPDX-License-Identifier: Apache-2.0
#include "ChartModel.h"

#include "model/inputs/InputGate.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace {

using Values = ChartModel::Values;
using Nodes = std::vector<std::vector<double>>;
using Grid = std::vector<Values>;

// --- Where the nodes are ----------------------------------------------------------------------------

/// The levels of a channel that are worth a node, the most frequent first.
std::vector<double> levelsOf(const DeviceChart& chart, std::size_t channel)
{
    constexpr double minShare = 0.02;
    std::map<double, int> counts;
    for (const DeviceChart::Patch& patch : chart.patches)
        ++counts[patch.device[channel]];
    std::vector<std::pair<int, double>> frequent;
    for (const auto& [level, count] : counts)
        if (count >= 3 && count >= minShare * static_cast<double>(chart.patches.size()))
            frequent.push_back({-count, level});
    std::sort(frequent.begin(), frequent.end());
    std::vector<double> levels;
    for (const auto& [count, level] : frequent)
        levels.push_back(level);
    return levels;
}

std::vector<double> axisOf(const DeviceChart& chart, std::size_t channel, std::size_t maxNodes)
{
    const double even = 1.0 / static_cast<double>(maxNodes - 1);
    std::vector<double> nodes{0.0, 1.0};
    for (const double level : levelsOf(chart, channel)) {
        const auto isNear = [&](double node) { return std::abs(node - level) < 0.4 * even; };
        if (nodes.size() < maxNodes && std::none_of(nodes.begin(), nodes.end(), isNear))
            nodes.push_back(level);
    }
    std::sort(nodes.begin(), nodes.end());
    while (nodes.size() < maxNodes) { // halve the widest gap
        std::size_t widest = 1;
        for (std::size_t i = 1; i < nodes.size(); ++i)
            if (nodes[i] - nodes[i - 1] > nodes[widest] - nodes[widest - 1] + 1e-9)
                widest = i;
        const double middle = 0.5 * (nodes[widest] + nodes[widest - 1]);
        nodes.insert(nodes.begin() + static_cast<std::ptrdiff_t>(widest), middle);
    }
    return nodes;
}

// --- What is minimised ------------------------------------------------------------------------------

/// A device colour between the nodes around it.
struct Place
{
    std::array<std::size_t, 16> nodes{};
    std::array<double, 16> weights{};
    double importance = 1.0;
};

std::vector<std::size_t> stridesOf(const Nodes& nodes)
{
    std::vector<std::size_t> strides(nodes.size(), 1);
    for (std::size_t axis = nodes.size() - 1; axis > 0; --axis)
        strides[axis - 1] = strides[axis] * nodes[axis].size();
    return strides;
}

Place placeOf(const Nodes& nodes, const DeviceChart::Device& device)
{
    const std::vector<std::size_t> strides = stridesOf(nodes);
    Place place;
    place.weights[0] = 1.0;
    std::size_t count = 1;
    for (std::size_t axis = 0; axis < nodes.size(); ++axis) {
        const std::vector<double>& line = nodes[axis];
        const auto above = std::upper_bound(line.begin() + 1, line.end() - 1, device[axis]);
        const auto low = static_cast<std::size_t>(above - line.begin()) - 1;
        const double share = (device[axis] - line[low]) / (line[low + 1] - line[low]);
        for (std::size_t i = 0; i < count; ++i) {
            place.nodes[i + count] = place.nodes[i] + (low + 1) * strides[axis];
            place.weights[i + count] = place.weights[i] * share;
            place.nodes[i] += low * strides[axis];
            place.weights[i] *= 1.0 - share;
        }
        count *= 2;
    }
    return place;
}

/// White, black and the full inks are met exactly, whatever the patches beside them ask.
double importanceOf(const DeviceChart::Patch& patch, std::size_t channels)
{
    constexpr double ofCorner = 300.0;
    const auto isEnd = [](double value) { return value == 0.0 || value == 1.0; };
    const auto end = patch.device.begin() + static_cast<std::ptrdiff_t>(channels);
    return std::all_of(patch.device.begin(), end, isEnd) ? ofCorner : 1.0;
}

Values valueAt(const Place& place, const Grid& grid, std::size_t corners)
{
    Values sum{};
    for (std::size_t i = 0; i < corners; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            sum[k] += place.weights[i] * grid[place.nodes[i]][k];
    return sum;
}

/// The second difference at an inner node of a line, in units of an even step.
struct Difference
{
    double before, here, after;
};

class Equations
{
public:
    Equations(const Nodes& nodes, std::span<const DeviceChart::Patch> patches)
        : m_nodes(nodes), m_strides(stridesOf(nodes)), m_corners(std::size_t(1) << nodes.size()),
          m_size(m_strides[0] * nodes[0].size())
    {
        for (const DeviceChart::Patch& patch : patches) {
            m_places.push_back(placeOf(nodes, patch.device));
            m_places.back().importance = importanceOf(patch, nodes.size());
        }
        for (const std::vector<double>& line : nodes)
            m_differences.push_back(differencesOf(line));
    }

    std::size_t size() const { return m_size; }

    /// The right side: what the patches ask of the nodes.
    Grid asked(std::span<const DeviceChart::Patch> patches) const
    {
        Grid result(m_size);
        for (std::size_t i = 0; i < m_places.size(); ++i) {
            const KVGamut::LabPoint& lab = patches[i].lab;
            add(result, m_places[i], {double(lab.L), double(lab.a), double(lab.b)});
        }
        return result;
    }

    /// The left side, applied to @p grid.
    Grid applied(const Grid& grid) const
    {
        Grid result(m_size);
        for (const Place& place : m_places)
            add(result, place, valueAt(place, grid, m_corners));
        forEachDifference([&](std::size_t at, std::size_t stride, const Difference& d) {
            for (std::size_t k = 0; k < 3; ++k) {
                const double bend = smoothness * (d.before * grid[at - stride][k] + d.here * grid[at][k] +
                                                  d.after * grid[at + stride][k]);
                result[at - stride][k] += d.before * bend;
                result[at][k] += d.here * bend;
                result[at + stride][k] += d.after * bend;
            }
        });
        return result;
    }

    /// The diagonal of the left side, by which the iteration is scaled.
    std::vector<double> diagonal() const
    {
        constexpr double least = 1e-9;
        std::vector<double> result(m_size, least);
        for (const Place& place : m_places)
            for (std::size_t i = 0; i < m_corners; ++i)
                result[place.nodes[i]] += place.importance * place.weights[i] * place.weights[i];
        forEachDifference([&](std::size_t at, std::size_t stride, const Difference& d) {
            result[at - stride] += smoothness * d.before * d.before;
            result[at] += smoothness * d.here * d.here;
            result[at + stride] += smoothness * d.after * d.after;
        });
        return result;
    }

private:
    // Small enough to change no patch by more than some hundredths of dE.
    static constexpr double smoothness = 1e-3;

    static std::vector<Difference> differencesOf(const std::vector<double>& line)
    {
        const double even = 1.0 / static_cast<double>(line.size() - 1);
        std::vector<Difference> result;
        for (std::size_t i = 1; i + 1 < line.size(); ++i) {
            const double low = (line[i] - line[i - 1]) / even, high = (line[i + 1] - line[i]) / even;
            const double share = std::sqrt(0.5 * (low + high)); // of the axis
            result.push_back({share * 2.0 / (low * (low + high)), -share * 2.0 / (low * high),
                              share * 2.0 / (high * (low + high))});
        }
        return result;
    }

    void add(Grid& grid, const Place& place, const Values& values) const
    {
        for (std::size_t i = 0; i < m_corners; ++i)
            for (std::size_t k = 0; k < 3; ++k)
                grid[place.nodes[i]][k] += place.importance * place.weights[i] * values[k];
    }

    /// Calls use(node, stride, difference) for the inner nodes of all lines along the axes.
    template <typename Use>
    void forEachDifference(const Use& use) const
    {
        for (std::size_t axis = 0; axis < m_nodes.size(); ++axis) {
            const std::size_t count = m_nodes[axis].size(), stride = m_strides[axis];
            for (std::size_t at = 0; at < m_size; ++at) {
                const std::size_t i = at / stride % count;
                if (i > 0 && i + 1 < count)
                    use(at, stride, m_differences[axis][i - 1]);
            }
        }
    }

    const Nodes& m_nodes;
    const std::vector<std::size_t> m_strides;
    const std::size_t m_corners;
    const std::size_t m_size;
    std::vector<Place> m_places;
    std::vector<std::vector<Difference>> m_differences;
};

Values product(const Grid& p, const Grid& q)
{
    Values sum{};
    for (std::size_t i = 0; i < p.size(); ++i)
        for (std::size_t k = 0; k < 3; ++k)
            sum[k] += p[i][k] * q[i][k];
    return sum;
}

Grid scaled(const Grid& grid, const std::vector<double>& diagonal)
{
    Grid result = grid;
    for (std::size_t i = 0; i < grid.size(); ++i)
        for (double& value : result[i])
            value /= diagonal[i];
    return result;
}

/// @p grid plus @p factor times @p other.
void addTo(Grid& grid, const Values& factor, const Grid& other)
{
    for (std::size_t i = 0; i < grid.size(); ++i)
        for (std::size_t k = 0; k < 3; ++k)
            grid[i][k] += factor[k] * other[i][k];
}

Values ratio(const Values& p, const Values& q)
{
    Values result{};
    for (std::size_t k = 0; k < 3; ++k)
        result[k] = q[k] > 0.0 ? p[k] / q[k] : 0.0;
    return result;
}

/// Conjugate gradients, for the three values at once.
void solve(const Equations& equations, const Grid& asked, Grid& grid, const KVCompletionProtocolPtr& task)
{
    constexpr int maxSteps = 2000;
    constexpr double enough = 1e-11; // of the squared residual
    const std::vector<double> diagonal = equations.diagonal();
    Grid residual = asked;
    addTo(residual, {-1.0, -1.0, -1.0}, equations.applied(grid));
    Grid towards = scaled(residual, diagonal);
    Values energy = product(residual, towards);
    const Values whole = product(asked, scaled(asked, diagonal));
    for (int step = 0; step < maxSteps && !InputGate::isCancelled(task); ++step) {
        bool isDone = true;
        for (std::size_t k = 0; k < 3; ++k)
            isDone = isDone && !(energy[k] > enough * whole[k]);
        if (isDone)
            return;
        const Grid image = equations.applied(towards);
        const Values length = ratio(energy, product(towards, image));
        addTo(grid, length, towards);
        addTo(residual, {-length[0], -length[1], -length[2]}, image);
        const Grid next = scaled(residual, diagonal);
        const Values left = product(residual, next);
        const Values turn = ratio(left, energy);
        Grid turned = next;
        addTo(turned, turn, towards);
        towards = std::move(turned);
        energy = left;
    }
}

} // namespace

std::vector<std::vector<double>> ChartModel::nodesOf(const DeviceChart& chart)
{
    const std::size_t maxNodes = chart.channels == 3 ? 17 : 9;
    Nodes nodes;
    for (std::size_t c = 0; c < static_cast<std::size_t>(chart.channels); ++c)
        nodes.push_back(axisOf(chart, c, maxNodes));
    return nodes;
}

ChartModel::ChartModel(std::vector<std::vector<double>> nodes, std::span<const DeviceChart::Patch> patches,
                       const ChartModel* start, const KVCompletionProtocolPtr& task)
    : m_nodes(std::move(nodes))
{
    const Equations equations(m_nodes, patches);
    m_values = start ? start->m_values : Grid(equations.size(), Values{50.0, 0.0, 0.0});
    solve(equations, equations.asked(patches), m_values, task);
}

ChartModel::Values ChartModel::at(const DeviceChart::Device& device) const
{
    return valueAt(placeOf(m_nodes, device), m_values, std::size_t(1) << m_nodes.size());
}
