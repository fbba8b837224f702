// SPDX-License-Identifier: Apache-2.0
// Makes resources/Images/gamut.png, the colours of the ab plane's floor:
//
//     make_plane_image OUT.png
//
// 256 × 256 pixels, one for each whole a* and b*: column c is a* = c - 128, row r is b* = 128 - r.
// Each shows the colour of its hue and chroma at L* 72, where every hue has a clear colour on a
// screen; what sRGB cannot show is brought to the nearest colour of the same hue that it can.

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
