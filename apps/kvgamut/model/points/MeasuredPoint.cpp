// SPDX-License-Identifier: Apache-2.0
#include "MeasuredPoint.h"

#include "model/text/ListOf.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Linear sRGB, 0..1 for what a screen can show.
std::array<double, 3> linearRgb(const KVGamut::LabPoint& lab)
{
    const double fy = (static_cast<double>(lab.L) + 16.0) / 116.0;
    const auto decoded = [](double f) {
        return f > 6.0 / 29.0 ? f * f * f : (116.0 * f - 16.0) * 27.0 / 24389.0;
    };
    const std::array<double, 3> xyz{0.9642 * decoded(fy + static_cast<double>(lab.a) / 500.0), decoded(fy),
                                    0.8249 * decoded(fy - static_cast<double>(lab.b) / 200.0)};
    // the inverse of the primaries of sRGB, adapted to D50 with the Bradford transform
    constexpr std::array<std::array<double, 3>, 3> rows{{{3.1338561, -1.6168667, -0.4906146},
                                                         {-0.9787684, 1.9161415, 0.0334540},
                                                         {0.0719453, -0.2289914, 1.4052427}}};
    std::array<double, 3> rgb{};
    for (std::size_t i = 0; i < 3; ++i)
        rgb[i] = rows[i][0] * xyz[0] + rows[i][1] * xyz[1] + rows[i][2] * xyz[2];
    return rgb;
}

} // namespace

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

bool isScreenColor(const KVGamut::LabPoint& lab)
{
    constexpr double low = 0.5 / 255.0 / 12.92; // half a step at black
    constexpr double high = 1.0045;             // and at white
    const std::array<double, 3> rgb = linearRgb(lab);
    return std::all_of(rgb.begin(), rgb.end(), [](double value) { return value >= -low && value <= high; });
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
