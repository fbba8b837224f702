// SPDX-License-Identifier: Apache-2.0
#include "TestPictures.h"

#include <QtCore/QFile>

#include <array>
#include <cstdio>
#include <memory>
#include <string>

#include <jpeglib.h>
#include <png.h>
#include <tiffio.h>

namespace {

constexpr unsigned side = 8;
constexpr std::array<unsigned char, side * 4> row{};

struct Close
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

File openFor(const QString& path)
{
    return File(std::fopen(QFile::encodeName(path).constData(), "wb"));
}

void writeJpegOf(const QString& path, const QByteArray& icc, J_COLOR_SPACE space, int channels)
{
    const File file = openFor(path);
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors;
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    jpeg_stdio_dest(&jpeg, file.get());
    jpeg.image_width = jpeg.image_height = side;
    jpeg.input_components = channels;
    jpeg.in_color_space = space;
    jpeg_set_defaults(&jpeg);
    jpeg_start_compress(&jpeg, TRUE);
    if (!icc.isEmpty())
        jpeg_write_icc_profile(&jpeg, reinterpret_cast<const JOCTET*>(icc.constData()),
                               static_cast<unsigned>(icc.size()));
    JSAMPROW line = const_cast<JSAMPROW>(row.data());
    while (jpeg.next_scanline < side)
        jpeg_write_scanlines(&jpeg, &line, 1);
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
}

} // namespace

void testpictures::writePng(const QString& path, const QByteArray& icc)
{
    const File file = openFor(path);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file.get());
    png_set_IHDR(png, info, side, side, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!icc.isEmpty())
        png_set_iCCP(png, info, "profile", PNG_COMPRESSION_TYPE_BASE,
                     reinterpret_cast<png_const_bytep>(icc.constData()),
                     static_cast<png_uint_32>(icc.size()));
    png_write_info(png, info);
    for (unsigned y = 0; y < side; ++y)
        png_write_row(png, row.data());
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
}

void testpictures::writeJpeg(const QString& path, const QByteArray& icc)
{
    writeJpegOf(path, icc, JCS_RGB, 3);
}

void testpictures::writeCmykJpeg(const QString& path, const QByteArray& icc)
{
    writeJpegOf(path, icc, JCS_CMYK, 4);
}

void testpictures::writeCmykTiff(const QString& path, const QByteArray& icc, const char* mode)
{
    TIFF* tiff = TIFFOpen(QFile::encodeName(path).constData(), (std::string("w") + mode).c_str());
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, side);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, side);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 4);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_SEPARATED);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    if (!icc.isEmpty())
        TIFFSetField(tiff, TIFFTAG_ICCPROFILE, static_cast<std::uint32_t>(icc.size()), icc.constData());
    for (unsigned y = 0; y < side; ++y)
        TIFFWriteScanline(tiff, const_cast<unsigned char*>(row.data()), y);
    TIFFClose(tiff);
}
