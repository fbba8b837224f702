// SPDX-License-Identifier: Apache-2.0
#include <glwindow/PictureTiles.h>

namespace {

constexpr int margin = 16; // wider than every line and than the radius of every point

} // namespace

QMatrix4x4 PictureTile::fromWhole(const QSize& size) const
{
    const auto width = static_cast<float>(size.width());
    const auto height = static_cast<float>(size.height());
    // centre of the rendered rectangle in clip coordinates of the whole picture, where y points up
    const float x = static_cast<float>(2 * drawn.x() + drawn.width()) / width - 1.0f;
    const float y = 1.0f - static_cast<float>(2 * drawn.y() + drawn.height()) / height;
    QMatrix4x4 matrix;
    matrix.scale(width / static_cast<float>(drawn.width()), height / static_cast<float>(drawn.height()));
    matrix.translate(-x, -y);
    return matrix;
}

QList<PictureTile> pictureTiles(const QSize& size, int maxSide)
{
    const QRect whole(QPoint(0, 0), size);
    if (whole.isEmpty())
        return {};
    if (size.width() <= maxSide && size.height() <= maxSide)
        return {{.part = whole, .drawn = whole}};

    const int step = maxSide - 2 * margin;
    QList<PictureTile> tiles;
    for (int y = 0; y < size.height(); y += step)
        for (int x = 0; x < size.width(); x += step)
            tiles.append({.part = QRect(x, y, step, step).intersected(whole),
                          .drawn = QRect(x - margin, y - margin, maxSide, maxSide)});
    return tiles;
}
