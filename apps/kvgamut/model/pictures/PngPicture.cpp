// SPDX-License-Identifier: Apache-2.0
#include "PngPicture.h"

#include <QtCore/QFile>

#include <png.h>

// Qt's reader prints what libpng has to say about a damaged file; libpng's simplified interface tells it.

namespace {

/// One that frees what libpng keeps for it.
struct Reader : png_image
{
    Reader() : png_image{} { version = PNG_IMAGE_VERSION; }
    ~Reader() { png_image_free(this); }
    Q_DISABLE_COPY_MOVE(Reader)
};

PngPicture failed(const QString& name, const QString& reason)
{
    return {{}, QStringLiteral("'%1' cannot be read: %2").arg(name, reason)};
}

} // namespace

PngPicture PngPicture::read(const QString& name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return failed(name, file.errorString());
    const QByteArray bytes = file.readAll();
    Reader reader;
    if (!png_image_begin_read_from_memory(&reader, bytes.constData(), static_cast<size_t>(bytes.size())))
        return failed(name, QString::fromLatin1(reader.message));
    reader.format = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;
    PngPicture result{
        QImage(static_cast<int>(reader.width), static_cast<int>(reader.height), QImage::Format_ARGB32), {}};
    if (result.image.isNull())
        return failed(name, QStringLiteral("it is too large"));
    if (!png_image_finish_read(&reader, nullptr, result.image.bits(),
                               static_cast<png_int_32>(result.image.bytesPerLine()), nullptr))
        return failed(name, QString::fromLatin1(reader.message));
    return result;
}
