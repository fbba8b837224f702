// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <QtCore/QList>
#include <QtCore/QString>

/// What a file is read as.
enum class InputKind
{
    Profile,
    Picture,
    SavedGamut,
    Points,
    Session,
    Reference, ///< a picture to compare with
    Photo,     ///< a picture that is read in bands
    Settings,  ///< what the program itself has stored
};

/// The largest inputs that the program accepts. They are far above what people have, and low enough that no
/// file takes all of the memory or hours of work. docs/LIMITS.md lists them for users.
namespace InputLimits {

/// Size of a file of this kind, in bytes; a multiple of a MiB.
qint64 maxBytes(InputKind kind);

constexpr qsizetype maxPoints = 2'000'000;     ///< in a point file
constexpr qsizetype maxPatches = 20'000;       ///< of a chart, with different device values
constexpr qsizetype maxFaces = 4'000'000;      ///< triangles of a surface in a file
constexpr qsizetype maxColumns = 1000;         ///< of a table of points
constexpr qsizetype maxLineLength = 65'536;    ///< of a table, in characters; also of a CGATS value
constexpr qsizetype maxNameLength = 1000;      ///< of a point; longer names are cut
constexpr int maxXmlDepth = 100;               ///< nested elements
constexpr int maxXmlAttributes = 100;          ///< of an element
constexpr qint64 maxPhotoMegapixels = 1000;    ///< of a photo that can be read in bands
constexpr qint64 maxWholePhotoMegapixels = 64; ///< of one that can only be decoded as a whole
constexpr qsizetype maxSessionFiles = 1000;    ///< gamuts, and as many point files

/// A limit as docs/LIMITS.md states it.
struct Stated
{
    QString what;
    QString limit;
    Problem problem; ///< of an input that is beyond the limit; empty code for names, which are cut
};
QList<Stated> all();

} // namespace InputLimits
