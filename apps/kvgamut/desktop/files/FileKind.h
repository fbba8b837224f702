// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// The kinds of file that the window opens.
enum class FileKind
{
    Gamut,   ///< a profile, a picture with a profile, or a saved gamut
    Points,  ///< measurements: CGATS, CxF, CSV
    Session, ///< written by saveSession()
};

/// The kind for the suffix of @p name; Gamut for an unknown suffix.
FileKind fileKind(const QString& name);
