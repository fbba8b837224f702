// SPDX-License-Identifier: Apache-2.0
#include "BoundaryTag.h"

#include "model/inputs/InputLimits.h"
#include "model/points/PointWhite.h"
#include "model/reports/GamutWords.h"

#include <QtCore/QtEndian>

#include <bit>
#include <optional>

namespace {

// Places and sizes in a profile and in the tag, in bytes.
constexpr qsizetype pcsAt = 20, tagCountAt = 128, tagTableAt = 132, tagEntrySize = 12;
constexpr qsizetype boundaryHeaderSize = 20, valueSize = 4;
constexpr QByteArrayView boundaryType("gbd ");

struct Boundary
{
    const char* tag;
    KVVMRenderType intent;
};

/// In the order of preference.
constexpr Boundary boundaries[] = {{"gbd3", KVVMRenderAbsoluteColorimetric},
                                   {"gbd1", KVVMRenderRelativeColorimetric},
                                   {"gbd0", KVVMRenderPerceptual},
                                   {"gbd2", KVVMRenderSaturation}};

template <typename Number>
Number numberAt(QByteArrayView bytes, qsizetype place)
{
    return qFromBigEndian<Number>(bytes.data() + place);
}

float floatAt(QByteArrayView bytes, qsizetype place)
{
    return std::bit_cast<float>(numberAt<quint32>(bytes, place));
}

/// The content of the tag @p signature; nullopt if there is none, empty if it is not within the file.
std::optional<QByteArrayView> contentOf(const QByteArray& profile, QByteArrayView signature)
{
    if (profile.size() < tagTableAt)
        return {};
    const auto count = numberAt<quint32>(profile, tagCountAt);
    for (quint32 i = 0; i < count; ++i) {
        const qsizetype entry = tagTableAt + qsizetype(i) * tagEntrySize;
        if (entry + tagEntrySize > profile.size())
            return {};
        if (QByteArrayView(profile).sliced(entry, signature.size()) != signature)
            continue;
        const auto offset = qsizetype(numberAt<quint32>(profile, entry + 4));
        const auto size = qsizetype(numberAt<quint32>(profile, entry + 8));
        return offset <= profile.size() && size <= profile.size() - offset
                   ? QByteArrayView(profile).sliced(offset, size)
                   : QByteArrayView();
    }
    return {};
}

/// The surface, with the coordinates of the profile.
Result<KVGamut::Mesh> meshOf(QByteArrayView tag, const char* name)
{
    const Problem damaged(ProblemCode::BoundaryDamaged, {QLatin1String(name)});
    if (tag.size() < boundaryHeaderSize || !tag.startsWith(boundaryType))
        return failure(damaged);
    const auto pcsChannels = numberAt<quint16>(tag, 8), deviceChannels = numberAt<quint16>(tag, 10);
    const auto vertexCount = numberAt<quint32>(tag, 12), faceCount = numberAt<quint32>(tag, 16);
    const quint64 needed = quint64(faceCount) * 3 + quint64(vertexCount) * (pcsChannels + deviceChannels);
    if (pcsChannels != 3 || needed > quint64(tag.size() - boundaryHeaderSize) / valueSize)
        return failure(damaged);
    if (faceCount > quint64(InputLimits::maxFaces))
        return failure(ProblemCode::TooManyFaces, {QString::number(InputLimits::maxFaces)});
    KVGamut::Mesh mesh;
    mesh.triangles.resize(faceCount);
    qsizetype place = boundaryHeaderSize;
    for (KVGamut::Mesh::Triangle& triangle : mesh.triangles)
        for (int& vertex : triangle) {
            vertex = static_cast<int>(numberAt<quint32>(tag, place)); // the engine refuses negative ones
            place += valueSize;
        }
    mesh.lab.resize(vertexCount);
    for (KVGamut::LabPoint& point : mesh.lab) {
        point = {floatAt(tag, place), floatAt(tag, place + valueSize), floatAt(tag, place + 2 * valueSize)};
        place += 3 * valueSize;
    }
    return mesh;
}

Result<void> toLab(KVGamut::Mesh& mesh, QByteArrayView pcs)
{
    if (pcs == QByteArrayView("Lab "))
        return {};
    if (pcs != QByteArrayView("XYZ "))
        return failure(ProblemCode::SurfaceSpaceUnknown, {QString::fromLatin1(pcs)});
    for (KVGamut::LabPoint& point : mesh.lab)
        point = PointWhite::fromXyz({point.L, point.a, point.b}, 1.0, QStringLiteral("D50"));
    return {};
}

Result<GivenGamut> gamutOf(const QByteArray& profile, QByteArrayView tag, const Boundary& boundary,
                           KVCompletionProtocolPtr& task)
{
    Result<KVGamut::Mesh> mesh = meshOf(tag, boundary.tag);
    if (!mesh)
        return failure(mesh.error());
    if (const Result<void> done = toLab(*mesh, QByteArrayView(profile).sliced(pcsAt, 4)); !done)
        return failure(done.error());
    GivenGamut given{
        {},
        QStringLiteral("gamut boundary of a profile (tag %1, %2)")
            .arg(QLatin1String(boundary.tag), GamutWords::intent(boundary.intent)),
        {QStringLiteral("The volume is that of the surface in the tag. Its distance to the colours of "
                        "the device is not known.")}};
    if (!given.gamut.initWithSurface(*mesh, 0.0, &task))
        return failure(Problem(given.gamut.problem().value_or(KVProblem())));
    return given;
}

template <typename Number>
void append(QByteArray& bytes, Number number)
{
    const Number big = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char*>(&big), sizeof(big));
}

} // namespace

Result<GivenGamut> BoundaryTag::read(const QByteArray& profile, KVCompletionProtocolPtr task)
{
    for (const Boundary& boundary : boundaries)
        if (const auto tag = contentOf(profile, boundary.tag))
            return gamutOf(profile, *tag, boundary, task);
    return failure(ProblemCode::BoundaryMissing);
}

QByteArray BoundaryTag::written(const KVGamut::Mesh& surface)
{
    QByteArray bytes = boundaryType.toByteArray();
    append(bytes, quint32(0));
    append(bytes, quint16(3));
    append(bytes, quint16(0)); // no device values
    append(bytes, static_cast<quint32>(surface.lab.size()));
    append(bytes, static_cast<quint32>(surface.triangles.size()));
    for (const auto& [a, b, c] : surface.triangles) // clockwise in the tag
        for (const int vertex : {a, c, b})
            append(bytes, static_cast<quint32>(vertex));
    for (const KVGamut::LabPoint& point : surface.lab)
        for (const float value : {point.L, point.a, point.b})
            append(bytes, std::bit_cast<quint32>(value));
    return bytes;
}
