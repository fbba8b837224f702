// SPDX-License-Identifier: Apache-2.0
#include "DeviceSolid.h"

#include <engine/base/Parts.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <span>

namespace velmora {
namespace {

// Appends the tetrahedra of one three-dimensional face, whose points start at `base`. Incomplete if the task
// is cancelled.
void addTetrahedra(std::vector<std::array<int, 4>>& tetrahedra, int base, std::array<int, 3> counts,
                   const Task& task)
{
    const std::array<int, 3> stride{counts[1] * counts[2], counts[2], 1};
    constexpr std::array<std::array<std::size_t, 2>, 6> orders{
        {{0, 1}, {1, 2}, {2, 0}, {1, 0}, {2, 1}, {0, 2}}};
    for (int i = 0; i + 1 < counts[0] && !task.isCancelled(); ++i)
        for (int j = 0; j + 1 < counts[1]; ++j)
            for (int k = 0; k + 1 < counts[2]; ++k) {
                const int low = base + i * stride[0] + j * stride[1] + k * stride[2];
                const int high = low + stride[0] + stride[1] + stride[2];
                for (const auto& order : orders) {
                    const int second = low + stride[order[0]];
                    tetrahedra.push_back({low, second, second + stride[order[1]], high});
                }
            }
}

// The device colours of one three-dimensional face: the free channels take all nodes, the others the bits of
// a corner. Incomplete if the task is cancelled.
void addColours(std::vector<float>& device, const DeviceNodes& nodes, unsigned corner,
                std::array<std::size_t, 3> free, const Task& task)
{
    std::vector<float> colour(nodes.size());
    for (std::size_t c = 0; c < nodes.size(); ++c)
        colour[c] = static_cast<float>(corner >> c & 1u);
    for (float x : nodes[free[0]]) {
        if (task.isCancelled())
            return;
        for (float y : nodes[free[1]])
            for (float z : nodes[free[2]]) {
                colour[free[0]] = x;
                colour[free[1]] = y;
                colour[free[2]] = z;
                device.insert(device.end(), colour.begin(), colour.end());
            }
    }
}

} // namespace

namespace {

// Curvature of the map along each axis: the mean second difference along the hypercube's edges and through
// its centre, with the same number of nodes for all axes.
Result<std::vector<double>> curvatures(const DeviceTransform& transform, const DeviceNodes& nodes,
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

// Number of tetrahedra of a solid with the given number of nodes along each axis.
double tetrahedraOf(const std::vector<std::size_t>& counts)
{
    const std::size_t n = counts.size();
    double sum = 0.0;
    for (std::size_t u = 0; u < n; ++u)
        for (std::size_t v = u + 1; v < n; ++v)
            for (std::size_t w = v + 1; w < n; ++w)
                sum += double(counts[u] - 1) * double(counts[v] - 1) * double(counts[w] - 1);
    return 6.0 * sum * double(1u << (n - 3));
}

} // namespace

Result<DeviceNodes> solidNodes(const DeviceTransform& transform, int nodesPerAxis, const Task& task)
{
    constexpr int maxNodes = 129;
    constexpr double minNodes = 5.0;
    constexpr double maxTetrahedra = 400'000.0;
    const auto fine = equalisedNodes(transform, maxNodes, evenShareOfFolds, task.part(0.0, 0.5));
    if (!fine)
        return failure(fine);
    const auto curvature = curvatures(transform, *fine, task.part(0.5, 1.0));
    if (!curvature)
        return failure(curvature);
    const double target = std::min(maxTetrahedra, tetrahedraOf(std::vector<std::size_t>(
                                                      fine->size(), static_cast<std::size_t>(nodesPerAxis))));
    const auto countsAt = [&](double scale) {
        std::vector<std::size_t> counts;
        counts.reserve(curvature->size());
        for (double b : *curvature)
            counts.push_back(
                static_cast<std::size_t>(std::clamp(scale * std::sqrt(b), minNodes, double(maxNodes))));
        return counts;
    };
    double low = 0.0, high = 1e6;
    constexpr int halvings = 60;
    for (int i = 0; i < halvings; ++i) {
        const double middle = 0.5 * (low + high);
        (tetrahedraOf(countsAt(middle)) <= target ? low : high) = middle;
    }
    const std::vector<std::size_t> counts = countsAt(low);
    DeviceNodes nodes;
    for (std::size_t axis = 0; axis < fine->size(); ++axis)
        nodes.push_back(thinnedAxis((*fine)[axis], counts[axis]));
    return nodes;
}

Result<DeviceSolid> deviceSolid(const DeviceTransform& transform, const DeviceNodes& nodes, const Task& task)
{
    DeviceSolid solid;
    solid.channels = transform.channels();
    const std::size_t n = nodes.size();
    for (std::size_t u = 0; u < n; ++u)
        for (std::size_t v = u + 1; v < n; ++v)
            for (std::size_t w = v + 1; w < n; ++w)
                for (unsigned corner = 0; corner < 1u << n; ++corner) {
                    if (corner & (1u << u | 1u << v | 1u << w))
                        continue;
                    addTetrahedra(solid.tetrahedra, static_cast<int>(solid.device.size() / n),
                                  {static_cast<int>(nodes[u].size()), static_cast<int>(nodes[v].size()),
                                   static_cast<int>(nodes[w].size())},
                                  task);
                    addColours(solid.device, nodes, corner, {u, v, w}, task);
                }
    auto points = transform.toLab(solid.device, task);
    if (!points)
        return failure(points);
    solid.points = std::move(*points);
    return solid;
}

namespace {

// The barycentric coordinates of a tetrahedron as linear functions; a point is inside if none is negative.
class Barycentric
{
public:
    Barycentric(Vec3 p, Vec3 q, Vec3 r, Vec3 s) : m_origin(p)
    {
        const Vec3 u = q - p, v = r - p, w = s - p;
        const double volume = dot(u, cross(v, w));
        const double size = length(u) * length(v) * length(w);
        constexpr double minVolumeRatio = 1e-9;
        m_degenerate = std::abs(volume) <= minVolumeRatio * size;
        if (m_degenerate)
            return;
        std::array<Vec3, 4> gradients;
        gradients[1] = (1.0 / volume) * cross(v, w);
        gradients[2] = (1.0 / volume) * cross(w, u);
        gradients[3] = (1.0 / volume) * cross(u, v);
        gradients[0] = -1.0 * (gradients[1] + gradients[2] + gradients[3]);
        for (std::size_t i = 0; i < 4; ++i) {
            constexpr double tolerance = 1e-9;
            const Vec3& g = gradients[i];
            const double start = (i == 0 ? 1.0 : 0.0) + tolerance;
            Facet& facet = m_facets[i];
            facet.bound = g.L > 0.0 ? Bound::Low : g.L < 0.0 ? Bound::High : Bound::None;
            const double scale = facet.bound == Bound::None ? 1.0 : -1.0 / g.L;
            facet.start = scale * start;
            facet.a = scale * g.a;
            facet.b = scale * g.b;
        }
    }

    bool isDegenerate() const { return m_degenerate; }

    // The part of the line at (a, b) that lies inside; false if there is none.
    bool interval(double a, double b, double& low, double& high) const
    {
        low = -std::numeric_limits<double>::infinity();
        high = std::numeric_limits<double>::infinity();
        for (const Facet& facet : m_facets) {
            const double value = facet.start + facet.a * (a - m_origin.a) + facet.b * (b - m_origin.b);
            if (facet.bound == Bound::Low)
                low = std::max(low, value);
            else if (facet.bound == Bound::High)
                high = std::min(high, value);
            else if (value < 0.0)
                return false;
        }
        low += m_origin.L;
        high += m_origin.L;
        return low <= high;
    }

private:
    enum class Bound
    {
        Low,
        High,
        None
    };
    // The first coordinate at which a line crosses the facet; for facets parallel to the lines the
    // barycentric coordinate itself.
    struct Facet
    {
        double start, a, b;
        Bound bound;
    };

    Vec3 m_origin;
    std::array<Facet, 4> m_facets;
    bool m_degenerate = false;
};

constexpr std::size_t tetrahedraBetweenChecks = 256;
// Rounding may leave a gap of this size between adjacent tetrahedra.
constexpr float minGap = 1e-4f;

// Merges overlapping intervals of one line, in place.
// @return how many remain
std::size_t merge(std::span<Interval> intervals)
{
    std::sort(intervals.begin(), intervals.end(), [](const Interval& s, const Interval& t) {
        return s.low != t.low ? s.low < t.low : s.lowTetrahedron < t.lowTetrahedron;
    });
    std::size_t kept = 0;
    for (std::size_t i = 0; i < intervals.size(); ++i) {
        if (kept == 0 || intervals[i].low > intervals[kept - 1].high + minGap) {
            intervals[kept++] = intervals[i];
        } else if (intervals[i].high > intervals[kept - 1].high) {
            intervals[kept - 1].high = intervals[i].high;
            intervals[kept - 1].highTetrahedron = intervals[i].highTetrahedron;
        }
    }
    return kept;
}

struct Hit
{
    std::uint32_t line;
    Interval interval;
};

// The lines of a grid that may cross a tetrahedron: columns i0..i1, rows j0..j1.
struct LineRange
{
    int i0, i1, j0, j1;

    LineRange(const LineGrid& grid, const Vec3& p, const Vec3& q, const Vec3& r, const Vec3& s)
        : i0(first((std::min({p.a, q.a, r.a, s.a}) - grid.a0) / grid.step, grid.na)),
          i1(last((std::max({p.a, q.a, r.a, s.a}) - grid.a0) / grid.step, grid.na)),
          j0(first((std::min({p.b, q.b, r.b, s.b}) - grid.b0) / grid.step, grid.nb)),
          j1(last((std::max({p.b, q.b, r.b, s.b}) - grid.b0) / grid.step, grid.nb))
    {
    }
    bool isEmpty() const { return i0 > i1 || j0 > j1; }

private:
    static int first(double place, int count)
    {
        return static_cast<int>(std::clamp(std::ceil(place), 0.0, double(count)));
    }
    static int last(double place, int count)
    {
        return static_cast<int>(std::clamp(std::floor(place), -1.0, double(count - 1)));
    }
};

// The intervals of lines in single tetrahedra, and how many each line has. In blocks, because to move
// millions of them to a larger list would take too long.
struct Hits
{
    static constexpr std::size_t maxBlock = 16'384;

    std::vector<std::vector<Hit>> blocks;
    std::size_t count = 0;
    std::vector<std::uint32_t> ofLine;

    explicit Hits(const LineGrid& grid) : ofLine(grid.size()) {}

    void add(std::int32_t name, const Vec3& p, const Vec3& q, const Vec3& r, const Vec3& s,
             const LineGrid& grid)
    {
        const LineRange range(grid, p, q, r, s);
        if (range.isEmpty())
            return;
        const Barycentric tetrahedron(p, q, r, s);
        if (tetrahedron.isDegenerate())
            return;
        for (int j = range.j0; j <= range.j1; ++j)
            for (int i = range.i0; i <= range.i1; ++i) {
                double low = 0.0, high = 0.0;
                if (!tetrahedron.interval(grid.a0 + i * grid.step, grid.b0 + j * grid.step, low, high))
                    continue;
                const auto line = static_cast<std::uint32_t>(j) * static_cast<std::uint32_t>(grid.na) +
                                  static_cast<std::uint32_t>(i);
                add({line, {static_cast<float>(low), static_cast<float>(high), name, name}});
            }
    }

private:
    void add(const Hit& hit)
    {
        if (count % maxBlock == 0)
            blocks.emplace_back().reserve(maxBlock);
        blocks.back().push_back(hit);
        ++count;
        ++ofLine[hit.line];
    }
};

// Sorts the hits by line, in the order of the tetrahedra within a line. Incomplete if the task is cancelled.
LineIntervals byLine(const Hits& hits, const Task& task)
{
    LineIntervals result;
    result.first.assign(hits.ofLine.size() + 1, 0);
    std::partial_sum(hits.ofLine.begin(), hits.ofLine.end(), result.first.begin() + 1);
    growInParts(result.intervals, hits.count, {}, task);
    std::vector<std::uint32_t> next(result.first.begin(), result.first.end() - 1);
    for (const auto& block : hits.blocks)
        forEachIndex(block.size(), task,
                     [&](std::size_t i) { result.intervals[next[block[i].line]++] = block[i].interval; });
    return result;
}

// Merges the overlapping intervals of each line, in place.
Result<void> mergeEachLine(LineIntervals& lines, const Task& task)
{
    std::uint32_t kept = 0;
    for (std::size_t line = 0; line + 1 < lines.first.size(); ++line) {
        if (task.isCancelled())
            return failure(KVProblemCode::Cancelled);
        const std::span<Interval> ofLine(lines.intervals.data() + lines.first[line],
                                         lines.first[line + 1] - lines.first[line]);
        const std::size_t count = merge(ofLine);
        std::copy_n(ofLine.begin(), count, lines.intervals.begin() + kept);
        lines.first[line] = kept;
        kept += static_cast<std::uint32_t>(count);
    }
    lines.first.back() = kept;
    lines.intervals.resize(kept);
    return {};
}

} // namespace

Result<LineIntervals> castThrough(const std::vector<Vec3>& points,
                                  const std::vector<std::array<int, 4>>& tetrahedra, const LineGrid& grid,
                                  CastBudget& budget, const Task& task)
{
    const std::size_t maxHits = std::min(CastBudget::maxPerCast, budget.left);
    const auto point = [&points](int i) -> const Vec3& { return points[static_cast<std::size_t>(i)]; };
    Hits hits(grid);
    for (std::size_t t = 0; t < tetrahedra.size(); ++t) {
        if (t % tetrahedraBetweenChecks == 0 && task.isCancelled())
            return failure(KVProblemCode::Cancelled);
        if (hits.count > maxHits)
            return failure(KVProblemCode::TooManyOverlaps);
        const auto& [p, q, r, s] = tetrahedra[t];
        hits.add(static_cast<std::int32_t>(t), point(p), point(q), point(r), point(s), grid);
    }
    budget.left -= std::min(budget.left, hits.count);
    LineIntervals lines = byLine(hits, task);
    if (const auto merged = mergeEachLine(lines, task); !merged)
        return failure(merged);
    return lines;
}

Result<double> coveredVolume(const DeviceSolid& solid, CastBudget& budget, const Task& task)
{
    constexpr int linesAcross = 64;
    Vec3 low = solid.points.front(), high = low;
    for (const Vec3& p : solid.points) {
        low = {std::min(low.L, p.L), std::min(low.a, p.a), std::min(low.b, p.b)};
        high = {std::max(high.L, p.L), std::max(high.a, p.a), std::max(high.b, p.b)};
    }
    LineGrid grid;
    grid.step = std::max({high.a - low.a, high.b - low.b, 1e-3}) / linesAcross;
    grid.na = static_cast<int>((high.a - low.a) / grid.step) + 1;
    grid.nb = static_cast<int>((high.b - low.b) / grid.step) + 1;
    grid.a0 = low.a + 0.5 * grid.step;
    grid.b0 = low.b + 0.5 * grid.step;
    const auto columns = castThrough(solid.points, solid.tetrahedra, grid, budget, task);
    if (!columns)
        return failure(columns);
    double sum = 0.0;
    for (const Interval& s : columns->intervals)
        sum += double(s.high) - double(s.low);
    return sum * grid.step * grid.step;
}

} // namespace velmora
