// SPDX-License-Identifier: Apache-2.0
#include "MeasuredPoint.h"

#include "model/text/ListOf.h"

#include <cmath>

QColor MeasuredPoint::shownColor() const
{
    return color.isValid() ? color : screenColor(lab);
}

QColor screenColor(const KVGamut::LabPoint& lab)
{
    const QList<float> rgb = KVColorConversionHelper::KVHLab2RGB(listOf(lab.L, lab.a, lab.b));
    return QColor(static_cast<int>(rgb.value(0)), static_cast<int>(rgb.value(1)),
                  static_cast<int>(rgb.value(2)));
}

Side sideOf(float distance, float tolerance)
{
    if (std::fabs(distance) <= tolerance)
        return Side::Edge;
    return distance < 0.0f ? Side::Inside : Side::Outside;
}

QColor sideColor(Side side)
{
    switch (side) {
    case Side::Inside:
        return QColor(0, 112, 127);
    case Side::Edge:
        return QColor(245, 180, 0);
    case Side::Outside:
        return QColor(205, 28, 69);
    }
    return {};
}
