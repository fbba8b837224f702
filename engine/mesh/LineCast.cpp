// SPDX-License-Identifier: Apache-2.0
#include "LineCast.h"

#include <engine/base/Parts.h>

#include <algorithm>
#include <numeric>
#include <optional>
#include <span>

namespace velmora {
namespace {

constexpr std::size_t tetrahedraBetweenChecks = 256;

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

// The intervals of lines in single tetrahedra, and how many each line has. Those inside of what is known of
// their line are left out: they are most of them. In blocks, because to move millions of them to a larger
// list would take too long.
struct Hits
{
    static constexpr std::size_t maxBlock = 16'384;

    std::vector<std::vector<Hit>> blocks;
    std::size_t count = 0;
    std::size_t computed = 0; ///< those that were left out included
    std::vector<std::uint32_t> ofLine;

    explicit Hits(std::vector<LinePart> known) : ofLine(known.size()), m_known(std::move(known)) {}

    void add(std::int32_t name, const Vec3& p, const Vec3& q, const Vec3& r, const Vec3& s,
             const LineGrid& grid)
    {
        const LineRange range(grid, p, q, r, s);
        if (range.isEmpty())
            return;
        const LinePart whole{static_cast<float>(std::min({p.L, q.L, r.L, s.L})),
                             static_cast<float>(std::max({p.L, q.L, r.L, s.L}))};
        const bool isLarge = range.i1 - range.i0 > 2 && range.j1 - range.j0 > 2;
        const std::optional<RowRanges> rows =
            isLarge ? std::optional<RowRanges>(std::in_place, grid, p, q, r, s) : std::nullopt;
        std::optional<TetrahedronOnLines> tetrahedron;
        for (int j = range.j0; j <= range.j1; ++j) {
            const auto [i0, i1] = rows ? rows->of(j) : RowRanges::Columns{range.i0, range.i1};
            for (int i = i0; i <= i1; ++i) {
                const auto line = static_cast<std::uint32_t>(j) * static_cast<std::uint32_t>(grid.na) +
                                  static_cast<std::uint32_t>(i);
                if (m_known[line].contains(whole))
                    continue;
                if (!tetrahedron)
                    tetrahedron.emplace(p, q, r, s);
                if (tetrahedron->isDegenerate())
                    return;
                double low = 0.0, high = 0.0;
                if (tetrahedron->interval(grid.a0 + i * grid.step, grid.b0 + j * grid.step, low, high))
                    add({line, {static_cast<float>(low), static_cast<float>(high), name, name}});
            }
        }
    }

private:
    void add(const Hit& hit)
    {
        ++computed;
        const LinePart added{hit.interval.low, hit.interval.high};
        if (m_known[hit.line].contains(added))
            return;
        m_known[hit.line].unite(added);
        if (count % maxBlock == 0)
            blocks.emplace_back().reserve(maxBlock);
        blocks.back().push_back(hit);
        ++count;
        ++ofLine[hit.line];
    }

    std::vector<LinePart> m_known; // to lie in the solid
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
                                  std::vector<LinePart> known, CastBudget& budget, const Task& task)
{
    const std::size_t maxHits = std::min(CastBudget::maxPerCast, budget.left);
    const auto point = [&points](int i) -> const Vec3& { return points[static_cast<std::size_t>(i)]; };
    Hits hits(std::move(known));
    for (std::size_t t = 0; t < tetrahedra.size(); ++t) {
        if (t % tetrahedraBetweenChecks == 0 && task.isCancelled())
            return failure(KVProblemCode::Cancelled);
        if (hits.computed > maxHits)
            return failure(KVProblemCode::TooManyOverlaps);
        const auto& [p, q, r, s] = tetrahedra[t];
        hits.add(static_cast<std::int32_t>(t), point(p), point(q), point(r), point(s), grid);
    }
    budget.left -= std::min(budget.left, hits.computed);
    LineIntervals lines = byLine(hits, task);
    if (const auto merged = mergeEachLine(lines, task); !merged)
        return failure(merged);
    return lines;
}

Result<LineIntervals> castThrough(const std::vector<Vec3>& points,
                                  const std::vector<std::array<int, 4>>& tetrahedra, const LineGrid& grid,
                                  CastBudget& budget, const Task& task)
{
    return castThrough(points, tetrahedra, grid, std::vector<LinePart>(grid.size()), budget, task);
}

} // namespace velmora
