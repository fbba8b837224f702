// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtGui/QMatrix4x4>

/// A part of a picture that is drawn by itself.
struct PictureTile
{
    QRect part;  ///< of the picture, that it contributes; pixels from the top left
    QRect drawn; ///< what is drawn for it: the part and a margin, which may reach out of the picture

    /// What turns the clip coordinates of the whole picture of @p size into those of what is drawn.
    QMatrix4x4 fromWhole(const QSize& size) const;
};

/// Parts that cover a picture of @p size without overlap, each drawn at most @p longestSide pixels wide
/// and high, all drawn equally large.
///
/// A picture that fits is one tile without a margin. Else each has a margin of 16 pixels: lines and dots
/// are left out as a whole where their middle is out of sight, also when their width reaches into it.
/// An empty size has no tiles.
QList<PictureTile> pictureTiles(const QSize& size, int longestSide);
