// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What a file is opened as.
enum class FileKind
{
    Gamut,   ///< a profile, a picture with one, a saved gamut: whatever has a gamut
    Points,  ///< measurements: CGATS, CxF, CSV
    Session, ///< what this program saved of its window
};

/// By the end of the name; what is not known is tried as a gamut.
FileKind fileKind(const QString& name);
