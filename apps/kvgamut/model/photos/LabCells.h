// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <array>
#include <cstdint>
#include <vector>

/// Counts colours in cubic cells of Lab. The memory depends on the number of cells, not on that of colours.
class LabCells
{
public:
    static constexpr float minEdge = 0.25f; ///< each colour is at most 0.44 from the mean of its cell
    static constexpr std::size_t maxCells = 3'000'000; ///< with more, cells become twice as wide

    /// Counts @p lab @p count times. Values must be finite.
    void add(const KVGamut::LabPoint& lab, std::uint32_t count);

    struct Cell
    {
        KVGamut::LabPoint lab;   ///< mean of its colours
        std::uint32_t count = 0; ///< of colours
    };
    /// In the order of L*, a*, b*: the same for the same colours, whatever their order.
    std::vector<Cell> cells() const;

    float edge() const { return m_edge; }

private:
    struct Slot
    {
        std::array<std::int16_t, 3> place{};
        std::array<float, 3> sum{}; ///< of the distances to the corner of the cell
        std::uint32_t count = 0;    ///< 0: free
    };
    Slot& slotOf(const std::array<std::int16_t, 3>& place);
    void reserve(std::size_t slotCount);
    void widen();

    std::vector<Slot> m_slots = std::vector<Slot>(1 << 12);
    std::size_t m_used = 0;
    float m_edge = minEdge;
};
