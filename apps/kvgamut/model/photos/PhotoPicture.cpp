// SPDX-License-Identifier: Apache-2.0
#include "PhotoPicture.h"

#include "DeviceLevels.h"
#include "PhotoSamples.h"

#include <optional>
#include <vector>

namespace {

using PixelOf = std::function<PhotoPixel(const KVGamut::LabPoint&)>;

/// The pixels for the last device values or colours, by 32-bit keys.
class PixelCache
{
public:
    template <typename Make>
    const PhotoPixel& at(std::uint32_t key, const Make& make)
    {
        constexpr std::uint32_t factor = 2654435769u;
        Slot& slot = m_slots[(key * factor) >> (32 - bits)];
        if (!slot.used || slot.key != key)
            slot = {key, true, make()};
        return slot.pixel;
    }

private:
    struct Slot
    {
        std::uint32_t key = 0;
        bool used = false;
        PhotoPixel pixel;
    };
    static constexpr int bits = 20;
    std::vector<Slot> m_slots = std::vector<Slot>(std::size_t(1) << bits);
};

/// Finds the pixels for the samples of a row.
class PixelFinder
{
public:
    PixelFinder(const PhotoFacts& facts, std::optional<PhotoSpace> space, const PixelOf& pixelOf)
        : m_facts(facts), m_samples(facts), m_space(std::move(space)), m_pixelOf(pixelOf)
    {
        if (m_space)
            m_levels.emplace(*m_space, facts.sample);
    }

    /// The pixel whose samples begin at @p at; its colour is 0 if it is fully transparent.
    PhotoPixel at(const std::byte* row, qsizetype at)
    {
        if (m_samples.isTransparent(row, at))
            return {0, -1.0f};
        return m_levels ? ofDevice(row, at) : ofLab(row, at);
    }

private:
    PhotoPixel ofDevice(const std::byte* row, qsizetype at)
    {
        std::uint32_t key = 0;
        for (int channel = 0; channel < m_facts.channels; ++channel)
            key = key << m_levels->bits() | m_levels->levelOf(channel, m_samples.at(row, at + channel));
        return m_cache.at(key, [&] {
            const std::uint32_t mask = (1u << m_levels->bits()) - 1;
            m_device.clear();
            for (int channel = 0; channel < m_facts.channels; ++channel) {
                const int shift = m_levels->bits() * (m_facts.channels - 1 - channel);
                m_device.push_back(m_levels->valueOf(channel, key >> shift & mask));
            }
            KVGamut::LabPoint lab;
            m_space->convert(m_device, std::span(&lab, 1));
            return std::isfinite(lab.L) ? m_pixelOf(lab) : PhotoPixel();
        });
    }

    PhotoPixel ofLab(const std::byte* row, qsizetype at)
    {
        constexpr float steps = 4.0f; // a quarter of a dE
        std::array<float, 3> lab{};
        std::uint32_t key = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            const float value = m_samples.floatAt(row, at + static_cast<qsizetype>(i));
            lab[i] = value >= -127.0f && value <= 127.0f ? value : value > 0.0f ? 127.0f : -127.0f;
            key = key << 10 | static_cast<std::uint32_t>(std::lround((lab[i] + 127.0f) * steps));
        }
        return m_cache.at(key, [&] { return m_pixelOf({lab[0], lab[1], lab[2]}); });
    }

    const PhotoFacts& m_facts;
    const SampleReader m_samples;
    const std::optional<PhotoSpace> m_space; ///< nullopt for Lab
    std::optional<DeviceLevels> m_levels;
    const PixelOf& m_pixelOf;
    PixelCache m_cache;
    std::vector<double> m_device;
};

/// The number of pixels along each side that become one.
int reductionOf(QSize size)
{
    int factor = 1;
    while (qint64(size.width() / factor) * (size.height() / factor) > maxPhotoPicturePixels)
        ++factor;
    return factor;
}

/// Gathers rows of a photo into those of a smaller picture.
class Reduction
{
public:
    Reduction(QSize size, bool hasAlpha) : m_factor(reductionOf(size)), m_ranks(size.width())
    {
        const auto reduced = [this](int length) { return (length + m_factor - 1) / m_factor; };
        picture = QImage(reduced(size.width()), reduced(size.height()),
                         hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    }

    void add(int y, int x, const PhotoPixel& pixel)
    {
        float& rank = m_ranks[x / m_factor];
        auto* const line = reinterpret_cast<QRgb*>(picture.scanLine(y / m_factor));
        const bool isFirst = y % m_factor == 0 && x % m_factor == 0;
        if (!isFirst && pixel.rank <= rank)
            return;
        rank = pixel.rank;
        line[x / m_factor] = pixel.color;
    }

    QImage picture;

private:
    const int m_factor;
    QList<float> m_ranks; ///< of the pixels in the present row of the picture
};

} // namespace

Result<QImage> photoPicture(PhotoFile& photo, const PhotoReading& reading, const PixelOf& pixelOf,
                            const KVCompletionProtocolPtr& task)
{
    const PhotoFacts& facts = photo.facts();
    std::optional<PhotoSpace> space;
    if (facts.space != PhotoFacts::Space::Lab) {
        QList<Problem> notes;
        Result<PhotoSpace> found = spaceOf(facts, reading, notes);
        if (!found)
            return failure(found.error());
        space = *std::move(found);
    }
    PixelFinder finder(facts, std::move(space), pixelOf);
    Reduction reduction(facts.size, facts.alpha >= 0);
    if (reduction.picture.isNull())
        return failure(KVProblemCode::OutOfMemory);
    const auto use = [&](const PhotoFile::Band& band) -> Result<void> {
        for (int y = 0; y < band.rows; ++y) {
            const std::byte* row = band.data + y * band.bytesPerRow;
            for (int x = 0; x < facts.size.width(); ++x)
                reduction.add(band.firstRow + y, x, finder.at(row, qsizetype(x) * facts.stored));
        }
        return {};
    };
    return photo.read(use, task).map([&reduction] { return reduction.picture; });
}
