// SPDX-License-Identifier: Apache-2.0
#include "Problems.h"
#include "TestProfiles.h"

#include <engine/gamut/GamutData.h>
#include <engine/gamut/Serialize.h>
#include <engine/mesh/MeshVolume.h>

#include <gtest/gtest.h>

#include <QtCore/QCborMap>
#include <QtCore/QCborValue>
#include <QtCore/QCryptographicHash>
#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

using namespace testprofiles;
using KVGamut::LabPoint;
using KVGamut::Mesh;
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
    EXPECT_EQ(copy.problem(), std::nullopt) << how;
    EXPECT_TRUE(copy.faces() == original.faces()) << how;
    EXPECT_EQ(copy.volume(), original.volume()) << how;
    EXPECT_TRUE(copy.outline() == original.outline()) << how;
    EXPECT_EQ(copy.primaries(), original.primaries()) << how;
    EXPECT_EQ(copy.referenceLab(), original.referenceLab()) << how;
    EXPECT_EQ(copy.method(), original.method()) << how;
    EXPECT_EQ(copy.report().volumeUncertainty, original.report().volumeUncertainty) << how;
    EXPECT_EQ(copy.report().intent, original.report().intent) << how;
    EXPECT_TRUE(copy.report().conversion == original.report().conversion) << how;
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

void expectRefused(const Hash& hash, const KVProblem& problem, const char* what)
{
    static const KVGamut::GamutObject before = gamutOf(openedFile(srgb()), 5);
    KVGamut::GamutObject gamut = before;
    gamut.deserialize(hash);
    EXPECT_EQ(gamut.problem(), problem) << what;
    EXPECT_TRUE(gamut.referenceLab().isEmpty()) << what;
    EXPECT_EQ(gamut.faceCount(), 0) << what;
}

KVProblem unknownVersion(const QString& version)
{
    return {KVProblemCode::UnknownSavedVersion, QStringList(version), {}};
}

} // namespace

TEST(Serialize, keepsEverythingThroughEveryFormat)
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

TEST(Serialize, keepsHowTheColoursWereObtained)
{
    for (const auto intent : {KVVMRenderRelativeColorimetric, KVVMRenderAbsoluteColorimetric}) {
        KVGamut::GamutObject original;
        const KVGamut::Settings settings{intent, true, 5, KVGamut::Adaptation::None};
        ASSERT_TRUE(original.init(openedFile(printerCmyk()), settings));
        const KVGamut::Conversion conversion = original.report().conversion;
        ASSERT_EQ(conversion.mappedBlack.has_value(), intent == KVVMRenderRelativeColorimetric);
        ASSERT_TRUE(conversion.mediaWhite);
        EXPECT_TRUE(restored(original.serialize()).report().conversion == conversion);
    }
}

TEST(Serialize, isAlsoReadFromUnderItsOwnKey)
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

TEST(Serialize, ignoresOtherKeys)
{
    const auto original = gamutOf(openedFile(srgb()), 9);
    Hash hash = original.serialize();
    hash.insert(QStringLiteral("ProfilePath"), QStringLiteral("/nowhere"));
    expectTheSame(original, restored(hash), "other keys");
}

TEST(Serialize, ofARestoredGamutIsEqual)
{
    const Hash hash = gamutOf(openedFile(printerCmyk()), 9).serialize();
    EXPECT_EQ(restored(hash).serialize(), hash);
}

TEST(Serialize, isTheSameInEachRun)
{
    for (const QString& path : {srgb(), printerCmyk()})
        EXPECT_EQ(gamutOf(openedFile(path), 9).serialize(), gamutOf(openedFile(path), 9).serialize());
}

TEST(Deserialize, refusesForeignHashes)
{
    const KVProblem notSaved{KVProblemCode::NotASavedGamut, {}, {}};
    expectRefused({}, notSaved, "nothing");
    expectRefused({{QStringLiteral("Other"), 1}}, notSaved, "another hash");
    for (const QVariant& value :
         {QVariant(), QVariant(1), QVariant(QVariantHash()), QVariant(QVariantList{1, 2})})
        expectRefused({{gamutKey, value}}, notSaved, "a foreign value");
    for (const QVariant& value :
         {QVariant(QString()), QVariant(QStringLiteral("text")), QVariant(QByteArray("bytes"))})
        expectRefused({{gamutKey, value}}, unknownVersion({}), "a text without a version");
}

TEST(Deserialize, refusesOtherVersions)
{
    Hash hash = gamutOf(openedFile(srgb()), 5).serialize();
    const QString key = QStringLiteral("GamutVersion");
    ASSERT_TRUE(hash.contains(key));
    for (const QVariant& version :
         {QVariant(0), QVariant(3), QVariant(-1), QVariant(), QVariant(QStringLiteral("new"))}) {
        hash[key] = version;
        expectRefused(hash, unknownVersion(version.toString()), "version");
    }
    hash.remove(key);
    expectRefused(hash, unknownVersion({}), "no version");
}

TEST(Deserialize, refusesEveryDamage)
{
    const KVProblem damaged{KVProblemCode::SavedGamutDamaged, {}, {}};
    const Hash sound = gamutOf(openedFile(srgb()), 5).serialize();
    const QString text = sound.value(gamutKey).toString();
    std::mt19937 random(11);
    for (int i = 0; i < 300; ++i) {
        Hash hash = sound;
        QString changed = text;
        const auto at = static_cast<qsizetype>(random() % static_cast<unsigned>(changed.size() - 4));
        changed[at] = changed[at] == QLatin1Char('A') ? QLatin1Char('B') : QLatin1Char('A');
        hash[gamutKey] = changed;
        expectRefused(hash, damaged, "one letter changed");
        hash[gamutKey] = text.left(at);
        expectRefused(hash, damaged, "cut short");
    }
    Hash hash = sound;
    hash.remove(QStringLiteral("GamutChecksum"));
    expectRefused(hash, damaged, "no checksum");
}

// --- Surfaces that no computation returns, with a matching checksum --------------------------------

namespace {

Hash hashOf(Mesh mesh, double volume)
{
    velmora::GamutRecord record;
    record.method = KVGamut::Method::DeviceMesh;
    record.mesh = std::move(mesh);
    record.mesh.channels = 3;
    record.mesh.device.assign(record.mesh.lab.size() * 3, 0.5f);
    record.volume = volume;
    return velmora::serialized(record);
}

// A box from its lowest corner to its highest.
void addBox(Mesh& mesh, LabPoint low, LabPoint high)
{
    const int base = static_cast<int>(mesh.lab.size());
    for (int i = 0; i < 8; ++i)
        mesh.lab.push_back({i & 4 ? high.L : low.L, i & 2 ? high.a : low.a, i & 1 ? high.b : low.b});
    constexpr int faces[12][3] = {{0, 1, 3}, {0, 3, 2}, {4, 6, 7}, {4, 7, 5}, {0, 4, 5}, {0, 5, 1},
                                  {2, 3, 7}, {2, 7, 6}, {0, 2, 6}, {0, 6, 4}, {1, 5, 7}, {1, 7, 3}};
    for (const auto& f : faces)
        mesh.triangles.push_back({base + f[0], base + f[1], base + f[2]});
    if (velmora::signedVolume(mesh) < 0.0)
        velmora::flip(mesh);
}

} // namespace

TEST(Deserialize, refusesASelfIntersectingSurface)
{
    Mesh apart;
    addBox(apart, {10, 0, 0}, {30, 20, 20});
    addBox(apart, {50, 0, 0}, {70, 20, 20});
    EXPECT_EQ(restored(hashOf(apart, velmora::signedVolume(apart))).problem(), std::nullopt);
    EXPECT_EQ(restored(hashOf(apart, velmora::signedVolume(apart))).faceCount(), 24);

    Mesh crossed;
    addBox(crossed, {10, 0, 0}, {30, 20, 20});
    addBox(crossed, {20, 5, 5}, {40, 25, 25});
    expectRefused(hashOf(crossed, velmora::signedVolume(crossed)),
                  {KVProblemCode::SavedGamutSelfIntersects, {}, {}}, "two intersecting boxes");
}

TEST(Deserialize, refusesEveryKindOfInvalidSurface)
{
    Mesh box;
    addBox(box, {10, 0, 0}, {30, 20, 20});
    EXPECT_EQ(restored(hashOf(box, 8000.0)).problem(), std::nullopt);
    const auto expect = [&box](KVProblemCode code, const auto& damage) {
        Mesh mesh = box;
        damage(mesh);
        expectRefused(hashOf(mesh, 8000.0), {code, {}, {}}, KVProblem::sentence(code));
    };
    expect(KVProblemCode::NoFaces, [](Mesh& m) { m.triangles.clear(); });
    expect(KVProblemCode::VertexOutOfRange, [](Mesh& m) { m.lab[3].a = std::nanf(""); });
    expect(KVProblemCode::VertexOutOfRange, [](Mesh& m) { m.lab[3].b = 2001.0f; });
    expect(KVProblemCode::VertexIndexOutOfRange, [](Mesh& m) { m.triangles[2][1] = 8; });
    expect(KVProblemCode::VertexIndexOutOfRange, [](Mesh& m) { m.triangles[2][1] = -1; });
    expect(KVProblemCode::SurfaceNotClosed, [](Mesh& m) { m.triangles.pop_back(); });
    expect(KVProblemCode::SurfaceInsideOut, [](Mesh& m) { velmora::flip(m); });
    expect(KVProblemCode::TooSmall, [](Mesh& m) {
        for (LabPoint& v : m.lab)
            v = {v.L / 32, v.a / 32, v.b / 32};
    });
    expect(KVProblemCode::SurfaceNotManifold, [](Mesh& m) {
        addBox(m, {30, 20, 20}, {40, 30, 30});
        for (auto& t :
             m.triangles) // one vertex in common, the highest of the first, the lowest of the second
            std::replace(t.begin(), t.end(), 8, 7);
    });
}

TEST(Deserialize, refusesInvalidValues)
{
    const auto expect = [](const auto& damage) {
        velmora::GamutRecord record;
        record.method = KVGamut::Method::DeviceMesh;
        addBox(record.mesh, {10, 0, 0}, {30, 20, 20});
        record.mesh.channels = 3;
        record.mesh.device.assign(record.mesh.lab.size() * 3, 0.5f);
        record.volume = velmora::signedVolume(record.mesh);
        damage(record);
        expectRefused(velmora::serialized(record), {KVProblemCode::SavedGamutInvalidValues, {}, {}}, "value");
    };
    using Record = velmora::GamutRecord;
    expect([](Record& r) { r.method = KVGamut::Method::None; });
    expect([](Record& r) { r.intent = static_cast<KVVMRenderType>(4); });
    expect([](Record& r) { r.white.L = std::nanf(""); });
    expect([](Record& r) { r.primaries = {{{0.0f, std::nanf(""), 0.0f}}}; });
    expect([](Record& r) { r.mesh.device[4] = std::nanf(""); });
    expect([](Record& r) { r.foldShare = std::nan(""); });
    expect([](Record& r) { r.volume = std::nan(""); });
    expect([](Record& r) { r.volume = -r.volume; });
    expect([](Record& r) { r.volume *= 20.0; });
    expect([](Record& r) { r.mesh.channels = 2; });
    expect([](Record& r) { r.conversion.table = QStringLiteral("A2B0123"); });
    expect([](Record& r) { r.conversion.table = QStringLiteral("<b>"); });
    expect([](Record& r) { r.conversion.adaptation = static_cast<KVGamut::Adaptation>(3); });
    expect([](Record& r) { r.conversion.adaptationSource = static_cast<KVGamut::AdaptationSource>(-1); });
    expect([](Record& r) { r.conversion.mediaWhite = LabPoint{std::nanf(""), 0.0f, 0.0f}; });
    expect([](Record& r) { r.conversion.mappedBlack = LabPoint{0.0f, std::nanf(""), 0.0f}; });
}

namespace {

/// A tetrahedron as the first version of the format describes it: without the conversion.
Hash savedByTheFirstVersion()
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    stream.setByteOrder(QDataStream::LittleEndian);
    constexpr bool compensated = true, decorated = false;
    stream << quint32(0x4b56474d) << qint32(1) << qint32(2) << compensated << decorated << qint32(9);
    stream << 0.0 << 2.5 << 0.125; // fold share, uncertainty, seconds
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    const auto write = [&stream](float L, float a, float b) { stream << L << a << b; };
    write(90, 1, 2); // white
    write(5, 0, 0);  // black
    write(5, 0, 0);  // the origin
    stream << quint32(0);
    stream << qint32(3) << quint32(4) << quint32(4);
    write(0, 0, 0);
    write(30, 0, 0);
    write(0, 30, 0);
    write(0, 0, 30);
    for (int i = 0; i < 12; ++i)
        stream << 0.5f;
    for (const qint32 v : {0, 2, 1, 0, 3, 2, 0, 1, 3, 1, 2, 3})
        stream << v;
    return {{gamutKey, QString::fromLatin1(bytes.toBase64())},
            {QStringLiteral("GamutVersion"), 1},
            {QStringLiteral("GamutChecksum"),
             QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex())}};
}

} // namespace

TEST(Serialize, keepsTheTagOfTheEncoding)
{
    velmora::GamutRecord record;
    record.conversion.cicp = KVGamut::CodePoints{9, 16, 0, true};
    record.conversion.tableIsFallback = true;
    record.conversion.adaptationSource = KVGamut::AdaptationSource::MediaWhite;
    record.method = KVGamut::Method::DeviceMesh;
    addBox(record.mesh, {10, 0, 0}, {30, 20, 20});
    record.mesh.channels = 3;
    record.mesh.device.assign(record.mesh.lab.size() * 3, 0.5f);
    record.volume = velmora::signedVolume(record.mesh);
    EXPECT_TRUE(restored(velmora::serialized(record)).report().conversion == record.conversion);
}

TEST(Deserialize, readsTheFirstVersion)
{
    const KVGamut::GamutObject gamut = restored(savedByTheFirstVersion());
    ASSERT_EQ(gamut.problem(), std::nullopt);
    EXPECT_NEAR(gamut.volume(), 4500.0, 0.01);
    const KVGamut::Report report = gamut.report();
    EXPECT_EQ(report.intent, KVVMRenderSaturation);
    EXPECT_TRUE(report.blackPointCompensation);
    EXPECT_EQ(report.white, (LabPoint{90, 1, 2}));
    EXPECT_EQ(report.volumeUncertainty, 2.5);
    EXPECT_TRUE(report.conversion.table.isEmpty());
    EXPECT_TRUE(report.conversion == KVGamut::Conversion());
}

// Parallel thin slabs: every face is close to all others, and none intersects another.
TEST(Deserialize, refusesASurfaceThatIsTooExpensiveToCheck)
{
    Mesh mesh;
    constexpr int boxes = 1500;
    for (int i = 0; i < boxes; ++i) {
        const auto at = 0.01f * float(i);
        addBox(mesh, {20, at, at - 50}, {80, at + 0.005f, at + 50});
    }
    const Hash hash = hashOf(mesh, velmora::signedVolume(mesh));
    const auto gamut = restored(hash);
    EXPECT_EQ(codeOf(gamut), KVProblemCode::SavedGamutTooClose);
    EXPECT_EQ(gamut.faceCount(), 0);
}

TEST(Deserialize, restoresTheSurfacesOfAllMethods)
{
    const auto wound = opened(tableProfile(cmsSigRgbData, 33, [](const std::vector<double>& d) {
        const double angle = 3.0 * M_PI * d[1], radius = 20.0 + 40.0 * d[2];
        return Lab{20 + 60 * d[0], radius * std::cos(angle), radius * std::sin(angle)};
    }));
    for (const auto& original :
         {gamutOf(openedFile(prophotoRgb()), 3), gamutOf(openedFile(prophotoRgb()), 129),
          gamutOf(openedFile(printerCmyk()), 3), gamutOf(openedFile(printerCmyk()), 129), gamutOf(wound, 65),
          gamutOf(wound, 5)}) {
        const auto copy = restored(original.serialize());
        EXPECT_EQ(copy.problem(), std::nullopt);
        EXPECT_EQ(copy.faceCount(), original.faceCount());
        EXPECT_GT(copy.faceCount(), 0);
    }
}

TEST(Serialize, aCancelledRestoreIsEmpty)
{
    KVGamut::GamutObject gamut;
    ASSERT_TRUE(gamut.init(openedFile(prophotoRgb()), KVGamut::Settings{.gridPoints = 17}));
    const Hash saved = gamut.serialize();
    auto protocol = KVCompletionProtocol::createTask(QStringLiteral("restore"));
    gamut.deserialize(saved, &protocol);
    EXPECT_EQ(codeOf(gamut), std::nullopt);
    EXPECT_GT(gamut.faceCount(), 0);
    protocol->cancel();
    gamut.deserialize(saved, &protocol);
    EXPECT_EQ(codeOf(gamut), KVProblemCode::Cancelled);
    EXPECT_EQ(gamut.faceCount(), 0);
}

// Every step looks: cancelled at any look, the rest of the work is small.
TEST(Serialize, aRestoreEndsSoonAfterItIsCancelled)
{
    KVGamut::GamutObject gamut;
    ASSERT_TRUE(gamut.init(openedFile(prophotoRgb()), KVGamut::Settings{.gridPoints = 33}));
    const Hash saved = gamut.serialize();
    const auto looksWhenCancelledAt = [&saved](int last) {
        int looks = 0;
        (void)velmora::deserialized(saved, velmora::Task([&looks, last] { return looks++ >= last; }));
        return looks;
    };
    const int all = looksWhenCancelledAt(std::numeric_limits<int>::max());
    EXPECT_GT(all, 10 * gamut.faceCount());
    for (int last = 0; last < all; last += 1 + all / 100)
        EXPECT_LE(looksWhenCancelledAt(last), last + 20) << "cancelled at look " << last;
}

TEST(Serialize, paddingInTheMiddleOfTheTextIsDamage)
{
    KVGamut::GamutObject gamut;
    ASSERT_TRUE(gamut.init(openedFile(prophotoRgb()), KVGamut::Settings{.gridPoints = 33}));
    Hash saved = gamut.serialize();
    QString text = saved.value(gamutKey).toString();
    constexpr qsizetype endOfPiece = qsizetype(1) << 18;
    ASSERT_GT(text.size(), endOfPiece);
    text[endOfPiece - 1] = QLatin1Char('=');
    saved[gamutKey] = text;
    EXPECT_EQ(codeOf(restored(saved)), KVProblemCode::SavedGamutDamaged);
}
