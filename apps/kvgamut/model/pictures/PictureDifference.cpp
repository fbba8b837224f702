// SPDX-License-Identifier: Apache-2.0
#include "PictureDifference.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double maxDifference = 255.0;

double squaredDifference(QRgb one, QRgb other)
{
    const auto square = [](int a, int b) { return static_cast<double>((a - b) * (a - b)); };
    return square(qRed(one), qRed(other)) + square(qGreen(one), qGreen(other)) +
           square(qBlue(one), qBlue(other)) + square(qAlpha(one), qAlpha(other));
}

/// One row, converted, so that large pictures are not copied as a whole.
QImage row(const QImage& picture, int y)
{
    return picture.copy(0, y, picture.width(), 1).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

std::optional<double> pictureDifference(const QImage& one, const QImage& other)
{
    if (one.isNull() || one.size() != other.size())
        return {};
    double sum = 0.0;
    for (int y = 0; y < one.height(); ++y) {
        const QImage oneRow = row(one, y);
        const QImage otherRow = row(other, y);
        const auto* a = reinterpret_cast<const QRgb*>(oneRow.constScanLine(0));
        const auto* b = reinterpret_cast<const QRgb*>(otherRow.constScanLine(0));
        for (int x = 0; x < one.width(); ++x)
            sum += squaredDifference(a[x], b[x]);
    }
    // the mean of three channels, so that black and white differ by 100 percent
    const double count = 3.0 * one.width() * one.height();
    return std::min(100.0, 100.0 * std::sqrt(sum / count) / maxDifference);
}
