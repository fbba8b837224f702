// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QImage>

/// Difference of two pictures.
struct PictureDifference
{
    bool comparable = false; ///< both are not null and have the same size
    double mean = 0.0;       ///< mean absolute difference per channel, 0..255
    double fraction = 0.0;   ///< of pixels that differ by more than 16 in a channel, 0..1
    QImage picture;          ///< absolute differences
};

[[nodiscard]] PictureDifference comparePictures(const QImage& actual, const QImage& expected);

/// Maximum difference of pictures that count as equal.
struct PictureThreshold
{
    double mean;
    double fraction;
};

[[nodiscard]] bool withinThreshold(const PictureDifference& difference, const PictureThreshold& threshold);
