// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What a file is opened as.
enum class FileKind
{
    Gamut,   ///< a profile, a picture with a profile, or a saved gamut
    Points,  ///< measurements: CGATS, CxF, CSV
    Session, ///< what saveSession() wrote
};

/// By the suffix; an unknown one stands for a gamut.
FileKind fileKind(const QString& name);
