// SPDX-License-Identifier: Apache-2.0
#include "LineCover.h"

#include <algorithm>

namespace velmora {

bool LineCover::covers(const Vec3& low, const Vec3& high) const
{
    const LineRange range(m_grid, low, low, high, high);
    const auto from = static_cast<float>(low.L), to = static_cast<float>(high.L);
    for (int j = range.j0; j <= range.j1; ++j)
        for (int i = range.i0; i <= range.i1; ++i) {
            const Pieces& pieces = m_lines[indexOf(i, j)];
            const bool covered = std::any_of(pieces.begin(), pieces.end(), [=](const Piece& piece) {
                return piece.low <= from + minGap && to <= piece.high + minGap;
            });
            if (!covered)
                return false;
        }
    return true;
}

void LineCover::add(Pieces& pieces, Piece added)
{
    const auto first = std::find_if(pieces.begin(), pieces.end(),
                                    [&](const Piece& piece) { return piece.high + minGap >= added.low; });
    auto last = first;
    for (; last != pieces.end() && last->low <= added.high + minGap; ++last)
        added = {std::min(added.low, last->low), std::max(added.high, last->high)};
    if (first == last) {
        pieces.insert(first, added);
        return;
    }
    *first = added;
    pieces.erase(first + 1, last);
}

std::size_t LineCover::add(const Vec3& p, const Vec3& q, const Vec3& r, const Vec3& s)
{
    const LineRange range(m_grid, p, q, r, s);
    if (range.isEmpty())
        return 0;
    const TetrahedronOnLines tetrahedron(p, q, r, s);
    if (tetrahedron.isDegenerate())
        return 0;
    for (int j = range.j0; j <= range.j1; ++j)
        for (int i = range.i0; i <= range.i1; ++i) {
            double low = 0.0, high = 0.0;
            if (tetrahedron.interval(m_grid.a0 + i * m_grid.step, m_grid.b0 + j * m_grid.step, low, high))
                add(lineAt(i, j), {static_cast<float>(low), static_cast<float>(high)});
        }
    return static_cast<std::size_t>(range.i1 - range.i0 + 1) *
           static_cast<std::size_t>(range.j1 - range.j0 + 1);
}

double LineCover::length() const
{
    double sum = 0.0;
    for (const Pieces& pieces : m_lines)
        for (const Piece& piece : pieces)
            sum += double(piece.high) - double(piece.low);
    return sum;
}

} // namespace velmora
