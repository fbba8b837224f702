// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "MeasuredPoint.h"

#include <QtCore/QList>

#include <span>
#include <vector>

/// The points of a list in the order of their lightness, so that those near a lightness are found without a
/// look at all of them. Needs 16 bytes for each point.
class LightnessOrder
{
public:
    struct Item
    {
        float lightness = 0.0f;
        qsizetype index = 0; ///< in the list
    };

    LightnessOrder() = default;
    explicit LightnessOrder(const QList<MeasuredPoint>& points);

    /// The points whose lightness differs from @p lightness by at most @p within, dark ones first, of equal
    /// lightness in the order of the list. Valid as long as this object.
    [[nodiscard]] std::span<const Item> near(double lightness, double within) const;

private:
    std::vector<Item> m_items;
};
