// SPDX-License-Identifier: Apache-2.0
// Fuzzes ICC profiles: opens the bytes, computes a gamut with a small grid, and calls all queries.

#include "HeapLimit.h"
#include "Inputs.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

constexpr std::size_t headerSize = 128;

std::uint32_t read32(const std::uint8_t* at)
{
    return std::uint32_t(at[0]) << 24 | std::uint32_t(at[1]) << 16 | std::uint32_t(at[2]) << 8 | at[3];
}

void write32(std::uint8_t* at, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        at[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

// Writes one of the signatures, unless one of them is there already.
template <std::size_t Count>
void holdTo(std::uint8_t* at, const std::array<const char*, Count>& known, unsigned seed)
{
    for (const char* name : known)
        if (std::memcmp(at, name, 4) == 0)
            return;
    std::memcpy(at, known[seed % Count], 4);
}

// Makes the bytes pass the first checks: a header, and tags that lie within the file.
void repair(std::uint8_t* data, std::size_t size, unsigned seed)
{
    if (size < headerSize + 4)
        return;
    write32(data, static_cast<std::uint32_t>(size));
    std::memcpy(data + 36, "acsp", 4);
    data[8] = data[8] <= 4 && data[8] >= 2 ? data[8] : 4;
    holdTo<6>(data + 12, {"mntr", "prtr", "scnr", "spac", "link", "nmcl"}, seed % 16 ? seed % 4 : seed);
    holdTo<9>(data + 16, {"RGB ", "CMYK", "CMY ", "YCbr", "HSV ", "5CLR", "6CLR", "3CLR", "7CLR"}, seed);
    holdTo<2>(data + 20, {"Lab ", "XYZ "}, seed / 9);
    constexpr std::uint32_t maxTags = 20;
    const auto room = static_cast<std::uint32_t>(size - headerSize - 4);
    const std::uint32_t tags = std::min({read32(data + headerSize), maxTags, room / 12});
    write32(data + headerSize, tags);
    const std::uint32_t start = headerSize + 4 + 12 * tags;
    const std::uint32_t left = static_cast<std::uint32_t>(size) - start;
    for (std::uint32_t i = 0; i < tags && left >= 8; ++i) {
        std::uint8_t* entry = data + headerSize + 4 + 12 * i;
        std::uint32_t offset = read32(entry + 4);
        if (offset < start || offset >= size)
            offset = start + offset % left;
        offset &= ~3u;
        write32(entry + 4, offset);
        const auto most = static_cast<std::uint32_t>(size) - offset;
        if (read32(entry + 8) > most)
            write32(entry + 8, most);
    }
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed)
{
    const std::size_t mutated = LLVMFuzzerMutate(data, size, maxSize);
    if (seed % 8 != 0) // sometimes the unchanged bytes
        repair(data, mutated, seed / 8);
    return mutated;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const kvfuzz::HeapLimit limit;
    kvfuzz::computeAndQuery(data, size);
    return 0;
}
