// SPDX-License-Identifier: Apache-2.0
#include <glwindow/PictureTiles.h>

namespace {

constexpr int margin = 16; // wider than any line, and than half of any dot

} // namespace

QMatrix4x4 PictureTile::fromWhole(const QSize& size) const
{
    const auto width = static_cast<float>(size.width());
    const auto height = static_cast<float>(size.height());
    // the middle of what is drawn, in the whole picture's clip coordinates, where y is up
    const float x = static_cast<float>(2 * drawn.x() + drawn.width()) / width - 1.0f;
    const float y = 1.0f - static_cast<float>(2 * drawn.y() + drawn.height()) / height;
    QMatrix4x4 matrix;
    matrix.scale(width / static_cast<float>(drawn.width()), height / static_cast<float>(drawn.height()));
    matrix.translate(-x, -y);
    return matrix;
}

QList<PictureTile> pictureTiles(const QSize& size, int longestSide)
{
    const QRect whole(QPoint(0, 0), size);
    if (whole.isEmpty())
        return {};
    if (size.width() <= longestSide && size.height() <= longestSide)
        return {{whole, whole}};

    const int step = longestSide - 2 * margin;
    QList<PictureTile> tiles;
    for (int y = 0; y < size.height(); y += step)
        for (int x = 0; x < size.width(); x += step)
            tiles.append({QRect(x, y, step, step).intersected(whole),
                          QRect(x - margin, y - margin, longestSide, longestSide)});
    return tiles;
}
