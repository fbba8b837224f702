// SPDX-License-Identifier: Apache-2.0
#include "IccTags.h"

namespace velmora {
namespace {

constexpr std::uint64_t tagHeaderSize = 8; // a type and four bytes that are reserved

// The numbers of a tag of the given type.
template <std::size_t Count>
std::optional<std::array<double, Count>> numbersOf(const IccTags& tags, std::uint32_t name,
                                                   std::uint32_t type)
{
    const std::optional<IccTag> tag = tags.find(name);
    if (!tag || !tag->isInside || tag->bytes.u32(0) != type || tag->bytes.size() < tagHeaderSize + 4 * Count)
        return {};
    std::array<double, Count> numbers{};
    for (std::size_t i = 0; i < Count; ++i)
        numbers[i] = tag->bytes.fixed(tagHeaderSize + 4 * i);
    return numbers;
}

} // namespace

QString signatureText(std::uint32_t value)
{
    QString text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const auto c = static_cast<char>(value >> shift & 0xff);
        text += c >= 32 && c < 127 ? QLatin1Char(c) : QLatin1Char('?');
    }
    return text.trimmed();
}

bool IccTags::hasTagTable() const
{
    constexpr std::uint32_t maxTags = 100; // the limit of Little CMS
    const auto left = static_cast<std::uint64_t>(m_profile.size()) - m_head.size();
    return count() <= maxTags && left / 12 >= count();
}

std::optional<IccTag> IccTags::find(std::uint32_t name) const
{
    const IccBytes table(m_profile, headerSize + 4, 12ull * count());
    const std::uint64_t end =
        std::min<std::uint64_t>(m_head.u32(0), static_cast<std::uint64_t>(m_profile.size()));
    for (std::uint64_t at = 0; at < table.size(); at += 12) {
        if (table.u32(at) != name)
            continue;
        const std::uint64_t offset = table.u32(at + 4), size = table.u32(at + 8);
        return IccTag{IccBytes(m_profile, offset, size), offset + size <= end};
    }
    return {};
}

std::optional<KVGamut::CodePoints> codePointsOf(const IccTags& tags)
{
    const std::optional<IccTag> tag = tags.find(signature("cicp"));
    constexpr std::uint64_t size = tagHeaderSize + 4;
    if (!tag || !tag->isInside || tag->bytes.u32(0) != signature("cicp") || tag->bytes.size() < size)
        return {};
    const auto value = [&tag](std::uint64_t i) { return static_cast<int>(tag->bytes.u8(tagHeaderSize + i)); };
    return KVGamut::CodePoints{value(0), value(1), value(2), value(3) != 0};
}

std::optional<std::array<double, 3>> xyzOf(const IccTags& tags, std::uint32_t name)
{
    return numbersOf<3>(tags, name, signature("XYZ "));
}

std::optional<std::array<double, 9>> matrixOf(const IccTags& tags, std::uint32_t name)
{
    return numbersOf<9>(tags, name, signature("sf32"));
}

} // namespace velmora
