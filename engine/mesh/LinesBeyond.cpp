// SPDX-License-Identifier: Apache-2.0
#include "LinesBeyond.h"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

constexpr float tolerance = 1e-4f; // in steps; more than the rounding of a Place

float lowestOf(Lanes lanes)
{
    return std::min(std::min(lanes[0], lanes[1]), std::min(lanes[2], lanes[3]));
}

float highestOf(Lanes lanes)
{
    return std::max(std::max(lanes[0], lanes[1]), std::max(lanes[2], lanes[3]));
}

// The end of what is covered of a line, upwards or downwards.
template <bool IsUpper>
float endOf(const LineCover::Piece& piece)
{
    return IsUpper ? piece.high : -piece.low; // the lowest float if it is empty
}

// Differences to the two neighbours. If one has nothing that is covered, the other one counts twice.
struct Slopes
{
    float before, after;

    Slopes(float last, float own, float next)
    {
        const bool hasLast = last > noEnd, hasNext = next > noEnd;
        before = hasLast ? own - last : hasNext ? next - own : 0.0f;
        after = hasNext ? next - own : before;
    }

private:
    static constexpr float noEnd = -1e30f;
};

} // namespace

LinesBeyond::Place LinesBeyond::placeOf(const Vec3& p, const LineGrid& grid)
{
    return {static_cast<float>((p.a - grid.a0) / grid.step), static_cast<float>((p.b - grid.b0) / grid.step),
            static_cast<float>(p.L)};
}

void LinesBeyond::setPoints(const Place* first, std::span<const std::size_t> offsets)
{
    const std::size_t count = offsets.size() / laneCount;
    m_i.resize(count);
    m_j.resize(count);
    m_L.resize(count);
    for (std::size_t k = 0; k < offsets.size(); ++k) {
        const Place& place = first[offsets[k]];
        m_i[k / laneCount][k % laneCount] = place.i;
        m_j[k / laneCount][k % laneCount] = place.j;
        m_L[k / laneCount][k % laneCount] = place.L;
    }
    const auto boundsOf = [](const std::vector<Lanes>& values, float& low, float& high) {
        Lanes lowest = values.front(), highest = lowest;
        for (const Lanes lanes : values) {
            lowest = lower(lowest, lanes);
            highest = upper(highest, lanes);
        }
        low = lowestOf(lowest);
        high = highestOf(highest);
    };
    boundsOf(m_i, m_low.i, m_high.i);
    boundsOf(m_j, m_low.j, m_high.j);
    boundsOf(m_L, m_low.L, m_high.L);
}

bool LinesBeyond::isBoxCovered(double margin) const
{
    const auto wider = static_cast<float>(margin);
    const float low = m_low.L - wider, high = m_high.L + wider;
    return visitLines(static_cast<float>(margin / m_cover.grid().step),
                      [&](int i, int j) { return isCovered(m_cover.indexOf(i, j), low, high); });
}

bool LinesBeyond::any() const
{
    return !visitLines(0.0f, [this](int i, int j) { return !isBeyond(i, j); });
}

const std::vector<LinesBeyond::Line>& LinesBeyond::all()
{
    m_found.clear();
    visitLines(0.0f, [this](int i, int j) {
        if (isBeyond(i, j))
            m_found.push_back({i, j});
        return true;
    });
    return m_found;
}

const std::vector<LinesBeyond::Line>& LinesBeyond::allOfBox()
{
    m_found.clear();
    visitLines(0.0f, [this](int i, int j) {
        const LineCover::Piece& longest = m_cover.longest(m_cover.indexOf(i, j));
        if (longest.low > m_low.L + minGap || m_high.L > longest.high + minGap)
            m_found.push_back({i, j});
        return true;
    });
    return m_found;
}

// The lines through the box around the points.
// @param margin in steps
LinesBeyond::Range LinesBeyond::rangeOf(float margin) const
{
    const auto first = [](float low) { return low < 0.0f ? 0 : static_cast<int>(low) + 1; };
    const auto last = [](float high, int count) {
        return high < 0.0f ? -1 : std::min(count - 1, static_cast<int>(high));
    };
    const float around = margin + tolerance;
    const LineGrid& grid = m_cover.grid();
    return {first(m_low.i - around), last(m_high.i + around, grid.na), first(m_low.j - around),
            last(m_high.j + around, grid.nb)};
}

std::size_t LinesBeyond::lineCount() const
{
    const Range range = rangeOf(0.0f);
    return static_cast<std::size_t>(std::max(0, range.i1 - range.i0 + 1)) *
           static_cast<std::size_t>(std::max(0, range.j1 - range.j0 + 1));
}

// @return false if a visit returned false, which ends it
template <typename Visit>
bool LinesBeyond::visitLines(float margin, const Visit& visit) const
{
    const Range range = rangeOf(margin);
    for (int j = range.j0; j <= range.j1; ++j)
        for (int i = range.i0; i <= range.i1; ++i)
            if (!visit(i, j))
                return false;
    return true;
}

bool LinesBeyond::isBeyond(int i, int j) const
{
    const std::size_t line = m_cover.indexOf(i, j);
    const LineCover::Piece& longest = m_cover.longest(line);
    if (longest.isEmpty())
        return !isBeside(i, j);
    const bool isUnder = m_high.L <= longest.high + minGap, isOver = longest.low <= m_low.L + minGap;
    if ((isUnder || isWithinPlane<true>(i, j)) && (isOver || isWithinPlane<false>(i, j)))
        return false;
    return !isCovered(line, m_low.L, m_high.L) && !isBeside(i, j);
}

bool LinesBeyond::isCovered(std::size_t line, float low, float high) const
{
    const auto pieces = m_cover.pieces(line);
    return std::any_of(pieces.begin(), pieces.end(), [=](const LineCover::Piece& piece) {
        return piece.low <= low + minGap && high <= piece.high + minGap;
    });
}

// Tries the mean slope of the neighbours and, for lines at an edge of what is covered, those of each side.
template <bool IsUpper>
bool LinesBeyond::isWithinPlane(int i, int j) const
{
    constexpr float nothing = -std::numeric_limits<float>::max();
    const LineGrid& grid = m_cover.grid();
    const auto endAt = [&](int k, int l) {
        return k < 0 || l < 0 || k >= grid.na || l >= grid.nb
                   ? nothing
                   : endOf<IsUpper>(m_cover.longest(m_cover.indexOf(k, l)));
    };
    const float own = endAt(i, j), limit = own + minGap;
    const Slopes alongI(endAt(i - 1, j), own, endAt(i + 1, j));
    const Slopes alongJ(endAt(i, j - 1), own, endAt(i, j + 1));
    if (reach<IsUpper>(i, j, 0.5f * (alongI.before + alongI.after), 0.5f * (alongJ.before + alongJ.after)) <=
        limit)
        return true;
    for (const float slopeI : {alongI.before, alongI.after})
        for (const float slopeJ : {alongJ.before, alongJ.after})
            if (reach<IsUpper>(i, j, slopeI, slopeJ) <= limit)
                return true;
    return false;
}

// Where a plane with these slopes that touches the points crosses the line.
template <bool IsUpper>
float LinesBeyond::reach(int i, int j, float slopeI, float slopeJ) const
{
    const Lanes atI = lanesOf(static_cast<float>(i)), atJ = lanesOf(static_cast<float>(j));
    const Lanes alongI = lanesOf(slopeI), alongJ = lanesOf(slopeJ);
    Lanes most = lanesOf(-std::numeric_limits<float>::max());
    for (std::size_t k = 0; k < m_L.size(); ++k) {
        const Lanes end = IsUpper ? m_L[k] : -m_L[k];
        most = upper(most, end - alongI * (m_i[k] - atI) - alongJ * (m_j[k] - atJ));
    }
    return highestOf(most);
}

// Seen along the lines, looks for the point of the hull that is nearest to the line (Gilbert 1966). If all
// points are beyond the normal plane through it, the line misses the hull.
bool LinesBeyond::isBeside(int i, int j) const
{
    const auto ownI = static_cast<float>(i), ownJ = static_cast<float>(j);
    float x = 0.5f * (m_low.i + m_high.i) - ownI, y = 0.5f * (m_low.j + m_high.j) - ownJ;
    constexpr int maxSteps = 6;
    for (int step = 0; step < maxSteps; ++step) {
        float least = std::numeric_limits<float>::max(), u = 0.0f, v = 0.0f;
        for (std::size_t k = 0; k < m_i.size(); ++k)
            for (int lane = 0; lane < laneCount; ++lane) {
                const float du = m_i[k][lane] - ownI, dv = m_j[k][lane] - ownJ;
                if (const float along = x * du + y * dv; along < least) {
                    least = along;
                    u = du;
                    v = dv;
                }
            }
        if (least > tolerance * (std::abs(x) + std::abs(y)))
            return true;
        const float towardsU = u - x, towardsV = v - y;
        const float squared = towardsU * towardsU + towardsV * towardsV;
        if (squared < tolerance * tolerance)
            return false;
        const float share = std::clamp(-(x * towardsU + y * towardsV) / squared, 0.0f, 1.0f);
        x += share * towardsU;
        y += share * towardsV;
    }
    return false;
}

} // namespace velmora
