// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtGui/QImage>

/// A picture read from a PNG file, or the reason why there is none.
struct PngPicture
{
    QImage image;    ///< ARGB32, straight alpha; null when it could not be read
    QString problem; ///< naming the file; empty when it was read

    static PngPicture read(const QString& name);
};
