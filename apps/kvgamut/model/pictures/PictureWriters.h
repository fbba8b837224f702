// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PictureNote.h"

#include <QtCore/QByteArray>
#include <QtGui/QImage>

/// One function for each format of pixels. @p picture is RGB32 or ARGB32 and not null. An empty result: the
/// library reported an error, such as a lack of memory.
namespace PictureWriters {

/// With the sRGB chunk, the resolution, and the note as texts (Software, Command, Profiles).
QByteArray png(const QImage& picture, const PictureNote& note);
/// Quality 95, colours in full resolution, the note as a comment, the sRGB profile.
QByteArray jpeg(const QImage& picture, const PictureNote& note);
/// Compressed without loss, the note as the description of the picture, the sRGB profile.
QByteArray tiff(const QImage& picture, const PictureNote& note);
/// Compressed without loss, the note as XMP, the sRGB profile.
QByteArray webp(const QImage& picture, const PictureNote& note);

/// The note as lines of text: program, command and profiles.
QByteArray textOf(const PictureNote& note);
/// The same as an XMP packet.
QByteArray xmpOf(const PictureNote& note);
/// The profile of the colours, sRGB.
QByteArray profile();

/// Writes row @p y of @p picture to @p to as bytes: red, green, blue and, for ARGB32, alpha.
void copyRow(const QImage& picture, int y, uchar* to);
/// 4 for ARGB32, else 3.
int channelsOf(const QImage& picture);

} // namespace PictureWriters
