// SPDX-License-Identifier: Apache-2.0
#include "PointText.h"

#include <QtCore/QString>
#include <QtCore/QStringConverter>

PointText PointText::of(const QByteArray& content)
{
    const auto marked = QStringConverter::encodingForData(content);
    if (marked && *marked != QStringConverter::Utf8)
        return {QString(QStringDecoder(*marked)(content)).toUtf8(), {}};
    if (content.isValidUtf8())
        return {marked ? content.mid(3) : content, {}};
    return {QString::fromLatin1(content).toUtf8(), Problem(ProblemCode::TextTakenAsLatin1)};
}
