// SPDX-License-Identifier: Apache-2.0
// Generates resources/Images/gamut.png, the colours of the a*b* plane:
//
//     make_plane_image OUT.png
//
// 256 × 256 pixels, one for each integer a* and b*: column c is a* = c - 128, row r is b* = 128 - r.
// L* is 72 everywhere, because all hues are distinct on a screen at this lightness. Colours out of the gamut
// of sRGB are mapped to the nearest colour of the same hue.

#include <platform/KVVelmoraFramework.h>

#include <QtGui/QImage>

#include <cstdio>

namespace {
constexpr int size = 256;
constexpr float lightness = 72.0f;
} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_plane_image OUT.png\n");
        return 2;
    }
    QImage image(size, size, QImage::Format_RGB32);
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column) {
            const QList<float> lab{lightness, static_cast<float>(column - 128),
                                   static_cast<float>(128 - row)};
            const QList<float> rgb = KVColorConversionHelper::KVHLab2RGB(lab);
            image.setPixel(column, row, qRgb(qRound(rgb[0]), qRound(rgb[1]), qRound(rgb[2])));
        }
    }
    if (!image.save(QString::fromLocal8Bit(argv[1]), "PNG")) {
        std::fprintf(stderr, "make_plane_image: cannot write %s\n", argv[1]);
        return 3;
    }
    return 0;
}
