// SPDX-License-Identifier: Apache-2.0
#include "MeshFormat.h"
#include "model/bodies/BoundaryTag.h"
#include "model/reports/GamutWords.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

#include <utility>
#include <vector>

// A profile with no more than the boundary and what ICC.2 requires of each profile: description, copyright
// and media white. It has no transform.

namespace {

constexpr qsizetype headerSize = 128, entrySize = 12, countSize = 4;

/// X, Y and Z of D50 as s15Fixed16Number.
constexpr quint32 d50[] = {0x0000F6D6, 0x00010000, 0x0000D32D};

using Tag = std::pair<QByteArray, QByteArray>; // signature and content

QByteArray textTag(const QString& text)
{
    constexpr quint32 recordSize = 12, textAt = 28;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.writeRawData("mluc", 4);
    stream << quint32(0) << quint32(1) << recordSize;
    stream.writeRawData("enUS", 4);
    stream << static_cast<quint32>(2 * text.size()) << textAt;
    for (const QChar c : text)
        stream << c.unicode();
    return bytes;
}

QByteArray whiteTag()
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.writeRawData("XYZ ", 4);
    stream << quint32(0) << d50[0] << d50[1] << d50[2];
    return bytes;
}

/// Without the size of the file.
QByteArray headerOf(quint32 intent)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << quint32(0) << quint32(0) << quint32(0x05000000);
    stream.writeRawData("spacLab Lab ", 12);     // class, colour space, PCS
    for (const int part : {2000, 1, 1, 0, 0, 0}) // the same bytes each time
        stream << static_cast<quint16>(part);
    stream.writeRawData("acsp", 4);
    stream << quint32(0) << quint32(0) << quint32(0) << quint32(0) << quint64(0) << intent;
    stream << d50[0] << d50[1] << d50[2];
    return bytes.leftJustified(headerSize, '\0');
}

QByteArray profileOf(const std::vector<Tag>& tags, quint32 intent)
{
    const auto count = static_cast<quint32>(tags.size());
    QByteArray file = headerOf(intent), data;
    QDataStream table(&file, QIODevice::Append);
    table << count;
    const qsizetype dataAt = headerSize + countSize + entrySize * qsizetype(count);
    for (const auto& [signature, content] : tags) {
        table.writeRawData(signature.data(), 4);
        table << static_cast<quint32>(dataAt + data.size()) << static_cast<quint32>(content.size());
        data += content;
        data.resize((data.size() + 3) / 4 * 4, '\0'); // tags begin at multiples of four bytes
    }
    file += data;
    QDataStream start(&file, QIODevice::ReadWrite);
    start << static_cast<quint32>(file.size());
    return file;
}

} // namespace

QByteArray MeshWriters::icc(const ColoredMesh& mesh, const MeshNote& note)
{
    KVGamut::Mesh surface;
    surface.lab = mesh.lab;
    surface.triangles = mesh.triangles;
    const auto intent = static_cast<quint32>(note.report.intent);
    return profileOf({{"desc", textTag(note.line())},
                      {"cprt", textTag(QStringLiteral("No copyright, use freely"))},
                      {"wtpt", whiteTag()},
                      {"gbd" + QByteArray::number(intent), BoundaryTag::written(surface)}},
                     intent);
}
