// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <optional>

/// The chunks of a PNG picture, checked before libpng reads them. It allocates the size that a chunk declares
/// before it reads the chunk, up to 2 GiB, and a megabyte of compressed texts takes a gigabyte.
namespace PngChunks {

/// Whether the file has as many bytes as each chunk before the pixels declares. Checks nothing else.
bool areComplete(const QByteArray& png);

/// The picture @p png without texts, its profile and other chunks that do not affect the numbers of the
/// pixels; the same bytes if there are none. Read the profile with PictureProfile, which limits its size.
/// nullopt if a chunk other than one of the pixels declares more bytes than the file has.
std::optional<QByteArray> ofPixels(const QByteArray& png);

} // namespace PngChunks
