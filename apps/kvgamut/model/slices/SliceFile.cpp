// SPDX-License-Identifier: Apache-2.0
#include "SliceFile.h"

#include "SliceDrawing.h"

#include <QtCore/QBuffer>
#include <QtCore/QHashFunctions>
#include <QtCore/QScopeGuard>
#include <QtCore/QUuid>
#include <QtGui/QImage>
#include <QtGui/QPageSize>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>
#include <QtSvg/QSvgGenerator>

namespace {

constexpr int dotsPerMetre = 3780; // 96 per inch
constexpr int dotsPerInch = 96;
constexpr double pointsPerPixel = 72.0 / dotsPerInch;
constexpr int pageResolution = 1200; // dots per inch

/// Replaces the date after each @p mark by @p date. Both must have the same length: a PDF contains byte
/// offsets.
void setDates(QByteArray& pdf, const QByteArray& mark, const QByteArray& date)
{
    for (qsizetype at = pdf.indexOf(mark); at >= 0; at = pdf.indexOf(mark, at + 1))
        pdf.replace(at + mark.size(), date.size(), date);
}

/// Replaces the times of writing, so that equal drawings give equal bytes. Older versions of Qt write only
/// the first of these marks.
QByteArray withoutDates(QByteArray pdf)
{
    for (const char* mark : {"/CreationDate (D:", "/ModDate (D:"})
        setDates(pdf, mark, "20000101000000");
    for (const char* mark : {"xmp:CreateDate=\"", "xmp:ModifyDate=\"", "xmp:MetadataDate=\""})
        setDates(pdf, mark, "2000-01-01T00:00:00");
    return pdf;
}

} // namespace

QByteArray SliceFile::png(const SliceDrawing& drawing, const QSize& size)
{
    QImage picture(size, QImage::Format_RGB32);
    QPainter painter(&picture);
    drawing.paint(painter, QRectF(QPointF(), size));
    painter.end();
    picture.setDotsPerMeterX(dotsPerMetre);
    picture.setDotsPerMeterY(dotsPerMetre);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return buffer.data();
}

QByteArray SliceFile::svg(const SliceDrawing& drawing, const QSize& size)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(dotsPerInch);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(), size));
    generator.setTitle(drawing.title());
    generator.setDescription(QStringLiteral("kvgamut"));
    QPainter painter(&generator);
    drawing.paint(painter, QRectF(QPointF(), size));
    painter.end();
    return buffer.data();
}

QByteArray SliceFile::pdf(const SliceDrawing& drawing, const QSize& size)
{
    // Qt writes the fonts of a PDF in hash order, which differs between processes with random hash seeds.
    QHashSeed::setDeterministicGlobalSeed();
    const auto random = qScopeGuard(&QHashSeed::resetRandomGlobalSeed);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(pageResolution);
    writer.setPageSize(
        QPageSize(QSizeF(size) * pointsPerPixel, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    writer.setTitle(drawing.title());
    writer.setCreator(QStringLiteral("kvgamut"));
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    writer.setDocumentId(QUuid()); // random by default
#endif
    QPainter painter(&writer);
    drawing.paint(painter, QRectF(0, 0, writer.width(), writer.height()));
    painter.end();
    return withoutDates(buffer.data());
}
