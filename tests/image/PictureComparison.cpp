// SPDX-License-Identifier: Apache-2.0
#include "PictureComparison.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int visibleStep = 16;

} // namespace

PictureDifference comparePictures(const QImage& actual, const QImage& expected)
{
    PictureDifference result;
    if (actual.isNull() || expected.isNull() || actual.size() != expected.size())
        return result;
    result.comparable = true;
    result.picture = QImage(actual.size(), QImage::Format_RGB32);
    double sum = 0;
    int different = 0;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            const QRgb a = actual.pixel(x, y), b = expected.pixel(x, y);
            const int d[3] = {std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                              std::abs(qBlue(a) - qBlue(b))};
            sum += d[0] + d[1] + d[2];
            different += *std::max_element(d, d + 3) > visibleStep;
            result.picture.setPixel(x, y, qRgb(d[0], d[1], d[2]));
        }
    }
    const double pixels = double(actual.width()) * actual.height();
    result.mean = sum / (3 * pixels);
    result.fraction = different / pixels;
    return result;
}

bool withinThreshold(const PictureDifference& difference, const PictureThreshold& threshold)
{
    return difference.comparable && difference.mean <= threshold.mean &&
           difference.fraction <= threshold.fraction;
}
