// SPDX-License-Identifier: Apache-2.0
#include "PhotoColors.h"

#include "DeviceLevels.h"
#include "PhotoSamples.h"
#include "model/inputs/InputGate.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Counts 32-bit keys. The memory is bounded: a full table has to be emptied.
class KeyCounter
{
public:
    /// @return whether the table is full
    bool add(std::uint32_t key)
    {
        Slot& slot = slotOf(key);
        m_used += slot.count == 0;
        slot = {key, slot.count + 1};
        if (m_used <= m_slots.size() / 2)
            return false;
        if (m_bits == maxBits)
            return true;
        grow();
        return false;
    }

    /// Calls @p use for each key with its number, and forgets them.
    template <typename Use>
    void empty(const Use& use)
    {
        for (Slot& slot : m_slots)
            if (slot.count != 0)
                use(slot.key, std::exchange(slot.count, 0));
        m_used = 0;
    }

private:
    struct Slot
    {
        std::uint32_t key = 0;
        std::uint32_t count = 0; ///< 0: free
    };
    Slot& slotOf(std::uint32_t key)
    {
        constexpr std::uint32_t factor = 2654435769u;
        std::size_t i = (key * factor) >> (32 - m_bits);
        while (m_slots[i].count != 0 && m_slots[i].key != key)
            i = (i + 1) & (m_slots.size() - 1);
        return m_slots[i];
    }
    void grow()
    {
        std::vector<Slot> old(m_slots.size() * 2);
        old.swap(m_slots);
        ++m_bits;
        for (const Slot& slot : old)
            if (slot.count != 0)
                slotOf(slot.key) = slot;
    }

    static constexpr int maxBits = 23;
    int m_bits = 12;
    std::vector<Slot> m_slots = std::vector<Slot>(std::size_t(1) << m_bits);
    std::size_t m_used = 0;
};

/// Counts the device values of a photo with a profile.
class DeviceCounting
{
public:
    DeviceCounting(const PhotoFacts& facts, const PhotoSpace& space, LabCells& cells)
        : m_facts(facts), m_space(space), m_samples(facts), m_levels(space, facts.sample), m_cells(cells)
    {
    }

    void add(const std::byte* row)
    {
        for (qsizetype x = 0, at = 0; x < m_facts.size.width(); ++x, at += m_facts.stored) {
            if (m_samples.isTransparent(row, at))
                continue;
            ++pixels;
            bool isOutside = false;
            std::uint32_t key = 0;
            for (int channel = 0; channel < m_facts.channels; ++channel) {
                isOutside = isOutside || m_samples.isOutside(row, at + channel);
                key = key << m_levels.bits() | m_levels.levelOf(channel, m_samples.at(row, at + channel));
            }
            clamped += isOutside;
            if (m_counter.add(key))
                convert();
        }
    }

    /// Moves what was counted into the cells.
    void convert()
    {
        m_counter.empty([this](std::uint32_t key, std::uint32_t count) {
            const std::uint32_t mask = (1u << m_levels.bits()) - 1;
            for (int channel = 0; channel < m_facts.channels; ++channel) {
                const int shift = m_levels.bits() * (m_facts.channels - 1 - channel);
                m_device.push_back(m_levels.valueOf(channel, key >> shift & mask));
            }
            m_counts.push_back(count);
            if (m_counts.size() == blockSize)
                convertBlock();
        });
        convertBlock();
    }

    qint64 pixels = 0;
    qint64 clamped = 0;
    bool hasImpossible = false; ///< a colour that the profile makes NaN, or far out of range

private:
    static constexpr std::size_t blockSize = 4096;

    void convertBlock()
    {
        m_labs.resize(m_counts.size());
        m_space.convert(m_device, m_labs);
        for (std::size_t i = 0; i < m_labs.size(); ++i) {
            hasImpossible = hasImpossible || !std::isfinite(m_labs[i].L);
            if (std::isfinite(m_labs[i].L))
                m_cells.add(m_labs[i], m_counts[i]);
        }
        m_device.clear();
        m_counts.clear();
    }

    const PhotoFacts& m_facts;
    const PhotoSpace& m_space;
    const SampleReader m_samples;
    const DeviceLevels m_levels;
    LabCells& m_cells;
    KeyCounter m_counter;
    std::vector<double> m_device;
    std::vector<std::uint32_t> m_counts;
    std::vector<KVGamut::LabPoint> m_labs;
};

tl::unexpected<Problem> impossible()
{
    return failure(KVProblemCode::LabOutOfRange);
}

/// Lab values need no profile.
Result<void> countLab(PhotoFile& photo, LabCells& cells, PhotoColors& colors,
                      const KVCompletionProtocolPtr& task)
{
    const PhotoFacts& facts = photo.facts();
    const SampleReader samples(facts);
    const auto use = [&](const PhotoFile::Band& band) -> Result<void> {
        for (int y = 0; y < band.rows; ++y) {
            const std::byte* row = band.data + y * band.bytesPerRow;
            for (qsizetype x = 0, at = 0; x < facts.size.width(); ++x, at += facts.stored) {
                const KVGamut::LabPoint lab{samples.floatAt(row, at), samples.floatAt(row, at + 1),
                                            samples.floatAt(row, at + 2)};
                constexpr float max = 1000.0f;
                if (!(std::abs(lab.L) <= max && std::abs(lab.a) <= max && std::abs(lab.b) <= max))
                    return impossible();
                cells.add(lab, 1);
                ++colors.pixels;
            }
        }
        return {};
    };
    return photo.read(use, task);
}

Result<void> countDevice(PhotoFile& photo, const PhotoSpace& space, LabCells& cells, PhotoColors& colors,
                         const KVCompletionProtocolPtr& task)
{
    DeviceCounting counting(photo.facts(), space, cells);
    const auto use = [&counting](const PhotoFile::Band& band) -> Result<void> {
        for (int y = 0; y < band.rows; ++y)
            counting.add(band.data + y * band.bytesPerRow);
        return {};
    };
    if (Result<void> read = photo.read(use, task); !read)
        return read;
    counting.convert();
    if (counting.hasImpossible)
        return impossible();
    colors.pixels = counting.pixels;
    if (counting.clamped > 0)
        colors.notes.append(Problem(ProblemCode::PictureValuesClamped, {QString::number(counting.clamped)}));
    return {};
}

Result<void> count(PhotoFile& photo, const PhotoReading& reading, LabCells& cells, PhotoColors& colors,
                   const KVCompletionProtocolPtr& task)
{
    if (photo.facts().space == PhotoFacts::Space::Lab)
        return countLab(photo, cells, colors, task);
    const Result<PhotoSpace> space = spaceOf(photo.facts(), reading, colors.notes);
    if (!space)
        return failure(space.error());
    return countDevice(photo, *space, cells, colors, task);
}

} // namespace

Result<PhotoColors> photoColors(PhotoFile& photo, const PhotoReading& reading,
                                const KVCompletionProtocolPtr& task)
{
    PhotoColors colors;
    colors.facts = photo.facts();
    if (colors.facts.pages > 1)
        colors.notes.append(Problem(ProblemCode::PictureManyPages, {QString::number(colors.facts.pages)}));
    LabCells cells;
    if (const Result<void> counted = count(photo, reading, cells, colors, task); !counted)
        return failure(counted.error());
    if (colors.pixels == 0)
        return failure(ProblemCode::PictureTransparent);
    colors.cells = cells.cells();
    colors.cellEdge = cells.edge();
    return colors;
}
