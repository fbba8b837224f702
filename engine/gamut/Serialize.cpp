// SPDX-License-Identifier: Apache-2.0
#include "Serialize.h"

#include <engine/base/Parts.h>
#include <engine/mesh/MeshVolume.h>
#include <engine/mesh/SelfIntersection.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

#include <algorithm>

namespace velmora {
namespace {

constexpr int formatVersion = 2;
constexpr int firstVersion = 1;       // without KVGamut::Conversion, and without the volume
constexpr quint32 magic = 0x4b56474d; // "KVGM"
constexpr QLatin1String gamutKey("Gamut");
constexpr QLatin1String versionKey("GamutVersion");
constexpr QLatin1String checksumKey("GamutChecksum");

constexpr int maxChannels = 15;

// Incomplete if the task is cancelled.
QString checksumOf(const QByteArray& bytes, const Task& task)
{
    constexpr qsizetype bytesBetweenChecks = qsizetype(1) << 16;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (qsizetype at = 0; at < bytes.size() && !task.isCancelled(); at += bytesBetweenChecks)
        hash.addData(QByteArrayView(bytes).sliced(at, std::min(bytesBetweenChecks, bytes.size() - at)));
    return QString::fromLatin1(hash.result().toHex());
}

QByteArray bytesOf(QByteArrayView text)
{
    return text.toByteArray();
}
QByteArray bytesOf(QStringView text)
{
    return text.toUtf8();
}

// The bytes of a text in base64; nullopt if it is not valid, or if the task is cancelled.
template <typename TextView>
std::optional<QByteArray> decoded(TextView text, const Task& task)
{
    constexpr qsizetype charactersBetweenChecks = qsizetype(1) << 16; // a multiple of four
    QByteArray bytes;
    bytes.reserve(text.size() / 4 * 3);
    for (qsizetype at = 0; at < text.size(); at += charactersBetweenChecks) {
        const qsizetype count = std::min(charactersBetweenChecks, text.size() - at);
        const auto piece = QByteArray::fromBase64Encoding(bytesOf(text.sliced(at, count)),
                                                          QByteArray::AbortOnBase64DecodingErrors);
        const bool isLast = at + count == text.size();
        const bool isComplete = isLast || (*piece).size() == count / 4 * 3; // without padding in the middle
        if (!piece || !isComplete || task.isCancelled())
            return std::nullopt;
        bytes.append(*piece);
    }
    return bytes;
}

QDataStream& operator<<(QDataStream& stream, const LabPoint& v)
{
    return stream << v.L << v.a << v.b;
}

QDataStream& operator>>(QDataStream& stream, LabPoint& v)
{
    return stream >> v.L >> v.a >> v.b;
}

QDataStream& operator<<(QDataStream& stream, const KVGamut::CodePoints& v)
{
    return stream << qint32(v.primaries) << qint32(v.transfer) << qint32(v.matrix) << v.fullRange;
}

QDataStream& operator>>(QDataStream& stream, KVGamut::CodePoints& v)
{
    qint32 primaries = 0, transfer = 0, matrix = 0;
    stream >> primaries >> transfer >> matrix >> v.fullRange;
    v = {primaries, transfer, matrix, v.fullRange};
    return stream;
}

template <typename T>
QDataStream& operator<<(QDataStream& stream, const std::optional<T>& value)
{
    stream << value.has_value();
    return value ? stream << *value : stream;
}

template <typename T>
QDataStream& operator>>(QDataStream& stream, std::optional<T>& value)
{
    bool isPresent = false;
    stream >> isPresent;
    return isPresent ? stream >> value.emplace() : stream;
}

QDataStream& operator<<(QDataStream& stream, const KVGamut::Conversion& v)
{
    return stream << v.table.toLatin1() << v.tableIsFallback << qint32(v.adaptation)
                  << qint32(v.adaptationSource) << v.mediaWhite << v.mappedBlack << v.cicp;
}

// Whether @p v is then one of the enumeration.
template <typename Enum>
bool readEnum(QDataStream& stream, Enum& v, Enum last)
{
    qint32 number = 0;
    stream >> number;
    v = static_cast<Enum>(number);
    return number >= 0 && number <= static_cast<qint32>(last);
}

bool readConversion(QDataStream& stream, KVGamut::Conversion& v)
{
    constexpr qsizetype maxNameLength = 6; // "matrix"
    QByteArray table;
    stream >> table >> v.tableIsFallback;
    v.table = QString::fromLatin1(table);
    const auto isPlain = [](char c) {
        return (c >= '0' && c <= '9') || ((c | 32) >= 'a' && (c | 32) <= 'z');
    };
    if (table.size() > maxNameLength || !std::all_of(table.begin(), table.end(), isPlain) ||
        !readEnum(stream, v.adaptation, KVGamut::Adaptation::NoneD65) ||
        !readEnum(stream, v.adaptationSource, KVGamut::AdaptationSource::MediaWhite))
        return false;
    stream >> v.mediaWhite >> v.mappedBlack >> v.cicp;
    return true;
}

void prepare(QDataStream& stream)
{
    stream.setVersion(QDataStream::Qt_6_0);
    stream.setByteOrder(QDataStream::LittleEndian);
}

QByteArray packed(const GamutRecord& record)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    prepare(stream);
    stream << magic << qint32(record.method) << qint32(record.intent) << record.blackPointCompensation
           << record.decorated << qint32(record.gridPoints);
    stream.setFloatingPointPrecision(QDataStream::DoublePrecision);
    constexpr double seconds = 0.0; // the time differs from run to run, but the bytes of a gamut must not
    stream << record.foldShare << record.volume << record.volumeUncertainty << seconds;
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    stream << record.white << record.black << record.origin << record.conversion;
    stream << quint32(record.primaries.size());
    for (const Ramp& ramp : record.primaries) {
        stream << quint32(ramp.size());
        for (const LabPoint& v : ramp)
            stream << v;
    }
    stream << qint32(record.mesh.channels) << quint32(record.mesh.lab.size())
           << quint32(record.mesh.triangles.size());
    for (const LabPoint& v : record.mesh.lab)
        stream << v;
    for (float value : record.mesh.device)
        stream << value;
    for (const Triangle& t : record.mesh.triangles)
        stream << qint32(t[0]) << qint32(t[1]) << qint32(t[2]);
    return bytes;
}

// Checks a count against the remaining bytes, before memory is allocated for it.
bool fits(const QDataStream& stream, quint64 count, quint64 size)
{
    return count <= static_cast<quint64>(stream.device()->bytesAvailable()) / size;
}

// Method, settings and numbers, up to the end points.
bool readHead(QDataStream& stream, GamutRecord& record, int version)
{
    quint32 start = 0;
    qint32 method = 0, intent = 0, gridPoints = 0;
    stream >> start >> method >> intent >> record.blackPointCompensation >> record.decorated >> gridPoints;
    if (start != magic || method <= 0 || method > qint32(KVGamut::Method::ConvexHull) || intent < 0 ||
        intent > 3)
        return false;
    record.method = static_cast<KVGamut::Method>(method);
    record.intent = static_cast<KVVMRenderType>(intent);
    record.gridPoints = gridPoints;
    stream.setFloatingPointPrecision(QDataStream::DoublePrecision);
    stream >> record.foldShare;
    if (version != firstVersion)
        stream >> record.volume;
    stream >> record.volumeUncertainty >> record.seconds;
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    stream >> record.white >> record.black >> record.origin;
    return version == firstVersion || readConversion(stream, record.conversion);
}

bool readPrimaries(QDataStream& stream, GamutRecord& record)
{
    quint32 groups = 0;
    stream >> groups;
    if (groups > maxChannels)
        return false;
    for (quint32 g = 0; g < groups; ++g) {
        quint32 count = 0;
        stream >> count;
        if (!fits(stream, count, 12))
            return false;
        Ramp ramp(count);
        for (LabPoint& v : ramp)
            stream >> v;
        record.primaries.push_back(std::move(ramp));
    }
    return true;
}

// Whether a surface has no device values.
bool isGiven(KVGamut::Method method)
{
    return method == KVGamut::Method::GivenSurface || method == KVGamut::Method::ConvexHull;
}

// The rest of the stream, which must have exactly the size of the mesh.
bool readMesh(QDataStream& stream, GamutRecord& record, const Task& task)
{
    Mesh& mesh = record.mesh;
    qint32 channels = 0;
    quint32 vertices = 0, triangles = 0;
    stream >> channels >> vertices >> triangles;
    if (isGiven(record.method) ? channels != 0 : channels < 3 || channels > maxChannels)
        return false;
    const quint64 vertexSize = 12 + 4 * static_cast<quint64>(channels);
    if (static_cast<quint64>(stream.device()->bytesAvailable()) !=
        vertices * vertexSize + quint64(triangles) * 12)
        return false;
    mesh.channels = channels;
    growInParts(mesh.lab, vertices, {}, task);
    for (LabPoint& v : mesh.lab) {
        if (task.isCancelled())
            return false;
        stream >> v;
    }
    growInParts(mesh.device, static_cast<std::size_t>(vertices) * static_cast<std::size_t>(channels), 0.0f,
                task);
    for (float& value : mesh.device) {
        if (task.isCancelled())
            return false;
        stream >> value;
    }
    growInParts(mesh.triangles, triangles, {}, task);
    for (Triangle& t : mesh.triangles) {
        if (task.isCancelled())
            return false;
        for (int& v : t) {
            qint32 index = 0;
            stream >> index;
            v = index;
        }
    }
    return true;
}

bool unpack(const QByteArray& bytes, GamutRecord& record, int version, const Task& task)
{
    QDataStream stream(bytes);
    prepare(stream);
    return readHead(stream, record, version) && readPrimaries(stream, record) &&
           readMesh(stream, record, task) && stream.status() == QDataStream::Ok;
}

bool valuesAreValid(const GamutRecord& record, const Task& task)
{
    const auto valid = [](const LabPoint& v) { return isFinite(toVec3(v)); };
    const KVGamut::Conversion& conversion = record.conversion;
    bool all = valid(record.white) && valid(record.black) && valid(record.origin) &&
               valid(conversion.mediaWhite.value_or(LabPoint())) &&
               valid(conversion.mappedBlack.value_or(LabPoint()));
    for (const Ramp& ramp : record.primaries)
        all = all && std::all_of(ramp.begin(), ramp.end(), valid);
    const std::vector<float>& device = record.mesh.device;
    forEachIndex(device.size(), task, [&](std::size_t i) { all = all && std::isfinite(device[i]); });
    return all && std::isfinite(record.foldShare) && std::isfinite(record.volume) &&
           std::isfinite(record.volumeUncertainty) && std::isfinite(record.seconds);
}

// The values of the three keys.
struct Fields
{
    QVariant text;
    QVariant version;
    QVariant checksum;
};

template <typename Map>
Fields fieldsOf(const Map& map)
{
    return {
        .text = map.value(gamutKey), .version = map.value(versionKey), .checksum = map.value(checksumKey)};
}

// The whole hash may also be stored as the value of its own key "Gamut"; JSON and CBOR make a map of it.
Fields innermostFields(const QHash<QString, QVariant>& hash)
{
    Fields fields = fieldsOf(hash);
    switch (fields.text.metaType().id()) {
    case QMetaType::QVariantHash:
        return fieldsOf(fields.text.toHash());
    case QMetaType::QVariantMap:
        return fieldsOf(fields.text.toMap());
    default:
        return fields;
    }
}

Result<void> checkSavedSurface(const Mesh& mesh, const Task& task)
{
    if (auto checked = checkSurface(mesh, task); !checked)
        return checked;
    const std::optional<bool> intersects = selfIntersects(mesh, task);
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    if (!intersects)
        return failure(KVProblemCode::SavedGamutTooClose);
    if (*intersects)
        return failure(KVProblemCode::SavedGamutSelfIntersects);
    return {};
}

} // namespace

QHash<QString, QVariant> serialized(const GamutRecord& record)
{
    const QByteArray bytes = packed(record);
    return {{gamutKey, QString::fromLatin1(bytes.toBase64())},
            {versionKey, formatVersion},
            {checksumKey, checksumOf(bytes, {})}};
}

namespace {

// The volume of the device's colours is near that of the surface; with very few nodes it is only similar.
bool completeVolume(GamutRecord& record, int version, const Task& task)
{
    constexpr double maxDifference = 0.9;
    const double ofSurface = signedVolume(record.mesh, task);
    if (version == firstVersion)
        record.volume = ofSurface;
    return std::abs(record.volume - ofSurface) <= maxDifference * std::max(record.volume, ofSurface);
}

Result<GamutRecord> checkedRecord(const Fields& fields, int version, const Task& task)
{
    const auto bytes = fields.text.metaType().id() == QMetaType::QString
                           ? decoded(QStringView(fields.text.toString()), task)
                           : decoded(QByteArrayView(fields.text.toByteArray()), task);
    if (!bytes || checksumOf(*bytes, task) != fields.checksum.toString())
        return failure(KVProblemCode::SavedGamutDamaged);
    GamutRecord record;
    if (!unpack(*bytes, record, version, task) || !valuesAreValid(record, task))
        return failure(KVProblemCode::SavedGamutInvalidValues);
    if (const auto checked = checkSavedSurface(record.mesh, task); !checked)
        return failure(checked);
    if (!completeVolume(record, version, task))
        return failure(KVProblemCode::SavedGamutInvalidValues);
    return record;
}

} // namespace

Result<GamutRecord> deserialized(const QHash<QString, QVariant>& hash, const Task& task)
{
    const Fields fields = innermostFields(hash);
    const int type = fields.text.metaType().id();
    if (type != QMetaType::QString && type != QMetaType::QByteArray)
        return failure(KVProblemCode::NotASavedGamut);
    bool isNumber = false;
    const int version = fields.version.toInt(&isNumber);
    if (version < firstVersion || version > formatVersion || !isNumber)
        return failure(KVProblemCode::UnknownSavedVersion, {fields.version.toString()});
    auto record = checkedRecord(fields, version, task);
    if (task.isCancelled()) // an incomplete step fails for some other reason
        return failure(KVProblemCode::Cancelled);
    return record;
}

} // namespace velmora
