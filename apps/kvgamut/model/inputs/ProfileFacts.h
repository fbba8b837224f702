// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// Properties of an ICC profile.
struct ProfileFacts
{
    QString deviceClass; ///< "display", "output", ...
    QString deviceSpace; ///< signature of the device colour space: "RGB", "CMYK", "6CLR", ...
    QString pcs;         ///< "Lab" or "XYZ"; for a device link a device space
    int channels = 0;    ///< of the device space
    QString version;     ///< "4.3"
    QStringList intents; ///< intents with their own transform to the PCS; names as on the command line
    QStringList tables;  ///< "matrix" or "curve" if present, then tags with colour tables: "A2B0", ...
    QString description; ///< the first SafeText::maxLength characters, as is the copyright
    QString copyright;

    /// Reads them from the bytes of a profile that the engine has opened; unknown properties are empty.
    static ProfileFacts of(const QByteArray& icc);
};
