// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// What an ICC profile says of itself.
struct ProfileFacts
{
    QString deviceClass; ///< "display", "output", ...
    QString deviceSpace; ///< "RGB", "CMYK", "6CLR", ...: its signature
    QString pcs;         ///< "Lab" or "XYZ"; of a device link a device space
    int channels = 0;    ///< of the device space
    QString version;     ///< "4.3"
    QStringList intents; ///< those with a way to the PCS of their own, as the command line names them
    QStringList tables;  ///< tags with colour tables, "A2B0", ...; before them "matrix" or "curve"
    QString description;
    QString copyright;

    /// Of the bytes of a profile that the colour engine opened; empty where they say nothing.
    static ProfileFacts of(const QByteArray& icc);
};
