// SPDX-License-Identifier: Apache-2.0
#include "SliceFile.h"

#include "SliceDrawing.h"
#include "model/pictures/PictureFile.h"
#include "model/pictures/VectorFile.h"

#include <QtGui/QPainter>

namespace {

VectorFile::Page pageOf(const SliceDrawing& drawing, const QSize& size)
{
    return {size, drawing.title(), QStringLiteral("kvgamut")};
}

VectorFile::Paint paintOf(const SliceDrawing& drawing)
{
    return [&drawing](QPainter& painter, const QRectF& area) { drawing.paint(painter, area); };
}

} // namespace

QByteArray SliceFile::png(const SliceDrawing& drawing, const QSize& size)
{
    QImage picture(size, QImage::Format_RGB32);
    QPainter painter(&picture);
    drawing.paint(painter, QRectF(QPointF(), size));
    painter.end();
    return PictureFile::bytes(picture, PictureFormat::Png, {}).value_or(QByteArray());
}

QByteArray SliceFile::svg(const SliceDrawing& drawing, const QSize& size)
{
    return VectorFile::svg(pageOf(drawing, size), paintOf(drawing));
}

QByteArray SliceFile::pdf(const SliceDrawing& drawing, const QSize& size)
{
    return VectorFile::pdf(pageOf(drawing, size), paintOf(drawing));
}
