// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtGui/QMatrix4x4>

/// A part of a picture that is rendered separately.
struct PictureTile
{
    QRect part;  ///< the part of the picture that the tile provides; pixels from the top left
    QRect drawn; ///< the rendered rectangle: the part and a margin, which may extend beyond the picture

    /// Converts clip coordinates of the whole picture of @p size to clip coordinates of the rendered
    /// rectangle.
    [[nodiscard]] QMatrix4x4 fromWhole(const QSize& size) const;
};

/// Tiles that cover a picture of @p size without overlap. All rendered rectangles have the same size, at most
/// @p maxSide pixels wide and high.
///
/// A picture that fits is one tile without a margin. Otherwise each tile has a margin of 16 pixels, because
/// OpenGL discards wide lines and points whose centre lies outside the viewport although a part of them is
/// visible. An empty size gives an empty list.
[[nodiscard]] QList<PictureTile> pictureTiles(const QSize& size, int maxSide);
