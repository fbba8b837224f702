// SPDX-License-Identifier: Apache-2.0
#include "Mutations.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QtEndian>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <random>
#include <utility>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace kvfuzz {
namespace {

QByteArray copyOf(const std::uint8_t* data, std::size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

/// @return the new size, or the old one if there is not enough room
std::size_t replaceBy(const QByteArray& changed, std::uint8_t* data, std::size_t size, std::size_t maxSize)
{
    if (static_cast<std::size_t>(changed.size()) > maxSize)
        return size;
    std::memcpy(data, changed.constData(), static_cast<std::size_t>(changed.size()));
    return static_cast<std::size_t>(changed.size());
}

// --- Words --------------------------------------------------------------------------------------------

/// Start and size of each number, word and quoted text.
QList<std::pair<qsizetype, qsizetype>> wordsOf(const QByteArray& text)
{
    const auto isPart = [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 || QByteArrayView("_.+-*#").contains(c);
    };
    QList<std::pair<qsizetype, qsizetype>> found;
    for (qsizetype at = 0; at < text.size(); ++at) {
        qsizetype end = at;
        if (text[at] == '"')
            end = std::max<qsizetype>(at, text.indexOf('"', at + 1) + 1);
        while (end < text.size() && isPart(text[end]))
            ++end;
        if (end == at)
            continue;
        found.append({at, end - at});
        at = end - 1;
    }
    return found;
}

QByteArray otherWord(const QByteArray& word, std::mt19937& random)
{
    constexpr std::array numbers{"0",     "-0",    "-1",         "0.1",   "2.5",    "129",
                                 "130",   "65537", "1e38",       "-3e38", "3.5e38", "1e300",
                                 "1e-50", "1e999", "2147483648", "0x10",  "nan",    "inf"};
    constexpr std::array texts{
        "",    "transparent",   "#80ff0000", "#123456789abc", "\\udc80\\u0000", "\\u202e",
        ":/x", "../../../x/..", "//",        "sRGB",          "./sRGB",         "~",
        "é",   "x\x1b]0;",      "\xc2\x9b",  "perceptual",    "\xed\xa0\x80",   "true"};
    const bool quoted = word.startsWith('"');
    const bool isNumber =
        !quoted && !word.isEmpty() && std::isdigit(static_cast<unsigned char>(word.back())) != 0;
    if (random() % 8 != 0 && isNumber)
        return numbers[random() % numbers.size()];
    const QByteArray text(texts[random() % texts.size()]);
    return quoted ? '"' + text + '"' : text;
}

// --- PNG ----------------------------------------------------------------------------------------------

constexpr qsizetype signatureSize = 8;
constexpr qsizetype chunkExtra = 12; // length, type, checksum

quint32 crc32(QByteArrayView bytes)
{
    quint32 crc = ~0u;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1u ? 0xEDB88320u : 0u);
    }
    return ~crc;
}

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// The profile of the data of an iCCP chunk, changed: a name, two zero bytes, then the compressed profile.
QByteArray withChangedProfile(const QByteArray& chunk)
{
    constexpr quint32 maxProfile = 100'000;
    const qsizetype start = chunk.indexOf('\0') + 2;
    QByteArray profile = qUncompress(bigEndian(maxProfile) + chunk.mid(start));
    if (start < 2 || profile.isEmpty())
        return chunk;
    const auto size = static_cast<std::size_t>(profile.size());
    profile.resize(profile.size() + 64);
    profile.resize(static_cast<qsizetype>(
        LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(profile.data()), size, size + 64)));
    qToBigEndian(static_cast<quint32>(profile.size()), profile.data()); // libpng compares it
    return chunk.left(start) + qCompress(profile).mid(4);
}

/// @p picture with lengths and checksums that match its chunks.
QByteArray repaired(const QByteArray& picture, bool changeProfile)
{
    QByteArray result = QByteArray::fromHex("89504e470d0a1a0a");
    for (qsizetype at = signatureSize; at + chunkExtra <= picture.size();) {
        const qsizetype room = picture.size() - at - chunkExtra;
        const auto declared = qFromBigEndian<quint32>(picture.constData() + at);
        const qsizetype length = std::min<qsizetype>(declared, room);
        const QByteArray type = picture.mid(at + 4, 4);
        QByteArray data = picture.mid(at + 8, length);
        if (changeProfile && type == "iCCP")
            data = withChangedProfile(data);
        result += bigEndian(static_cast<quint32>(data.size())) + type + data + bigEndian(crc32(type + data));
        at += length + chunkExtra;
    }
    return result;
}

} // namespace

std::size_t mutations::bytes(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned)
{
    return LLVMFuzzerMutate(data, size, maxSize);
}

std::size_t mutations::words(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed)
{
    std::mt19937 random(seed);
    QByteArray text = copyOf(data, size);
    const auto found = wordsOf(text);
    if (found.isEmpty() || random() % 2 == 0)
        return LLVMFuzzerMutate(data, size, maxSize);
    const auto any = [&] {
        return found[static_cast<qsizetype>(random() % static_cast<std::size_t>(found.size()))];
    };
    const auto [at, length] = any();
    const auto [otherAt, otherLength] = any();
    const QByteArray other =
        random() % 4 == 0 ? text.mid(otherAt, otherLength) : otherWord(text.mid(at, length), random);
    return replaceBy(text.replace(at, length, other), data, size, maxSize);
}

std::size_t mutations::png(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed)
{
    const bool changeProfile = seed % 4 == 0;
    const std::size_t mutated = changeProfile ? size : LLVMFuzzerMutate(data, size, maxSize);
    if (seed % 4 == 1) // sometimes the unchanged bytes
        return mutated;
    return replaceBy(repaired(copyOf(data, mutated), changeProfile), data, mutated, maxSize);
}

} // namespace kvfuzz
