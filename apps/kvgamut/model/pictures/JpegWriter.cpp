// SPDX-License-Identifier: Apache-2.0
#include "PictureWriters.h"

#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <jpeglib.h>

// libjpeg reports errors with longjmp, which skips destructors: the functions between setjmp and longjmp hold
// only references to objects that have one.

namespace {

constexpr int jpegQuality = 95;
constexpr qsizetype maxComment = 65533; // bytes of a marker

struct JpegStop : jpeg_error_mgr
{
    std::jmp_buf out;
};

void jpegStopped(j_common_ptr jpeg)
{
    std::longjmp(static_cast<JpegStop*>(jpeg->err)->out, 1);
}

void jpegIgnored(j_common_ptr, int) {}

/// What a file consists of.
struct JpegParts
{
    const QImage& picture;
    QByteArray comment;
    QByteArray icc;
    std::vector<uchar> row;
    int dotsPerInch;
};

const JOCTET* octets(const QByteArray& bytes)
{
    return reinterpret_cast<const JOCTET*>(bytes.constData());
}

void startJpeg(jpeg_compress_struct& jpeg, const JpegParts& parts)
{
    jpeg.image_width = static_cast<JDIMENSION>(parts.picture.width());
    jpeg.image_height = static_cast<JDIMENSION>(parts.picture.height());
    jpeg.input_components = 3;
    jpeg.in_color_space = JCS_RGB;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, jpegQuality, TRUE);
    // thin lines and saturated edges would be blurred by fewer samples of colour
    jpeg.comp_info[0].h_samp_factor = 1;
    jpeg.comp_info[0].v_samp_factor = 1;
    jpeg.density_unit = 1; // dots per inch
    jpeg.X_density = static_cast<UINT16>(parts.dotsPerInch);
    jpeg.Y_density = static_cast<UINT16>(parts.dotsPerInch);
    jpeg_start_compress(&jpeg, TRUE);
    jpeg_write_icc_profile(&jpeg, octets(parts.icc), static_cast<unsigned>(parts.icc.size()));
    jpeg_write_marker(&jpeg, JPEG_COM, octets(parts.comment), static_cast<unsigned>(parts.comment.size()));
}

/// The file, from malloc. @return whether everything was written
bool writeJpeg(JpegParts& parts, unsigned char*& bytes, unsigned long& size)
{
    jpeg_compress_struct jpeg{};
    JpegStop stop;
    jpeg.err = jpeg_std_error(&stop);
    stop.error_exit = jpegStopped;
    stop.emit_message = jpegIgnored;
    if (setjmp(stop.out) != 0) {
        jpeg_destroy_compress(&jpeg);
        return false;
    }
    jpeg_create_compress(&jpeg);
    jpeg_mem_dest(&jpeg, &bytes, &size);
    startJpeg(jpeg, parts);
    while (jpeg.next_scanline < jpeg.image_height) {
        PictureWriters::copyRow(parts.picture, static_cast<int>(jpeg.next_scanline), parts.row.data());
        JSAMPROW row = parts.row.data();
        jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    return true;
}

} // namespace

QByteArray PictureWriters::jpeg(const QImage& picture, const PictureNote& note)
{
    QImage opaque = picture;
    opaque.reinterpretAsFormat(QImage::Format_RGB32);
    JpegParts parts{opaque, textOf(note).left(maxComment), profile(),
                    std::vector<uchar>(3 * static_cast<size_t>(picture.width())), note.dotsPerInch};
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    QByteArray result;
    if (writeJpeg(parts, bytes, size))
        result = QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size));
    std::free(bytes);
    return result;
}
