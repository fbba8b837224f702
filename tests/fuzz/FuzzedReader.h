// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

class QByteArray; // without Qt's headers: fuzz_reader.cpp is compiled once for each reader

namespace kvfuzz {

/// The reader that a fuzzer tests, and how its inputs are changed. fuzz_reader.cpp defines it for each
/// fuzzer.
struct FuzzedReader
{
    const char* name;
    void (*read)(const QByteArray& bytes);
    std::size_t (*mutate)(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed);
};
extern const FuzzedReader fuzzedReader;

} // namespace kvfuzz
