// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PhotoSpace.h"

#include <QtCore/QList>

/// How the pixels of a photo become colours.
struct PhotoReading
{
    /// For photos without an embedded profile. If empty, RGB and grey photos are taken as sRGB, with a note,
    /// and CMYK photos are refused.
    QByteArray defaultProfile;
    /// Absolute colorimetric, otherwise relative colorimetric: the white of the photo's medium is L* 100.
    bool absolute = false;
};

/// The conversion for the pixels of a photo with @p facts, which are not Lab. Adds a note to @p notes where
/// the profile is assumed.
Result<PhotoSpace> spaceOf(const PhotoFacts& facts, const PhotoReading& reading, QList<Problem>& notes);
