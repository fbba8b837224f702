// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Small pictures with an embedded profile, written by the reference libraries of the formats. Without a
/// profile if @p icc is empty.
namespace testpictures {

void writePng(const QString& path, const QByteArray& icc);
void writeJpeg(const QString& path, const QByteArray& icc);
void writeCmykJpeg(const QString& path, const QByteArray& icc);
/// @p mode has further flags of TIFFOpen: "l" or "b" for the byte order, "8" for 64-bit offsets.
void writeCmykTiff(const QString& path, const QByteArray& icc, const char* mode = "");

} // namespace testpictures
