// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <filesystem>

/// File names as texts, without loss. A file name of the system is a sequence of bytes, usually but not
/// always UTF-8; on Windows it is UTF-16. Each byte that is not part of valid UTF-8 becomes the lone
/// surrogate U+DC00 + byte, which no valid text contains.
namespace FileName {

QString decoded(const QByteArray& bytes);
/// The bytes of the name.
QByteArray encoded(const QString& name);
/// The name for the functions of the system: these bytes, or UTF-16 on Windows.
std::filesystem::path path(const QString& name);
/// Whether Qt's own functions find the file, too: its name is UTF-8.
bool isUtf8(const QString& name);
/// Whether there is a file, a folder or anything else of this name.
bool exists(const QString& name);

} // namespace FileName
