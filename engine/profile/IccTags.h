// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace velmora {

/// The number of a signature of four characters: "A2B0".
constexpr std::uint32_t signature(const char (&name)[5])
{
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i)
        value = value << 8 | static_cast<unsigned char>(name[i]);
    return value;
}

/// A signature as four characters, with '?' for those that are not printable, without trailing spaces.
[[nodiscard]] QString signatureText(std::uint32_t value);

/// Big-endian numbers in a part of a profile; 0 beyond its end.
class IccBytes
{
public:
    IccBytes() = default;
    IccBytes(const QByteArray& all, std::uint64_t offset, std::uint64_t size)
    {
        const auto length = static_cast<std::uint64_t>(all.size());
        if (offset > length)
            return;
        m_data = reinterpret_cast<const unsigned char*>(all.constData()) + offset;
        m_size = std::min(size, length - offset);
    }

    std::uint64_t size() const { return m_size; }
    std::uint32_t u8(std::uint64_t at) const { return at < m_size ? m_data[at] : 0u; }
    std::uint32_t u16(std::uint64_t at) const { return u8(at) << 8 | u8(at + 1); }
    std::uint32_t u32(std::uint64_t at) const { return u16(at) << 16 | u16(at + 2); }
    /// A number with 16 bits after the binary point.
    double fixed(std::uint64_t at) const { return static_cast<std::int32_t>(u32(at)) / 65536.0; }
    std::uint64_t left(std::uint64_t at) const { return at < m_size ? m_size - at : 0; }

private:
    const unsigned char* m_data = nullptr;
    std::uint64_t m_size = 0;
};

/// A tag of a profile.
struct IccTag
{
    IccBytes bytes;
    bool isInside = false; ///< the profile holds as many bytes as the tag table says
};

/// The header and the tag table of an untrusted profile. The profile must outlive this object.
class IccTags
{
public:
    explicit IccTags(const QByteArray& profile) : m_profile(profile), m_head(profile, 0, headerSize + 4) {}

    /// Whether the profile has a header and a tag table that Little CMS reads completely.
    bool hasHeader() const { return m_head.size() == headerSize + 4 && m_head.u32(36) == signature("acsp"); }
    bool hasTagTable() const;

    /// Whether the profile has fewer bytes than its header says.
    bool isCutOff() const { return static_cast<std::uint64_t>(m_profile.size()) < m_head.u32(0); }
    std::uint32_t majorVersion() const { return m_head.u8(8); }
    std::uint32_t deviceClass() const { return m_head.u32(12); }
    std::uint32_t deviceSpace() const { return m_head.u32(16); }

    std::uint32_t count() const { return m_head.u32(headerSize); }
    /// The signature of a tag, index < count().
    std::uint32_t name(std::uint32_t index) const
    {
        return IccBytes(m_profile, headerSize + 4 + 12ull * index, 4).u32(0);
    }
    /// The first tag with this signature. There must be a tag table.
    std::optional<IccTag> find(std::uint32_t name) const;
    bool has(std::uint32_t name) const { return find(name).has_value(); }

private:
    static constexpr std::uint64_t headerSize = 128;

    const QByteArray& m_profile;
    IccBytes m_head;
};

/// X, Y and Z of a tag like the media white point; nullopt if there is none.
[[nodiscard]] std::optional<std::array<double, 3>> xyzOf(const IccTags& tags, std::uint32_t name);

/// The elements of a tag of nine numbers, row by row; nullopt if there is none.
[[nodiscard]] std::optional<std::array<double, 9>> matrixOf(const IccTags& tags, std::uint32_t name);

/// The tag "cicp"; nullopt if there is none.
[[nodiscard]] std::optional<KVGamut::CodePoints> codePointsOf(const IccTags& tags);

} // namespace velmora
