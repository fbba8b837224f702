// SPDX-License-Identifier: Apache-2.0
#include "app/support/TestPictures.h"
#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/GamutSource.h"
#include "model/inputs/SavedGamut.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QCborArray>
#include <QtCore/QCborMap>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <functional>

using testing::HasSubstr;
using testing::Not;

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

    /// What is said about a file of these bytes, after its name.
    std::string problemOf(const QByteArray& bytes) const
    {
        const QString file = written(QStringLiteral("input"), bytes);
        const GamutSource source = GamutSource::open(file);
        EXPECT_FALSE(source.isOpen());
        EXPECT_FALSE(source.profile());
        EXPECT_FALSE(source.isSaved());
        const QString start = QStringLiteral("'%1': ").arg(file);
        EXPECT_TRUE(source.problem().startsWith(start)) << source.problem().toStdString();
        EXPECT_FALSE(source.problem().contains(QLatin1Char('\n')));
        return source.problem().mid(start.size()).toStdString();
    }

    const QByteArray m_cmyk = contents(cmykFile);
    const QByteArray m_rgb = BuiltInProfiles::profile(QStringLiteral("AdobeRGB"));

private:
    QTemporaryDir m_folder;
};

// --- Profiles -----------------------------------------------------------------------------------------

TEST_F(GamutSourceTest, opensABuiltInProfileByItsName)
{
    const GamutSource source = GamutSource::open(QStringLiteral("AdobeRGB"));
    ASSERT_TRUE(source.isOpen());
    EXPECT_FALSE(source.isSaved());
    EXPECT_EQ(source.name(), QStringLiteral("AdobeRGB"));
    EXPECT_TRUE(source.problem().isEmpty());
    EXPECT_EQ(source.profile()->bytes, m_rgb);
}

TEST_F(GamutSourceTest, opensAProfileFileWhateverItIsCalled)
{
    const QString file = written(QStringLiteral("принтер.kvgamut"), m_cmyk);
    const GamutSource source = GamutSource::open(file);
    ASSERT_TRUE(source.isOpen()) << source.problem().toStdString();
    EXPECT_EQ(source.name(), file);
    EXPECT_EQ(source.profile()->bytes, m_cmyk);
}

TEST_F(GamutSourceTest, computesWithTheSettings)
{
    const GamutSource source = GamutSource::open(cmykFile);
    GamutSettings settings;
    settings.intent = KVVMRenderPerceptual;
    settings.blackPointCompensation = true;
    settings.gridPoints = 9;
    const KVGamut::Report report = source.compute(settings).report();
    EXPECT_EQ(report.intent, KVVMRenderPerceptual);
    EXPECT_TRUE(report.blackPointCompensation);
    EXPECT_EQ(report.gridPoints, 9);
    EXPECT_EQ(report.channels, 4);
}

TEST_F(GamutSourceTest, handsTheOpenedProfileAndTheSettingsToTheViewer)
{
    const GamutSource source = GamutSource::open(cmykFile);
    const auto params = source.loadParams({KVVMRenderSaturation, true, 17});
    EXPECT_EQ(params.value(QStringLiteral("Profile")).value<KVProfilePtr>(), source.profile());
    const auto how = params.value(QStringLiteral("AdditionnalParam")).toHash();
    EXPECT_EQ(how.value(QStringLiteral("Link_ICCRendering")).toInt(), 2);
    EXPECT_TRUE(how.value(QStringLiteral("Link_blackPointCompensation")).toBool());
    EXPECT_EQ(how.value(QStringLiteral("Link_GridPointNumber")).toInt(), 17);
}

TEST_F(GamutSourceTest, saysThatAFileIsOfNoKnownKind)
{
    for (const QByteArray& bytes : {QByteArray("short"), QByteArray(5000, 'x'), QByteArray(1, '\0')})
        EXPECT_EQ(problemOf(bytes), "this is neither an ICC profile, nor a PNG, JPEG or TIFF picture, nor a "
                                    "saved gamut");
}

TEST_F(GamutSourceTest, saysWhyAProfileDoesNotOpen)
{
    EXPECT_THAT(problemOf(m_cmyk.left(1000)), HasSubstr("tag 'A2B0'"));
    EXPECT_EQ(problemOf(QByteArray()), "this is no ICC profile");
}

TEST_F(GamutSourceTest, namesAMissingFileAndAFolder)
{
    const QString missing = path(QStringLiteral("無.png"));
    EXPECT_EQ(GamutSource::open(missing).problem(), QStringLiteral("there is no file '%1'").arg(missing));
    EXPECT_THAT(GamutSource::open(path(QString())).problem().toStdString(), HasSubstr("is not a file"));
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
    const GamutSource source = GamutSource::open(file);
    ASSERT_TRUE(source.isOpen()) << source.problem().toStdString();
    EXPECT_FALSE(source.isSaved());
    EXPECT_EQ(source.profile()->bytes, icc);
}

TEST_P(PictureSourceTest, saysThatThereIsNoProfile)
{
    const QString file = path(QStringLiteral("bare"));
    GetParam().write(file, QByteArray());
    EXPECT_EQ(problemOf(contents(file)),
              std::string("this ") + GetParam().format + " picture has no embedded profile");
}

TEST_P(PictureSourceTest, saysThatThePictureIsDamaged)
{
    const QString file = path(QStringLiteral("whole"));
    GetParam().write(file, GetParam().cmyk ? m_cmyk : m_rgb);
    EXPECT_THAT(problemOf(contents(file).left(16)),
                HasSubstr(std::string("this ") + GetParam().format + " picture is damaged: "));
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

TEST_F(GamutSourceTest, saysWhenWhatIsEmbeddedIsNoProfile)
{
    const QString file = path(QStringLiteral("odd.jpg"));
    testpictures::writeJpeg(file, QByteArray(500, 'x'));
    EXPECT_THAT(problemOf(contents(file)), HasSubstr("ICC profile"));
    EXPECT_THAT(problemOf(contents(file)), Not(HasSubstr("neither")));
}

TEST_F(GamutSourceTest, joinsAProfileOfMoreThanOneJpegSegment)
{
    ASSERT_GT(m_cmyk.size(), 2 * 65535); // what one segment holds
    const QString file = path(QStringLiteral("print.jpg"));
    testpictures::writeCmykJpeg(file, m_cmyk);
    const GamutSource source = GamutSource::open(file);
    ASSERT_TRUE(source.isOpen());
    EXPECT_EQ(source.profile()->bytes, m_cmyk);
}

// --- Saved gamuts -------------------------------------------------------------------------------------

class SavedGamutTest : public GamutSourceTest
{
protected:
    static KVGamut::GamutObject computed()
    {
        return GamutSource::open(QStringLiteral("sRGB")).compute({KVVMRenderRelativeColorimetric, true, 9});
    }

    static QByteArray savedBytes()
    {
        return SavedGamut{computed().serialize(), QStringLiteral("sRGB, é 印刷"), QString()}.bytes();
    }
};

TEST_F(SavedGamutTest, opensAgainAsItWas)
{
    const KVGamut::GamutObject gamut = computed();
    const SavedGamut saved{gamut.serialize(), QStringLiteral("my 印刷.icc"), QString()};
    const GamutSource source = GamutSource::open(written(QStringLiteral("any name.png"), saved.bytes()));
    ASSERT_TRUE(source.isOpen()) << source.problem().toStdString();
    EXPECT_TRUE(source.isSaved());
    EXPECT_FALSE(source.profile());
    EXPECT_EQ(source.savedProfile(), QStringLiteral("my 印刷.icc"));
    EXPECT_EQ(source.compute({}).faces(), gamut.faces());
    EXPECT_EQ(source.compute({}).report().volume, gamut.report().volume);
    EXPECT_EQ(source.loadParams({}), gamut.serialize());
}

TEST_F(SavedGamutTest, takesNoNoticeOfTheSettings)
{
    const GamutSource source = GamutSource::open(written(QStringLiteral("a"), savedBytes()));
    const KVGamut::Report report = source.compute({KVVMRenderPerceptual, false, 33}).report();
    EXPECT_EQ(report.intent, KVVMRenderRelativeColorimetric);
    EXPECT_TRUE(report.blackPointCompensation);
    EXPECT_EQ(report.gridPoints, 9);
}

TEST_F(SavedGamutTest, isTheSameBytesForTheSameGamut)
{
    const SavedGamut saved{computed().serialize(), QStringLiteral("x"), QString()};
    SavedGamut again = saved;
    again.gamut = {}; // a hash filled in another order
    QStringList keys = saved.gamut.keys();
    std::sort(keys.rbegin(), keys.rend());
    for (const QString& key : keys)
        again.gamut.insert(key, saved.gamut.value(key));
    EXPECT_EQ(saved.bytes(), again.bytes());
    EXPECT_EQ(SavedGamut::read(saved.bytes()).bytes(), saved.bytes());
}

TEST_F(SavedGamutTest, isSelfDescribedCbor)
{
    // RFC 8949, 3.4.6: 0xd9d9f7; then an array of three whose first is a text of seven bytes
    EXPECT_TRUE(savedBytes().startsWith(QByteArray::fromHex("d9d9f78367") + "KVGamut"));
    EXPECT_TRUE(SavedGamut::isSavedGamut(savedBytes().left(SavedGamut::markerSize)));
    EXPECT_FALSE(SavedGamut::isSavedGamut(savedBytes().left(SavedGamut::markerSize - 1)));
}

TEST_F(SavedGamutTest, isRefusedWhereverItIsCutOff)
{
    const QByteArray whole = savedBytes();
    for (const qsizetype size : {qsizetype(12), qsizetype(13), whole.size() / 2, whole.size() - 1})
        EXPECT_THAT(problemOf(whole.left(size)), HasSubstr("the saved gamut is damaged")) << size;
}

TEST_F(SavedGamutTest, isRefusedWithAChangedByte)
{
    QByteArray changed = savedBytes();
    const qsizetype middle = changed.size() / 2; // in the surface's base64
    changed[middle] = changed[middle] == 'A' ? 'B' : 'A';
    EXPECT_EQ(problemOf(changed), "the saved gamut is damaged");
}

TEST_F(SavedGamutTest, isRefusedWhenItIsOfALaterVersion)
{
    QCborArray parts = QCborValue::fromCbor(savedBytes()).taggedValue().toArray();
    parts[1] = 2;
    EXPECT_EQ(problemOf(QCborValue(QCborKnownTags::Signature, parts).toCbor()),
              "the saved gamut is of version 2, which is not known");
}

TEST_F(SavedGamutTest, isRefusedWithoutAGamut)
{
    const QCborArray parts{QStringLiteral("KVGamut"), 1, QCborMap{{QStringLiteral("profile"), 5}}};
    EXPECT_EQ(problemOf(QCborValue(QCborKnownTags::Signature, parts).toCbor()), "this is no saved gamut");
}

} // namespace
