// SPDX-License-Identifier: Apache-2.0
#include "LineCover.h"

#include <algorithm>

namespace velmora {

void LineCover::add(std::size_t line, Piece added)
{
    std::vector<Piece>& pieces = m_lines[line];
    const auto first = std::find_if(pieces.begin(), pieces.end(),
                                    [&](const Piece& piece) { return piece.high + minGap >= added.low; });
    auto last = first;
    for (; last != pieces.end() && last->low <= added.high + minGap; ++last)
        added = {std::min(added.low, last->low), std::max(added.high, last->high)};
    Piece& longest = m_longest[line];
    if (longest.isEmpty() || added.high - added.low > longest.high - longest.low)
        longest = added;
    if (first == last) {
        pieces.insert(first, added);
        return;
    }
    *first = added;
    pieces.erase(first + 1, last);
}

double LineCover::length() const
{
    double sum = 0.0;
    for (const auto& pieces : m_lines)
        for (const Piece& piece : pieces)
            sum += double(piece.high) - double(piece.low);
    return sum;
}

} // namespace velmora
