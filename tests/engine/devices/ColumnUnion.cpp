// SPDX-License-Identifier: Apache-2.0
#include "ColumnUnion.h"

namespace kvdevices {
namespace {

constexpr int tileSize = 8;
// Intervals that end closer together than this are joined, because rounding separates adjacent solids.
constexpr double tolerance = 1e-9;
constexpr double minVertical = 1e-13;

double lengthOf(const std::vector<Interval>& intervals)
{
    double sum = 0.0;
    for (const Interval& interval : intervals)
        sum += interval.high - interval.low;
    return sum;
}

} // namespace

void Polytope::cut(const Point& normal, double limit)
{
    const double up = normal[2];
    if (std::abs(up) < minVertical * length(normal))
        m_walls.push_back({-normal[0], -normal[1], limit});
    else
        (up > 0.0 ? m_above : m_below).push_back({-normal[0] / up, -normal[1] / up, limit / up});
}

std::optional<Interval> Polytope::at(double x, double y) const
{
    Interval part{-1e300, 1e300};
    for (const Plane& plane : m_above)
        part.high = std::min(part.high, plane.atPlace(x, y));
    for (const Plane& plane : m_below)
        part.low = std::max(part.low, plane.atPlace(x, y));
    for (const Plane& wall : m_walls)
        if (wall.atPlace(x, y) < 0.0)
            return std::nullopt;
    if (part.low >= part.high)
        return std::nullopt;
    return part;
}

ColumnUnion::ColumnUnion(const Box& bounds, std::size_t columns) : m_low(bounds.low)
{
    const double wide = bounds.high[0] - bounds.low[0], high = bounds.high[1] - bounds.low[1];
    m_pitch = std::sqrt(wide * high / double(columns));
    m_wide = int(std::ceil(wide / m_pitch));
    m_high = int(std::ceil(high / m_pitch));
    m_tilesWide = (m_wide + tileSize - 1) / tileSize;
    m_covered.resize(std::size_t(m_wide) * std::size_t(m_high));
    m_inserted.resize(m_covered.size());
    m_tiles.resize(std::size_t(m_tilesWide) * std::size_t((m_high + tileSize - 1) / tileSize));
}

ColumnUnion::Range ColumnUnion::columnsOf(double low, double high, double start, int count) const
{
    return {std::max(0, int(std::ceil((low - start) / m_pitch - 0.5))),
            std::min(count - 1, int(std::floor((high - start) / m_pitch - 0.5)))};
}

void ColumnUnion::insert(int i, int j, Interval added)
{
    const std::size_t index = indexOf(i, j);
    m_inserted[index] += added.high - added.low;
    auto& covered = m_covered[index];
    auto first = covered.begin();
    while (first != covered.end() && first->high < added.low - tolerance)
        ++first;
    auto last = first;
    while (last != covered.end() && last->low <= added.high + tolerance) {
        added = {std::min(added.low, last->low), std::max(added.high, last->high)};
        ++last;
    }
    if (first == last) {
        covered.insert(first, added);
    } else {
        *first = added;
        covered.erase(first + 1, last);
    }
    m_tiles[std::size_t(j / tileSize * m_tilesWide + i / tileSize)].isCurrent = false;
}

bool ColumnUnion::covers(int i, int j, Interval wanted) const
{
    for (const Interval& covered : m_covered[indexOf(i, j)])
        if (covered.low <= wanted.low + tolerance && covered.high >= wanted.high - tolerance)
            return true;
    return false;
}

const Interval& ColumnUnion::coreOf(int tileX, int tileY)
{
    Tile& tile = m_tiles[std::size_t(tileY * m_tilesWide + tileX)];
    if (tile.isCurrent)
        return tile.core;
    tile = {{-1e300, 1e300}, true};
    for (int j = tileY * tileSize; j < std::min(m_high, (tileY + 1) * tileSize); ++j)
        for (int i = tileX * tileSize; i < std::min(m_wide, (tileX + 1) * tileSize); ++i) {
            Interval longest{0.0, 0.0};
            for (const Interval& covered : m_covered[indexOf(i, j)])
                if (covered.high - covered.low > longest.high - longest.low)
                    longest = covered;
            tile.core = {std::max(tile.core.low, longest.low), std::min(tile.core.high, longest.high)};
        }
    return tile.core;
}

bool ColumnUnion::coversBoxInTile(const Box& box, Range x, Range y) const
{
    for (int j = y.low; j <= y.high; ++j)
        for (int i = x.low; i <= x.high; ++i)
            if (!covers(i, j, {box.low[2], box.high[2]}))
                return false;
    return true;
}

bool ColumnUnion::coversBox(const Box& box)
{
    const Range x = columnsX(box.low[0], box.high[0]), y = columnsY(box.low[1], box.high[1]);
    for (int tileY = y.low / tileSize; tileY * tileSize <= y.high; ++tileY)
        for (int tileX = x.low / tileSize; tileX * tileSize <= x.high; ++tileX) {
            const Interval& core = coreOf(tileX, tileY);
            if (core.low <= box.low[2] && core.high >= box.high[2])
                continue;
            const Range partX{std::max(x.low, tileX * tileSize),
                              std::min(x.high, tileX * tileSize + tileSize - 1)};
            const Range partY{std::max(y.low, tileY * tileSize),
                              std::min(y.high, tileY * tileSize + tileSize - 1)};
            if (!coversBoxInTile(box, partX, partY))
                return false;
        }
    return true;
}

template <typename Length>
ColumnUnion::Volume ColumnUnion::integral(const Length& length) const
{
    std::array<double, 4> sums{};
    for (int j = 0; j < m_high; ++j)
        for (int i = 0; i < m_wide; ++i)
            sums[std::size_t(i % 2 + 2 * (j % 2))] += length(indexOf(i, j));
    const double area = m_pitch * m_pitch, total = area * (sums[0] + sums[1] + sums[2] + sums[3]);
    double squares = 0.0;
    for (double sum : sums)
        squares += (4.0 * area * sum - total) * (4.0 * area * sum - total);
    return {total, std::sqrt(squares / 3.0)};
}

ColumnUnion::Volume ColumnUnion::volume() const
{
    return integral([this](std::size_t index) { return lengthOf(m_covered[index]); });
}

ColumnUnion::Volume ColumnUnion::overlap() const
{
    return integral([this](std::size_t index) { return m_inserted[index] - lengthOf(m_covered[index]); });
}

ColumnUnion::Volume ColumnUnion::common(const ColumnUnion& other) const
{
    return integral([&](std::size_t index) {
        double sum = 0.0;
        for (const Interval& p : m_covered[index])
            for (const Interval& q : other.m_covered[index])
                sum += std::max(0.0, std::min(p.high, q.high) - std::max(p.low, q.low));
        return sum;
    });
}

} // namespace kvdevices
