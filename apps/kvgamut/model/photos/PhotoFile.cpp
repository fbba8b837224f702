// SPDX-License-Identifier: Apache-2.0
#include "PhotoFile.h"

#include "VipsLibrary.h"
#include "model/inputs/InputGate.h"
#include "model/inputs/PictureProfile.h"
#include "model/inputs/PngChunks.h"
#include "model/inputs/SystemInput.h"

#include <QtCore/QCryptographicHash>

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <utility>
#include <vector>

namespace {

using Loader = int (*)(VipsSource*, VipsImage**, ...);

/// A format, and how it is recognised and read.
struct Format
{
    const char* name;
    Loader VipsLibrary::*loader;
    bool inBands; ///< unless progressive or interlaced
};
constexpr std::array formats{
    Format{"JPEG", &VipsLibrary::loadJpeg, true},  Format{"PNG", &VipsLibrary::loadPng, true},
    Format{"TIFF", &VipsLibrary::loadTiff, true},  Format{"WebP", &VipsLibrary::loadWebP, false},
    Format{"HEIF", &VipsLibrary::loadHeif, false}, Format{"JPEG XL", &VipsLibrary::loadJpegXl, false}};

bool isHeif(const QByteArray& start)
{
    const QByteArray brand = start.mid(8, 4);
    return start.mid(4, 4) == "ftyp" &&
           (brand == "heic" || brand == "heix" || brand == "mif1" || brand == "avif");
}

bool isJpegXl(const QByteArray& start)
{
    return start.startsWith("\xFF\x0A") || start.startsWith(QByteArray("\0\0\0\x0CJXL ", 8));
}

bool isPng(const QByteArray& start)
{
    return start.startsWith("\x89PNG\r\n\x1A\n");
}

bool isTiff(const QByteArray& start)
{
    const QByteArray four = start.first(4);
    return four == QByteArray("II*\0", 4) || four == QByteArray("MM\0*", 4) ||
           four == QByteArray("II+\0", 4) || four == QByteArray("MM\0+", 4);
}

const Format* formatOf(const QByteArray& start)
{
    if (start.size() < 12)
        return nullptr;
    const std::array<bool, formats.size()> is{start.startsWith("\xFF\xD8\xFF"),
                                              isPng(start),
                                              isTiff(start),
                                              start.startsWith("RIFF") && start.mid(8, 4) == "WEBP",
                                              isHeif(start),
                                              isJpegXl(start)};
    const auto found = std::find(is.begin(), is.end(), true);
    return found == is.end() ? nullptr : &formats[static_cast<std::size_t>(found - is.begin())];
}

struct Unref
{
    void operator()(void* object) const { VipsLibrary::get()->unref(object); }
};
template <typename Object>
using Owned = std::unique_ptr<Object, Unref>;

tl::unexpected<Problem> undecodable(const VipsLibrary& vips)
{
    const QString reason = vips.lastError();
    const Problem problem(ProblemCode::PictureDataInvalid);
    if (reason.isEmpty())
        return failure(problem);
    return failure(problem.because(Problem(ProblemCode::OtherReason, {reason})));
}

bool isFlagged(const VipsLibrary& vips, VipsImage* image, const char* name)
{
    return vips.typeOf(image, name) != 0;
}

/// Refuses a photo before its pixels are decoded.
Result<void> checkSize(const VipsLibrary& vips, VipsImage* image, const Format& format)
{
    const bool inBands =
        format.inBands && !isFlagged(vips, image, "interlaced") && !isFlagged(vips, image, "jpeg-multiscan");
    const qint64 max = inBands ? InputLimits::maxPhotoMegapixels : InputLimits::maxWholePhotoMegapixels;
    if (qint64(vips.width(image)) * vips.height(image) <= max * 1'000'000)
        return {};
    return failure(inBands ? ProblemCode::TooManyPixels : ProblemCode::TooManyPixelsAtOnce,
                   {QString::number(max)});
}

std::optional<PhotoFacts::Space> spaceOf(VipsInterpretation interpretation, int channels)
{
    using Space = PhotoFacts::Space;
    switch (interpretation) {
    case VIPS_INTERPRETATION_LAB:
        return Space::Lab;
    case VIPS_INTERPRETATION_CMYK:
        return Space::Cmyk;
    case VIPS_INTERPRETATION_B_W:
    case VIPS_INTERPRETATION_GREY16:
        return Space::Grey;
    case VIPS_INTERPRETATION_sRGB:
    case VIPS_INTERPRETATION_RGB:
    case VIPS_INTERPRETATION_RGB16:
    case VIPS_INTERPRETATION_scRGB:
        return Space::Rgb;
    case VIPS_INTERPRETATION_MULTIBAND:
        if (channels < 3)
            return Space::Grey;
        return channels == 3 ? std::optional(Space::Rgb) : std::nullopt;
    default:
        return {};
    }
}

int channelsOf(PhotoFacts::Space space)
{
    switch (space) {
    case PhotoFacts::Space::Grey:
        return 1;
    case PhotoFacts::Space::Cmyk:
        return 4;
    case PhotoFacts::Space::Rgb:
    case PhotoFacts::Space::Lab:
        break;
    }
    return 3;
}

std::optional<PhotoFacts::Sample> sampleOf(VipsBandFormat format)
{
    switch (format) {
    case VIPS_FORMAT_UCHAR:
        return PhotoFacts::Sample::Byte;
    case VIPS_FORMAT_USHORT:
        return PhotoFacts::Sample::Word;
    case VIPS_FORMAT_FLOAT:
        return PhotoFacts::Sample::Float;
    default:
        return {};
    }
}

Result<PhotoFacts> factsOf(const VipsLibrary& vips, VipsImage* image, const Format& format)
{
    PhotoFacts facts;
    facts.format = QString::fromLatin1(format.name);
    facts.size = QSize(vips.width(image), vips.height(image));
    facts.stored = vips.bands(image);
    const bool hasAlpha = vips.hasAlpha(image) != 0;
    const auto space = spaceOf(vips.interpretation(image), facts.stored - (hasAlpha ? 1 : 0));
    const auto sample = sampleOf(vips.format(image));
    if (!space || !sample || facts.stored < channelsOf(*space))
        return failure(ProblemCode::PictureSamplesUnknown);
    facts.space = *space;
    facts.sample = *sample;
    facts.channels = channelsOf(*space);
    if (hasAlpha)
        facts.alpha = facts.channels;
    facts.pages = vips.pages(image);
    const void* bytes = nullptr;
    std::size_t size = 0;
    if (isFlagged(vips, image, VIPS_META_ICC_NAME) &&
        vips.blob(image, VIPS_META_ICC_NAME, &bytes, &size) == 0 &&
        size <= static_cast<std::size_t>(InputLimits::maxBytes(InputKind::Profile)))
        facts.profile = QByteArray(static_cast<const char*>(bytes), static_cast<qsizetype>(size));
    return facts;
}

/// Lab in TIFF files has several encodings; afterwards it is floating point.
Result<void> decodeLab(const VipsLibrary& vips, Owned<VipsImage>& image)
{
    const VipsInterpretation interpretation = vips.interpretation(image.get());
    if (vips.coding(image.get()) != VIPS_CODING_LABQ && interpretation != VIPS_INTERPRETATION_LABS)
        return {};
    VipsImage* lab = nullptr;
    if (vips.convert(image.get(), &lab, VIPS_INTERPRETATION_LAB, nullptr) != 0)
        return undecodable(vips);
    image.reset(lab);
    return {};
}

} // namespace

struct PhotoFile::Private
{
    std::optional<InputGate::File> file; ///< the source reads from it
    QByteArray content;
    QByteArray hash; ///< of the content, before it was split
    Owned<VipsSource> source;
    Owned<VipsImage> image;
    PhotoFacts facts;

    /// Keeps the profile and the chunks of the pixels of a PNG: for others the reader would allocate what
    /// they declare.
    Result<void> splitPng()
    {
        const Result<QByteArray> profile = PictureProfile::read(content);
        if (profile)
            facts.profile = *profile;
        else if (profile.error().code != Problem::Code(ProblemCode::PictureWithoutProfile))
            return failure(profile.error());
        const auto pixels = PngChunks::ofPixels(content);
        if (!pixels)
            return failure(ProblemCode::PictureDataInvalid);
        content = *pixels;
        return {};
    }

    /// Fills image and facts from the source.
    Result<void> readHeader(const Format& format)
    {
        const VipsLibrary& vips = *VipsLibrary::get();
        VipsImage* opened = nullptr;
        if (!source || (vips.*format.loader)(source.get(), &opened, "access", VIPS_ACCESS_SEQUENTIAL,
                                             "fail_on", VIPS_FAIL_ON_ERROR, nullptr) != 0)
            return undecodable(vips);
        image.reset(opened);
        return checkSize(vips, image.get(), format)
            .and_then([&] { return decodeLab(vips, image); })
            .and_then([&] { return factsOf(vips, image.get(), format); })
            .map([this](const PhotoFacts& known) {
                const QByteArray profile = known.profile.isEmpty() ? facts.profile : known.profile;
                facts = known;
                facts.profile = profile;
            });
    }
};

PhotoFile::PhotoFile(std::unique_ptr<Private> p) : d(std::move(p)) {}
PhotoFile::PhotoFile(PhotoFile&&) noexcept = default;
PhotoFile& PhotoFile::operator=(PhotoFile&&) noexcept = default;
PhotoFile::~PhotoFile() = default;

const PhotoFacts& PhotoFile::facts() const
{
    return d->facts;
}

QByteArray PhotoFile::hash(const KVCompletionProtocolPtr& task) const
{
    if (!d->file)
        return d->hash;
    constexpr std::size_t blockSize = 1 << 20;
    std::vector<char> block(blockSize);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    // at positions, because the picture is read from the same descriptor
    for (qint64 at = 0; !InputGate::isCancelled(task);) {
        const qint64 count = SystemInput::readAt(d->file->descriptor(), block.data(), block.size(), at);
        if (count == 0)
            return hash.result();
        if (count < 0 && errno != EINTR)
            break;
        if (count > 0)
            hash.addData(QByteArrayView(block.data(), count));
        at += std::max<qint64>(count, 0);
    }
    return {};
}

bool PhotoFile::isPhoto(const QByteArray& start)
{
    return formatOf(start) != nullptr;
}

Result<PhotoFile> PhotoFile::open(const QString& name, const KVCompletionProtocolPtr& task)
{
    Result<InputGate::File> file = InputGate::openFile(name, InputKind::Photo);
    if (!file)
        return failure(file.error());
    if (!file->isSeekable() || isPng(file->start())) {
        const Result<QByteArray> content = InputGate::read(name, InputKind::Picture, task);
        return content ? ofContent(*content) : failure(content.error());
    }
    const VipsLibrary* vips = VipsLibrary::get();
    if (!vips)
        return failure(ProblemCode::NoPhotoLibrary);
    const Format* format = formatOf(file->start());
    if (!format)
        return failure(ProblemCode::PictureFormatUnknown);
    auto d = std::make_unique<Private>();
    d->file = std::move(*file);
    d->source.reset(vips->sourceFromDescriptor(d->file->descriptor()));
    return d->readHeader(*format).map([&d] { return PhotoFile(std::move(d)); });
}

Result<PhotoFile> PhotoFile::ofContent(const QByteArray& content)
{
    const VipsLibrary* vips = VipsLibrary::get();
    if (!vips)
        return failure(ProblemCode::NoPhotoLibrary);
    const Format* format = formatOf(content);
    if (!format)
        return failure(ProblemCode::PictureFormatUnknown);
    auto d = std::make_unique<Private>();
    d->content = content;
    d->hash = QCryptographicHash::hash(content, QCryptographicHash::Sha256);
    if (isPng(content))
        if (const Result<void> split = d->splitPng(); !split)
            return failure(split.error());
    d->source.reset(
        vips->sourceFromMemory(d->content.constData(), static_cast<std::size_t>(d->content.size())));
    return d->readHeader(*format).map([&d] { return PhotoFile(std::move(d)); });
}

Result<void> PhotoFile::read(const std::function<Result<void>(const Band&)>& use,
                             const KVCompletionProtocolPtr& task)
{
    constexpr qint64 pixelsPerBand = 1
                                     << 18; // some milliseconds of work between two looks for a cancellation
    const VipsLibrary& vips = *VipsLibrary::get();
    const Owned<VipsRegion> region(vips.newRegion(d->image.get()));
    const int width = d->facts.size.width(), height = d->facts.size.height();
    const int rows = static_cast<int>(std::clamp<qint64>(pixelsPerBand / std::max(1, width), 1, 256));
    for (int y = 0; y < height; y += rows) {
        if (InputGate::isCancelled(task))
            return failure(KVProblemCode::Cancelled);
        const VipsRect area{0, y, width, std::min(rows, height - y)};
        if (!region || vips.prepare(region.get(), &area) != 0)
            return undecodable(vips);
        // the region has whole rows, and may begin above those that were asked for
        const auto bytesPerRow = static_cast<qsizetype>(region->bpl);
        const Band band{y, area.height,
                        reinterpret_cast<const std::byte*>(region->data) +
                            (y - region->valid.top) * bytesPerRow,
                        bytesPerRow};
        if (Result<void> used = use(band); !used)
            return used;
        if (task)
            task->setProgress(static_cast<float>(y + area.height) / static_cast<float>(height));
    }
    return {};
}
