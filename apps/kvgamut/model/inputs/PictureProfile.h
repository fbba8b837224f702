// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// The ICC profile that a picture carries: PNG (iCCP), JPEG (APP2, RGB and CMYK alike) or TIFF. The
/// profile as it stands in the file; the pixels are not looked at.
struct PictureProfile
{
    QByteArray icc;
    QString problem; ///< why there is none, without the file's name; empty when there is one

    /// Whether a file that begins with @p start, four bytes or more, is a picture of one of these kinds.
    static bool isPicture(const QByteArray& start);

    /// Reads the file at @p path, which isPicture() recognised.
    static PictureProfile read(const QString& path);
};
