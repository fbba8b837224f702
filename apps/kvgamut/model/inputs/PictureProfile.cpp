// SPDX-License-Identifier: Apache-2.0
#include "PictureProfile.h"

#include "PngChunks.h"

#include <algorithm>
#include <csetjmp>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

#include <jpeglib.h>
#include <png.h>
#include <tiffio.h>

// libpng and libjpeg report errors with longjmp, which skips destructors: functions between setjmp and
// longjmp must not hold objects that have one.

namespace {

constexpr png_alloc_size_t maxProfileSize = png_alloc_size_t(256) << 20;

/// A picture in memory and the place where the next byte is read.
struct Source
{
    const QByteArray& bytes;
    qint64 at = 0;

    /// Copies up to @p count bytes. @return their number
    std::size_t read(void* to, std::size_t count)
    {
        const auto left = static_cast<std::size_t>(bytes.size() - at);
        const std::size_t size = std::min(count, left);
        std::memcpy(to, bytes.constData() + at, size);
        at += static_cast<qint64>(size);
        return size;
    }
};

enum class Format
{
    None,
    Png,
    Jpeg,
    Tiff
};

Format pictureFormat(const QByteArray& start)
{
    static const QByteArray png = QByteArrayLiteral("\x89PNG");
    static const QByteArray jpeg = QByteArrayLiteral("\xFF\xD8\xFF");
    if (start.startsWith(png))
        return Format::Png;
    if (start.startsWith(jpeg))
        return Format::Jpeg;
    // either byte order, 32-bit (42) or 64-bit (43) offsets
    for (const auto& tiff : {QByteArrayLiteral("II\x2A\x00"), QByteArrayLiteral("MM\x00\x2A"),
                             QByteArrayLiteral("II\x2B\x00"), QByteArrayLiteral("MM\x00\x2B")})
        if (start.startsWith(tiff))
            return Format::Tiff;
    return Format::None;
}

/// The result of a reader, without a destructor that a longjmp could skip inside the reader.
struct Found
{
    void* icc = nullptr; ///< from malloc
    std::size_t size = 0;
    bool damaged = false;
    char message[JMSG_LENGTH_MAX] = {}; ///< the library's error message

    ~Found() { std::free(icc); }

    /// @param bytes null, in libtiff, for an empty profile
    void keep(const void* bytes, std::size_t count)
    {
        if (!bytes || count == 0)
            return;
        icc = std::malloc(count);
        if (!icc)
            return;
        std::memcpy(icc, bytes, count);
        size = count;
    }
};

// --- PNG ------------------------------------------------------------------------------------------

void pngFailed(png_structp png, png_const_charp message)
{
    auto* found = static_cast<Found*>(png_get_error_ptr(png));
    std::snprintf(found->message, sizeof found->message, "%s", message);
    png_longjmp(png, 1);
}

void pngWarned(png_structp, png_const_charp) {}

constexpr const char* cutOff = "the file ends too early";

void pngRead(png_structp png, png_bytep to, png_size_t count)
{
    if (static_cast<Source*>(png_get_io_ptr(png))->read(to, count) != count)
        png_error(png, cutOff);
}

/// The most memory for the profile: compression makes it at most 1032 times shorter.
png_alloc_size_t maxSizeIn(const QByteArray& picture)
{
    constexpr png_alloc_size_t maxRatio = 1032;
    constexpr png_alloc_size_t spare = png_alloc_size_t(1) << 20;
    return std::min(maxProfileSize, spare + maxRatio * static_cast<png_alloc_size_t>(picture.size()));
}

void readPng(Source& source, Found& found)
{
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &found, pngFailed, pngWarned);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info || setjmp(png_jmpbuf(png)) != 0) {
        found.damaged = true;
        png_destroy_read_struct(&png, &info, nullptr);
        return;
    }
    png_set_chunk_cache_max(png, 1); // no texts
    png_set_chunk_malloc_max(png, maxSizeIn(source.bytes));
    png_set_read_fn(png, &source, pngRead);
    if (!PngChunks::areComplete(source.bytes))
        png_error(png, cutOff);
    png_read_info(png, info);
    png_charp name = nullptr;
    png_bytep bytes = nullptr;
    png_uint_32 size = 0;
    int compression = 0;
    if (png_get_iCCP(png, info, &name, &compression, &bytes, &size) != 0)
        found.keep(bytes, size);
    png_destroy_read_struct(&png, &info, nullptr);
}

// --- JPEG -----------------------------------------------------------------------------------------

struct JpegErrors : jpeg_error_mgr
{
    std::jmp_buf out;
    char* message;
};

void jpegFailed(j_common_ptr jpeg)
{
    auto* errors = static_cast<JpegErrors*>(jpeg->err);
    errors->format_message(jpeg, errors->message);
    std::longjmp(errors->out, 1);
}

void jpegWarned(j_common_ptr, int) {}

void readJpeg(const Source& source, Found& found)
{
    jpeg_decompress_struct jpeg{};
    JpegErrors errors;
    jpeg.err = jpeg_std_error(&errors);
    errors.error_exit = jpegFailed;
    errors.emit_message = jpegWarned;
    errors.message = found.message;
    if (setjmp(errors.out) != 0) {
        found.damaged = true;
        jpeg_destroy_decompress(&jpeg);
        return;
    }
    jpeg_create_decompress(&jpeg);
    jpeg_mem_src(&jpeg, reinterpret_cast<const unsigned char*>(source.bytes.constData()),
                 static_cast<unsigned long>(source.bytes.size()));
    jpeg_save_markers(&jpeg, JPEG_APP0 + 2, 0xFFFF);
    jpeg_read_header(&jpeg, TRUE);
    JOCTET* bytes = nullptr;
    unsigned int size = 0;
    if (jpeg_read_icc_profile(&jpeg, &bytes, &size) != 0) {
        found.icc = bytes; // from malloc; owned by us
        found.size = size;
    }
    jpeg_destroy_decompress(&jpeg);
}

// --- TIFF -----------------------------------------------------------------------------------------

int tiffFailed(TIFF*, void* user, const char*, const char* format, va_list values)
{
    auto* found = static_cast<Found*>(user);
    if (found->message[0] == '\0')
        std::vsnprintf(found->message, sizeof found->message, format, values);
    return 1; // tells libtiff that the message was handled
}

int tiffWarned(TIFF*, void*, const char*, const char*, va_list)
{
    return 1;
}

tmsize_t tiffRead(thandle_t source, void* to, tmsize_t count)
{
    return static_cast<tmsize_t>(static_cast<Source*>(source)->read(to, static_cast<std::size_t>(count)));
}

tmsize_t tiffWrite(thandle_t, void*, tmsize_t)
{
    return 0;
}

toff_t tiffSeek(thandle_t handle, toff_t offset, int from)
{
    auto* source = static_cast<Source*>(handle);
    const qint64 start = from == SEEK_CUR ? source->at : from == SEEK_END ? source->bytes.size() : 0;
    const qint64 target = start + static_cast<qint64>(offset);
    if (target < 0 || target > source->bytes.size())
        return static_cast<toff_t>(-1);
    source->at = target;
    return static_cast<toff_t>(target);
}

int tiffClose(thandle_t)
{
    return 0;
}

toff_t tiffSize(thandle_t source)
{
    return static_cast<toff_t>(static_cast<Source*>(source)->bytes.size());
}

using TiffOptions = std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)>;

TiffOptions tiffOptions(Found& found)
{
    TiffOptions options(TIFFOpenOptionsAlloc(), TIFFOpenOptionsFree);
    if (!options)
        throw std::bad_alloc();
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), static_cast<tmsize_t>(maxProfileSize));
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), tiffFailed, &found);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), tiffWarned, nullptr);
    return options;
}

void readTiff(Source& source, Found& found)
{
    const TiffOptions options = tiffOptions(found);
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(
        TIFFClientOpenExt("", "rm", &source, tiffRead, tiffWrite, tiffSeek, tiffClose, tiffSize, nullptr,
                          nullptr, options.get()),
        TIFFClose);
    if (!tiff) {
        found.damaged = true;
        return;
    }
    std::uint32_t size = 0;
    void* bytes = nullptr;
    if (TIFFGetField(tiff.get(), TIFFTAG_ICCPROFILE, &size, &bytes) != 0)
        found.keep(bytes, size);
}

void readPicture(Format format, Source& source, Found& found)
{
    switch (format) {
    case Format::Png:
        return readPng(source, found);
    case Format::Jpeg:
        return readJpeg(source, found);
    case Format::Tiff:
        return readTiff(source, found);
    case Format::None:
        return;
    }
}

QString nameOf(Format format)
{
    switch (format) {
    case Format::Png:
        return QStringLiteral("PNG");
    case Format::Jpeg:
        return QStringLiteral("JPEG");
    case Format::Tiff:
        return QStringLiteral("TIFF");
    case Format::None:
        break;
    }
    return {};
}

} // namespace

bool PictureProfile::isPicture(const QByteArray& start)
{
    return pictureFormat(start) != Format::None;
}

QByteArray PictureProfile::formatOf(const QByteArray& start)
{
    return nameOf(pictureFormat(start)).toLower().toLatin1();
}

Result<QByteArray> PictureProfile::read(const QByteArray& picture)
{
    const Format format = pictureFormat(picture);
    Source source{picture};
    Found found;
    readPicture(format, source, found);
    if (found.damaged) {
        const Problem reason(ProblemCode::OtherReason, {QString::fromUtf8(found.message).trimmed()});
        return failure(Problem(ProblemCode::PictureDamaged, {nameOf(format)}).because(reason));
    }
    if (found.size == 0)
        return failure(ProblemCode::PictureWithoutProfile, {nameOf(format)});
    return QByteArray(static_cast<const char*>(found.icc), static_cast<qsizetype>(found.size));
}
