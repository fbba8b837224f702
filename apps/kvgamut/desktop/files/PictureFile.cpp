// SPDX-License-Identifier: Apache-2.0
#include "PictureFile.h"

#include "model/export/OutputFile.h"

#include <QtCore/QBuffer>
#include <QtCore/QFileInfo>
#include <QtGui/QImageWriter>

std::optional<Problem> PictureFile::write(const QString& file, const QImage& picture)
{
    if (picture.isNull())
        return Problem(ProblemCode::NoPictureToSave);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QByteArray format = QFileInfo(file).suffix().toLatin1().toUpper();
    if (format.isEmpty())
        format = "PNG";
    QImageWriter writer(&buffer, format);
    if (!writer.write(picture))
        return Problem(ProblemCode::PictureFormatUnknown).about(file);
    return writeOutput(file, buffer.data());
}
