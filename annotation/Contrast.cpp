// SPDX-License-Identifier: Apache-2.0
#include <annotation/Contrast.h>

#include <algorithm>
#include <cmath>

namespace {

double linear(double value)
{
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double relativeLuminance(const QColor& color)
{
    return 0.2126 * linear(double(color.redF())) + 0.7152 * linear(double(color.greenF())) +
           0.0722 * linear(double(color.blueF()));
}

} // namespace

double kvContrast(const QColor& p, const QColor& q)
{
    const auto [darker, lighter] = std::minmax({relativeLuminance(p), relativeLuminance(q)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor kvInkOn(const QColor& background)
{
    return kvContrast(background, Qt::white) > kvContrast(background, Qt::black) ? Qt::white : Qt::black;
}
