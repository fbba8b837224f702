// SPDX-License-Identifier: Apache-2.0
#include "PngChunks.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <array>

namespace {

constexpr QByteArrayView signature("\x89PNG\r\n\x1a\n");
constexpr qsizetype signatureSize = signature.size();
constexpr qsizetype prefixSize = 8; // length and type
constexpr qsizetype extraSize = 12; // and the checksum
constexpr QByteArrayView pixels("IDAT");

struct Chunk
{
    QByteArrayView type;
    QByteArrayView all; ///< with prefix and checksum; may be cut off
    bool isComplete;

    bool isPixels() const { return type == pixels; }

    /// Chunks whose type begins with a small letter are optional. Of these only transparency and the meaning
    /// of the numbers are kept. The profile (iCCP) is not: it says how the numbers are used, does not change
    /// them, and libpng allocates the size that the profile itself declares.
    bool affectsPixels() const
    {
        constexpr std::array<QByteArrayView, 5> kept{"tRNS", "gAMA", "cHRM", "sRGB", "sBIT"};
        const bool isOptional = type[0] >= 'a' && type[0] <= 'z';
        return !isOptional || std::find(kept.begin(), kept.end(), type) != kept.end();
    }
};

/// The chunks of a picture, one after the other.
class Chunks
{
public:
    explicit Chunks(const QByteArray& png)
        : m_left(QByteArrayView(png).sliced(std::min(signatureSize, png.size())))
    {
    }

    /// nullopt at the end of the file
    std::optional<Chunk> next()
    {
        if (m_left.size() < prefixSize)
            return {};
        const qint64 size = extraSize + qint64(qFromBigEndian<quint32>(m_left.data()));
        const bool isComplete = size <= m_left.size();
        const Chunk chunk{m_left.sliced(4, 4), m_left.first(isComplete ? size : m_left.size()), isComplete};
        m_left = m_left.sliced(chunk.all.size());
        return chunk;
    }

private:
    QByteArrayView m_left;
};

} // namespace

bool PngChunks::areComplete(const QByteArray& png)
{
    Chunks chunks(png);
    for (auto chunk = chunks.next(); chunk && !chunk->isPixels(); chunk = chunks.next())
        if (!chunk->isComplete)
            return false;
    return true;
}

std::optional<QByteArray> PngChunks::ofPixels(const QByteArray& png)
{
    if (!png.startsWith(signature))
        return png;
    Chunks chunks(png);
    qsizetype kept = signatureSize;
    while (const auto chunk = chunks.next()) {
        if (!chunk->isComplete && !chunk->isPixels())
            return {};
        if (chunk->affectsPixels())
            kept += chunk->all.size();
    }
    if (kept == png.size())
        return png;
    QByteArray result = png.left(signatureSize);
    result.reserve(kept);
    chunks = Chunks(png);
    while (const auto chunk = chunks.next())
        if (chunk->affectsPixels())
            result.append(chunk->all);
    return result;
}
