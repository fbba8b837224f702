// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

/// Changes of an input that reach further into a reader than changes of single bytes. Each function changes
/// up to
/// @p maxSize bytes at @p data, of which @p size are in use, depending on @p seed, and returns the new size.
namespace kvfuzz::mutations {

/// libFuzzer's own changes.
std::size_t bytes(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed);
/// Replaces a number, word or quoted text by another one, or changes bytes.
std::size_t words(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed);
/// Changes bytes, or the bytes of the compressed profile, and makes lengths and checksums of the chunks
/// match.
std::size_t png(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed);

} // namespace kvfuzz::mutations
