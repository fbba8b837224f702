// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What a picture file says about itself. It contains no time and no path, so that equal pictures give equal
/// bytes.
struct PictureNote
{
    QString command;      ///< the command line that draws the picture; empty for a picture of the window
    QStringList profiles; ///< a profileLine() for each gamut
    int dotsPerInch = 96;

    /// The name and the version of the program.
    static QString software();
    /// @p hash (the SHA-256 of a profile), two spaces and @p name, as sha256sum prints it. Without a hash: a
    /// built-in profile.
    static QString profileLine(const QString& name, const QString& hash);
};
