// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QImage>

/// How far two pictures are apart.
struct PictureDifference
{
    bool comparable = false; ///< both there, of one size
    double mean = 0.0;       ///< mean difference per channel, in steps of 255; 0 is identical
    double share = 0.0;      ///< share of pixels that differ by more than 16 steps in some channel, 0..1
    QImage picture;          ///< where they differ: black where they agree
};

PictureDifference comparePictures(const QImage& actual, const QImage& expected);

/// What a comparison lets pass.
struct PictureThreshold
{
    double mean;
    double share;
};

bool withinThreshold(const PictureDifference& difference, const PictureThreshold& threshold);
