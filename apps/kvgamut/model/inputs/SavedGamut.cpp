// SPDX-License-Identifier: Apache-2.0
#include "SavedGamut.h"

#include <QtCore/QCborArray>
#include <QtCore/QCborMap>
#include <QtCore/QCborValue>

namespace {

constexpr int formatVersion = 1;
const QLatin1String format("KVGamut");
const QLatin1String gamutKey("gamut");
const QLatin1String profileKey("profile");

// Tag 55799, an array of three, a text of seven bytes: the start of every file.
constexpr QByteArrayView marker("\xD9\xD9\xF7\x83\x67"
                                "KVGamut");
static_assert(marker.size() == SavedGamut::markerSize);

} // namespace

QByteArray SavedGamut::bytes() const
{
    // a sorted map, because the order of a hash changes from run to run
    QVariantMap sorted;
    for (auto it = gamut.cbegin(); it != gamut.cend(); ++it)
        sorted.insert(it.key(), it.value());
    const QCborMap content{{gamutKey, QCborMap::fromVariantMap(sorted)}, {profileKey, profile}};
    return QCborValue(QCborKnownTags::Signature, QCborArray{format, formatVersion, content}).toCbor();
}

bool SavedGamut::isSavedGamut(const QByteArray& start)
{
    return start.startsWith(marker);
}

Result<SavedGamut> SavedGamut::read(const QByteArray& bytes)
{
    if (!isSavedGamut(bytes))
        return failure(KVProblemCode::NotASavedGamut);
    QCborParserError error;
    const QCborArray parts = QCborValue::fromCbor(bytes, &error).taggedValue().toArray();
    if (error.error != QCborError::NoError)
        return failure(Problem(KVProblemCode::SavedGamutDamaged)
                           .because(Problem(ProblemCode::OtherReason, {error.errorString()})));
    if (parts.at(1).toInteger() != formatVersion)
        return failure(KVProblemCode::UnknownSavedVersion, {parts.at(1).toVariant().toString()});
    const QCborMap content = parts.at(2).toMap();
    SavedGamut result;
    result.gamut = content.value(gamutKey).toMap().toVariantHash();
    result.profile = content.value(profileKey).toString();
    return result;
}
