// SPDX-License-Identifier: Apache-2.0
// Fuzzes saved gamuts. The first byte selects the format: the packed body, to which a matching version and
// checksum are added, or a whole hash in QDataStream, CBOR or JSON.

#include "HeapLimit.h"
#include "Inputs.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

// The packed body: numbers of fixed size, ramps, then the mesh.
class Body
{
public:
    Body(std::uint8_t* data, std::size_t size, bool isFirstVersion)
        : m_data(data), m_size(size), m_isFirstVersion(isFirstVersion)
    {
    }

    // Makes the counts match the bytes.
    // @return the remaining size, 0 if there are too few bytes
    std::size_t repair()
    {
        std::size_t at = m_isFirstVersion ? headSize : afterConversion();
        if (m_size < at + 4 + 12)
            return 0;
        std::memcpy(m_data, "\x4d\x47\x56\x4b", 4);
        std::uint32_t groups = std::min(read(at), 15u);
        write(at, groups);
        at += 4;
        for (; groups > 0; --groups) {
            if (m_size < at + 4 + 12)
                return 0;
            const auto room = static_cast<std::uint32_t>((m_size - at - 4 - 12) / 12);
            const std::uint32_t count = std::min(read(at), room);
            write(at, count);
            at += 4 + 12 * std::size_t(count);
        }
        if (m_size < at + 12)
            return 0;
        m_channels = std::clamp(read(at), 3u, 15u);
        write(at, m_channels);
        m_vertices = at + 12;
        const std::size_t left = m_size - m_vertices;
        const std::size_t each = 12 + 4 * m_channels;
        m_vertexCount = static_cast<std::uint32_t>(std::min<std::size_t>(read(at + 4), left / each));
        m_triangleCount = static_cast<std::uint32_t>((left - m_vertexCount * each) / 12);
        write(at + 4, m_vertexCount);
        write(at + 8, m_triangleCount);
        return m_vertices + m_vertexCount * each + 12 * std::size_t(m_triangleCount);
    }

    // Moves a vertex: the surface stays closed, but may self-intersect.
    void moveCorner(std::mt19937& random)
    {
        if (m_vertexCount == 0)
            return;
        const auto coordinate = [&](std::uint32_t vertex) {
            return m_vertices + 12 * std::size_t(vertex) + 4 * (random() % 3);
        };
        const std::size_t at = coordinate(random() % m_vertexCount);
        float value = 0.0f;
        switch (random() % 4) {
        case 0:
            std::memcpy(&value, m_data + coordinate(random() % m_vertexCount), 4);
            break;
        case 1:
            value = static_cast<float>(static_cast<int>(random() % 4001) - 2000);
            break;
        case 2:
            std::memcpy(&value, m_data + at, 4);
            value += static_cast<float>(static_cast<int>(random() % 9) - 4) / 65536.0f;
            break;
        default:
            value = static_cast<float>(static_cast<int>(random() % 200) - 100);
        }
        std::memcpy(m_data + at, &value, 4);
    }

    // Makes all vertex indices valid.
    void wrapFaces()
    {
        if (m_vertexCount == 0)
            return;
        const std::size_t faces = m_vertices + m_vertexCount * (12 + 4 * std::size_t(m_channels));
        for (std::size_t i = 0; i < 3 * std::size_t(m_triangleCount); ++i)
            write(faces + 4 * i, read(faces + 4 * i) % m_vertexCount);
    }

private:
    static constexpr std::size_t headSize = 4 + 3 * 4 + 2 + 3 * 8 + 9 * 4;
    static constexpr std::size_t headSizeWithVolume = headSize + 8;

    // The table's name, a flag, two numbers, then two colours and the encoding, each with a flag before it.
    // @return the size of the body if there are too few bytes
    std::size_t afterConversion()
    {
        constexpr std::uint32_t maxName = 6;
        if (m_size < headSizeWithVolume + 4)
            return m_size;
        const std::uint32_t name = std::min(read(headSizeWithVolume), maxName);
        write(headSizeWithVolume, name);
        std::size_t at = headSizeWithVolume + 4 + name + 1 + 2 * 4;
        for (const std::size_t size : {12, 12, 13}) {
            if (m_size < at + 1)
                return m_size;
            at += 1 + (m_data[at] != 0 ? size : 0);
        }
        return at;
    }

    std::uint32_t read(std::size_t at) const
    {
        std::uint32_t value = 0;
        std::memcpy(&value, m_data + at, 4);
        return value;
    }
    void write(std::size_t at, std::uint32_t value) { std::memcpy(m_data + at, &value, 4); }

    std::uint8_t* m_data;
    std::size_t m_size;
    bool m_isFirstVersion;
    std::uint32_t m_channels = 3;
    std::size_t m_vertices = 0;
    std::uint32_t m_vertexCount = 0;
    std::uint32_t m_triangleCount = 0;
};

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed)
{
    if (size < 1 || data[0] % 4 != 0 || seed % 8 == 0)
        return LLVMFuzzerMutate(data, size, maxSize);
    std::mt19937 random(seed);
    const bool isFirstVersion = data[0] / 4 % 2 == 0;
    Body body(data + 1, size - 1, isFirstVersion);
    if (random() % 2 != 0 && body.repair() == size - 1) {
        for (unsigned moves = 1 + random() % 4; moves > 0; --moves)
            body.moveCorner(random);
        return size;
    }
    const std::size_t mutated = LLVMFuzzerMutate(data, size, maxSize);
    if (mutated < 1)
        return mutated;
    data[0] = isFirstVersion ? 0 : 4;
    Body changed(data + 1, mutated - 1, isFirstVersion);
    const std::size_t kept = changed.repair();
    if (kept == 0)
        return mutated;
    if (random() % 2 != 0)
        changed.wrapFaces();
    return kept + 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto hash = kvfuzz::savedGamutFrom(data, size);
    const kvfuzz::HeapLimit limit;
    kvfuzz::restoreAndQuery(hash);
    return 0;
}
