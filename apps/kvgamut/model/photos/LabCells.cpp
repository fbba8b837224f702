// SPDX-License-Identifier: Apache-2.0
#include "LabCells.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace {

std::size_t hashOf(const std::array<std::int16_t, 3>& place)
{
    std::uint64_t key = 0;
    for (const std::int16_t value : place)
        key = key << 16 | static_cast<std::uint16_t>(value);
    return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15u) >> 24);
}

} // namespace

void LabCells::add(const KVGamut::LabPoint& lab, std::uint32_t count)
{
    const std::array<float, 3> values{lab.L, lab.a, lab.b};
    std::array<std::int16_t, 3> place{};
    std::array<float, 3> rest{};
    for (std::size_t i = 0; i < 3; ++i) {
        constexpr float max = 32000.0f;
        const float cell = std::clamp(std::floor(values[i] / m_edge), -max, max);
        place[i] = static_cast<std::int16_t>(cell);
        rest[i] = values[i] - cell * m_edge;
    }
    Slot& slot = slotOf(place);
    for (std::size_t i = 0; i < 3; ++i)
        slot.sum[i] += rest[i] * static_cast<float>(count);
    if (slot.count == 0) {
        slot.place = place;
        ++m_used;
    }
    slot.count += count;
    if (m_used > maxCells)
        widen();
    else if (m_used * 4 > m_slots.size() * 3)
        reserve(m_slots.size() * 2);
}

LabCells::Slot& LabCells::slotOf(const std::array<std::int16_t, 3>& place)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t i = hashOf(place) & mask;
    while (m_slots[i].count != 0 && m_slots[i].place != place)
        i = (i + 1) & mask;
    return m_slots[i];
}

void LabCells::reserve(std::size_t slotCount)
{
    std::vector<Slot> old(slotCount);
    old.swap(m_slots);
    for (const Slot& slot : old)
        if (slot.count != 0)
            slotOf(slot.place) = slot;
}

void LabCells::widen()
{
    const std::vector<Cell> all = cells();
    m_slots.assign(1 << 12, Slot());
    m_used = 0;
    m_edge *= 2.0f;
    for (const Cell& cell : all)
        add(cell.lab, cell.count);
}

std::vector<LabCells::Cell> LabCells::cells() const
{
    std::vector<const Slot*> used;
    used.reserve(m_used);
    for (const Slot& slot : m_slots)
        if (slot.count != 0)
            used.push_back(&slot);
    std::sort(used.begin(), used.end(), [](const Slot* p, const Slot* q) { return p->place < q->place; });
    std::vector<Cell> result;
    result.reserve(used.size());
    for (const Slot* slot : used) {
        const auto mean = [&](std::size_t i) {
            return static_cast<float>(slot->place[i]) * m_edge +
                   slot->sum[i] / static_cast<float>(slot->count);
        };
        result.push_back({{mean(0), mean(1), mean(2)}, slot->count});
    }
    return result;
}
