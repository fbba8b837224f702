// SPDX-License-Identifier: Apache-2.0
#include "IccTables.h"

#include <algorithm>
#include <cstdint>

namespace velmora {
namespace {

// Reads big-endian numbers; 0 beyond the end.
class Bytes
{
public:
    Bytes(const QByteArray& all, std::uint64_t offset, std::uint64_t size)
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
    std::uint64_t left(std::uint64_t at) const { return at < m_size ? m_size - at : 0; }

private:
    const unsigned char* m_data = nullptr;
    std::uint64_t m_size = 0;
};

constexpr std::uint32_t signature(const char (&name)[5])
{
    return static_cast<std::uint32_t>(static_cast<unsigned char>(name[0])) << 24 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(name[1])) << 16 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(name[2])) << 8 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(name[3]));
}

constexpr std::uint32_t maxTableChannels = 15;

// Whether a grid with `outputs` values of `width` bytes at each node fits into `room` bytes.
template <typename GridPoints>
bool gridFits(std::uint32_t inputs, std::uint32_t outputs, std::uint64_t width, std::uint64_t room,
              GridPoints gridPoints)
{
    std::uint64_t needed = outputs * width;
    for (std::uint32_t i = 0; i < inputs; ++i) {
        const std::uint64_t points = gridPoints(i);
        if (points == 0)
            return false;
        if (needed > room / points)
            return false;
        needed *= points;
    }
    return needed <= room;
}

bool legacyTableFits(const Bytes& tag, std::uint64_t width)
{
    const std::uint32_t inputs = tag.u8(8);
    const std::uint32_t outputs = tag.u8(9);
    const std::uint32_t points = tag.u8(10);
    if (inputs == 0 || inputs > maxTableChannels || outputs == 0 || outputs > maxTableChannels)
        return false;
    if (points == 0)
        return true; // only curves, no table
    return gridFits(inputs, outputs, width, tag.size(), [points](std::uint32_t) { return points; });
}

// A table as in 'mAB ' and 'mpet': the grid points of up to 16 inputs, one byte each, at `at`.
bool modernGridFits(const Bytes& tag, std::uint64_t at, std::uint64_t dataAt, std::uint32_t inputs,
                    std::uint32_t outputs, std::uint64_t width)
{
    if (inputs == 0 || inputs > maxTableChannels || outputs == 0 || outputs > maxTableChannels)
        return false;
    return gridFits(inputs, outputs, width, tag.left(dataAt),
                    [&](std::uint32_t i) { return tag.u8(at + i); });
}

bool stagedTableFits(const Bytes& tag)
{
    const std::uint32_t inputs = tag.u8(8);
    const std::uint32_t outputs = tag.u8(9);
    if (inputs == 0 || inputs > maxTableChannels || outputs == 0 || outputs > maxTableChannels)
        return false;
    const std::uint64_t grid = tag.u32(24);
    if (grid == 0)
        return true;
    const std::uint32_t width = tag.u8(grid + 16);
    if (width != 1 && width != 2)
        return false;
    return modernGridFits(tag, grid, grid + 20, inputs, outputs, width);
}

// Cost of a colour in a processing element, in multiplications or steps of a search. Little CMS searches the
// segments of a curve one by one.
std::uint64_t elementCost(const Bytes& tag, std::uint64_t at, std::uint32_t inputs, std::uint32_t outputs)
{
    constexpr std::uint64_t base = 16; // of any element
    const std::uint32_t type = tag.u32(at);
    if (type == signature("clut"))
        return base + (std::uint64_t(outputs) << inputs);
    if (type == signature("matf"))
        return base + std::uint64_t(inputs) * outputs;
    std::uint64_t cost = base;
    if (type == signature("cvst"))
        for (std::uint32_t i = 0; i < inputs; ++i)
            cost += tag.u16(at + tag.u32(at + 12 + 8ull * i) + 8);
    return cost;
}

bool elementFits(const Bytes& tag, std::uint64_t at, std::uint32_t inputs, std::uint32_t outputs)
{
    if (inputs == 0 || inputs > maxTableChannels || outputs == 0 || outputs > maxTableChannels)
        return false;
    switch (tag.u32(at)) {
    case signature("clut"):
        return modernGridFits(tag, at + 12, at + 28, inputs, outputs, 4);
    case signature("matf"):
        return std::uint64_t(inputs + 1) * outputs <= tag.left(at + 12) / 4;
    case signature("cvst"):
        return inputs == outputs && inputs <= tag.left(at + 12) / 8;
    default:
        return true;
    }
}

bool elementListFits(const Bytes& tag)
{
    const std::uint32_t channels = tag.u16(8);
    const std::uint64_t count = tag.u32(12);
    if (channels == 0 || channels > maxTableChannels || count > tag.left(16) / 8)
        return false;
    // Enough for 64 tables of the device's channels and many other elements.
    const std::uint64_t maxCost = 4096 + (std::uint64_t(64) << channels);
    std::uint64_t cost = 0;
    for (std::uint64_t i = 0; i < count && cost <= maxCost; ++i) {
        const std::uint64_t at = tag.u32(16 + 8 * i);
        if (tag.left(at) < 12)
            return false;
        const std::uint32_t inputs = tag.u16(at + 8);
        const std::uint32_t outputs = tag.u16(at + 10);
        if (!elementFits(tag, at, inputs, outputs))
            return false;
        cost += elementCost(tag, at, inputs, outputs);
    }
    return cost <= maxCost;
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

Result<void> checkIccTables(const QByteArray& profile)
{
    constexpr std::uint64_t headerSize = 128;
    constexpr std::uint32_t maxTags = 100; // the limit of Little CMS
    const Bytes all(profile, 0, static_cast<std::uint64_t>(profile.size()));
    if (all.size() < headerSize + 4 || all.u32(36) != signature("acsp"))
        return failure(KVProblemCode::NotAProfile);
    const std::uint32_t tags = all.u32(headerSize);
    if (tags > maxTags || all.left(headerSize + 4) / 12 < tags)
        return failure(KVProblemCode::DamagedTagTable);

    for (std::uint32_t i = 0; i < tags; ++i) {
        const std::uint64_t entry = headerSize + 4 + 12ull * i;
        const Bytes tag(profile, all.u32(entry + 4), all.u32(entry + 8));
        const std::uint32_t type = tag.u32(0);
        bool fits = true;
        if (type == signature("mft1"))
            fits = legacyTableFits(tag, 1);
        else if (type == signature("mft2"))
            fits = legacyTableFits(tag, 2);
        else if (type == signature("mAB ") || type == signature("mBA "))
            fits = stagedTableFits(tag);
        else if (type == signature("mpet"))
            fits = elementListFits(tag);
        if (!fits)
            return failure(KVProblemCode::DamagedTag, {signatureText(all.u32(entry))});
    }
    return {};
}

} // namespace velmora
