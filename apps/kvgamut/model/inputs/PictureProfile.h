// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Result.h"

#include <QtCore/QByteArray>

/// The embedded ICC profile of a picture: PNG (iCCP), JPEG (APP2; RGB and CMYK) or TIFF.
namespace PictureProfile {

/// Whether a file that begins with @p start, four bytes or more, is a picture in one of these formats.
bool isPicture(const QByteArray& start);

/// The name of its format for QImageReader: png, jpeg or tiff; empty if it is none of them.
QByteArray formatOf(const QByteArray& start);

/// The bytes of the profile in the file with the content @p picture, which isPicture() recognised. Does not
/// decode the pixels.
Result<QByteArray> read(const QByteArray& picture);

} // namespace PictureProfile
