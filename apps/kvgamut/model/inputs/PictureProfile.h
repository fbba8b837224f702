// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Result.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// The embedded ICC profile of a picture: PNG (iCCP), JPEG (APP2; RGB and CMYK) or TIFF.
namespace PictureProfile {

/// Whether a file that begins with @p start, four bytes or more, is a picture in one of these formats.
bool isPicture(const QByteArray& start);

/// The bytes of the profile in the file at @p path, which isPicture() recognised. Does not decode the pixels.
Result<QByteArray> read(const QString& path);

} // namespace PictureProfile
