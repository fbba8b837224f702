// SPDX-License-Identifier: Apache-2.0
#include "PngPicture.h"

#include "model/inputs/InputGate.h"
#include "model/inputs/PngChunks.h"

#include <png.h>

// Qt's reader prints libpng's messages about a damaged file to standard error; libpng's simplified interface
// returns them.

namespace {

/// Frees the memory that libpng allocates for the image.
struct Reader : png_image
{
    Reader() : png_image{} { version = PNG_IMAGE_VERSION; }
    ~Reader() { png_image_free(this); }
    Q_DISABLE_COPY_MOVE(Reader)
};

Result<QImage> decoded(const QByteArray& bytes)
{
    Reader reader;
    const auto failed = [&reader] {
        const Problem reason(ProblemCode::OtherReason, {QString::fromLatin1(reader.message)});
        return failure(Problem(ProblemCode::NotAPng).because(reason));
    };
    const QByteArray pixels = PngChunks::ofPixels(bytes).value_or(QByteArray());
    if (!png_image_begin_read_from_memory(&reader, pixels.constData(), static_cast<size_t>(pixels.size())))
        return failed();
    reader.format = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;
    QImage image(static_cast<int>(reader.width), static_cast<int>(reader.height), QImage::Format_ARGB32);
    if (image.isNull())
        return failure(ProblemCode::PictureTooLarge);
    if (!png_image_finish_read(&reader, nullptr, image.bits(), static_cast<png_int_32>(image.bytesPerLine()),
                               nullptr))
        return failed();
    return image;
}

} // namespace

Result<QImage> readPng(const QString& name)
{
    return InputGate::read(name, InputKind::Reference)
        .and_then(decoded)
        .map_error([&name](const Problem& problem) { return problem.about(name); });
}
