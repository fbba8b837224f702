// SPDX-License-Identifier: Apache-2.0
#include "WindowMemory.h"

#include "SettingsFile.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace {

QString memoryFileName()
{
    return QStringLiteral("window");
}

QString text(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

/// Empty if @p value is not base64.
QByteArray bytes(const QJsonValue& value)
{
    const auto decoded = QByteArray::fromBase64Encoding(
        value.toString().toLatin1(), QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? *decoded : QByteArray();
}

} // namespace

QByteArray WindowMemory::toJson() const
{
    QJsonObject json{{QStringLiteral("geometry"), text(geometry)},
                     {QStringLiteral("panels"), text(panels)},
                     {QStringLiteral("folder"), folder},
                     {QStringLiteral("annotated"), isAnnotated},
                     {QStringLiteral("reloads"), reloads}};
    if (background.isValid())
        json.insert(QStringLiteral("background"), background.name());
    return QJsonDocument(json).toJson();
}

WindowMemory WindowMemory::fromJson(const QByteArray& json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    WindowMemory memory;
    memory.geometry = bytes(object[QStringLiteral("geometry")]);
    memory.panels = bytes(object[QStringLiteral("panels")]);
    memory.folder = object[QStringLiteral("folder")].toString();
    memory.isAnnotated = object[QStringLiteral("annotated")].toBool(true);
    memory.reloads = object[QStringLiteral("reloads")].toBool(false);
    const QString background = object[QStringLiteral("background")].toString();
    if (background.startsWith(QLatin1Char('#')) && QColor::isValidColorName(background))
        memory.background = QColor(QColor(background).rgb()); // opaque
    return memory;
}

WindowMemory WindowMemory::read()
{
    return fromJson(SettingsFile::read(memoryFileName()));
}

void WindowMemory::write() const
{
    SettingsFile::write(memoryFileName(), toJson());
}
