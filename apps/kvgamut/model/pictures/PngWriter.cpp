// SPDX-License-Identifier: Apache-2.0
#include "PictureWriters.h"

#include <cmath>
#include <csetjmp>
#include <vector>

#include <png.h>

// libpng reports errors with longjmp, which skips destructors: the functions between setjmp and longjmp hold
// only references to objects that have one.

namespace {

constexpr double inchesPerMetre = 1.0 / 0.0254;

void pngStopped(png_structp png, png_const_charp)
{
    png_longjmp(png, 1);
}

void pngIgnored(png_structp, png_const_charp) {}

void pngAppend(png_structp png, png_bytep bytes, png_size_t count)
{
    static_cast<QByteArray*>(png_get_io_ptr(png))
        ->append(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(count));
}

void pngFlush(png_structp) {}

/// The texts of a file, in UTF-8.
struct PngTexts
{
    explicit PngTexts(const PictureNote& note)
        : software(PictureNote::software().toUtf8()), command(note.command.toUtf8()),
          profiles(note.profiles.join(QLatin1Char('\n')).toUtf8())
    {
        add("Software", software);
        add("Command", command);
        add("Profiles", profiles);
    }

    void add(const char* key, QByteArray& value)
    {
        if (value.isEmpty())
            return;
        png_text text{};
        text.compression = PNG_ITXT_COMPRESSION_NONE;
        text.key = const_cast<char*>(key); // libpng does not change it
        text.text = value.data();
        text.itxt_length = static_cast<png_size_t>(value.size());
        entries.push_back(text);
    }

    QByteArray software, command, profiles;
    std::vector<png_text> entries;
};

void writeHead(png_structp png, png_infop info, const QImage& picture, const PictureNote& note,
               const PngTexts& texts)
{
    const bool alpha = PictureWriters::channelsOf(picture) == 4;
    png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width()),
                 static_cast<png_uint_32>(picture.height()), 8,
                 alpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_sRGB(png, info, PNG_sRGB_INTENT_RELATIVE);
    const auto dots = static_cast<png_uint_32>(std::lround(note.dotsPerInch * inchesPerMetre));
    png_set_pHYs(png, info, dots, dots, PNG_RESOLUTION_METER);
    png_set_text(png, info, texts.entries.data(), static_cast<int>(texts.entries.size()));
    png_write_info(png, info);
}

/// @return whether everything was written
bool writeAllPng(png_structp png, png_infop info, const QImage& picture, const PictureNote& note,
                 const PngTexts& texts, std::vector<uchar>& row)
{
    if (setjmp(png_jmpbuf(png)) != 0)
        return false;
    writeHead(png, info, picture, note, texts);
    for (int y = 0; y < picture.height(); ++y) {
        PictureWriters::copyRow(picture, y, row.data());
        png_write_row(png, row.data());
    }
    png_write_end(png, info);
    return true;
}

} // namespace

QByteArray PictureWriters::png(const QImage& picture, const PictureNote& note)
{
    QByteArray result;
    const PngTexts texts(note);
    std::vector<uchar> row(static_cast<size_t>(picture.width()) * static_cast<size_t>(channelsOf(picture)));
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, pngStopped, pngIgnored);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (info) {
        png_set_write_fn(png, &result, pngAppend, pngFlush);
        if (!writeAllPng(png, info, picture, note, texts, row))
            result.clear();
    }
    png_destroy_write_struct(&png, &info);
    return result;
}
