// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutQueries.h"

#include <QtCore/QByteArray>
#include <QtCore/QCborMap>
#include <QtCore/QCborValue>
#include <QtCore/QCryptographicHash>
#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <array>
#include <cstddef>
#include <cstdint>

/// What the fuzzers, and the regression test of their findings, do with an input.
namespace kvfuzz {

/// Treats any bytes as an ICC profile. Intent, black-point compensation and grid are taken from reserved
/// bytes of the header, so that an input is also a profile file.
inline void computeAndQuery(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t reservedAt = 120;
    const KVProfilePtr profile(KVProfileCreateWithData(data, static_cast<int>(size)), KVProfileRelease);
    require(!profile == KVProfileProblem().has_value(), "there is either a profile or a problem");
    if (!profile)
        return;
    constexpr std::array grids{5, 3, 4, 9};
    const std::uint8_t* options = data + reservedAt;
    KVGamut::GamutObject gamut;
    const auto intent = static_cast<KVVMRenderType>(options[0] % 4);
    const bool compensated = options[1] % 2 != 0;
    const int grid = grids[options[3] % grids.size()];
    const auto adaptation = static_cast<KVGamut::Adaptation>(options[4] % 3);
    const bool done = adaptation == KVGamut::Adaptation::Full
                          ? gamut.init(profile, intent, compensated, options[2] % 8 != 7, 40.0f, grid,
                                       options[2] % 3, nullptr)
                          : gamut.init(profile, {intent, compensated, grid, adaptation});
    require(done == (gamut.faceCount() > 0), "init() says whether there is a gamut");
    queryAll(gamut);
}

using Hash = QHash<QString, QVariant>;

inline Hash hashAround(const QByteArray& body, int version)
{
    return {{QStringLiteral("Gamut"), QString::fromLatin1(body.toBase64())},
            {QStringLiteral("GamutVersion"), version},
            {QStringLiteral("GamutChecksum"),
             QString::fromLatin1(QCryptographicHash::hash(body, QCryptographicHash::Sha256).toHex())}};
}

inline Hash hashFrom(std::uint8_t format, const QByteArray& bytes)
{
    switch (format % 4) {
    case 1: {
        Hash hash;
        QDataStream stream(bytes);
        stream >> hash;
        return stream.status() == QDataStream::Ok ? hash : Hash();
    }
    case 2:
        return QCborValue::fromCbor(bytes).toMap().toVariantHash();
    case 3:
        return QJsonDocument::fromJson(bytes).object().toVariantHash();
    default:
        return hashAround(bytes, 1 + format / 4 % 2);
    }
}

/// Treats any bytes as a saved gamut; the first byte selects the format, and the version of a packed body.
inline Hash savedGamutFrom(const std::uint8_t* data, std::size_t size)
{
    if (size < 1)
        return {};
    return hashFrom(data[0],
                    QByteArray(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size - 1)));
}

inline void restoreAndQuery(const Hash& hash)
{
    KVGamut::GamutObject gamut;
    gamut.deserialize(hash);
    queryAll(gamut);
    if (gamut.faceCount() == 0)
        return;
    KVGamut::GamutObject again;
    again.deserialize(gamut.serialize());
    require(again.faces() == gamut.faces() && again.volume() == gamut.volume(),
            "what was restored can be saved and restored again");
}

} // namespace kvfuzz
