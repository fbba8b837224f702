// SPDX-License-Identifier: Apache-2.0
#include "FileName.h"

#include <system_error>
#include <type_traits>

namespace {

constexpr char16_t firstEscape = 0xDC80; // of byte 0x80
constexpr char16_t lastEscape = 0xDCFF;
constexpr char16_t escapeBase = 0xDC00;

bool isEscape(QChar c)
{
    return c.unicode() >= firstEscape && c.unicode() <= lastEscape;
}

/// Whether the character at @p i is an escaped byte and not the second half of a surrogate pair.
bool isEscapeAt(const QString& name, qsizetype i)
{
    return isEscape(name[i]) && (i == 0 || !name[i - 1].isHighSurrogate());
}

/// The length that the first byte of a UTF-8 sequence announces.
qsizetype sequenceLength(unsigned char first)
{
    return first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

} // namespace

QString FileName::decoded(const QByteArray& bytes)
{
    QString name;
    for (qsizetype i = 0; i < bytes.size();) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const QByteArray sequence = bytes.mid(i, sequenceLength(first));
        const QString letter = QString::fromUtf8(sequence);
        if (letter.toUtf8() == sequence) {
            name += letter;
            i += sequence.size();
        } else {
            name += QChar(static_cast<char16_t>(escapeBase + first));
            ++i;
        }
    }
    return name;
}

QByteArray FileName::encoded(const QString& name)
{
    QByteArray bytes;
    qsizetype start = 0;
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (!isEscapeAt(name, i))
            continue;
        bytes += name.mid(start, i - start).toUtf8();
        bytes += static_cast<char>(name[i].unicode() - escapeBase);
        start = i + 1;
    }
    return bytes + name.mid(start).toUtf8();
}

std::filesystem::path FileName::path(const QString& name)
{
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>)
        return name.toStdU16String();
    else
        return encoded(name).toStdString();
}

bool FileName::isUtf8(const QString& name)
{
    for (qsizetype i = 0; i < name.size(); ++i)
        if (isEscapeAt(name, i))
            return false;
    return true;
}

bool FileName::exists(const QString& name)
{
    std::error_code error;
    return !name.contains(QChar(0)) && std::filesystem::exists(path(name), error);
}
