// SPDX-License-Identifier: Apache-2.0
#include "NumberText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace {

void append(QByteArray& text, const char* begin, const std::to_chars_result& result)
{
    text.append(begin, static_cast<qsizetype>(result.ptr - begin));
}

} // namespace

double NumberText::rounded(double value, int decimals)
{
    static constexpr std::array<double, 10> powers{1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    const auto index = static_cast<std::size_t>(decimals);
    const double scale = index < powers.size() ? powers[index] : std::pow(10.0, decimals);
    return std::round(value * scale) / scale + 0.0; // -0 becomes 0
}

void NumberText::appendFixed(QByteArray& text, double value, int decimals)
{
    const double number = rounded(value, decimals);
    if (!std::isfinite(number)) {
        text.append(std::isnan(number) ? "nan" : number < 0.0 ? "-inf" : "inf");
        return;
    }
    std::array<char, 400> digits; // the largest double has 309 before the point
    append(text, digits.data(),
           std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed,
                         decimals));
}

void NumberText::appendJson(QByteArray& text, double value, int decimals)
{
    const double number = rounded(value, decimals);
    if (!std::isfinite(number)) {
        text.append("null");
        return;
    }
    std::array<char, 40> digits;
    char* const begin = digits.data();
    char* const end = begin + digits.size();
    constexpr double maxExact = 9007199254740992.0; // beyond it not all whole numbers are doubles
    if (number == std::trunc(number) && std::abs(number) <= maxExact)
        append(text, begin, std::to_chars(begin, end, static_cast<long long>(number)));
    else
        append(text, begin, std::to_chars(begin, end, number));
}
