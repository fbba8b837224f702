// SPDX-License-Identifier: Apache-2.0
#include <glwindow/PictureTiles.h>

#include <gtest/gtest.h>

#include <QtCore/QVector>
#include <QtGui/QVector4D>

namespace {

const QSize shapes[] = {{1, 1}, {2048, 2048}, {2049, 1}, {16, 8192}, {8192, 100}, {8192, 8192}, {4032, 4033}};

TEST(PictureTiles, coverEachPixelOnce)
{
    for (const QSize& size : shapes) {
        qint64 area = 0;
        const auto tiles = pictureTiles(size, 2048);
        for (const PictureTile& tile : tiles) {
            EXPECT_TRUE(QRect(QPoint(), size).contains(tile.part));
            EXPECT_TRUE(tile.drawn.contains(tile.part));
            area += qint64(tile.part.width()) * tile.part.height();
            for (const PictureTile& other : tiles) {
                if (other.part != tile.part) {
                    EXPECT_FALSE(tile.part.intersects(other.part));
                }
            }
        }
        EXPECT_EQ(area, qint64(size.width()) * size.height());
    }
}

TEST(PictureTiles, haveOneSizeWithinTheLimit)
{
    for (const QSize& size : shapes) {
        const auto tiles = pictureTiles(size, 2048);
        for (const PictureTile& tile : tiles) {
            EXPECT_EQ(tile.drawn.size(), tiles.first().drawn.size());
            EXPECT_LE(tile.drawn.width(), 2048);
            EXPECT_LE(tile.drawn.height(), 2048);
        }
    }
}

TEST(PictureTiles, haveAMarginUnlessOneTileSuffices)
{
    const auto one = pictureTiles({2048, 2048}, 2048);
    ASSERT_EQ(one.size(), 1);
    EXPECT_EQ(one[0].drawn, one[0].part);
    EXPECT_TRUE(one[0].fromWhole({2048, 2048}).isIdentity());

    const auto many = pictureTiles({2049, 2048}, 2048);
    ASSERT_GT(many.size(), 1);
    for (const PictureTile& tile : many)
        EXPECT_TRUE(tile.drawn.contains(tile.part.adjusted(-16, -16, 16, 16)));
}

TEST(PictureTiles, emptyPictureHasNoTiles)
{
    EXPECT_TRUE(pictureTiles({0, 5}, 2048).isEmpty());
    EXPECT_TRUE(pictureTiles({}, 2048).isEmpty());
}

// Projects positions of the picture into the tile and compares their pixels.
TEST(PictureTiles, projectEachPositionToTheSamePixel)
{
    const QSize size(5000, 3000);
    const auto tiles = pictureTiles(size, 2048);
    for (const PictureTile& tile : tiles) {
        const QPointF places[] = {QPointF(tile.part.topLeft()) + QPointF(0.5, 0.5),
                                  QPointF(tile.part.center()),
                                  QPointF(tile.part.bottomRight()) + QPointF(0.25, 0.75)};
        for (const QPointF& place : places) {
            // as after a perspective projection, with w other than 1
            const double w = 3.0;
            const double x = (2.0 * place.x() / size.width() - 1.0) * w;
            const double y = (1.0 - 2.0 * place.y() / size.height()) * w;
            const QVector4D there =
                tile.fromWhole(size) *
                QVector4D(static_cast<float>(x), static_cast<float>(y), 0.5f, static_cast<float>(w));
            const double px = (double(there.x()) / double(there.w()) + 1.0) / 2.0 * tile.drawn.width();
            const double py = (1.0 - double(there.y()) / double(there.w())) / 2.0 * tile.drawn.height();
            // tolerance for clip coordinates in float
            EXPECT_NEAR(px + tile.drawn.x(), place.x(), 0.01);
            EXPECT_NEAR(py + tile.drawn.y(), place.y(), 0.01);
            EXPECT_FLOAT_EQ(there.z(), 0.5f);
        }
    }
}

} // namespace
