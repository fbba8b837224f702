// SPDX-License-Identifier: Apache-2.0
#include "Problems.h"
#include "TestProfiles.h"
#include "WorkCount.h"

#include <engine/profile/IccTables.h>

#include "support/MessageCheck.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <thread>

using namespace testprofiles;

namespace {

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

void append32(QByteArray& bytes, quint32 value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.append(static_cast<char>(value >> shift));
}

// A CMYK profile with a single tag, A2B0 or D2B0, that contains the given bytes.
QByteArray profileAround(const char* tagName, const QByteArray& tag)
{
    QByteArray bytes;
    append32(bytes, static_cast<quint32>(128 + 4 + 12 + tag.size()));
    bytes.append("lcms", 4);
    append32(bytes, 0x04300000);
    bytes.append("prtrCMYKLab ", 12);
    bytes.append(QByteArray(12, '\0'));
    bytes.append("acsp", 4);
    bytes.append(QByteArray(128 - bytes.size(), '\0'));
    append32(bytes, 1);
    bytes.append(tagName, 4);
    append32(bytes, 128 + 4 + 12);
    append32(bytes, static_cast<quint32>(tag.size()));
    return bytes + tag;
}

// A tag of processing elements: a table of 4 inputs and 3 outputs with the given grid, but without values.
QByteArray elementTable(char gridPoints)
{
    QByteArray tag("mpet\0\0\0\0", 8);
    tag.append(QByteArray("\0\4\0\3", 4));
    append32(tag, 1);  // one element
    append32(tag, 24); // offset
    append32(tag, 40); // size
    tag.append(QByteArray("clut\0\0\0\0\0\4\0\3", 12));
    tag.append(QByteArray(4, gridPoints) + QByteArray(12, '\0'));
    return tag + QByteArray(12, '\0');
}

// A tag of several processing elements.
QByteArray elementList(const QList<QByteArray>& elements)
{
    QByteArray tag("mpet\0\0\0\0", 8);
    tag.append(QByteArray("\0\4\0\3", 4));
    append32(tag, static_cast<quint32>(elements.size()));
    auto at = static_cast<quint32>(16 + 8 * elements.size());
    for (const QByteArray& element : elements) {
        append32(tag, at);
        append32(tag, static_cast<quint32>(element.size()));
        at += static_cast<quint32>(element.size());
    }
    for (const QByteArray& element : elements)
        tag.append(element);
    return tag;
}

void appendFloat(QByteArray& bytes, float value)
{
    quint32 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    append32(bytes, bits);
}

// A matrix with 4 inputs and `outputs` outputs, which are the first inputs.
QByteArray matrixElement(int outputs)
{
    QByteArray element("matf\0\0\0\0\0\4\0", 11);
    element.append(static_cast<char>(outputs));
    for (int i = 0; i < 4 * outputs; ++i)
        appendFloat(element, i % 5 == 0 ? 1.0f : 0.0f);
    for (int i = 0; i < outputs; ++i)
        appendFloat(element, 0.0f);
    return element;
}

// A table with 14 inputs, 3 outputs and 2 nodes for each input.
QByteArray wideTableElement()
{
    QByteArray element("clut\0\0\0\0\0\16\0\3", 12);
    element.append(QByteArray(14, '\2') + QByteArray(2, '\0'));
    return element + QByteArray(4 * 3 << 14, '\0');
}

// Four curves with the given number of linear segments each.
QByteArray curveElement(int segments)
{
    QByteArray curve("curf\0\0\0\0", 8);
    curve.append(static_cast<char>(segments >> 8)).append(static_cast<char>(segments)).append(2, '\0');
    for (int i = 1; i < segments; ++i)
        appendFloat(curve, static_cast<float>(i) / static_cast<float>(segments));
    for (int i = 0; i < segments; ++i) {
        curve.append("parf\0\0\0\0\0\0\0\0", 12);
        for (float parameter : {1.0f, 1.0f, 0.0f, 0.0f})
            appendFloat(curve, parameter);
    }
    QByteArray element("cvst\0\0\0\0\0\4\0\4", 12);
    for (int i = 0; i < 4; ++i) {
        append32(element, 12 + 4 * 8); // all share one curve
        append32(element, static_cast<quint32>(curve.size()));
    }
    return element + curve;
}

KVProblem damagedTag(const char* tag)
{
    return {KVProblemCode::DamagedTag, {QLatin1String(tag)}, {}};
}

double statusMegabytes(const char* name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    EXPECT_TRUE(status.open(QIODevice::ReadOnly));
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith(name))
            return line.mid(static_cast<qsizetype>(std::strlen(name)))
                       .simplified()
                       .split(' ')
                       .first()
                       .toDouble() /
                   1024.0;
    return 0.0;
}

// How far the process grows beyond its present size during @p computation.
double peakMegabytes(const std::function<void()>& computation)
{
    QFile peak(QStringLiteral("/proc/self/clear_refs"));
    EXPECT_TRUE(peak.open(QIODevice::WriteOnly));
    peak.write("5"); // resets the peak
    peak.close();
    const double before = statusMegabytes("VmRSS:");
    computation();
    return statusMegabytes("VmHWM:") - before;
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr double sizeOfInstrumentation = 20.0;
#else
constexpr double sizeOfInstrumentation = 1.0;
#endif

// The limits that hold for any profile under a megabyte.
void expectHarmless(const QByteArray& bytes, const std::string& what)
{
    ASSERT_LT(bytes.size(), 1 << 20) << what;
    double megabytes = 0.0;
    const work::Work cost = work::of([&] {
        megabytes = peakMegabytes([&] {
            const auto profile = opened(bytes);
            if (profile)
                gamutOf(profile);
        });
    });
    EXPECT_LE(cost.colours, 500'000u) << what;
    EXPECT_LE(cost.bytes, 1u << 30) << what;
    EXPECT_LT(megabytes, 256.0 * sizeOfInstrumentation) << what;
}

} // namespace

TEST(Profile, opensFromAFileAndFromItsBytes)
{
    EXPECT_TRUE(openedFile(srgb()));
    EXPECT_EQ(KVProfileProblem(), std::nullopt);
    EXPECT_TRUE(opened(bytesOf(srgb())));
    EXPECT_EQ(KVProfileProblem(), std::nullopt);
}

TEST(Profile, copiesItsBytes)
{
    QByteArray bytes = bytesOf(srgb());
    const auto profile = opened(bytes);
    bytes.fill('\0');
    EXPECT_GT(gamutOf(profile, 5).faceCount(), 0);
}

TEST(Profile, opensFromANonAsciiPath)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Größe 色域.icc"));
    ASSERT_TRUE(QFile::copy(srgb(), path));
    EXPECT_TRUE(openedFile(path));
    EXPECT_EQ(KVProfileProblem(), std::nullopt);
}

TEST(Profile, isNullWithAProblemIfItCannotBeOpened)
{
    QTemporaryDir folder;
    const QString text = folder.filePath(QStringLiteral("text.icc"));
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        QByteArray("not a profile at all, but some text of more than a header's length ").repeated(10));
    file.close();
    const QString nothing = folder.filePath(QStringLiteral("nothing.icc"));
    QFile empty(nothing);
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    empty.close();

    const QString pipe = folder.filePath(QStringLiteral("pipe.icc"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0); // to open it would block for ever

    const QString large = folder.filePath(QStringLiteral("large.icc"));
    ASSERT_TRUE(QFile(large).open(QIODevice::WriteOnly));
    ASSERT_TRUE(QFile::resize(large, (qint64(256) << 20) + 1)); // sparse

    const std::vector<std::pair<QString, KVProblemCode>> paths{
        {QString(), KVProblemCode::NoFileName},
        {folder.filePath(QStringLiteral("missing.icc")), KVProblemCode::FileNotFound},
        {folder.path(), KVProblemCode::NotAFile},
        {QStringLiteral("/dev/zero"), KVProblemCode::NotAFile},
        {pipe, KVProblemCode::NotAFile},
        {large, KVProblemCode::FileTooLarge},
        {text, KVProblemCode::NotAProfile},
        {nothing, KVProblemCode::NotAProfile},
    };
    for (const auto& [path, code] : paths) {
        EXPECT_EQ(KVProfileCreateWithPath(path.toUtf8().constData()), nullptr) << qPrintable(path);
        EXPECT_EQ(KVProfileProblem(), (KVProblem{code, {}, path}));
    }
    EXPECT_EQ(KVProfileCreateWithPath(nullptr), nullptr);
    EXPECT_EQ(codeOf(KVProfileProblem()), KVProblemCode::NoFileName);
    for (const auto& [data, size] : {std::pair<const char*, int>{nullptr, 100}, {"", 0}, {"abc", -3}}) {
        EXPECT_EQ(KVProfileCreateWithData(data, size), nullptr);
        EXPECT_EQ(KVProfileProblem(), (KVProblem{KVProblemCode::EmptyData, {}, {}}));
    }
    EXPECT_TRUE(kvtest::messages().isEmpty());
}

// A regular file whose first byte nobody can read, not even the superuser.
TEST(Profile, isNullIfReadingFails)
{
    const QString path = QStringLiteral("/proc/self/mem");
    EXPECT_EQ(KVProfileCreateWithPath(path.toUtf8().constData()), nullptr);
    const std::optional<KVProblem> problem = KVProfileProblem();
    ASSERT_EQ(codeOf(problem), KVProblemCode::FileUnreadable);
    ASSERT_EQ(problem->arguments.size(), 2);
    EXPECT_FALSE(problem->arguments.first().isEmpty());
    EXPECT_EQ(problem->arguments.last(), QString::number(EIO));
    EXPECT_EQ(problem->subject, path);
}

TEST(Profile, isNullIfTheDataIsTooLarge)
{
    EXPECT_EQ(KVProfileCreateWithData("", (256 << 20) + 1), nullptr); // refused before it is read
    EXPECT_EQ(KVProfileProblem(), (KVProblem{KVProblemCode::DataTooLarge, {}, {}}));
}

TEST(Profile, isNullIfTheTagTableIsDamaged)
{
    QByteArray bytes = profileAround("A2B0", QByteArray(100, '\0'));
    for (const char count : {'\12', '\145'}) { // 10 tags instead of one; 101 tags
        bytes[131] = count;
        EXPECT_EQ(KVProfileCreateWithData(bytes.constData(), static_cast<int>(bytes.size())), nullptr);
        EXPECT_EQ(KVProfileProblem(), (KVProblem{KVProblemCode::DamagedTagTable, {}, {}}));
    }
}

TEST(Profile, isNullIfLittleCmsRefusesIt)
{
    QByteArray bytes = profileAround("A2B0", QByteArray(100, '\0'));
    bytes[131] = 2;
    bytes.insert(132 + 12, bytes.mid(132, 12)); // the same tag twice
    const cmsHPROFILE opened =
        cmsOpenProfileFromMem(bytes.constData(), static_cast<cmsUInt32Number>(bytes.size()));
    ASSERT_FALSE(opened);
    EXPECT_EQ(KVProfileCreateWithData(bytes.constData(), static_cast<int>(bytes.size())), nullptr);
    const std::optional<KVProblem> problem = KVProfileProblem();
    ASSERT_EQ(codeOf(problem), KVProblemCode::UnusableProfile);
    ASSERT_EQ(problem->arguments.size(), 1);
    EXPECT_FALSE(problem->arguments.first().isEmpty());
}

TEST(Profile, keepsProblemsByThread)
{
    EXPECT_EQ(KVProfileCreateWithPath("/nowhere/at.all"), nullptr);
    std::optional<KVProblem> other = KVProblem{};
    std::thread([&other] { other = KVProfileProblem(); }).join();
    EXPECT_EQ(other, std::nullopt);
    EXPECT_EQ(codeOf(KVProfileProblem()), KVProblemCode::FileNotFound);
}

TEST(Profile, releasesNull)
{
    KVProfileRelease(nullptr);
}

TEST(Profile, isAMetaTypeWithItsName)
{
    EXPECT_EQ(qRegisterMetaType<KVProfilePtr>("KVProfilePtr"), qMetaTypeId<KVProfilePtr>());
    const auto profile = openedFile(srgb());
    EXPECT_EQ(QVariant::fromValue(profile).value<KVProfilePtr>(), profile);
}

// --- Hostile bytes --------------------------------------------------------------------------------

// 90^4 nodes in under 300 bytes: reading it took 378 MB before it failed.
TEST(ProfileTables, withMoreNodesThanBytesAreRefused)
{
    const QByteArray hostile = profileAround("D2B0", elementTable(90));
    ASSERT_LT(hostile.size(), 300);
    EXPECT_EQ(KVProfileCreateWithData(hostile.constData(), static_cast<int>(hostile.size())), nullptr);
    EXPECT_EQ(KVProfileProblem(), damagedTag("D2B0"));
}

TEST(ProfileTables, ofEveryTypeAreChecked)
{
    QByteArray eight("mft1\0\0\0\0\4\3\xff\0", 12);
    EXPECT_EQ(codeOf(velmora::checkIccTables(profileAround("A2B0", eight + QByteArray(2000, '\0')))),
              KVProblemCode::DamagedTag);
    QByteArray sixteen("mft2\0\0\0\0\4\3\x21\0", 12);
    EXPECT_EQ(codeOf(velmora::checkIccTables(profileAround("A2B0", sixteen + QByteArray(2000, '\0')))),
              KVProblemCode::DamagedTag);
    QByteArray staged("mAB \0\0\0\0\4\3\0\0", 12);
    for (quint32 offset : {0u, 0u, 0u, 32u, 0u}) // only a table
        append32(staged, offset);
    QByteArray grid = QByteArray(4, '\x21') + QByteArray(12, '\0') + QByteArray("\2\0\0\0", 4);
    EXPECT_EQ(codeOf(velmora::checkIccTables(profileAround("A2B0", staged + grid))),
              KVProblemCode::DamagedTag);
    // The same with all its values: 3^4 nodes of three 16-bit numbers.
    grid = QByteArray(4, '\3') + QByteArray(12, '\0') + QByteArray("\2\0\0\0", 4) + QByteArray(81 * 6, '\0');
    EXPECT_EQ(codeOf(velmora::checkIccTables(profileAround("A2B0", staged + grid))), std::nullopt);
}

TEST(ProfileTables, ofInstalledProfilesAreAccepted)
{
    const QStringList paths = installedProfiles();
    ASSERT_GE(paths.size(), 25);
    for (const QString& path : paths)
        EXPECT_EQ(codeOf(velmora::checkIccTables(bytesOf(path))), std::nullopt) << qPrintable(path);
}

TEST(HostileProfile, thatIsTruncatedIsRefusedOrCostsLittle)
{
    for (const QString& path : {srgb(), printerCmyk()}) {
        const QByteArray whole = bytesOf(path);
        for (int i = 0; i < 40; ++i) {
            const QByteArray part = whole.left(whole.size() * i / 40);
            const work::Work cost = work::of([&part] {
                const auto profile = opened(part);
                if (profile)
                    gamutOf(profile, 5);
            });
            EXPECT_LE(cost.colours, 10'000u) << "cut after " << part.size() << " bytes";
            EXPECT_LE(cost.bytes, 8u << 20) << "cut after " << part.size() << " bytes";
        }
    }
}

TEST(HostileProfile, withRandomChangesIsRefusedOrValid)
{
    std::mt19937 random(20);
    for (const QString& path : {srgb(), printerCmyk()}) {
        const QByteArray whole = bytesOf(path);
        for (int i = 0; i < 200; ++i) {
            QByteArray bytes = whole;
            // Half of the changes are in the header and the tag table.
            for (int k = 0; k < 8; ++k) {
                const auto range = static_cast<unsigned>(k % 2 ? bytes.size() : 400);
                bytes[static_cast<qsizetype>(random() % range)] = static_cast<char>(random());
            }
            const auto profile = opened(bytes);
            if (!profile) {
                EXPECT_TRUE(KVProfileProblem());
                continue;
            }
            const auto gamut = gamutOf(profile, 5);
            EXPECT_EQ(gamut.faceCount() == 0, gamut.problem().has_value());
        }
    }
}

// Random colours: a line through such a solid meets thousands of tetrahedra. That once took twenty seconds
// and 1.6 GB.
TEST(HostileProfile, ofNoiseCostsLittleWorkAndMemory)
{
    struct Table
    {
        cmsColorSpaceSignature space;
        int nodes;
    };
    std::mt19937 random(1);
    std::uniform_real_distribution<double> any(0.0, 1.0);
    for (const auto& [space, nodes] : {Table{cmsSigRgbData, 33}, {cmsSig6colorData, 6}})
        for (double noise : {0.1, 0.3, 1.0}) {
            const QByteArray bytes = tableProfile(space, nodes, [&](const std::vector<double>& d) {
                const auto mixed = [&](double value) { return (1.0 - noise) * value + noise * any(random); };
                return Lab{100 * mixed(d[2]), -128 + 255 * mixed(d[0]), -128 + 255 * mixed(d[1])};
            });
            expectHarmless(bytes, std::to_string(cmsChannelsOf(space)) + " channels, noise " +
                                      std::to_string(noise));
        }
}

// Each colour would have to be processed by all of the elements.
TEST(HostileProfile, ofThousandsOfElementsIsRefused)
{
    QList<QByteArray> matrices(10'000, matrixElement(4));
    matrices.append(matrixElement(3));
    const QList<QByteArray> curves{curveElement(25'000), matrixElement(3)};
    const QList<QByteArray> table{matrixElement(14), wideTableElement()};
    for (const auto& elements : {matrices, curves, table}) {
        const QByteArray bytes = profileAround("D2B1", elementList(elements));
        ASSERT_LT(bytes.size(), 1 << 20);
        EXPECT_EQ(KVProfileCreateWithData(bytes.constData(), static_cast<int>(bytes.size())), nullptr);
        EXPECT_EQ(KVProfileProblem(), damagedTag("D2B1"));
        expectHarmless(bytes, "elements");
    }
    // As many elements as a real device needs.
    const QByteArray sound = profileAround(
        "D2B1", elementList({curveElement(9), matrixElement(4), curveElement(2), matrixElement(3)}));
    EXPECT_EQ(codeOf(velmora::checkIccTables(sound)), std::nullopt);
}
