// SPDX-License-Identifier: Apache-2.0
#include "IccTables.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace velmora {
namespace {

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

bool legacyTableFits(const IccBytes& tag, std::uint64_t width)
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
bool modernGridFits(const IccBytes& tag, std::uint64_t at, std::uint64_t dataAt, std::uint32_t inputs,
                    std::uint32_t outputs, std::uint64_t width)
{
    if (inputs == 0 || inputs > maxTableChannels || outputs == 0 || outputs > maxTableChannels)
        return false;
    return gridFits(inputs, outputs, width, tag.left(dataAt),
                    [&](std::uint32_t i) { return tag.u8(at + i); });
}

bool stagedTableFits(const IccBytes& tag)
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
std::uint64_t elementCost(const IccBytes& tag, std::uint64_t at, std::uint32_t inputs, std::uint32_t outputs)
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

bool elementFits(const IccBytes& tag, std::uint64_t at, std::uint32_t inputs, std::uint32_t outputs)
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

bool elementListFits(const IccBytes& tag)
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

namespace {

bool tableFits(const IccBytes& tag)
{
    switch (tag.u32(0)) {
    case signature("mft1"):
        return legacyTableFits(tag, 1);
    case signature("mft2"):
        return legacyTableFits(tag, 2);
    case signature("mAB "):
    case signature("mBA "):
        return stagedTableFits(tag);
    case signature("mpet"):
        return elementListFits(tag);
    default:
        return true; // of a size that Little CMS checks
    }
}

tl::unexpected<KVProblem> damaged(std::uint32_t name)
{
    return failure(KVProblemCode::DamagedTag, {signatureText(name)});
}

// A tag that the profile does not have is not damaged.
Result<void> checkTable(const IccTags& tags, std::uint32_t name)
{
    const std::optional<IccTag> tag = tags.find(name);
    if (!tag || (tag->isInside && tableFits(tag->bytes)))
        return {};
    return damaged(name);
}

// Little CMS reads nine numbers of this tag, however long it is.
Result<void> checkAdaptation(const IccTags& tags)
{
    constexpr std::uint32_t name = signature("chad");
    const std::optional<IccTag> tag = tags.find(name);
    if (!tag || tag->bytes.u32(0) != signature("sf32") || matrixOf(tags, name))
        return {};
    return damaged(name);
}

bool hasMatrix(const IccTags& tags)
{
    constexpr std::array all{signature("rXYZ"), signature("gXYZ"), signature("bXYZ"),
                             signature("rTRC"), signature("gTRC"), signature("bTRC")};
    return std::all_of(all.begin(), all.end(), [&tags](std::uint32_t name) { return tags.has(name); });
}

struct Choice
{
    std::uint32_t table;
    int intent; // the intent for which Little CMS takes it
};

constexpr int absolute = 3;

// In order of preference: the tables that Little CMS takes for an intent.
std::array<Choice, 3> ownTables(int intent)
{
    constexpr std::array floats{signature("D2B0"), signature("D2B1"), signature("D2B2"), signature("D2B3")};
    constexpr std::array integers{signature("A2B0"), signature("A2B1"), signature("A2B2"), signature("A2B1")};
    const auto i = static_cast<std::size_t>(intent);
    // with its own intent, so that the black point of the table is detected
    const int ofFirst = intent == absolute ? absolute : 0;
    return {{{floats[i], intent}, {integers[i], intent}, {signature("A2B0"), ofFirst}}};
}

// If there is no matrix either: the tables of other intents, of which Little CMS would take none.
constexpr std::array<Choice, 6> otherTables{{{signature("A2B1"), 1},
                                             {signature("A2B2"), 2},
                                             {signature("D2B1"), 1},
                                             {signature("D2B0"), 0},
                                             {signature("D2B2"), 2},
                                             {signature("D2B3"), absolute}}};

ColorTable chosenTable(const IccTags& tags, int intent)
{
    const std::array own = ownTables(intent);
    for (const Choice& choice : own)
        if (tags.has(choice.table))
            return {choice.table, choice.intent,
                    choice.table != own[0].table && choice.table != own[1].table};
    if (!hasMatrix(tags))
        for (const Choice& choice : otherTables)
            if (tags.has(choice.table))
                return {choice.table, choice.intent, true, intent == absolute && choice.intent != absolute};
    return {.intent = intent};
}

// The tables that Little CMS reads to find the black of a device, besides the table of the intent.
Result<void> checkBlackPointTables(const IccTags& tags, int intent)
{
    constexpr int relative = 1;
    if (intent == relative) {
        if (tags.deviceClass() != signature("prtr") || tags.deviceSpace() != signature("CMYK"))
            return {};
        return checkTable(tags, tags.has(signature("B2D0")) ? signature("B2D0") : signature("B2A0"));
    }
    constexpr std::uint32_t withFixedBlack = 4;
    if (tags.majorVersion() < withFixedBlack || !hasMatrix(tags))
        return {};
    const std::uint32_t name = chosenTable(tags, relative).tag;
    return name == 0 ? Result<void>() : checkTable(tags, name);
}

} // namespace

namespace {

// A profile that was cut off is refused, even if the tables that are left would do: A2B0, B2A1, D2B0...
Result<void> checkComplete(const IccTags& tags)
{
    const auto isColorTable = [](std::uint32_t name) { return (name >> 16 & 0xff) == '2'; };
    for (std::uint32_t i = 0; tags.isCutOff() && i < tags.count(); ++i)
        if (isColorTable(tags.name(i)) && !tags.find(tags.name(i))->isInside)
            return damaged(tags.name(i));
    return {};
}

} // namespace

Result<void> checkIccTables(const QByteArray& profile)
{
    const IccTags tags(profile);
    if (!tags.hasHeader())
        return failure(KVProblemCode::NotAProfile);
    if (!tags.hasTagTable())
        return failure(KVProblemCode::DamagedTagTable);
    if (auto complete = checkComplete(tags); !complete)
        return complete;
    const auto first = colorTable(tags, 0, false);
    for (int intent = 0; intent <= absolute; ++intent)
        if (colorTable(tags, intent, false))
            return {};
    return failure(first);
}

Result<void> checkIntent(int intent)
{
    if (intent < 0 || intent > absolute)
        return failure(KVProblemCode::UnknownIntent, {QString::number(intent)});
    return {};
}

Result<ColorTable> colorTable(const IccTags& tags, int intent, bool blackPointCompensation)
{
    const ColorTable table = chosenTable(tags, intent);
    if (table.tag != 0)
        if (const auto checked = checkTable(tags, table.tag); !checked)
            return failure(checked);
    if (intent == absolute)
        if (const auto checked = checkAdaptation(tags); !checked)
            return failure(checked);
    if (blackPointCompensation && table.intent != absolute)
        if (const auto checked = checkBlackPointTables(tags, table.intent); !checked)
            return failure(checked);
    return table;
}

QString tableName(const ColorTable& table)
{
    return table.tag == 0 ? QStringLiteral("matrix") : signatureText(table.tag);
}

} // namespace velmora
