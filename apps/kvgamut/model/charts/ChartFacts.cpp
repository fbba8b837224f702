// SPDX-License-Identifier: Apache-2.0
#include "ChartFacts.h"

#include "model/inputs/InputGate.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace {

using Device = DeviceChart::Device;
using Patch = DeviceChart::Patch;

constexpr double nearEnough = 0.01; // to a corner

bool isCorner(const Patch& patch, int channels)
{
    return std::all_of(patch.device.begin(), patch.device.begin() + channels,
                       [](double value) { return std::min(value, 1.0 - value) <= nearEnough; });
}

int missingCornersOf(const DeviceChart& chart)
{
    std::set<unsigned> found;
    for (const Patch& patch : chart.patches) {
        unsigned corner = 0;
        for (std::size_t c = 0; c < static_cast<std::size_t>(chart.channels); ++c)
            corner |= patch.device[c] > 0.5 ? 1u << c : 0u;
        if (isCorner(patch, chart.channels))
            found.insert(corner);
    }
    return (1 << chart.channels) - static_cast<int>(found.size());
}

QList<int> levelCounts(const DeviceChart& chart)
{
    QList<int> counts;
    for (std::size_t c = 0; c < static_cast<std::size_t>(chart.channels); ++c) {
        std::set<double> levels;
        for (const Patch& patch : chart.patches)
            levels.insert(patch.device[c]);
        counts.append(static_cast<int>(levels.size()));
    }
    return counts;
}

/// The nodes of a model as device colours.
class DeviceGrid
{
public:
    explicit DeviceGrid(const ChartModel& model) : m_nodes(model.nodes()), m_size(model.values().size()) {}

    std::size_t size() const { return m_size; }

    /// The index of node @p at along each axis.
    std::array<std::size_t, 4> indexOf(std::size_t at) const
    {
        std::array<std::size_t, 4> index{};
        for (std::size_t axis = m_nodes.size(); axis-- > 0;) {
            index[axis] = at % m_nodes[axis].size();
            at /= m_nodes[axis].size();
        }
        return index;
    }

    Device deviceOf(std::size_t at) const
    {
        const auto index = indexOf(at);
        Device device{};
        for (std::size_t axis = 0; axis < m_nodes.size(); ++axis)
            device[axis] = m_nodes[axis][index[axis]];
        return device;
    }

    /// The share of the device space that is nearest to node @p at.
    double shareOf(std::size_t at) const
    {
        const auto index = indexOf(at);
        double share = 1.0;
        for (std::size_t axis = 0; axis < m_nodes.size(); ++axis) {
            const std::vector<double>& line = m_nodes[axis];
            const std::size_t i = index[axis];
            const double low = i > 0 ? line[i - 1] : line[i];
            const double high = i + 1 < line.size() ? line[i + 1] : line[i];
            share *= 0.5 * (high - low);
        }
        return share;
    }

    /// Which nodes have a patch on the side @p side: bit c is set for "at least as much" of channel c.
    std::vector<bool> reached(const std::vector<Patch>& patches, unsigned side) const
    {
        std::vector<bool> nodes(m_size, false);
        for (const Patch& patch : patches)
            nodes[lastNodeOf(patch, side)] = true;
        std::size_t stride = 1;
        for (std::size_t axis = m_nodes.size(); axis-- > 0; stride *= m_nodes[axis].size())
            spread(nodes, stride, m_nodes[axis].size(), (side >> axis & 1u) != 0);
        return nodes;
    }

private:
    /// The node that is farthest towards @p patch, on its side, and does not pass it.
    std::size_t lastNodeOf(const Patch& patch, unsigned side) const
    {
        constexpr double rounding = 1e-6;
        std::size_t at = 0;
        for (std::size_t axis = 0; axis < m_nodes.size(); ++axis) {
            const std::vector<double>& line = m_nodes[axis];
            const double value = patch.device[axis];
            const auto above = std::upper_bound(line.begin(), line.end(), value + rounding);
            const auto from = std::lower_bound(line.begin(), line.end(), value - rounding);
            const auto i = (side >> axis & 1u) != 0 ? above - line.begin() - 1 : from - line.begin();
            at = at * line.size() + static_cast<std::size_t>(i);
        }
        return at;
    }

    /// What has a patch passes it on along an axis: to smaller values if @p down, otherwise to larger ones.
    static void spread(std::vector<bool>& nodes, std::size_t stride, std::size_t count, bool down)
    {
        for (std::size_t step = 0; step < nodes.size(); ++step) {
            const std::size_t at = down ? nodes.size() - 1 - step : step;
            const std::size_t i = at / stride % count;
            if (down && i + 1 < count && nodes[at + stride])
                nodes[at] = true;
            if (!down && i > 0 && nodes[at - stride])
                nodes[at] = true;
        }
    }

    const std::vector<std::vector<double>>& m_nodes;
    const std::size_t m_size;
};

double uncoveredShareOf(const DeviceChart& chart, const DeviceGrid& grid)
{
    std::vector<bool> covered(grid.size(), true);
    for (unsigned side = 0; side < 1u << chart.channels; ++side) {
        const std::vector<bool> reached = grid.reached(chart.patches, side);
        for (std::size_t at = 0; at < covered.size(); ++at)
            covered[at] = covered[at] && reached[at];
    }
    double share = 0.0;
    for (std::size_t at = 0; at < covered.size(); ++at)
        share += covered[at] ? 0.0 : grid.shareOf(at);
    return share;
}

double distance(const Device& p, const Device& q)
{
    double largest = 0.0;
    for (std::size_t c = 0; c < p.size(); ++c)
        largest = std::max(largest, std::abs(p[c] - q[c]));
    return largest;
}

double largestGapOf(const DeviceChart& chart, const DeviceGrid& grid, const KVCompletionProtocolPtr& task)
{
    double largest = 0.0;
    for (std::size_t at = 0; at < grid.size() && !InputGate::isCancelled(task); ++at) {
        const Device device = grid.deviceOf(at);
        double nearest = 1.0;
        for (const Patch& patch : chart.patches)
            nearest = std::min(nearest, distance(device, patch.device));
        largest = std::max(largest, nearest);
    }
    return largest;
}

double difference(const ChartModel::Values& p, const KVGamut::LabPoint& q)
{
    return std::hypot(p[0] - double(q.L), p[1] - double(q.a), p[2] - double(q.b));
}

/// Differences of patches from what the others predict, ascending.
std::vector<double> errorsOf(const DeviceChart& chart, const ChartModel& model,
                             const KVCompletionProtocolPtr& task)
{
    constexpr std::size_t parts = 10;
    std::vector<double> errors;
    for (std::size_t part = 0; part < parts && !InputGate::isCancelled(task); ++part) {
        std::vector<Patch> kept, leftOut;
        for (std::size_t i = 0; i < chart.patches.size(); ++i) {
            const bool isOut = i % parts == part && !isCorner(chart.patches[i], chart.channels);
            (isOut ? leftOut : kept).push_back(chart.patches[i]);
        }
        if (leftOut.empty())
            continue;
        const ChartModel others(model.nodes(), kept, &model, task);
        for (const Patch& patch : leftOut)
            errors.push_back(difference(others.at(patch.device), patch.lab));
    }
    std::sort(errors.begin(), errors.end());
    return errors;
}

double percentile(const std::vector<double>& ascending, double share)
{
    if (ascending.empty())
        return 0.0;
    const auto last = static_cast<double>(ascending.size() - 1);
    return ascending[static_cast<std::size_t>(std::lround(share * last))];
}

QString percentage(double share)
{
    return QString::number(100.0 * share, 'f', 1) + QStringLiteral(" %");
}

} // namespace

ChartFacts ChartFacts::of(const DeviceChart& chart, const ChartModel& model,
                          const KVCompletionProtocolPtr& task)
{
    const DeviceGrid grid(model);
    const std::vector<double> errors = errorsOf(chart, model, task);
    ChartFacts facts;
    facts.isDisplay = chart.isDisplay;
    facts.channels = chart.channels;
    facts.measured = chart.measured;
    facts.different = static_cast<qsizetype>(chart.patches.size());
    facts.levels = levelCounts(chart);
    facts.missingCorners = missingCornersOf(chart);
    facts.uncoveredShare = uncoveredShareOf(chart, grid);
    facts.largestGap = largestGapOf(chart, grid, task);
    facts.errorMedian = percentile(errors, 0.5);
    facts.errorP95 = percentile(errors, 0.95);
    facts.isWhiteMeasured = chart.isWhiteMeasured;
    return facts;
}

QString ChartFacts::title() const
{
    return (isDisplay ? QStringLiteral("display chart of %1 patches")
                      : QStringLiteral("print chart of %1 patches"))
        .arg(measured);
}

QStringList ChartFacts::notes() const
{
    QStringList notes{
        QStringLiteral(
            "As measured: %1, %2 of them different. Colours between them are interpolated; the error "
            "is %3 dE76 (median) and %4 (95 %), the largest gap %5 of a channel.")
            .arg(title())
            .arg(different)
            .arg(errorMedian, 0, 'f', 2)
            .arg(errorP95, 0, 'f', 2)
            .arg(percentage(largestGap))};
    if (missingCorners > 0)
        notes.append(
            QStringLiteral("Warning: %1 of the %2 combinations of 0 and 100 % are not in the chart; %3 of "
                           "the device's colours are not enclosed by patches and are extrapolated.")
                .arg(missingCorners)
                .arg(1 << channels)
                .arg(percentage(uncoveredShare)));
    if (!isWhiteMeasured)
        notes.append(
            QStringLiteral("Warning: the white of the device is not in the chart; its lightest patch is "
                           "taken for it."));
    return notes;
}
