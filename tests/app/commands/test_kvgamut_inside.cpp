// SPDX-License-Identifier: Apache-2.0
#include "app/support/Boxes.h"
#include "app/support/Numbers.h"

#include <gmock/gmock.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtGui/QColorSpace>
#include <QtGui/QImage>

using namespace kvtest;

namespace {

class InsideTest : public NumbersTest
{
protected:
    void SetUp() override { write(file, box.profile()); }

    /// Runs `inside` with the box as gamut.
    QList<QJsonObject> inside(const QString& arguments)
    {
        return json(QStringList{QStringLiteral("inside"), file} +
                    words(arguments + QStringLiteral(" --intent relative")));
    }

    QString points(const QByteArray& text)
    {
        write(path(QStringLiteral("my points")), text);
        return path(QStringLiteral("my points"));
    }

    QList<QJsonObject> insideOfPoints(const QByteArray& text)
    {
        return json({QStringLiteral("inside"), file, QStringLiteral("--intent"), QStringLiteral("relative"),
                     QStringLiteral("--points"), points(text)});
    }

    void expectAnswer(const QJsonObject& row, const QVector3D& point)
    {
        constexpr float steps = 0.01f; // rounding to 16 bits in the profile
        const QVector3D nearest = box.nearest(point);
        const float distance = (point - nearest).length();
        EXPECT_EQ(lab(row, "lab"), point);
        EXPECT_EQ(flag(row, "inside"), box.contains(point));
        EXPECT_NEAR(number(row, "distance"), double(box.contains(point) ? -distance : distance),
                    double(steps));
        expectNear(lab(row, "nearest"), nearest, steps);
    }

    const Box box{{20, -40, -30}, {80, 40, 50}};
    const QString file = path(QStringLiteral("box.icc"));
};

TEST_F(InsideTest, reportsDistanceAndNearestPointOfABox)
{
    const QList<QVector3D> asked{{50, 0, 45},    {25, 10, 0},    {50, -38, 10}, {95, 5, 5},
                                 {10, -50, -40}, {50, 100, 100}, {79, 0, 0},    {81, 0, 0}};
    QString line;
    for (const QVector3D& p : asked)
        line += QStringLiteral(" %1 %2 %3").arg(double(p.x())).arg(double(p.y())).arg(double(p.z()));
    const auto rows = inside(line);
    ASSERT_EQ(rows.size(), asked.size());
    for (qsizetype i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(number(rows[i], "index"), i + 1);
        expectAnswer(rows[i], asked[i]);
    }
}

TEST_F(InsideTest, acceptsNegativeNumbersInEveryNotation)
{
    const auto rows = inside(QStringLiteral("50 -22 30 50 -2.5e1 -.5 -5 -.25 -0"));
    ASSERT_EQ(rows.size(), 3);
    expectAnswer(rows[0], {50, -22, 30});
    expectAnswer(rows[1], {50, -25, -0.5f});
    expectAnswer(rows[2], {-5, -0.25f, 0});
}

TEST_F(InsideTest, acceptsNumbersBetweenOptions)
{
    const auto rows = json(words(QStringLiteral("inside --grid 9 sRGB 50 -20 30 --intent relative")));
    ASSERT_EQ(rows.size(), 1);
    EXPECT_TRUE(flag(rows[0], "inside"));
    EXPECT_EQ(word(rows[0], "profile"), sRGB);
}

TEST_F(InsideTest, readsPointsFromCsvCgatsAndCxf)
{
    const QVector3D point(25, 10, -35.5f);
    const QList<QByteArray> files{
        "name;L;a;b\n\"Sky, blue\";25;10;-35,5\n",
        "CGATS.17\nNUMBER_OF_FIELDS 4\nBEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\n"
        "NUMBER_OF_SETS 1\nBEGIN_DATA\n\"Sky, blue\" 25 10 -35.5\nEND_DATA\n",
        "<CxF xmlns='http://colorexchangeformat.com/CxF3-core'><Resources><ObjectCollection>"
        "<Object Name='Sky, blue'><ColorValues><ColorCIELab><L>25</L><A>10</A><B>-35.5</B></ColorCIELab>"
        "</ColorValues></Object></ObjectCollection></Resources></CxF>"};
    for (const QByteArray& text : files) {
        const auto rows = insideOfPoints(text);
        ASSERT_EQ(rows.size(), 1) << text.toStdString();
        EXPECT_EQ(word(rows[0], "name"), QStringLiteral("Sky, blue"));
        expectAnswer(rows[0], point);
    }
}

TEST_F(InsideTest, readsThePixelsOfAPictureAsCellsWithTheirShare)
{
    // a quarter mid grey, three quarters pure sRGB green
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(QColor(0, 255, 0));
    for (int i = 0; i < 16; ++i)
        picture.setPixelColor(i % 8, i / 8, QColor(119, 119, 119));
    picture.setColorSpace(QColorSpace::SRgb);
    const QString photo = path(QStringLiteral("photo.png"));
    ASSERT_TRUE(picture.save(photo));
    const auto rows = json({QStringLiteral("inside"), cmyk, QStringLiteral("--points"), photo,
                            QStringLiteral("--intent"), QStringLiteral("relative")});
    ASSERT_EQ(rows.size(), 2);
    for (const auto& row : rows) {
        const bool isGrey = flag(row, "inside");
        EXPECT_NEAR(number(row, "weight"), isGrey ? 0.25 : 0.75, 1e-6);
        // L* of 119 is 50.0; that of the green primary, adapted to D50, 87.8
        EXPECT_NEAR(row[QStringLiteral("lab")].toArray()[0].toDouble(), isGrey ? 50.0 : 87.8, 0.2);
    }
    EXPECT_NE(flag(rows[0], "inside"), flag(rows[1], "inside"));
}

TEST_F(InsideTest, treatsAPictureWithoutProfileAsSrgbWithAMessage)
{
    QImage picture(2, 2, QImage::Format_RGB32);
    picture.fill(QColor(119, 119, 119));
    const QString photo = path(QStringLiteral("photo.png"));
    ASSERT_TRUE(picture.save(photo));
    const Answer answer = run({QStringLiteral("inside"), sRGB, QStringLiteral("--points"), photo});
    EXPECT_EQ(answer.exitCode, Done);
    EXPECT_EQ(answer.errors,
              QStringLiteral("kvgamut: '%1': no embedded profile; the colours are taken as sRGB\n")
                  .arg(photo)
                  .toUtf8());
    EXPECT_TRUE(answer.output.contains("yes")) << answer.output.toStdString();
}

TEST_F(InsideTest, hasTheDocumentedKeys)
{
    const QString keys =
        QStringLiteral("adaptation bpc distance grid index inside intent kind lab name nearest "
                       "profile program sha256 weight");
    EXPECT_EQ(keysOf(inside(QStringLiteral("50 0 0")).value(0)), words(keys));
    QStringList withTolerance = words(keys + QStringLiteral(" zone count_in count_edge count_out"));
    withTolerance.sort();
    EXPECT_EQ(keysOf(inside(QStringLiteral("50 0 0 --tolerance 1")).value(0)), withTolerance);
}

TEST_F(InsideTest, saysWithWhichInputEachRowWasMade)
{
    const QJsonObject row = inside(QStringLiteral("50 0 0 --grid 17")).value(0);
    EXPECT_EQ(word(row, "sha256").toLatin1(),
              QCryptographicHash::hash(contents(file), QCryptographicHash::Sha256).toHex());
    EXPECT_TRUE(word(row, "program").startsWith(QLatin1String("kvgamut ")));
    EXPECT_EQ(number(row, "grid"), 17.0);
    EXPECT_TRUE(json({QStringLiteral("inside"), QStringLiteral("sRGB"), QStringLiteral("50"),
                      QStringLiteral("0"), QStringLiteral("0")})
                    .value(0)
                    .value(QLatin1String("sha256"))
                    .isNull()); // built in
}

TEST_F(InsideTest, answersManyPointsAlikeWithAnyNumberOfJobs)
{
    QByteArray table = "name,L,a,b\n";
    for (int i = 0; i < 20'000; ++i)
        table += 'p' + QByteArray::number(i) + ',' + QByteArray::number(i % 101) + ',' +
                 QByteArray::number(i % 97 - 48) + ',' + QByteArray::number(i % 89 - 44) + '\n';
    const QString name = points(table);
    const auto with = [&](const char* jobs, const char* format) {
        return run({QStringLiteral("inside"), file, QStringLiteral("--points"), name,
                    QStringLiteral("--jobs"), QLatin1String(jobs), QStringLiteral("--format"),
                    QLatin1String(format)})
            .output;
    };
    for (const char* format : {"text", "csv", "json", "jsonl"}) {
        const QByteArray one = with("1", format);
        EXPECT_EQ(with("5", format), one) << format;
        EXPECT_GT(one.count('\n'), 20'000 - 1);
    }
    const QList<QByteArray> lines = with("3", "jsonl").split('\n');
    ASSERT_EQ(lines.size(), 20'001);
    const QJsonObject last = QJsonDocument::fromJson(lines[19'999]).object();
    EXPECT_EQ(word(last, "name"), QStringLiteral("p19999"));
    EXPECT_EQ(number(last, "index"), 20'000.0);
    const QVector3D asked(19'999 % 101, 19'999 % 97 - 48, 19'999 % 89 - 44);
    EXPECT_EQ(lab(last, "lab"), asked);
}

TEST_F(InsideTest, countsColoursInsideOnTheEdgeAndOutside)
{
    // 10 and 1 below the top face, 1.5 and 3 above it
    const QString line = QStringLiteral("70 0 0 79 0 0 81.5 0 0 83 0 0");
    const auto rows = inside(line + QStringLiteral(" --tolerance 2"));
    ASSERT_EQ(rows.size(), 4);
    const QStringList zones = words(QStringLiteral("in edge edge out"));
    for (qsizetype i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(word(rows[i], "zone"), zones[i]);
        EXPECT_EQ(number(rows[i], "count_in"), 1);
        EXPECT_EQ(number(rows[i], "count_edge"), 2);
        EXPECT_EQ(number(rows[i], "count_out"), 1);
    }
    const auto strict = inside(line + QStringLiteral(" --tolerance 0"));
    EXPECT_EQ(number(strict.value(0), "count_in"), 2);
    EXPECT_EQ(number(strict.value(0), "count_edge"), 0);
    EXPECT_EQ(number(strict.value(0), "count_out"), 2);
}

TEST_F(InsideTest, printsTheCountsInText)
{
    const Answer answer = run(words(QStringLiteral("inside sRGB 50 0 0 50 200 0 --tolerance 1")));
    EXPECT_TRUE(succeeded(answer));
    EXPECT_TRUE(answer.output.endsWith("\n\nin 1, edge 0, out 1\n")) << answer.output.toStdString();
    const Answer without = run(words(QStringLiteral("inside sRGB 50 0 0 50 200 0")));
    EXPECT_FALSE(without.output.contains("edge"));
}

TEST_F(InsideTest, dependsOnTheIntent)
{
    // white is inside with the relative intent, outside with the absolute one
    const QString point = QStringLiteral("99 0 0");
    const auto of = [&](const QString& intent) {
        return json(QStringList{QStringLiteral("inside"), cmyk} +
                    words(point + QStringLiteral(" --intent ") + intent))
            .value(0);
    };
    EXPECT_TRUE(flag(of(QStringLiteral("relative")), "inside"));
    EXPECT_FALSE(flag(of(QStringLiteral("absolute")), "inside"));
}

TEST_F(InsideTest, quotesNamesInCsv)
{
    const Answer answer = run({QStringLiteral("inside"), file, QStringLiteral("--format"),
                               QStringLiteral("csv"), QStringLiteral("--points"),
                               points("name,L,a,b\n\"a \"\"deep\"\", red\",50,1,2\nplain,50,1,2\n")});
    EXPECT_TRUE(succeeded(answer));
    EXPECT_TRUE(
        answer.output.startsWith("profile,intent,index,name,lab_L,lab_a,lab_b,weight,inside,distance,"
                                 "nearest_L,nearest_a,nearest_b,read_as,read_space,read_intent,read_white,"
                                 "read_observer\n"));
    EXPECT_TRUE(answer.output.contains(",1,\"a \"\"deep\"\", red\",50.0000,1.0000,2.0000,1.000000,true,-"))
        << answer.output.toStdString();
    EXPECT_TRUE(answer.output.contains(",2,plain,50.0000,"));
}

TEST_F(InsideTest, namesABadRowAndPrintsTheOthers)
{
    const QString name = points("L,a,b\n1,2,3\n4,5\n");
    const Answer answer = run({QStringLiteral("inside"), sRGB, QStringLiteral("--points"), name,
                               QStringLiteral("--format"), QStringLiteral("json")});
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(rowsOf(answer.output).size(), 1);
    EXPECT_EQ(answer.errors,
              QStringLiteral("kvgamut: '%1': 1 of 2 colours are left out (lines: 3): line 3: the "
                             "value of b* is missing\n")
                  .arg(name)
                  .toUtf8());
}

TEST_F(InsideTest, readsRgbOnlyInADeclaredSpace)
{
    const QString name = points("R,G,B,name\n255,0,0,red\n");
    const QStringList call{QStringLiteral("inside"),   QStringLiteral("sRGB"),
                           QStringLiteral("--points"), name,
                           QStringLiteral("--format"), QStringLiteral("json")};
    const Answer refused = run(call);
    EXPECT_EQ(refused.exitCode, BadInput);
    EXPECT_TRUE(refused.errors.contains("RGB values without their colour space"))
        << refused.errors.toStdString();
    EXPECT_TRUE(rowsOf(refused.output).isEmpty());
    const Answer answer = run(call + words("--points-space sRGB --points-intent relative"));
    EXPECT_EQ(answer.exitCode, Done);
    const QJsonObject row = rowsOf(answer.output)[0];
    EXPECT_NEAR(row[QStringLiteral("lab")].toArray()[0].toDouble(), 54.29, 0.02);
    EXPECT_EQ(row[QStringLiteral("read_as")].toString(), QStringLiteral("RGB"));
    EXPECT_EQ(row[QStringLiteral("read_space")].toString(), QStringLiteral("sRGB"));
    EXPECT_EQ(row[QStringLiteral("read_intent")].toString(), QStringLiteral("relative"));
    EXPECT_EQ(row[QStringLiteral("read_white")].toString(), QStringLiteral("D50"));
    EXPECT_TRUE(row[QStringLiteral("read_observer")].isNull());
}

TEST_F(InsideTest, readsCmykWithItsProfile)
{
    const QString name = points("C;M;Y;K\n0;0;0;0\n");
    const Answer answer = run({QStringLiteral("inside"), QStringLiteral("sRGB"), QStringLiteral("--points"),
                               name, QStringLiteral("--points-space"),
                               QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc"),
                               QStringLiteral("--points-intent"), QStringLiteral("relative"),
                               QStringLiteral("--format"), QStringLiteral("json")});
    EXPECT_EQ(answer.exitCode, Done) << answer.errors.toStdString();
    // paper is white in the relative intent
    EXPECT_NEAR(rowsOf(answer.output)[0][QStringLiteral("lab")].toArray()[0].toDouble(), 100.0, 0.1);
}

TEST_F(InsideTest, takesTheWhiteFromTheCommandLine)
{
    const QString name = points("X,Y,Z\n0.95047,1,1.08883\n");
    const Answer answer =
        run(words("inside sRGB --format json --points-white D65 --points-white-y 1 --points") +
            QStringList(name));
    EXPECT_EQ(answer.exitCode, Done);
    EXPECT_NEAR(rowsOf(answer.output)[0][QStringLiteral("lab")].toArray()[0].toDouble(), 100.0, 0.01);
}

TEST_F(InsideTest, reportsWhyThePointsCannotBeRead)
{
    const Answer none = run({QStringLiteral("inside"), sRGB, QStringLiteral("--points"), missing});
    EXPECT_EQ(none.exitCode, BadInput);
    EXPECT_TRUE(none.errors.startsWith("kvgamut: '/nowhere/missing.icc': "));
}

TEST_F(InsideTest, readsNoFileThatAMeasurementNames)
{
    const QString secret = path(QStringLiteral("secret"));
    write(secret, "PASSWORD");
    const QString name =
        points("CGATS.17\nNUMBER_OF_FIELDS 4\nBEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L LAB_A LAB_B\n"
               "END_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\n.include \"" +
               secret.toUtf8() + "\"\n50 1 2\nEND_DATA\n");
    EXPECT_TRUE(
        failedWith(run({QStringLiteral("inside"), sRGB, QStringLiteral("--points"), name}), BadInput,
                   QStringLiteral("kvgamut: '%1': line 8: .include reads another file, which is not allowed "
                                  "here; insert the content of that file instead")
                       .arg(name)));
}

TEST_F(InsideTest, reportsMeasurementsWithoutColumnNames)
{
    const QString name = points("CGATS.17\nORIGINATOR \"x\"\nNUMBER_OF_FIELDS 4\nNUMBER_OF_SETS 1\n"
                                "BEGIN_DATA\n1 2 3 4\nEND_DATA\n");
    EXPECT_TRUE(failedWith(run({QStringLiteral("inside"), sRGB, QStringLiteral("--points"), name}), BadInput,
                           QStringLiteral("kvgamut: '%1': line 5: the data have no column names "
                                          "(BEGIN_DATA_FORMAT is missing)")
                               .arg(name)));
}

TEST_F(InsideTest, readsPointsFromStandardInput)
{
    for (const char* name : {"-", "/dev/stdin", "<(cat)"}) {
        const Answer answer = shell(
            QStringLiteral("printf 'L,a,b\\n50,0,0\\n' | \"$KVGAMUT\" inside sRGB --format csv --points ") +
                QLatin1String(name),
            {}, withoutDisplay());
        EXPECT_TRUE(succeeded(answer)) << name;
        EXPECT_TRUE(answer.output.contains(",50.0000,0.0000,0.0000,")) << answer.output.toStdString();
    }
}

TEST_F(InsideTest, refusesEndlessPoints)
{
    EXPECT_TRUE(failedWith(run(words("inside sRGB --points /dev/zero")), BadInput,
                           QStringLiteral("kvgamut: '/dev/zero': neither a regular file nor a pipe")));
    EXPECT_TRUE(failedWith(
        shell(QStringLiteral("yes 50,0,0 | \"$KVGAMUT\" inside sRGB --points -"), {}, withoutDisplay()),
        BadInput,
        QStringLiteral("kvgamut: 'standard input': larger than 64 MiB, the limit for files of this kind")));
}

TEST_F(InsideTest, reportsOmittedPointsAndPrintsTheOthers)
{
    const QString name =
        points("<CxF><Object Name='x'><ColorCIELab><L>50</L><A>0</A><B>0</B></ColorCIELab></Object>"
               "<Object Name='y'><ReflectanceSpectrum>0.1</ReflectanceSpectrum></Object></CxF>");
    const Answer answer = run({QStringLiteral("inside"), sRGB, QStringLiteral("--points"), name,
                               QStringLiteral("--format"), QStringLiteral("json")});
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_TRUE(answer.errors.contains("1 of 2 objects")) << answer.errors.toStdString();
    EXPECT_EQ(rowsOf(answer.output).size(), 1);
}

TEST_F(InsideTest, namesAProfileThatCannotBeUsed)
{
    EXPECT_TRUE(failedWith(run({QStringLiteral("inside"), missing, QStringLiteral("50"), QStringLiteral("0"),
                                QStringLiteral("0")}),
                           1, missingLine));
}

TEST_F(InsideTest, requiresCompleteColoursOrAFile)
{
    for (const char* arguments :
         {"inside sRGB", "inside", "inside sRGB 50", "inside sRGB 50 0 0 1", "inside sRGB 50 0 x",
          "inside sRGB 50 0 nan", "inside sRGB 50 0 0 --points x", "inside sRGB 50 0 0 --tolerance -1",
          "inside sRGB 50 0 0 --tolerance x"}) {
        const Answer answer = run(words(QLatin1String(arguments)));
        EXPECT_EQ(answer.exitCode, WrongUsage) << arguments;
        EXPECT_EQ(answer.errors.count('\n'), 1) << arguments;
        EXPECT_TRUE(answer.output.isEmpty()) << arguments;
    }
}

TEST_F(InsideTest, reportsInsufficientMemory)
{
    constexpr int points = 1500000; // need far more memory than the limit below
    const QString many = path(QStringLiteral("many.csv"));
    write(many, "L,a,b\n" + QByteArray("50,10,10\n").repeated(points));
    const Answer answer =
        shell(QStringLiteral("ulimit -v 250000; exec \"$KVGAMUT\" inside sRGB --points \"$1\""), {many},
              withoutDisplay());
    EXPECT_EQ(answer.exitCode, BadInput) << answer.errors.toStdString();
    EXPECT_TRUE(answer.output.isEmpty());
    EXPECT_TRUE(answer.errors.startsWith("kvgamut: the input is too large for this machine"))
        << answer.errors.toStdString();
    EXPECT_EQ(answer.errors.count('\n'), 1) << answer.errors.toStdString();
}

} // namespace
