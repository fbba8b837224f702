// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// Properties of an ICC profile.
struct ProfileFacts
{
    QString deviceClass; ///< "display", "output", ...
    QString deviceSpace; ///< its signature: "RGB", "CMYK", "6CLR", ...
    QString pcs;         ///< "Lab" or "XYZ"; for a device link a device space
    int channels = 0;    ///< of the device space
    QString version;     ///< "4.3"
    QStringList intents; ///< those with a transform of their own to the PCS, as on the command line
    QStringList tables;  ///< tags with colour tables, "A2B0", ...; before them "matrix" or "curve"
    QString description;
    QString copyright;

    /// Of the bytes of a profile that the colour engine has opened; unknown properties are empty.
    static ProfileFacts of(const QByteArray& icc);
};
