// SPDX-License-Identifier: Apache-2.0
#include "app/support/TestPictures.h"
#include "model/export/OutputFile.h"
#include "model/inputs/BuiltInNames.h"
#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/GamutSource.h"
#include "model/inputs/ProfileFacts.h"
#include "model/inputs/SavedGamut.h"
#include "model/problems/ProblemText.h"

#include <gtest/gtest.h>

#include <QtCore/QCborArray>
#include <QtCore/QCborMap>
#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QtEndian>

#include <functional>
#include <limits>

namespace {

const QString cmykFile = QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc");

class GamutSourceTest : public testing::Test
{
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    static QByteArray contents(const QString& name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString written(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return path(name);
    }

    /// Opens @p name; fails the test if that fails.
    static GamutSource opened(const QString& name)
    {
        return GamutSource::open(name).or_else(reportProblem).value();
    }

    static KVGamut::GamutObject computed(const GamutSource& source, const KVGamut::Settings& settings)
    {
        return source.compute(settings).or_else(reportProblem).value();
    }

    static KVVMRenderType intentOf(const QString& name) { return computed(opened(name), {}).report().intent; }

    /// The problem when opening a file with these bytes.
    Problem problemOf(const QByteArray& bytes) const
    {
        const QString file = written(QStringLiteral("input"), bytes);
        const Problem problem = GamutSource::open(file).error();
        EXPECT_EQ(problem.subject, file);
        return problem;
    }

    /// The code of that problem.
    Problem::Code codeOf(const QByteArray& bytes) const { return problemOf(bytes).code; }

    const QByteArray m_cmyk = contents(cmykFile);
    const QByteArray m_rgb = BuiltInProfiles::profile(QStringLiteral("AdobeRGB"));

private:
    static void reportProblem(const Problem& problem)
    {
        ADD_FAILURE() << ProblemText::english(problem).toStdString();
    }

    QTemporaryDir m_folder;
};

// --- Profiles -----------------------------------------------------------------------------------------

TEST_F(GamutSourceTest, opensABuiltInProfileByItsName)
{
    const GamutSource source = opened(QStringLiteral("AdobeRGB"));
    EXPECT_FALSE(source.isSaved());
    EXPECT_EQ(source.name(), QStringLiteral("AdobeRGB"));
    EXPECT_EQ(source.profile()->bytes, m_rgb);
}

TEST_F(GamutSourceTest, opensAProfileFileWithAnyName)
{
    const QString file = written(QStringLiteral("принтер.kvgamut"), m_cmyk);
    const GamutSource source = opened(file);
    EXPECT_EQ(source.name(), file);
    EXPECT_EQ(source.profile()->bytes, m_cmyk);
}

TEST_F(GamutSourceTest, computesWithTheSettings)
{
    const GamutSource source = opened(cmykFile);
    KVGamut::Settings settings;
    settings.intent = KVVMRenderPerceptual;
    settings.blackPointCompensation = true;
    settings.gridPoints = 9;
    const KVGamut::Report report = computed(source, settings).report();
    EXPECT_EQ(report.intent, KVVMRenderPerceptual);
    EXPECT_TRUE(report.blackPointCompensation);
    EXPECT_EQ(report.gridPoints, 9);
    EXPECT_EQ(report.channels, 4);
}

TEST_F(GamutSourceTest, reportsAnUnknownFormat)
{
    for (const QByteArray& bytes : {QByteArray("short"), QByteArray(5000, 'x'), QByteArray(1, '\0')})
        EXPECT_EQ(codeOf(bytes), Problem::Code(ProblemCode::UnknownFormat));
}

TEST_F(GamutSourceTest, reportsWhyAProfileDoesNotOpen)
{
    const Problem cut = problemOf(m_cmyk.left(1000));
    EXPECT_EQ(cut.code, Problem::Code(KVProblemCode::DamagedTag));
    EXPECT_EQ(cut.arguments, QStringList(QStringLiteral("A2B0")));
    EXPECT_EQ(codeOf(QByteArray()), Problem::Code(KVProblemCode::NotAProfile));
}

TEST_F(GamutSourceTest, namesAMissingFileAndAFolder)
{
    const QString missing = path(QStringLiteral("無.png"));
    const Problem problem = GamutSource::open(missing).error();
    EXPECT_EQ(problem.code, Problem::Code(KVProblemCode::FileNotFound));
    EXPECT_EQ(problem.subject, missing);
    EXPECT_EQ(GamutSource::open(path(QString())).error().code, Problem::Code(KVProblemCode::NotAFile));
}

// --- Pictures -----------------------------------------------------------------------------------------

struct PictureKind
{
    const char* name;
    std::function<void(const QString&, const QByteArray&)> write;
    bool cmyk;
    const char* format;
};

void PrintTo(const PictureKind& kind, std::ostream* out)
{
    *out << kind.name;
}

class PictureSourceTest : public GamutSourceTest, public testing::WithParamInterface<PictureKind>
{
};

TEST_P(PictureSourceTest, opensTheEmbeddedProfileByteForByte)
{
    const QByteArray& icc = GetParam().cmyk ? m_cmyk : m_rgb;
    const QString file = path(QStringLiteral("photo with a wrong ending.icc"));
    GetParam().write(file, icc);
    const GamutSource source = opened(file);
    EXPECT_FALSE(source.isSaved());
    EXPECT_EQ(source.profile()->bytes, icc);
}

TEST_P(PictureSourceTest, reportsAMissingProfile)
{
    const QString file = path(QStringLiteral("bare"));
    GetParam().write(file, QByteArray());
    const Problem problem = problemOf(contents(file));
    EXPECT_EQ(problem.code, Problem::Code(ProblemCode::PictureWithoutProfile));
    EXPECT_EQ(problem.arguments, QStringList(QLatin1String(GetParam().format)));
}

TEST_P(PictureSourceTest, reportsADamagedPicture)
{
    const QString file = path(QStringLiteral("whole"));
    GetParam().write(file, GetParam().cmyk ? m_cmyk : m_rgb);
    const Problem problem = problemOf(contents(file).left(16));
    EXPECT_EQ(problem.code, Problem::Code(ProblemCode::PictureDamaged));
    EXPECT_EQ(problem.arguments, QStringList(QLatin1String(GetParam().format)));
    EXPECT_FALSE(problem.cause->arguments.value(0).isEmpty()); // the library's message
}

INSTANTIATE_TEST_SUITE_P(
    Of, PictureSourceTest,
    testing::Values(
        PictureKind{"Png", testpictures::writePng, false, "PNG"},
        PictureKind{"RgbJpeg", testpictures::writeJpeg, false, "JPEG"},
        PictureKind{"CmykJpeg", testpictures::writeCmykJpeg, true, "JPEG"},
        PictureKind{"LittleEndianTiff",
                    [](const auto& p, const auto& icc) { testpictures::writeCmykTiff(p, icc, "l"); }, true,
                    "TIFF"},
        PictureKind{"BigEndianTiff",
                    [](const auto& p, const auto& icc) { testpictures::writeCmykTiff(p, icc, "b"); }, true,
                    "TIFF"},
        PictureKind{"BigTiff",
                    [](const auto& p, const auto& icc) { testpictures::writeCmykTiff(p, icc, "8"); }, true,
                    "TIFF"}),
    [](const auto& kind) { return std::string(kind.param.name); });

TEST_F(GamutSourceTest, reportsInvalidEmbeddedData)
{
    const QString file = path(QStringLiteral("odd.jpg"));
    testpictures::writeJpeg(file, QByteArray(500, 'x'));
    EXPECT_EQ(codeOf(contents(file)), Problem::Code(KVProblemCode::NotAProfile));
}

TEST_F(GamutSourceTest, joinsAProfileOfMoreThanOneJpegSegment)
{
    ASSERT_GT(m_cmyk.size(), 2 * 65535); // the maximum size of a segment
    const QString file = path(QStringLiteral("print.jpg"));
    testpictures::writeCmykJpeg(file, m_cmyk);
    const GamutSource source = opened(file);
    EXPECT_EQ(source.profile()->bytes, m_cmyk);
}

TEST_F(GamutSourceTest, readsNoProfileFromAnEmptyTag)
{
    const QString file = path(QStringLiteral("empty.tif"));
    testpictures::writeCmykTiff(file, m_cmyk.left(500), "l");
    QByteArray bytes = contents(file);
    const QByteArray tag = QByteArray::fromHex("73870700f4010000"); // 34675, bytes, 500 of them
    ASSERT_EQ(bytes.count(tag), 1);
    bytes.replace(tag, QByteArray::fromHex("7387070000000000"));
    EXPECT_EQ(codeOf(bytes), Problem::Code(ProblemCode::PictureWithoutProfile));
}

TEST_F(GamutSourceTest, reportsAPngWhoseChunkIsLongerThanTheFile)
{
    const QString file = path(QStringLiteral("long.png"));
    testpictures::writePng(file, m_rgb);
    QByteArray bytes = contents(file);
    const qsizetype chunk = bytes.indexOf("iCCP");
    bytes.replace(chunk - 4, 4, QByteArray::fromHex("2c000159")); // 738 MB
    const Problem problem = problemOf(bytes);
    EXPECT_EQ(problem.code, Problem::Code(ProblemCode::PictureDamaged));
    EXPECT_EQ(problem.cause->arguments, QStringList(QStringLiteral("the file ends too early")));
}

TEST_F(GamutSourceTest, describesAnUnknownColourSpace)
{
    QByteArray bytes = m_rgb;
    bytes.replace(16, 4,
                  "\xBB\xB2"
                  "AK");
    const GamutSource source = opened(written(QStringLiteral("unknown.icc"), bytes));
    const ProfileFacts facts = ProfileFacts::of(source.profile()->bytes);
    EXPECT_EQ(facts.deviceSpace.size(), 4);
    EXPECT_EQ(facts.deviceClass, QStringLiteral("display"));
}

// --- Saved gamuts -------------------------------------------------------------------------------------

class SavedGamutTest : public GamutSourceTest
{
protected:
    static KVGamut::GamutObject computed()
    {
        return GamutSourceTest::computed(opened(QStringLiteral("sRGB")),
                                         {KVVMRenderRelativeColorimetric, true, 9});
    }

    static QByteArray savedBytes()
    {
        return SavedGamut{computed().serialize(), QStringLiteral("sRGB, é 印刷")}.bytes();
    }
};

TEST_F(SavedGamutTest, opensAgainAsItWas)
{
    const KVGamut::GamutObject gamut = computed();
    const SavedGamut saved{gamut.serialize(), QStringLiteral("my 印刷.icc")};
    const GamutSource source = opened(written(QStringLiteral("any name.png"), saved.bytes()));
    EXPECT_TRUE(source.isSaved());
    EXPECT_FALSE(source.profile());
    EXPECT_EQ(source.savedProfile(), QStringLiteral("my 印刷.icc"));
    const KVGamut::GamutObject again = GamutSourceTest::computed(source, {});
    EXPECT_EQ(again.mesh().lab, gamut.mesh().lab);
    EXPECT_EQ(again.mesh().triangles, gamut.mesh().triangles);
    EXPECT_EQ(again.report().volume, gamut.report().volume);
    EXPECT_EQ(source.givenGamut().serialize(), gamut.serialize());
}

TEST_F(SavedGamutTest, ignoresTheSettings)
{
    const GamutSource source = opened(written(QStringLiteral("a"), savedBytes()));
    const KVGamut::Report report =
        GamutSourceTest::computed(source, {KVVMRenderPerceptual, false, 33}).report();
    EXPECT_EQ(report.intent, KVVMRenderRelativeColorimetric);
    EXPECT_TRUE(report.blackPointCompensation);
    EXPECT_EQ(report.gridPoints, 9);
}

TEST_F(SavedGamutTest, hasEqualBytesForEqualGamuts)
{
    const SavedGamut saved{computed().serialize(), QStringLiteral("x")};
    SavedGamut again = saved;
    again.gamut = {}; // a hash filled in another order
    QStringList keys = saved.gamut.keys();
    std::sort(keys.rbegin(), keys.rend());
    for (const QString& key : keys)
        again.gamut.insert(key, saved.gamut.value(key));
    EXPECT_EQ(saved.bytes(), again.bytes());
    EXPECT_EQ(SavedGamut::read(saved.bytes()).value().bytes(), saved.bytes());
}

TEST_F(SavedGamutTest, isSelfDescribedCbor)
{
    // RFC 8949, 3.4.6: 0xd9d9f7; then an array of three elements, the first a text of seven bytes
    EXPECT_TRUE(savedBytes().startsWith(QByteArray::fromHex("d9d9f78367") + "KVGamut"));
    EXPECT_TRUE(SavedGamut::isSavedGamut(savedBytes().left(SavedGamut::markerSize)));
    EXPECT_FALSE(SavedGamut::isSavedGamut(savedBytes().left(SavedGamut::markerSize - 1)));
}

TEST_F(SavedGamutTest, refusesTruncatedFiles)
{
    const QByteArray whole = savedBytes();
    for (const qsizetype size : {qsizetype(12), qsizetype(13), whole.size() / 2, whole.size() - 1})
        EXPECT_EQ(codeOf(whole.left(size)), Problem::Code(KVProblemCode::SavedGamutDamaged)) << size;
}

TEST_F(SavedGamutTest, refusesAChangedByte)
{
    QByteArray changed = savedBytes();
    const qsizetype middle = changed.size() / 2; // in the surface's base64
    changed[middle] = changed[middle] == 'A' ? 'B' : 'A';
    EXPECT_EQ(codeOf(changed), Problem::Code(KVProblemCode::SavedGamutDamaged));
}

TEST_F(SavedGamutTest, refusesALaterVersion)
{
    QCborArray parts = QCborValue::fromCbor(savedBytes()).taggedValue().toArray();
    parts[1] = 2;
    const Problem problem = problemOf(QCborValue(QCborKnownTags::Signature, parts).toCbor());
    EXPECT_EQ(problem.code, Problem::Code(KVProblemCode::UnknownSavedVersion));
    EXPECT_EQ(problem.arguments, QStringList(QStringLiteral("2")));
}

TEST_F(SavedGamutTest, refusesVersionsThatAreNoIntegers)
{
    // a number beyond 64 bits, a number below zero, a list
    for (const char* version : {"3be0000000000000ff", "20", "8101"}) {
        const QByteArray start = savedBytes().left(SavedGamut::markerSize);
        EXPECT_EQ(codeOf(start + QByteArray::fromHex(version) + QByteArray::fromHex("a0")),
                  Problem::Code(KVProblemCode::UnknownSavedVersion))
            << version;
    }
}

TEST_F(SavedGamutTest, ignoresEntriesThatItDoesNotKnow)
{
    const SavedGamut saved{computed().serialize(), QStringLiteral("x")};
    QCborArray parts = QCborValue::fromCbor(saved.bytes()).taggedValue().toArray();
    QCborMap content = parts[2].toMap();
    content.insert(QStringLiteral("a later entry"),
                   QCborArray{1, QCborMap{{2, QCborArray{3.5}}}, QStringLiteral("z")});
    content.insert(7, QByteArray("a key that is no text"));
    parts[2] = content;
    const Result<SavedGamut> read = SavedGamut::read(QCborValue(QCborKnownTags::Signature, parts).toCbor());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->profile, QStringLiteral("x"));
    EXPECT_EQ(read->bytes(), saved.bytes());
}

TEST_F(SavedGamutTest, refusesImpossibleNumbers)
{
    // the packed form of version 1: magic, method, intent, two flags, grid, then fold share, uncertainty,
    // seconds
    constexpr qsizetype gridAt = 14, uncertaintyAt = 26, secondsAt = 34;
    const auto fileWith = [](qsizetype place, auto value) {
        SavedGamut saved{computed().serialize(), QStringLiteral("x")};
        QByteArray body = QByteArray::fromBase64(saved.gamut.value(QStringLiteral("Gamut")).toByteArray());
        qToLittleEndian(value, body.data() + place);
        saved.gamut.insert(QStringLiteral("Gamut"), QString::fromLatin1(body.toBase64()));
        saved.gamut.insert(
            QStringLiteral("GamutChecksum"),
            QString::fromLatin1(QCryptographicHash::hash(body, QCryptographicHash::Sha256).toHex()));
        return saved.bytes();
    };
    const QString unchanged = written(QStringLiteral("a"), fileWith(gridAt, qint32(9)));
    EXPECT_EQ(opened(unchanged).givenGamut().report().gridPoints, 9);
    const Problem::Code refused(KVProblemCode::SavedGamutInvalidValues);
    for (const qint32 grid : {std::numeric_limits<qint32>::min(), -1, 0, 130})
        EXPECT_EQ(codeOf(fileWith(gridAt, grid)), refused) << grid;
    for (const double uncertainty : {-1e308, -1e-3, 1e7})
        EXPECT_EQ(codeOf(fileWith(uncertaintyAt, uncertainty)), refused) << uncertainty;
    EXPECT_EQ(codeOf(fileWith(secondsAt, -1.0)), refused);
}

TEST_F(SavedGamutTest, refusesAFileWithoutAGamut)
{
    const QCborArray parts{QStringLiteral("KVGamut"), 1, QCborMap{{QStringLiteral("profile"), 5}}};
    EXPECT_EQ(codeOf(QCborValue(QCborKnownTags::Signature, parts).toCbor()),
              Problem::Code(KVProblemCode::NotASavedGamut));
}

// --- Reference bodies -------------------------------------------------------------------------------

TEST_F(GamutSourceTest, opensEachReferenceBodyByItsName)
{
    for (const QString& name : BuiltInNames::bodies()) {
        const GamutSource source = opened(name.toLower());
        EXPECT_FALSE(source.profile());
        EXPECT_FALSE(source.isSaved());
        EXPECT_TRUE(source.hash().isEmpty());
        EXPECT_TRUE(source.kind().startsWith(QStringLiteral("reference body: "))) << qPrintable(name);
        EXPECT_FALSE(source.notes().isEmpty()) << qPrintable(name);
        const KVGamut::Report report = computed(source, {}).report();
        EXPECT_EQ(report.method, KVGamut::Method::GivenSurface);
        EXPECT_GT(report.volumeUncertainty, 0.0);
    }
}

TEST_F(GamutSourceTest, findsAllDevicesWithinTheOptimalColors)
{
    // no printed colour can be outside of the solid of all surface colours
    const KVGamut::GamutObject optimal = computed(opened(QStringLiteral("OptimalColors")), {});
    const KVGamut::GamutObject press = computed(opened(cmykFile), {});
    EXPECT_GT(optimal.compare(press).secondCovered, 0.9999f);
    EXPECT_LT(optimal.compare(press).firstCovered, 0.2f);
}

TEST_F(GamutSourceTest, refusesAnIntentForAReferenceBody)
{
    const Result<GamutSource> source = GamutSource::open(QStringLiteral("OptimalColors@relative"));
    ASSERT_FALSE(source);
    EXPECT_EQ(ProblemText::english(source.error()),
              QStringLiteral("'OptimalColors@relative': this gamut has no rendering intents; leave out "
                             "'@relative'"));
}

TEST_F(GamutSourceTest, prefersAFileToAReferenceBodyByItsPath)
{
    const QString file = written(QStringLiteral("OptimalColors"), contents(cmykFile));
    EXPECT_TRUE(opened(file).profile());
}

TEST_F(GamutSourceTest, restoresASavedReferenceBody)
{
    const KVGamut::GamutObject body = opened(QStringLiteral("OptimalColors")).givenGamut();
    const QString file = written(QStringLiteral("saved"), SavedGamut{body.serialize(), {}}.bytes());
    const GamutSource source = opened(file);
    EXPECT_TRUE(source.isSaved());
    EXPECT_EQ(source.givenGamut().mesh().lab, body.mesh().lab);
    EXPECT_EQ(source.givenGamut().method(), KVGamut::Method::GivenSurface);
}

// --- Settings behind the name -----------------------------------------------------------------------

TEST_F(GamutSourceTest, hasTheIntentBehindItsName)
{
    EXPECT_EQ(intentOf(cmykFile + QStringLiteral("@relative")), KVVMRenderRelativeColorimetric);
    EXPECT_EQ(intentOf(QStringLiteral("sRGB@perceptual")), KVVMRenderPerceptual);
    EXPECT_EQ(intentOf(QStringLiteral("srgb@saturation")), KVVMRenderSaturation);
    EXPECT_EQ(intentOf(QStringLiteral("sRGB@absolute")), KVVMRenderAbsoluteColorimetric);
    EXPECT_EQ(intentOf(QStringLiteral("sRGB")), KVGamut::Settings().intent);
}

TEST_F(GamutSourceTest, prefersAFileWhoseNameContainsTheSetting)
{
    const QString file = written(QStringLiteral("printer@relative"), contents(cmykFile));
    EXPECT_EQ(intentOf(file), KVGamut::Settings().intent);
    EXPECT_EQ(intentOf(file + QStringLiteral("@saturation")), KVVMRenderSaturation);
}

TEST_F(GamutSourceTest, refusesAnUnknownSettingAndNamesTheKnownOnes)
{
    const Result<GamutSource> source = GamutSource::open(QStringLiteral("sRGB@absolut"));
    ASSERT_FALSE(source);
    EXPECT_EQ(
        ProblemText::english(source.error()),
        QStringLiteral("'sRGB@absolut': unknown setting 'absolut' behind the @ (known: absolute, relative, "
                       "perceptual, saturation, pixels, boundary)"));
}

TEST_F(GamutSourceTest, takesAnAtSignInAnUnknownNameForPartOfIt)
{
    const QString name = path(QStringLiteral("me@home.icc"));
    const Result<GamutSource> source = GamutSource::open(name);
    ASSERT_FALSE(source);
    EXPECT_EQ(source.error().code, Problem::Code(KVProblemCode::FileNotFound));
    EXPECT_EQ(source.error().subject, name);
}

TEST_F(GamutSourceTest, refusesAnotherIntentForASavedGamut)
{
    KVGamut::Settings settings;
    settings.intent = KVVMRenderRelativeColorimetric;
    const auto gamut = computed(opened(QStringLiteral("sRGB")), settings);
    const QString file = written(QStringLiteral("saved"), SavedGamut{gamut.serialize(), {}}.bytes());
    EXPECT_TRUE(GamutSource::open(file + QStringLiteral("@relative")));
    const Result<GamutSource> source = GamutSource::open(file + QStringLiteral("@absolute"));
    ASSERT_FALSE(source);
    EXPECT_EQ(source.error().code, Problem::Code(ProblemCode::SavedIntentDiffers));
    EXPECT_EQ(source.error().arguments, QStringList(QStringLiteral("relative")));
}

TEST_F(GamutSourceTest, withSettingsIsProtectedFromBeingOverwritten)
{
    const QString file = written(QStringLiteral("printer.icc"), contents(cmykFile));
    EXPECT_TRUE(overwritesInput(file, {file + QStringLiteral("@relative")}));
}

} // namespace
