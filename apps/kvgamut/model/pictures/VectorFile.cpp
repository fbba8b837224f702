// SPDX-License-Identifier: Apache-2.0
#include "VectorFile.h"

#include <QtCore/QBuffer>
#include <QtCore/QHashFunctions>
#include <QtCore/QScopeGuard>
#include <QtCore/QUuid>
#include <QtGui/QPageSize>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>
#include <QtSvg/QSvgGenerator>

namespace {

constexpr int svgResolution = 96; // dots per inch, as CSS defines a pixel
constexpr double pointsPerInch = 72.0;
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

// Some versions of Qt write the texts of an SVG unchanged, others escape them.
const QString titleMark = QStringLiteral("kvTitle");
const QString descriptionMark = QStringLiteral("kvDescription");

/// Replaces the first @p mark, which is in the head of the file, by @p text.
void replaceMark(QByteArray& svg, const QString& mark, const QString& text)
{
    const QByteArray name = mark.toLatin1();
    svg.replace(svg.indexOf(name), name.size(), text.toHtmlEscaped().toUtf8());
}

} // namespace

QByteArray VectorFile::svg(const Page& page, const Paint& paint)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(svgResolution);
    generator.setSize(page.size);
    generator.setViewBox(QRect(QPoint(), page.size));
    generator.setTitle(titleMark);
    generator.setDescription(descriptionMark);
    QPainter painter(&generator);
    paint(painter, QRectF(QPointF(), page.size));
    painter.end();
    QByteArray svg = buffer.data();
    replaceMark(svg, titleMark, page.title);
    replaceMark(svg, descriptionMark, page.description);
    return svg;
}

QByteArray VectorFile::pdf(const Page& page, const Paint& paint)
{
    // Qt writes the fonts of a PDF in hash order, which differs between processes with random hash seeds.
    QHashSeed::setDeterministicGlobalSeed();
    const auto random = qScopeGuard(&QHashSeed::resetRandomGlobalSeed);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(pageResolution);
    writer.setPageSize(QPageSize(QSizeF(page.size) * (pointsPerInch / page.dotsPerInch), QPageSize::Point,
                                 QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    writer.setTitle(page.title);
    writer.setCreator(page.description);
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    writer.setDocumentId(QUuid()); // random by default
#endif
    QPainter painter(&writer);
    paint(painter, QRectF(0, 0, writer.width(), writer.height()));
    painter.end();
    return withoutDates(buffer.data());
}
