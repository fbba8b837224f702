// SPDX-License-Identifier: Apache-2.0
#include "model/bodies/SurfaceColours.h"
#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/GamutSource.h"
#include "model/points/PointWhite.h"
#include "model/problems/ProblemText.h"

#include <gtest/gtest.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QColorSpace>
#include <QtGui/QImage>

#include <algorithm>
#include <cmath>
#include <numbers>

// Gamuts without a profile: lists of colours, photos' colours, and reference bodies.

namespace {

using KVGamut::GamutObject;
using KVGamut::LabPoint;

class GivenGamutTest : public testing::Test
{
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QString written(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return path(name);
    }

    static GamutSource opened(const QString& name)
    {
        return GamutSource::open(name)
            .or_else([](const Problem& p) { ADD_FAILURE() << ProblemText::english(p).toStdString(); })
            .value();
    }

    static QString refusalOf(const QString& name)
    {
        const Result<GamutSource> source = GamutSource::open(name);
        return source ? QStringLiteral("opened") : ProblemText::english(source.error().about({}));
    }

    static bool isInside(const GamutObject& gamut, LabPoint p) { return gamut.isInside(&p.L); }

private:
    QTemporaryDir m_folder;
};

// --- Lists ------------------------------------------------------------------------------------------

class ColourListTest : public GivenGamutTest
{
};

// A pyramid with a square of 20 x 20 as its base and a height of 30: 4,000 dE cubed.
constexpr const char* pyramid =
    "L,a,b,name\n40,-10,-10,a\n40,10,-10,b\n40,10,10,c\n40,-10,10,d\n70,0,0,e\n45,0,0,f\n";

TEST_F(ColourListTest, isTheHullOfItsColours)
{
    const GamutSource source = opened(written(QStringLiteral("list.csv"), pyramid));
    EXPECT_FALSE(source.profile());
    EXPECT_FALSE(source.isSaved());
    EXPECT_EQ(source.kind(), QStringLiteral("hull of 6 colours"));
    EXPECT_EQ(source.hash().size(), 64);
    const GamutObject gamut = source.compute({}).value();
    EXPECT_EQ(gamut.method(), KVGamut::Method::ConvexHull);
    EXPECT_NEAR(gamut.report().volume, 4000.0, 1.0);
    EXPECT_TRUE(source.notes().join(QLatin1Char(' ')).contains(QStringLiteral("convex hull")));
}

TEST_F(ColourListTest, isReadFromEachFormat)
{
    const QByteArray cgats = "CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\n"
                             "BEGIN_DATA\n1 40 0 0\n2 40 30 0\n3 40 0 30\n4 60 0 0\nEND_DATA\n";
    EXPECT_EQ(opened(written(QStringLiteral("x"), cgats)).kind(), QStringLiteral("hull of 4 colours"));
    const QByteArray gpl = "GIMP Palette\nName: x\n#\n255 0 0 r\n0 255 0 g\n0 0 255 b\n0 0 0 k\n";
    EXPECT_EQ(opened(written(QStringLiteral("y"), gpl)).kind(), QStringLiteral("hull of 4 colours"));
    QByteArray ase("ASEF\0\1\0\0\0\0\0\4", 12);
    for (const char* lab : {"3f000000"
                            "00000000"
                            "00000000",
                            "3f000000"
                            "42200000"
                            "00000000",
                            "3f000000"
                            "00000000"
                            "42200000",
                            "3f4ccccd"
                            "00000000"
                            "00000000"})
        ase += QByteArray::fromHex("0001"
                                   "00000018"
                                   "0002"
                                   "00410000"
                                   "4c414220") +
               QByteArray::fromHex(lab) + QByteArray::fromHex("0002");
    EXPECT_EQ(opened(written(QStringLiteral("z"), ase)).kind(), QStringLiteral("hull of 4 colours"));
}

TEST_F(ColourListTest, saysHowItWasRead)
{
    const GamutSource source = opened(written(QStringLiteral("c.csv"), QByteArray(pyramid) + "50,x,0,bad\n"));
    EXPECT_EQ(source.kind(), QStringLiteral("hull of 6 colours"));
    EXPECT_TRUE(source.notes().last().contains(QStringLiteral("1 of 7 colours are left out")))
        << qPrintable(source.notes().join(QLatin1Char('|')));
}

// Black, red, green and blue.
constexpr const char* rgbList = "R,G,B,name\n0,0,0,k\n255,0,0,r\n0,255,0,g\n0,0,255,b\n";

TEST_F(ColourListTest, ofDeviceValuesNeedsTheirSpace)
{
    const QString file = written(QStringLiteral("rgb.csv"), rgbList);
    EXPECT_TRUE(refusalOf(file).contains(QStringLiteral("--points-space"))) << qPrintable(refusalOf(file));
    const auto volumeIn = [&](const char* space) {
        PointOptions options;
        options.space = QLatin1String(space);
        const Result<GamutSource> source = GamutSource::open(file, {}, options);
        EXPECT_TRUE(source);
        EXPECT_EQ(source->kind(), QStringLiteral("hull of 4 colours"));
        EXPECT_TRUE(source->notes().contains(
            QStringLiteral("The colours are RGB values of %1, converted with the absolute intent.")
                .arg(options.space)))
            << qPrintable(source->notes().join(QLatin1Char('|')));
        return source->givenGamut().volume();
    };
    // the tetrahedron of black and the primaries of sRGB, IEC 61966-2-1, adapted to D50
    EXPECT_NEAR(volumeIn("sRGB"), 292291.0, 1500.0);
    EXPECT_GT(volumeIn("Rec2020"), 1.5 * volumeIn("sRGB"));
}

// The pyramid as a chart in which further inks differ; the four known ones alone would be a chart, too.
QByteArray chartOfInks(const QByteArray& names, int inks)
{
    QByteArray rows;
    const QByteArrayList labs{"40 -10 -10", "40 10 -10", "40 10 10", "40 -10 10", "70 0 0", "45 0 0"};
    for (int i = 0; i < 1 << std::max(6, inks); ++i) {
        rows += QByteArray::number(i + 1);
        for (int ink = 0; ink < inks; ++ink)
            rows += (i >> ink & 1) ? " 100" : " 0";
        rows += ' ' + labs[i % labs.size()] + '\n';
    }
    return "CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID " + names +
           " LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\nBEGIN_DATA\n" + rows + "END_DATA\n";
}

TEST_F(ColourListTest, ofMoreThanFourInksSaysWhatItIs)
{
    const std::pair<QByteArray, int> charts[] = {
        {"5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5", 5},
        {"CMYKOG_C CMYKOG_M CMYKOG_Y CMYKOG_K CMYKOG_O CMYKOG_G", 6},
        {"CMYK_C CMYK_M CMYK_Y CMYK_K ORANGE GREEN", 6},
        {"C M Y K O", 5},
    };
    for (const auto& [names, inks] : charts) {
        const GamutSource source = opened(written(QStringLiteral("chart.txt"), chartOfInks(names, inks)));
        EXPECT_FALSE(source.chart()) << names.constData();
        EXPECT_EQ(source.kind(), QStringLiteral("hull of 64 colours of a chart of %1 inks").arg(inks))
            << names.constData();
        EXPECT_NEAR(source.givenGamut().volume(), 4000.0f, 1.0f) << names.constData();
        const QString notes = source.notes().join(QLatin1Char('|'));
        EXPECT_TRUE(notes.contains(QStringLiteral("Warning: this is a chart of %1 inks.").arg(inks)))
            << qPrintable(notes);
        EXPECT_FALSE(notes.contains(QStringLiteral("ignored columns"))) << qPrintable(notes);
    }
}

TEST_F(ColourListTest, isAChartIfRgbAndCmykAreBothThere)
{
    const GamutSource source = opened(written(
        QStringLiteral("chart.txt"), chartOfInks("CMYK_C CMYK_M CMYK_Y CMYK_K RGB_R RGB_G RGB_B", 7)));
    EXPECT_TRUE(source.chart());
}

TEST_F(ColourListTest, isRefusedIfItIsFlat)
{
    EXPECT_EQ(refusalOf(written(QStringLiteral("f.csv"), "L,a,b\n50,0,0\n50,10,0\n50,0,10\n50,9,9\n")),
              QStringLiteral("the hull of the 4 colours encloses less than 1 cubic dE; a gamut needs colours "
                             "of different lightness, hue and chroma"));
}

TEST_F(ColourListTest, hasNoIntent)
{
    const QString file = written(QStringLiteral("list.csv"), pyramid);
    EXPECT_EQ(refusalOf(file + QStringLiteral("@relative")),
              QStringLiteral("this gamut has no rendering intents; leave out '@relative'"));
}

TEST_F(ColourListTest, isAbandonedWhenCancelled)
{
    const KVCompletionProtocolPtr task = KVCompletionProtocol::createTask(QStringLiteral("list"));
    task->cancel();
    for (const QString& name : {written(QStringLiteral("list.csv"), pyramid), QStringLiteral("OptimalColors"),
                                QStringLiteral("SurfaceColors")}) {
        const Result<GamutSource> source = GamutSource::open(name, task);
        ASSERT_FALSE(source) << qPrintable(name);
        EXPECT_TRUE(source.error().isCancelled()) << qPrintable(name);
    }
}

// --- Photos -----------------------------------------------------------------------------------------

class PhotoGamutTest : public GivenGamutTest
{
protected:
    /// The corners of the RGB cube but for white, each in a band.
    static QImage corners()
    {
        QImage image(70, 10, QImage::Format_RGB32);
        for (int i = 0; i < 7; ++i)
            for (int x = 0; x < 10; ++x)
                for (int y = 0; y < 10; ++y)
                    image.setPixelColor(i * 10 + x, y,
                                        QColor(i & 1 ? 255 : 0, i & 2 ? 255 : 0, i & 4 ? 255 : 0));
        return image;
    }

    QString saved(QImage image, const char* space, const QString& name = QStringLiteral("photo.png")) const
    {
        image.setColorSpace(space
                                ? QColorSpace::fromIccProfile(BuiltInProfiles::profile(QLatin1String(space)))
                                : QColorSpace());
        EXPECT_TRUE(image.save(path(name)));
        return path(name);
    }

    /// From IEC 61966-2-1 and the Bradford transform to D50.
    static LabPoint labOfCorner(int corner)
    {
        constexpr double columns[3][3] = {{0.4360747, 0.2225045, 0.0139322},
                                          {0.3850649, 0.7168786, 0.0971045},
                                          {0.1430804, 0.0606169, 0.7141733}};
        constexpr double white[3] = {0.9642, 1.0, 0.8249};
        double f[3];
        for (int i = 0; i < 3; ++i) {
            double value = 0.0;
            for (int channel = 0; channel < 3; ++channel)
                value += corner >> channel & 1 ? columns[channel][i] : 0.0;
            value /= white[i];
            f[i] = value > 216.0 / 24389.0 ? std::cbrt(value) : (24389.0 / 27.0 * value + 16.0) / 116.0;
        }
        return {float(116 * f[1] - 16), float(500 * (f[0] - f[1])), float(200 * (f[1] - f[2]))};
    }
};

TEST_F(PhotoGamutTest, isTheHullOfItsColours)
{
    const GamutSource source = opened(saved(corners(), "sRGB") + QStringLiteral("@pixels"));
    EXPECT_EQ(source.kind(), QStringLiteral("hull of 7 colours of the 700 pixels of a photo"));
    EXPECT_FALSE(source.profile());
    const GamutObject gamut = source.compute({}).value();
    EXPECT_EQ(gamut.method(), KVGamut::Method::ConvexHull);
    std::vector<LabPoint> expected;
    for (int corner = 0; corner < 7; ++corner)
        expected.push_back(labOfCorner(corner));
    GamutObject hull;
    ASSERT_TRUE(hull.initWithColors(expected));
    EXPECT_NEAR(gamut.report().volume, hull.report().volume, 0.001 * hull.report().volume);
    EXPECT_GT(gamut.report().volumeUncertainty, 0.0);
    EXPECT_LT(gamut.report().volumeUncertainty, 0.05 * gamut.report().volume);
}

TEST_F(PhotoGamutTest, dependsOnTheEmbeddedProfile)
{
    const double narrow = opened(saved(corners(), "sRGB") + QStringLiteral("@pixels")).givenGamut().volume();
    const double wide = opened(saved(corners(), "Rec2020") + QStringLiteral("@pixels")).givenGamut().volume();
    EXPECT_GT(wide, 1.5 * narrow);
}

TEST_F(PhotoGamutTest, saysThatColoursAreTakenAsSrgb)
{
    const GamutSource source = opened(saved(corners(), nullptr) + QStringLiteral("@pixels"));
    EXPECT_TRUE(source.notes().contains(QStringLiteral("no embedded profile; the colours are taken as sRGB")))
        << qPrintable(source.notes().join(QLatin1Char('|')));
}

TEST_F(PhotoGamutTest, isInTheDeclaredSpaceOnlyWithoutAProfile)
{
    PointOptions options;
    options.space = QStringLiteral("Rec2020");
    const auto volumeOf = [&](const QString& file, const PointOptions& reading) {
        const Result<GamutSource> source = GamutSource::open(file + QStringLiteral("@pixels"), {}, reading);
        return source ? source->givenGamut().volume() : 0.0f;
    };
    const QString plain = saved(corners(), nullptr, QStringLiteral("plain.png"));
    const QString tagged = saved(corners(), "Rec2020", QStringLiteral("tagged.png"));
    EXPECT_FLOAT_EQ(volumeOf(plain, options), volumeOf(tagged, {}));
    EXPECT_GT(volumeOf(plain, options), 1.5f * volumeOf(plain, {}));
    options.space = QStringLiteral("sRGB");
    EXPECT_FLOAT_EQ(volumeOf(tagged, options), volumeOf(tagged, {}));
    options.space = path(QStringLiteral("missing.icc"));
    EXPECT_EQ(ProblemText::english(GamutSource::open(plain + QStringLiteral("@pixels"), {}, options).error()),
              QStringLiteral("'%1': cannot be read: No such file or directory").arg(options.space));
}

TEST_F(PhotoGamutTest, hasTheHashOfTheFile)
{
    for (const char* name : {"photo.png", "photo.jpg"}) {
        const QString file = saved(corners(), "sRGB", QLatin1String(name));
        QFile opening(file);
        ASSERT_TRUE(opening.open(QIODevice::ReadOnly));
        const QByteArray hash = QCryptographicHash::hash(opening.readAll(), QCryptographicHash::Sha256);
        EXPECT_EQ(opened(file + QStringLiteral("@pixels")).hash(), QString::fromLatin1(hash.toHex())) << name;
    }
}

TEST_F(PhotoGamutTest, withoutAProfileIsSaidToHaveColoursOnly)
{
    EXPECT_EQ(refusalOf(saved(corners(), nullptr)),
              QStringLiteral("the PNG picture has no embedded profile; the colours of its pixels, taken as "
                             "sRGB, are a gamut with @pixels after the name"));
}

TEST_F(PhotoGamutTest, isOfTheProfileWithoutTheWord)
{
    const GamutSource source = opened(saved(corners(), "AdobeRGB"));
    EXPECT_EQ(source.kind(), QStringLiteral("profile of a picture"));
    ASSERT_TRUE(source.profile());
    EXPECT_EQ(source.notes(),
              QStringList(QStringLiteral("This is the gamut of the profile that is embedded in "
                                         "the picture, not of its colours; for those add "
                                         "@pixels to its name.")));
}

TEST_F(PhotoGamutTest, refusesWhatIsNoPhoto)
{
    EXPECT_EQ(refusalOf(QStringLiteral("sRGB@pixels")), QStringLiteral("no such file"));
    EXPECT_EQ(refusalOf(written(QStringLiteral("x.icc"), BuiltInProfiles::profile(QStringLiteral("sRGB"))) +
                        QStringLiteral("@pixels")),
              QStringLiteral("unsupported picture format"));
    QImage grey(10, 10, QImage::Format_RGB32);
    grey.fill(Qt::gray);
    EXPECT_EQ(
        refusalOf(saved(grey, "sRGB") + QStringLiteral("@pixels")),
        QStringLiteral("the hull of the 1 colours encloses less than 1 cubic dE; a gamut needs colours of "
                       "different lightness, hue and chroma"));
}

TEST_F(PhotoGamutTest, isAbandonedWhenCancelled)
{
    const KVCompletionProtocolPtr task = KVCompletionProtocol::createTask(QStringLiteral("photo"));
    task->cancel();
    const Result<GamutSource> source =
        GamutSource::open(saved(corners(), "sRGB") + QStringLiteral("@pixels"), task);
    ASSERT_FALSE(source);
    EXPECT_TRUE(source.error().isCancelled());
}

// --- Surfaces in .gam files -------------------------------------------------------------------------

class GamFileTest : public GivenGamutTest
{
protected:
    static constexpr const char* start = "GAMUT\n\nDESCRIPTOR \"a box\"\nCOLOR_REP \"LAB\"\n"
                                         "GAMUT_CENTER \"50 0 0\"\n# the corners\nNUMBER_OF_FIELDS 4\n";
    static constexpr const char* vertices =
        "BEGIN_DATA_FORMAT\nVERTEX_NO LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\nNUMBER_OF_SETS 8\nBEGIN_DATA\n"
        "0 30 -10 -5\n1 30 -10 25\n2 30 10 -5\n3 30 10 25\n4 70 -10 -5\n5 70 -10 25\n6 70 10 -5\n7 70 10 25\n"
        "END_DATA\n";
    static constexpr const char* triangles =
        "BEGIN_DATA_FORMAT\nVERTEX_0 VERTEX_1 VERTEX_2\nEND_DATA_FORMAT\nNUMBER_OF_SETS 12\nBEGIN_DATA\n"
        "0 1 3\n0 3 2\n4 6 7\n4 7 5\n0 4 5\n0 5 1\n2 3 7\n2 7 6\n0 2 6\n0 6 4\n1 5 7\n1 7 3\nEND_DATA\n";

    static QByteArray box() { return QByteArray(start) + vertices + triangles; }

    static QByteArray replaced(const char* before, const char* after)
    {
        QByteArray bytes = box();
        EXPECT_TRUE(bytes.contains(before)) << before;
        return bytes.replace(before, after);
    }

    QString refusalOfBytes(const QByteArray& bytes) const
    {
        return refusalOf(written(QStringLiteral("x.gam"), bytes));
    }
};

TEST_F(GamFileTest, hasTheSurfaceOfTheFile)
{
    const GamutSource source = opened(written(QStringLiteral("box.gam"), box()));
    EXPECT_EQ(source.kind(), QStringLiteral("surface in a .gam file, of 8 vertices"));
    EXPECT_EQ(source.hash().size(), 64);
    const GamutObject gamut = source.compute({}).value();
    EXPECT_EQ(gamut.method(), KVGamut::Method::GivenSurface);
    EXPECT_DOUBLE_EQ(gamut.report().volume, 24000.0);
    EXPECT_EQ(gamut.faceCount(), 12);
    EXPECT_TRUE(isInside(gamut, {50, 0, 10}));
}

TEST_F(GamFileTest, mayHaveOtherColumnsAndVertexNumbers)
{
    QByteArray bytes = replaced("VERTEX_NO LAB_L LAB_A LAB_B", "LAB_B LAB_L EXTRA LAB_A VERTEX_NO");
    const QByteArrayList rows{"0 30 -10 -5", "1 30 -10 25", "2 30 10 -5", "3 30 10 25",
                              "4 70 -10 -5", "5 70 -10 25", "6 70 10 -5", "7 70 10 25"};
    for (const QByteArray& row : rows) {
        const QByteArrayList part = row.split(' ');
        bytes.replace('\n' + row + '\n',
                      '\n' + part[3] + ' ' + part[1] + " 9 " + part[2] + ' ' + part[0] + '\n');
    }
    EXPECT_DOUBLE_EQ(opened(written(QStringLiteral("a"), bytes)).givenGamut().report().volume, 24000.0);
    bytes = replaced("\n7 70 10 25", "\n-41 70 10 25");
    for (const char* row : {"4 6 7", "4 7 5", "2 3 7", "2 7 6", "1 5 7", "1 7 3"})
        bytes.replace('\n' + QByteArray(row) + '\n', '\n' + QByteArray(row).replace("7", "-41") + '\n');
    EXPECT_DOUBLE_EQ(opened(written(QStringLiteral("b"), bytes)).givenGamut().report().volume, 24000.0);
}

TEST_F(GamFileTest, isRefusedWithTheLineThatIsWrong)
{
    EXPECT_EQ(refusalOfBytes(replaced("2 30 10 -5", "2 30 ten -5")),
              QStringLiteral("line 15: LAB_A is 'ten', expected a number"));
    EXPECT_EQ(refusalOfBytes(replaced("2 30 10 -5", "2 30 nan -5")),
              QStringLiteral("line 15: LAB_A is 'nan', expected a number"));
    EXPECT_EQ(refusalOfBytes(replaced("2 30 10 -5", "1 30 10 -5")),
              QStringLiteral("line 15: vertex 1 occurs twice"));
    EXPECT_EQ(refusalOfBytes(replaced("4 7 5", "4 8 5")), QStringLiteral("line 30: there is no vertex 8"));
    EXPECT_EQ(refusalOfBytes(replaced("4 7 5", "4 7.5 5")),
              QStringLiteral("line 30: VERTEX_1 is '7.5', expected a number"));
}

TEST_F(GamFileTest, isRefusedWithoutItsTables)
{
    EXPECT_EQ(refusalOfBytes("GAMUT\n"),
              QStringLiteral("the surface has no table of VERTEX_NO LAB_L LAB_A LAB_B"));
    EXPECT_EQ(refusalOfBytes(QByteArray(start) + vertices),
              QStringLiteral("the surface has no table of VERTEX_0 VERTEX_1 VERTEX_2"));
    EXPECT_EQ(refusalOfBytes(replaced("COLOR_REP \"LAB\"", "COLOR_REP \"JAB\"")),
              QStringLiteral("the surface is in 'JAB'; only Lab and XYZ are supported"));
    EXPECT_TRUE(refusalOfBytes(box().chopped(10)).contains(QStringLiteral("END_DATA")));
    EXPECT_TRUE(refusalOfBytes(replaced("VERTEX_0 VERTEX_1 VERTEX_2", ".INCLUDE \"/etc/passwd\""))
                    .contains(QStringLiteral(".INCLUDE")));
}

TEST_F(GamFileTest, isRefusedIfItIsNotClosed)
{
    EXPECT_EQ(refusalOfBytes(replaced("1 7 3\n", "")), QStringLiteral("the surface is not closed"));
    EXPECT_EQ(refusalOfBytes(replaced("7 70 10 25", "7 7000 10 25")),
              QStringLiteral("the surface has vertices that are NaN or out of range"));
    EXPECT_EQ(refusalOfBytes(replaced("7 70 10 25", "7 10 -20 0")),
              QStringLiteral("the surface self-intersects"));
}

TEST_F(GamFileTest, isAbandonedWhenCancelled)
{
    const KVCompletionProtocolPtr task = KVCompletionProtocol::createTask(QStringLiteral("gam"));
    task->cancel();
    const Result<GamutSource> source = GamutSource::open(written(QStringLiteral("box.gam"), box()), task);
    ASSERT_FALSE(source);
    EXPECT_TRUE(source.error().isCancelled());
}

// --- Boundaries in profiles -------------------------------------------------------------------------

class BoundaryTest : public GivenGamutTest
{
protected:
    /// The tag as ICC.2 describes it.
    static QByteArray tagOf(const std::vector<LabPoint>& points,
                            const std::vector<std::array<quint32, 3>>& faces, quint16 deviceChannels = 0)
    {
        QByteArray bytes("gbd ");
        QDataStream stream(&bytes, QIODevice::Append);
        stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
        stream << quint32(0) << quint16(3) << deviceChannels << quint32(points.size())
               << quint32(faces.size());
        for (const auto& [a, b, c] : faces)
            stream << a << b << c;
        for (const LabPoint& p : points)
            stream << p.L << p.a << p.b;
        for (std::size_t i = 0; i < points.size() * deviceChannels; ++i)
            stream << 0.5f;
        return bytes;
    }

    /// A profile with one tag.
    static QByteArray profileWith(const QByteArray& signature, const QByteArray& tag,
                                  const char* pcs = "Lab ")
    {
        QByteArray bytes(128, '\0');
        bytes.replace(8, 4, QByteArray::fromHex("05000000")).replace(20, 4, pcs).replace(36, 4, "acsp");
        QDataStream stream(&bytes, QIODevice::Append);
        stream << quint32(1);
        stream.writeRawData(signature.data(), 4);
        stream << quint32(144) << quint32(tag.size());
        return bytes + tag;
    }

    static const std::vector<LabPoint> tetrahedron; ///< 4,500 dE cubed
    static const std::vector<std::array<quint32, 3>> clockwise;

    QString boundaryIn(const QByteArray& bytes, const char* name = "p.icc") const
    {
        return written(QLatin1String(name), bytes) + QStringLiteral("@boundary");
    }
};

const std::vector<LabPoint> BoundaryTest::tetrahedron{{20, 0, 0}, {50, 0, 0}, {20, 30, 0}, {20, 0, 30}};
const std::vector<std::array<quint32, 3>> BoundaryTest::clockwise{{0, 1, 2}, {0, 2, 3}, {0, 3, 1}, {1, 3, 2}};

TEST_F(BoundaryTest, isTheGamutOfTheProfile)
{
    const GamutSource source = opened(boundaryIn(profileWith("gbd1", tagOf(tetrahedron, clockwise))));
    EXPECT_EQ(source.kind(), QStringLiteral("gamut boundary of a profile (tag gbd1, relative)"));
    EXPECT_FALSE(source.profile());
    EXPECT_EQ(source.hash().size(), 64);
    EXPECT_EQ(source.givenGamut().method(), KVGamut::Method::GivenSurface);
    EXPECT_DOUBLE_EQ(source.givenGamut().report().volume, 4500.0);
    EXPECT_TRUE(isInside(source.givenGamut(), {25, 5, 5}));
}

TEST_F(BoundaryTest, mayHaveDeviceValues)
{
    const QString file = boundaryIn(profileWith("gbd0", tagOf(tetrahedron, clockwise, 4)));
    EXPECT_DOUBLE_EQ(opened(file).givenGamut().report().volume, 4500.0);
}

TEST_F(BoundaryTest, mayBeInXyz)
{
    // X, Y and Z of L* 100, and of greys and colours, relative to D50
    const std::vector<LabPoint> xyz{
        {0.9642f, 1.0f, 0.8249f}, {0.0f, 0.0f, 0.0f}, {0.4f, 0.2f, 0.05f}, {0.1f, 0.1f, 0.6f}};
    const GamutObject gamut =
        opened(boundaryIn(profileWith("gbd3", tagOf(xyz, clockwise), "XYZ "))).givenGamut();
    EXPECT_NEAR(gamut.whitePoint().L, 100.0f, 0.01f);
    EXPECT_NEAR(gamut.blackPoint().L, 0.0f, 0.01f);
}

TEST_F(BoundaryTest, isRefusedIfItIsDamaged)
{
    const QByteArray tag = tagOf(tetrahedron, clockwise);
    const QString damaged = QStringLiteral("the tag 'gbd1' is damaged");
    EXPECT_EQ(refusalOf(boundaryIn(profileWith("gbd1", tag.chopped(1)))), damaged);
    EXPECT_EQ(refusalOf(boundaryIn(profileWith("gbd1", tag).chopped(1))), damaged);
    EXPECT_EQ(refusalOf(boundaryIn(profileWith("gbd1", QByteArray()))), damaged);
    for (const qsizetype count : {8, 10, 12, 16}) { // channels, vertices and faces
        QByteArray huge = tag;
        huge.replace(count, count < 12 ? 2 : 4, QByteArray(count < 12 ? 2 : 4, '\xFF'));
        EXPECT_EQ(refusalOf(boundaryIn(profileWith("gbd1", huge))), damaged) << count;
    }
    auto faces = clockwise;
    faces[1][2] = 0xFFFFFFFF;
    EXPECT_EQ(refusalOf(boundaryIn(profileWith("gbd1", tagOf(tetrahedron, faces)))),
              QStringLiteral("the surface's faces refer to vertices that do not exist"));
    EXPECT_EQ(refusalOf(boundaryIn(profileWith("gbd1", tag, "spec"))),
              QStringLiteral("the surface is in 'spec'; only Lab and XYZ are supported"));
}

TEST_F(BoundaryTest, isMissingInMostProfiles)
{
    const QString missing = QStringLiteral("the profile has no gamut boundary (a tag gbd0 to gbd3)");
    EXPECT_EQ(refusalOf(boundaryIn(BuiltInProfiles::profile(QStringLiteral("sRGB")))), missing);
    EXPECT_EQ(refusalOf(boundaryIn("short")), missing);
    EXPECT_EQ(refusalOf(boundaryIn(profileWith("gbd1", {}).left(132))), missing);
}

// --- Real surface colours ---------------------------------------------------------------------------

LabPoint published(double L, double chroma, double degrees)
{
    const double angle = degrees * std::numbers::pi / 180.0;
    return {float(L), float(chroma * std::cos(angle)), float(chroma * std::sin(angle))};
}

LabPoint adapted(const LabPoint& published)
{
    return PointWhite::fromLab(published, QStringLiteral("C"));
}

TEST_F(GivenGamutTest, surfaceColoursReachThePublishedChroma)
{
    const GamutObject gamut = opened(QStringLiteral("SurfaceColors")).givenGamut();
    for (int hue = 0; hue < SurfaceColours::hueCount; ++hue)
        for (int i = 0; i < SurfaceColours::lightnessCount; ++i) {
            const double L = 15 + 5 * i, chroma = SurfaceColours::chroma(hue, i);
            const double inwards = i == 0 ? 0.2 : i + 1 == SurfaceColours::lightnessCount ? -0.2 : 0.0;
            if (chroma < 4)
                continue;
            EXPECT_FALSE(isInside(gamut, adapted(published(L, chroma + 2.5, 10 * hue)))) << hue << " " << L;
            EXPECT_TRUE(isInside(gamut, adapted(published(L + inwards, chroma - 3.0, 10 * hue))))
                << hue << " " << L;
        }
    EXPECT_FALSE(isInside(gamut, {14, 0, 0}));
    EXPECT_FALSE(isInside(gamut, {91, 0, 0}));
    EXPECT_TRUE(isInside(gamut, {16, 0, 0}));
}

TEST_F(GivenGamutTest, surfaceColoursHaveTheVolumeOfThePublishedTable)
{
    // discs of lightness, sectors of hue, without the adaptation, which adds a few percent
    double volume = 0.0;
    for (int i = 0; i < SurfaceColours::lightnessCount; ++i) {
        double area = 0.0;
        for (int hue = 0; hue < SurfaceColours::hueCount; ++hue)
            area += 0.5 * std::sin(10.0 * std::numbers::pi / 180.0) * SurfaceColours::chroma(hue, i) *
                    SurfaceColours::chroma((hue + 1) % SurfaceColours::hueCount, i);
        volume += area * (i == 0 || i + 1 == SurfaceColours::lightnessCount ? 2.5 : 5.0);
    }
    const GamutSource source = opened(QStringLiteral("SurfaceColors"));
    const KVGamut::Report report = source.givenGamut().report();
    EXPECT_NEAR(report.volume, volume, 0.05 * volume);
    EXPECT_GT(report.volumeUncertainty, 0.005 * volume);
    EXPECT_LT(report.volumeUncertainty, 0.03 * volume);
}

TEST_F(GivenGamutTest, surfaceColoursAreOptimalColoursAtMost)
{
    const GamutObject optimal = opened(QStringLiteral("OptimalColors")).givenGamut();
    const GamutObject real = opened(QStringLiteral("SurfaceColors")).givenGamut();
    EXPECT_GT(optimal.compare(real).secondCovered, 0.99f);
    EXPECT_LT(optimal.compare(real).firstCovered, 0.5f);
}

} // namespace
