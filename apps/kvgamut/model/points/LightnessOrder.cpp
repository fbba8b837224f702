// SPDX-License-Identifier: Apache-2.0
#include "LightnessOrder.h"

#include <algorithm>
#include <cmath>

LightnessOrder::LightnessOrder(const QList<MeasuredPoint>& points)
{
    m_items.reserve(static_cast<std::size_t>(points.size()));
    for (qsizetype i = 0; i < points.size(); ++i)
        if (std::isfinite(points[i].lab.L)) // NaN has no place in an order
            m_items.push_back({points[i].lab.L, i});
    std::stable_sort(m_items.begin(), m_items.end(),
                     [](const Item& one, const Item& other) { return one.lightness < other.lightness; });
}

std::span<const LightnessOrder::Item> LightnessOrder::near(double lightness, double within) const
{
    const auto above = [lightness](const Item& item) {
        return static_cast<double>(item.lightness) - lightness;
    };
    const auto first = std::partition_point(m_items.begin(), m_items.end(),
                                            [&](const Item& item) { return above(item) < -within; });
    const auto end =
        std::partition_point(first, m_items.end(), [&](const Item& item) { return above(item) <= within; });
    return {first, end};
}
