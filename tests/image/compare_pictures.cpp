// SPDX-License-Identifier: Apache-2.0
// compare_pictures A B: exit code 0 if no channel of a pixel differs by more than 1, otherwise 1.

#include "PictureComparison.h"

#include <algorithm>
#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const auto difference =
        comparePictures(QImage(QString::fromLocal8Bit(argv[1])), QImage(QString::fromLocal8Bit(argv[2])));
    int max = 0;
    for (int y = 0; y < difference.picture.height(); ++y)
        for (int x = 0; x < difference.picture.width(); ++x) {
            const QRgb d = difference.picture.pixel(x, y);
            max = std::max({max, qRed(d), qGreen(d), qBlue(d)});
        }
    std::printf("comparable %d, mean %g, max %d\n", difference.comparable, difference.mean, max);
    return difference.comparable && max <= 1 ? 0 : 1;
}
