// SPDX-License-Identifier: Apache-2.0
#include "PictureFile.h"

#include "PictureWriters.h"
#include "VectorFile.h"

#include <QtCore/QFileInfo>
#include <QtGui/QPainter>

#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<const char*, PictureFormat>, 8> suffixFormats{{{"png", PictureFormat::Png},
                                                                              {"jpg", PictureFormat::Jpeg},
                                                                              {"jpeg", PictureFormat::Jpeg},
                                                                              {"tif", PictureFormat::Tiff},
                                                                              {"tiff", PictureFormat::Tiff},
                                                                              {"webp", PictureFormat::WebP},
                                                                              {"svg", PictureFormat::Svg},
                                                                              {"pdf", PictureFormat::Pdf}}};

bool isVector(PictureFormat format)
{
    return format == PictureFormat::Svg || format == PictureFormat::Pdf;
}

/// Without an overlay the pixels stay as they are: not even transparent ones are rounded.
QImage withOverlay(QImage picture, const PictureOverlay& overlay)
{
    if (overlay) {
        QPainter painter(&picture);
        overlay(painter, QRectF(QPointF(), picture.size()));
    }
    return picture;
}

QByteArray pixelBytes(const QImage& picture, PictureFormat format, const PictureNote& note)
{
    switch (format) {
    case PictureFormat::Png:
        return PictureWriters::png(picture, note);
    case PictureFormat::Jpeg:
        return PictureWriters::jpeg(picture, note);
    case PictureFormat::Tiff:
        return PictureWriters::tiff(picture, note);
    default:
        return PictureWriters::webp(picture, note);
    }
}

QByteArray vectorBytes(const QImage& picture, PictureFormat format, const PictureNote& note,
                       const PictureOverlay& overlay)
{
    const auto paint = [&](QPainter& painter, const QRectF& area) {
        painter.setRenderHint(QPainter::LosslessImageRendering); // otherwise a PDF has JPEG pictures
        painter.scale(area.width() / picture.width(), area.height() / picture.height());
        painter.drawImage(QPointF(), picture);
        if (overlay)
            overlay(painter, QRectF(QPointF(), picture.size()));
    };
    const VectorFile::Page page{picture.size(), QStringLiteral("kvgamut"),
                                QString::fromUtf8(PictureWriters::textOf(note)), note.dotsPerInch};
    return format == PictureFormat::Svg ? VectorFile::svg(page, paint) : VectorFile::pdf(page, paint);
}

} // namespace

std::optional<PictureFormat> PictureFile::formatOf(const QString& file)
{
    return formatNamed(QFileInfo(file).suffix().toLower());
}

std::optional<PictureFormat> PictureFile::formatNamed(const QString& word)
{
    for (const auto& [suffix, format] : suffixFormats)
        if (word == QLatin1String(suffix))
            return format;
    return std::nullopt;
}

QStringList PictureFile::suffixes()
{
    QStringList all;
    for (const auto& [suffix, format] : suffixFormats)
        all.append(QLatin1String(suffix));
    return all;
}

QString PictureFile::suffixList()
{
    QStringList all = suffixes();
    const QString last = all.takeLast();
    return QStringLiteral(".%1 and .%2").arg(all.join(QStringLiteral(", .")), last);
}

bool PictureFile::hasTransparency(PictureFormat format)
{
    return format != PictureFormat::Jpeg;
}

Result<QByteArray> PictureFile::bytes(const QImage& picture, PictureFormat format, const PictureNote& note,
                                      const PictureOverlay& overlay)
{
    if (picture.isNull())
        return failure(ProblemCode::NoPictureToSave);
    const QByteArray bytes = isVector(format) ? vectorBytes(picture, format, note, overlay)
                                              : pixelBytes(withOverlay(picture, overlay), format, note);
    if (bytes.isEmpty())
        return failure(ProblemCode::PictureTooLarge);
    return bytes;
}
