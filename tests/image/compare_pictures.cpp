// SPDX-License-Identifier: Apache-2.0
// compare_pictures A B: exits 0 when the two pictures agree to within one step of rounding.

#include "PictureComparison.h"

#include <algorithm>
#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const auto difference =
        comparePictures(QImage(QString::fromLocal8Bit(argv[1])), QImage(QString::fromLocal8Bit(argv[2])));
    int worst = 0;
    for (int y = 0; y < difference.picture.height(); ++y)
        for (int x = 0; x < difference.picture.width(); ++x) {
            const QRgb d = difference.picture.pixel(x, y);
            worst = std::max({worst, qRed(d), qGreen(d), qBlue(d)});
        }
    std::printf("comparable %d, mean %g, worst %d\n", difference.comparable, difference.mean, worst);
    return difference.comparable && worst <= 1 ? 0 : 1;
}
