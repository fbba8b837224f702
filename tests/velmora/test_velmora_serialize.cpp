#include "TestProfiles.h"

#include <gtest/gtest.h>

#include <QtCore/QCborMap>
#include <QtCore/QCborValue>
#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cstring>
#include <random>

using namespace testprofiles;
using Hash = QHash<QString, QVariant>;

namespace {

const QString gamutKey = QStringLiteral("Gamut");

KVGamut::GamutObject restored(const Hash& hash)
{
    KVGamut::GamutObject gamut;
    gamut.deserialize(hash);
    return gamut;
}

bool sameFields(const KVGamut::Comparison& p, const KVGamut::Comparison& q)
{
    return std::memcmp(&p, &q, sizeof p) == 0;
}

void expectTheSame(const KVGamut::GamutObject& original, const KVGamut::GamutObject& copy, const char* how)
{
    EXPECT_EQ(copy.reason(), QString()) << how;
    EXPECT_TRUE(copy.faces() == original.faces()) << how;
    EXPECT_EQ(copy.volume(), original.volume()) << how;
    EXPECT_TRUE(copy.outline() == original.outline()) << how;
    EXPECT_EQ(copy.primaries(), original.primaries()) << how;
    EXPECT_EQ(copy.referenceLab(), original.referenceLab()) << how;
    EXPECT_EQ(copy.method(), original.method()) << how;
    EXPECT_EQ(copy.report().volumeUncertainty, original.report().volumeUncertainty) << how;
    EXPECT_EQ(copy.report().intent, original.report().intent) << how;
    EXPECT_TRUE(sameFields(copy.compare(original), original.compare(original))) << how;
    std::mt19937 random(2);
    std::uniform_real_distribution<float> any(-100.0f, 100.0f);
    for (int i = 0; i < 200; ++i) {
        const float lab[] = {any(random), any(random), any(random)};
        EXPECT_EQ(copy.isInside(lab), original.isInside(lab)) << how;
    }
}

Hash throughDataStream(const Hash& hash)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << hash;
    Hash back;
    QDataStream in(bytes);
    in >> back;
    return back;
}

Hash throughCbor(const Hash& hash)
{
    const QByteArray bytes = QCborMap::fromVariantHash(hash).toCborValue().toCbor();
    return QCborValue::fromCbor(bytes).toMap().toVariantHash();
}

Hash throughJson(const Hash& hash)
{
    const QByteArray bytes = QJsonDocument(QJsonObject::fromVariantHash(hash)).toJson();
    return QJsonDocument::fromJson(bytes).object().toVariantHash();
}

void expectRefused(const Hash& hash, const char* what)
{
    static const KVGamut::GamutObject before = gamutOf(openedFile(srgb()), 5);
    KVGamut::GamutObject gamut = before;
    gamut.deserialize(hash);
    EXPECT_FALSE(gamut.reason().isEmpty()) << what;
    EXPECT_TRUE(gamut.referenceLab().isEmpty()) << what;
    EXPECT_EQ(gamut.faceCount(), 0) << what;
}

} // namespace

TEST(Serialize, keepsEverythingThroughEveryRoad)
{
    for (const QString& path : {srgb(), printerCmyk()}) {
        const auto original = gamutOf(openedFile(path), 17, KVVMRenderAbsoluteColorimetric);
        const Hash hash = original.serialize();
        ASSERT_TRUE(hash.contains(gamutKey));
        expectTheSame(original, restored(hash), "directly");
        expectTheSame(original, restored(throughDataStream(hash)), "QDataStream");
        expectTheSame(original, restored(throughCbor(hash)), "CBOR");
        expectTheSame(original, restored(throughJson(hash)), "JSON");
    }
}

TEST(Serialize, isReadFromUnderItsOwnKeyAsWell)
{
    const auto original = gamutOf(openedFile(srgb()), 9);
    const Hash hash = original.serialize();
    expectTheSame(original, restored({{gamutKey, QVariant::fromValue(QVariantHash(hash))}}), "hash");
    QVariantMap map;
    for (auto it = hash.begin(); it != hash.end(); ++it)
        map.insert(it.key(), it.value());
    expectTheSame(original, restored({{gamutKey, map}}), "map");
    expectTheSame(original, restored(throughJson({{gamutKey, map}})), "map through JSON");
    expectTheSame(original,
                  restored(throughDataStream({{gamutKey, QVariant::fromValue(QVariantHash(hash))}})),
                  "stream");
}

TEST(Serialize, isReadBesideOtherKeys)
{
    const auto original = gamutOf(openedFile(srgb()), 9);
    Hash hash = original.serialize();
    hash.insert(QStringLiteral("ProfilePath"), QStringLiteral("/nowhere"));
    expectTheSame(original, restored(hash), "other keys");
}

TEST(Serialize, ofARestoredGamutIsTheSameAgain)
{
    const Hash hash = gamutOf(openedFile(printerCmyk()), 9).serialize();
    EXPECT_EQ(restored(hash).serialize(), hash);
}

TEST(Deserialize, refusesWhatIsNoSavedGamut)
{
    expectRefused({}, "nothing");
    expectRefused({{QStringLiteral("Other"), 1}}, "another hash");
    for (const QVariant& value :
         {QVariant(), QVariant(1), QVariant(QString()), QVariant(QStringLiteral("text")),
          QVariant(QByteArray("bytes")), QVariant(QVariantHash()), QVariant(QVariantList{1, 2})})
        expectRefused({{gamutKey, value}}, "a foreign value");
}

TEST(Deserialize, refusesAnotherVersion)
{
    Hash hash = gamutOf(openedFile(srgb()), 5).serialize();
    const QString key = QStringLiteral("GamutVersion");
    ASSERT_TRUE(hash.contains(key));
    for (const QVariant& version :
         {QVariant(0), QVariant(2), QVariant(-1), QVariant(), QVariant(QStringLiteral("new"))}) {
        hash[key] = version;
        expectRefused(hash, "version");
    }
    hash.remove(key);
    expectRefused(hash, "no version");
}

TEST(Deserialize, refusesEveryDamage)
{
    const Hash sound = gamutOf(openedFile(srgb()), 5).serialize();
    const QString text = sound.value(gamutKey).toString();
    std::mt19937 random(11);
    for (int i = 0; i < 300; ++i) {
        Hash hash = sound;
        QString changed = text;
        const auto at = static_cast<qsizetype>(random() % static_cast<unsigned>(changed.size() - 4));
        changed[at] = changed[at] == QLatin1Char('A') ? QLatin1Char('B') : QLatin1Char('A');
        hash[gamutKey] = changed;
        expectRefused(hash, "one letter changed");
        hash[gamutKey] = text.left(at);
        expectRefused(hash, "cut short");
    }
    Hash hash = sound;
    hash.remove(QStringLiteral("GamutChecksum"));
    expectRefused(hash, "no checksum");
}
