// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSize>
#include <QtCore/QString>

#include <functional>

class QPainter;
class QRectF;

/// Writes what a painter draws to an SVG or a PDF file. Equal drawings give equal bytes. Text needs a
/// QGuiApplication, which may use the offscreen platform.
namespace VectorFile {

struct Page
{
    QSize size;           ///< in pixels
    QString title;        ///< of the document
    QString description;  ///< of an SVG; a PDF names it as its creator
    int dotsPerInch = 96; ///< pixels per inch of a PDF page
};

/// Fills @p area with the drawing.
using Paint = std::function<void(QPainter& painter, const QRectF& area)>;

QByteArray svg(const Page& page, const Paint& paint);
QByteArray pdf(const Page& page, const Paint& paint);

} // namespace VectorFile
