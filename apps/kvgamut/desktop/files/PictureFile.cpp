// SPDX-License-Identifier: Apache-2.0
#include "PictureFile.h"

#include "model/export/OutputFile.h"

#include <QtCore/QBuffer>
#include <QtCore/QFileInfo>
#include <QtGui/QImageWriter>

QString PictureFile::write(const QString& file, const QImage& picture)
{
    if (picture.isNull())
        return QStringLiteral("There is no picture to save: nothing is shown, or memory does not suffice.");
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QByteArray format = QFileInfo(file).suffix().toLatin1().toUpper();
    if (format.isEmpty())
        format = "PNG";
    QImageWriter writer(&buffer, format);
    if (!writer.write(picture))
        return QStringLiteral("'%1': %2").arg(file, writer.errorString());
    return writeOutput(file, buffer.data());
}
