// SPDX-License-Identifier: Apache-2.0
#include <annotation/AxisScale.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr float roundTo = 20.0f;
constexpr float slack = 0.5f; // white is seldom exactly at L* 100

float roundedDown(float value, float max)
{
    return std::min(max, roundTo * std::floor((value + slack) / roundTo));
}

float roundedUp(float value, float min)
{
    return std::max(min, roundTo * std::ceil((value - slack) / roundTo));
}

} // namespace

LabBox kvScaleBox(const QVector3D& low, const QVector3D& high)
{
    LabBox box;
    box.low = {roundedDown(low.x(), 0.0f), roundedDown(low.y(), -roundTo), roundedDown(low.z(), -roundTo)};
    box.high = {roundedUp(high.x(), 100.0f), roundedUp(high.y(), roundTo), roundedUp(high.z(), roundTo)};
    return box;
}

std::span<const int> kvScaleSteps()
{
    static constexpr std::array<int, 6> steps{10, 20, 25, 50, 100, 200};
    return steps;
}

std::vector<int> kvScaleNumbers(float low, float high, int step)
{
    std::vector<int> numbers;
    const int last = static_cast<int>(std::floor(high / static_cast<float>(step)));
    for (int i = static_cast<int>(std::ceil(low / static_cast<float>(step))); i <= last; ++i)
        numbers.push_back(i * step);
    return numbers;
}

QString kvScaleText(int number)
{
    const QString digits = QString::number(std::abs(number));
    return number < 0 ? QChar(0x2212) + digits : digits;
}
