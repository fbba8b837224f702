// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Small pictures that carry a profile, written by the libraries that own the formats. An empty
/// @p icc is left out.
namespace testpictures {

void writePng(const QString& path, const QByteArray& icc);
void writeJpeg(const QString& path, const QByteArray& icc);
void writeCmykJpeg(const QString& path, const QByteArray& icc);
/// @p mode as TIFFOpen takes it beside "w": "l", "b" byte order, "8" 64-bit offsets.
void writeCmykTiff(const QString& path, const QByteArray& icc, const char* mode = "");

} // namespace testpictures
