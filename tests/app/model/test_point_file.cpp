// SPDX-License-Identifier: Apache-2.0
#include "app/support/PointFileTest.h"

#include <platform/KVVelmoraFramework.h>

#include <sys/stat.h>

namespace {

// --- CSV ----------------------------------------------------------------------------------------------

TEST_F(PointFileTest, readsOnePointPerLine)
{
    const auto found = bare("# a comment\n50,-20,30.5\r\n\n  60 , 1e1 , -.5 \n");
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].lab, (LabPoint{50.0f, -20.0f, 30.5f}));
    EXPECT_EQ(found[1].lab, (LabPoint{60.0f, 10.0f, -0.5f}));
    EXPECT_FALSE(found[0].color.isValid());
    EXPECT_TRUE(found[0].name.isEmpty());
}

TEST_F(PointFileTest, separatesAtSemicolonsTabsCommasOrSpaces)
{
    for (const char* text : {"1;2;3", "1\t2\t3", "1,2,3", "1   2 3", "1, 2, 3", "1; 2; 3"}) {
        const auto found = bare(text);
        ASSERT_EQ(found.size(), 1) << text;
        EXPECT_EQ(found[0].lab, (LabPoint{1, 2, 3})) << text;
    }
}

TEST_F(PointFileTest, treatsCommasAsDecimalPointsBesideSemicolonsAndTabs)
{
    for (const char* text : {"L;a;b\n50,5;-20,25;3", "L\ta\tb\n50,5\t-20,25\t3",
                             "Name;L;a;b\nx;50,5;-20,25;3", "L,a,b\n\"50,5\",\"-20,25\",3"})
        EXPECT_EQ(points(text).value(0).lab, (LabPoint{50.5f, -20.25f, 3.0f})) << text;
}

TEST_F(PointFileTest, aFourthColumnIsTheColour)
{
    const auto found = bare("50,0,0,#40c0ff\n50;0;0;red\n50 0 0 white\n50,0,0,\n");
    ASSERT_EQ(found.size(), 4);
    EXPECT_EQ(found[0].color, QColor(0x40, 0xc0, 0xff));
    EXPECT_EQ(found[1].color, QColor(Qt::red));
    EXPECT_EQ(found[2].color, QColor(Qt::white));
    EXPECT_FALSE(found[3].color.isValid());
}

TEST_F(PointFileTest, showsAPointWithoutColourInItsLabColour)
{
    const auto found = bare("50,20,-30\n50,20,-30,red");
    const auto rgb = KVColorConversionHelper::KVHLab2RGB({50, 20, -30});
    EXPECT_EQ(found.value(0).shownColor(), QColor(int(rgb[0]), int(rgb[1]), int(rgb[2])));
    EXPECT_EQ(found.value(1).shownColor(), QColor(Qt::red));
}

TEST_F(PointFileTest, findsColumnsByTheirNames)
{
    for (const char* header :
         {"Sample_Name,x,LAB_B,LAB_A,LAB_L,Colour,y", "name,x,b,a,L,color,y", "ID, x, b*, a*, L*, COLOR, y",
          "\"Name\",\"x\",\"b\",\"a\",\"l\",\"colour\",y"}) {
        const auto found = points(QByteArray(header) + "\n\"Deep red, \"\"A\"\"\",7,30,20,50,blue,more\n",
                                  {ProblemCode::ColumnsIgnored});
        ASSERT_EQ(found.size(), 1) << header;
        EXPECT_EQ(found[0].lab, (LabPoint{50, 20, 30})) << header;
        EXPECT_EQ(found[0].name, QStringLiteral("Deep red, \"A\"")) << header;
        EXPECT_EQ(found[0].color, QColor(Qt::blue)) << header;
    }
}

TEST_F(PointFileTest, columnsOfXyzBecomeLab)
{
    const auto found = points("X;Y;Z;name\n96,42;100;82,49;white\n20;12;3;brown\n0,1;0,2;0,3;dark\n");
    ASSERT_EQ(found.size(), 3);
    expectNear(found[0].lab, LabPoint{100, 0, 0}, 0.01f);
    expectNear(found[1].lab, cieLab(20, 12, 3), 0.02f);
    expectNear(found[2].lab, cieLab(0.1, 0.2, 0.3), 0.02f);
    EXPECT_EQ(found[1].name, QStringLiteral("brown"));
}

TEST_F(PointFileTest, namesTheIgnoredColumns)
{
    const Result<PointSet> set = read("press,L,a,b,density\n1,50,20,30,1.5\n");
    ASSERT_TRUE(set);
    ASSERT_EQ(set->notes.size(), 1);
    EXPECT_EQ(ProblemText::english(set->notes[0].about({})),
              QStringLiteral("unknown columns are ignored: press, density"));
    EXPECT_FALSE(set->partial);
}

TEST_F(PointFileTest, refusesAHeadingWithoutKnownColumns)
{
    for (const char* heading : {"lightness,redness,yellowness", "these are words", "x,y,Y", "a,b", "R,G"})
        EXPECT_THAT(
            problem(QByteArray(heading) + "\n50,20,30\n"),
            testing::AllOf(testing::StartsWith("line 1: unknown columns ("),
                           HasSubstr("known are L, a, b; L, C, h; X, Y, Z; R, G, B; hex; C, M, Y, K")))
            << heading;
}

TEST_F(PointFileTest, readsLChWithItsHueInDegrees)
{
    for (const char* heading :
         {"L,C,h", "LAB_L,LAB_C,LAB_H", "L*,C*,h*", "L*,C*ab,hab", "lch_l,lch_c,lch_h"}) {
        const auto found = points(QByteArray(heading) + "\n50,40,90\n60,10,180\n");
        ASSERT_EQ(found.size(), 2) << heading;
        expectNear(found[0].lab, LabPoint{50, 0, 40}, 1e-4f);
        expectNear(found[1].lab, LabPoint{60, -10, 0}, 1e-4f);
    }
}

TEST_F(PointFileTest, readsSpellingsOfLab)
{
    for (const char* heading :
         {"L*,a*,b*", "Lab_L;Lab_A;Lab_B", "CIE L*,CIE a*,CIE b*", "L* (D50),a* (D50),b* (D50)", "l,a,b",
          "L,A,B", "LAB L,LAB A,LAB B", "L-star,a-star,b-star"})
        EXPECT_EQ(points(QByteArray(heading) + "\n50;20;30\n").value(0).lab, (LabPoint{50, 20, 30}))
            << heading;
}

TEST_F(PointFileTest, prefersLabOverDeviceColumnsOfTheSameLetters)
{
    const auto found = points("R,G,B,L,a,b\n255,0,128,50,20,30\n");
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].lab, (LabPoint{50, 20, 30}));
    EXPECT_EQ(found[0].deviceChannels, 3);
    EXPECT_EQ(found[0].device, (std::array<float, 4>{255, 0, 128, 0}));
}

TEST_F(PointFileTest, takesTheOnlyColumnOfTextAsTheName)
{
    EXPECT_EQ(points("L,a,b,remark\n50,1,2,brick\n").value(0).name, QStringLiteral("brick"));
    EXPECT_EQ(points("colour,L,a,b\nDeep brick,50,1,2\n").value(0).name, QStringLiteral("Deep brick"));
    EXPECT_EQ(points("L,a,b,one,two\n50,1,2,brick,stone\n", {ProblemCode::ColumnsIgnored}).value(0).name,
              QString());
    for (const char* heading :
         {"Sample", "Colour name", "Swatch", "PATCH_NAME", "Farbname", "label", "SampleID"})
        EXPECT_EQ(points("L,a,b," + QByteArray(heading) + "\n50,1,2,485 C\n").value(0).name,
                  QStringLiteral("485 C"))
            << heading;
}

TEST_F(PointFileTest, readsANameBesideBareLab)
{
    const auto found = bare("PANTONE 185 C, 50.9, 75.1, 34.6\n50,1,2,stone\n50,1,2,brick,red\nred,50,1,2\n");
    ASSERT_EQ(found.size(), 4);
    EXPECT_EQ(found[0].name, QStringLiteral("PANTONE 185 C"));
    EXPECT_EQ(found[0].lab, (LabPoint{50.9f, 75.1f, 34.6f}));
    EXPECT_EQ(found[1].name, QStringLiteral("stone"));
    EXPECT_EQ(found[2].name, QStringLiteral("brick"));
    EXPECT_EQ(found[2].color, QColor(Qt::red));
    EXPECT_EQ(found[3].name, QStringLiteral("red"));
    EXPECT_FALSE(found[3].color.isValid());
}

TEST_F(PointFileTest, refusesBareNumbersThatAreNotLab)
{
    for (const char* row : {"255,0,0,red", "100.5,0,0", "-1,0,0", "50,129,0", "50,0,-129", "120,30,40"})
        EXPECT_THAT(problem(QByteArray("50,1,2\n") + row), testing::StartsWith("line 2: ")) << row;
    EXPECT_EQ(
        problem("255,0,0,red\n"),
        "line 1: 255 is not a value of L*, a*, b*; name the columns in the first line, for example L,a,b "
        "or R,G,B");
}

// --- Rows and encodings -------------------------------------------------------------------------------

TEST_F(PointFileTest, acceptsAByteOrderMark)
{
    EXPECT_EQ(points("\xEF\xBB\xBFname;L;a;b\n\xC3\xA9;1;2;3").value(0).name, QStringLiteral("é"));
}

TEST_F(PointFileTest, namesTheInvalidLineAndUsesTheOthers)
{
    const std::string start = "1 of 3 colours are left out (lines: 3): line 3: ";
    for (const auto& [bad, why] : {std::pair{"y,1,2", "the value of b* is missing"},
                                   std::pair{"y,1,2,x", "b* is 'x', expected a number"},
                                   std::pair{"y,1,2,nan", "b* is 'nan', expected a number"},
                                   std::pair{"y,1,2,inf", "b* is 'inf', expected a number"},
                                   std::pair{"y,255,2,3", "L* is 255, expected -10 to 150"},
                                   std::pair{"y,1,-501,3", "a* is -501, expected -500 to 500"},
                                   std::pair{"y,1,2,3,4", "5 values for 4 columns"}})
        EXPECT_EQ(leftOut(QByteArray("name,L,a,b\nx,1,2,3\n") + bad + "\nz,4,5,6\n"), start + why) << bad;
    const Result<PointSet> set = read("name,L,a,b\nx,1,2,3\ny,1\nz,4,5,6\n");
    ASSERT_TRUE(set);
    ASSERT_EQ(set->points.size(), 2);
    EXPECT_EQ(set->points[1].lab, (LabPoint{4, 5, 6}));
}

TEST_F(PointFileTest, namesInvalidLinesWithoutAHeading)
{
    for (const char* bad : {"1,2", "1,2,x", "1,2,nan", "1,2,3,red,5", "words", "1,2,3,brick,stone"})
        EXPECT_THAT(
            leftOut(QByteArray("50,0,0\n") + bad),
            testing::StartsWith("1 of 2 colours are left out (lines: 2): line 2: expected L*, a*, b*"))
            << bad;
    EXPECT_THAT(leftOut("L,a,b,colour\n1,2,3,red\n1,2,3,blurple\n"), HasSubstr("'blurple' is not a colour"));
}

TEST_F(PointFileTest, namesTheFirstTenInvalidLines)
{
    EXPECT_THAT(leftOut("L,a,b\n1,2,3\n" + QByteArray("x,2,3\n").repeated(12)),
                testing::StartsWith(
                    "12 of 13 colours are left out (lines: 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, ...): line 3: "));
}

TEST_F(PointFileTest, refusesAFileWithoutAValidLine)
{
    EXPECT_EQ(problem("L,a,b\n1,2,x\n"), "line 2: b* is 'x', expected a number");
    EXPECT_THAT(problem("L,a,b\n1,2,x\ny,2,1\n"), testing::StartsWith("2 of 2 colours are left out"));
}

TEST_F(PointFileTest, leavesOutXyzThatIsNotAColour)
{
    EXPECT_THAT(leftOut("X,Y,Z\n10,20,30\n-3e38,3e38,-3e38\n"), HasSubstr("line 3: X is -3e38, expected"));
    EXPECT_THAT(leftOut("X,Y,Z\n10,20,30\n400,1,1\n"), HasSubstr("is not a possible colour"));
}

TEST_F(PointFileTest, readsLatin1Names)
{
    EXPECT_EQ(points("name;L;a;b\ncaf\xE9;1;2;3\n", {ProblemCode::TextTakenAsLatin1}).value(0).name,
              QStringLiteral("café"));
    const QByteArray sheet = "CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_NAME LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\n"
                             "BEGIN_DATA\n\"caf\xE9\" 1 2 3\nEND_DATA\n";
    EXPECT_EQ(points(sheet, {ProblemCode::TextTakenAsLatin1}).value(0).name, QStringLiteral("café"));
}

TEST_F(PointFileTest, readsCgatsInUtf16)
{
    const QString sheet = QStringLiteral("CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_NAME LAB_L LAB_A LAB_B\n"
                                         "END_DATA_FORMAT\nBEGIN_DATA\ncafé 1 2 3\nEND_DATA\n");
    const QByteArray utf16 =
        "\xFF\xFE" + QByteArray(reinterpret_cast<const char*>(sheet.utf16()), 2 * sheet.size());
    EXPECT_EQ(points(utf16).value(0).name, QStringLiteral("café"));
}

TEST_F(PointFileTest, reportsAFileWithoutPositions)
{
    for (const char* empty : {"", "# nothing\n\n", "L,a,b\n"})
        EXPECT_EQ(problem(empty), "the file contains no positions") << empty;
}

TEST_F(PointFileTest, namesAMissingFileAndAFolder)
{
    for (const char* missing : {"/nowhere/points.csv", "/tmp"}) {
        const Result<PointSet> set = readPointFile(QLatin1String(missing));
        EXPECT_EQ(set.error().code, Problem::Code(ProblemCode::CannotRead));
        EXPECT_EQ(set.error().subject, QLatin1String(missing));
    }
}

// --- CGATS --------------------------------------------------------------------------------------------

TEST_F(PointFileTest, readsLabFromCgats)
{
    const auto found =
        points(sheet("SAMPLE_ID CMYK_C LAB_L LAB_A LAB_B", {"1 100 54.5 -37 -50.25", "A2 0 9.5e1 0 -2"}));
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].lab, (LabPoint{54.5f, -37.0f, -50.25f}));
    EXPECT_EQ(found[1].lab, (LabPoint{95.0f, 0.0f, -2.0f}));
    EXPECT_EQ(found[0].name, QStringLiteral("1"));
    EXPECT_EQ(found[1].name, QStringLiteral("A2"));
    EXPECT_FALSE(found[0].color.isValid());
}

TEST_F(PointFileTest, prefersNamesOverNumbersInCgats)
{
    const auto found =
        points(sheet("SAMPLE_ID SAMPLE_NAME LAB_L LAB_A LAB_B", {"1 \"Sky, \xC3\xA9 blue\" 50 1 2"}));
    EXPECT_EQ(found.value(0).name, QStringLiteral("Sky, é blue"));
}

TEST_F(PointFileTest, readsXyzFromTi3)
{
    const auto found =
        points(sheet("SAMPLE_ID RGB_R RGB_G RGB_B XYZ_X XYZ_Y XYZ_Z", {"1 0 0 0 20 12 3"}, "CTI3"));
    ASSERT_EQ(found.size(), 1);
    expectNear(found[0].lab, cieLab(20, 12, 3), 0.02f);
}

TEST_F(PointFileTest, prefersLabOverXyzInCgats)
{
    const auto found = points(sheet("SAMPLE_ID XYZ_X XYZ_Y XYZ_Z LAB_L LAB_A LAB_B", {"1 20 12 3 7 8 9"}));
    EXPECT_EQ(found.value(0).lab, (LabPoint{7, 8, 9}));
}

TEST_F(PointFileTest, readsTheFirstTableThatHasColours)
{
    const auto found = points(sheet("INDEX RGB_R", {"1 5"}, "CTI3") + "\n" +
                              sheet("SAMPLE_ID LAB_L LAB_A LAB_B", {"x 1 2 3"}, "CTI3"));
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].lab, (LabPoint{1, 2, 3}));
}

TEST_F(PointFileTest, reportsACgatsFileWithoutColours)
{
    EXPECT_THAT(
        problem(sheet("SAMPLE_ID D_RED D_GREEN", {"1 0.1 0.2"})),
        testing::StartsWith("the CGATS file has no known columns of colours (SAMPLE_ID, D_RED, D_GREEN)"));
}

TEST_F(PointFileTest, namesTheInvalidDataSetAndUsesTheOthers)
{
    EXPECT_EQ(leftOut(sheet("SAMPLE_ID LAB_L LAB_A LAB_B", {"1 1 2 3", "2 1 none 3", "3 4 5 6"})),
              "1 of 3 colours are left out (lines: 12): line 12: a* is 'none', expected a number");
}

TEST_F(PointFileTest, readsDecimalCommasInCgats)
{
    EXPECT_EQ(points(sheet("SAMPLE_ID LAB_L LAB_A LAB_B", {"1 54,5 -37 -50,25"})).value(0).lab,
              (LabPoint{54.5f, -37.0f, -50.25f}));
}

TEST_F(PointFileTest, reportsWhyACgatsFileIsInvalid)
{
    QByteArray text = sheet("SAMPLE_ID LAB_L LAB_A LAB_B", {"1 1 2 3"});
    text.replace("NUMBER_OF_SETS 1", "NUMBER_OF_SETS 3");
    EXPECT_THAT(problem(text), testing::AllOf(HasSubstr("the CGATS file cannot be read: Line "),
                                              HasSubstr("NUMBER_OF_SETS was 3, found 1")));
}

TEST_F(PointFileTest, readsCgatsWithoutCountsAndInAnyCase)
{
    const auto found = points("CGATS.17\r\nbegin_data_format # columns\rsample_id lab_l lab_a lab_b\n"
                              "END_DATA_FORMAT\nBEGIN_DATA\n'a b' 1 2 3 c#d\n4 5 6\nEND_DATA\n");
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].name, QStringLiteral("a b"));
    EXPECT_EQ(found[0].lab, (LabPoint{1, 2, 3}));
    EXPECT_EQ(found[1].name, QStringLiteral("c"));
    EXPECT_EQ(found[1].lab, (LabPoint{4, 5, 6}));
}

TEST_F(PointFileTest, readsMoreThan32767CgatsDataSets)
{
    constexpr int count = 40000;
    const auto found = points(sheet("LAB_L LAB_A LAB_B", QList<QByteArray>(count, "1 2 3")));
    EXPECT_EQ(found.size(), count);
}

TEST_F(PointFileTest, reportsCgatsDataWithoutColumnNames)
{
    const QByteArray text = "CGATS.17\nORIGINATOR \"x\"\nNUMBER_OF_FIELDS 3\nNUMBER_OF_SETS 1\n"
                            "BEGIN_DATA\n1 2 3\nEND_DATA\n";
    EXPECT_EQ(problem(text), "line 5: the data have no column names (BEGIN_DATA_FORMAT is missing)");
    EXPECT_EQ(problem(sheet("LAB_L LAB_A LAB_B", {"1 2 3"}) + text),
              "line 17: the data have no column names (BEGIN_DATA_FORMAT is missing)");
}

TEST_F(PointFileTest, refusesCgatsThatReadsOtherFiles)
{
    QTemporaryDir folder;
    const QByteArray pipe = QFile::encodeName(folder.filePath(QStringLiteral("pipe")));
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0); // to open it would block for ever
    const QByteArray whole = sheet("SAMPLE_ID LAB_L LAB_A LAB_B", {"1 50 1 2"});
    for (const QByteArray directive : {".INCLUDE", "$INCLUDE", ".Include", "$include"})
        for (const QByteArray place : {"ORIGINATOR", "AN_UNUSUAL_KEY", "SAMPLE_ID", "LAB_A",
                                       "END_DATA_FORMAT", "1\nBEGIN_DATA", "50 1", "END_DATA\n"}) {
            const QByteArray text =
                QByteArray(whole).replace(place, directive + " \"" + pipe + "\"\n" + place);
            ASSERT_NE(text, whole) << place.constData();
            const Result<PointSet> set = read(text);
            ASSERT_FALSE(set) << place.constData();
            EXPECT_EQ(set.error().code, Problem::Code(ProblemCode::CgatsIncludesFile)) << place.constData();
            EXPECT_EQ(set.error().arguments.value(1), QString::fromLatin1(directive)) << place.constData();
        }
    EXPECT_EQ(problem("CGATS.17\n.INCLUDE \"x\"\n" + whole),
              "line 2: .INCLUDE reads another file, which is not allowed here; insert the content of that "
              "file instead");
}

TEST_F(PointFileTest, acceptsTheWordIncludeInCommentsAndQuotes)
{
    const auto found = points(sheet("SAMPLE_ID LAB_L LAB_A LAB_B", {"\".INCLUDE\" 1 2 3 # .INCLUDE x"}));
    EXPECT_EQ(found.value(0).name, QStringLiteral(".INCLUDE"));
}

TEST_F(PointFileTest, reportsUnfinishedCgatsSections)
{
    const QByteArray whole = sheet("LAB_L LAB_A LAB_B", {"1 2 3"});
    const auto until = [&whole](const char* keyword) { return whole.left(whole.indexOf(keyword)); };
    EXPECT_EQ(problem("BEGIN_DATA_FORMAT LAB_L\nBEGIN_DATA 1"),
              "the CGATS file cannot be read: Line 2: END_DATA_FORMAT is missing");
    EXPECT_EQ(problem(until("END_DATA\n")), "the CGATS file cannot be read: Line 12: END_DATA is missing");
    EXPECT_THAT(problem(QByteArray(whole).replace("1 2 3", "1 2 3 4")),
                HasSubstr("NUMBER_OF_FIELDS was 3, found 1"));
    EXPECT_THAT(problem(QByteArray(whole).replace("FIELDS 3", "FIELDS 4")),
                HasSubstr("NUMBER_OF_FIELDS was 4, found 3"));
}

// --- CxF ----------------------------------------------------------------------------------------------

const QByteArray lab1 = "<cc:ColorCIELab ColorSpecification='S50'><cc:L>54.5</cc:L><cc:A>-37</cc:A>"
                        "<cc:B>-50.25</cc:B></cc:ColorCIELab>";
const QByteArray xyz1 = "<cc:ColorCIEXYZ ColorSpecification='S50'><cc:X>20</cc:X><cc:Y>12</cc:Y>"
                        "<cc:Z>3</cc:Z></cc:ColorCIEXYZ>";
const QByteArray spectrum = "<cc:ReflectanceSpectrum ColorSpecification='S50' StartWL='400'>0.1 0.2"
                            "</cc:ReflectanceSpectrum>";

QByteArray object(const QByteArray& name, const QByteArray& values)
{
    return "<cc:Object ObjectType='Standard' Name='" + name + "' Id='" + name + "'><cc:ColorValues>" +
           values + "</cc:ColorValues></cc:Object>";
}

QByteArray cxf(const QByteArray& objects)
{
    const auto specification = [](const QByteArray& id, const QByteArray& illuminant) {
        return "<cc:ColorSpecification Id='" + id + "'><cc:TristimulusSpec><cc:Illuminant>" + illuminant +
               "</cc:Illuminant><cc:Observer>2_Degree</cc:Observer></cc:TristimulusSpec>"
               "</cc:ColorSpecification>";
    };
    return "<?xml version='1.0' encoding='UTF-8'?>\n"
           "<cc:CxF xmlns:cc='http://colorexchangeformat.com/CxF3-core'><cc:Resources>"
           "<cc:ObjectCollection>" +
           objects + "</cc:ObjectCollection><cc:ColorSpecificationCollection>" + specification("S50", "D50") +
           specification("S65", "D65") + "</cc:ColorSpecificationCollection></cc:Resources></cc:CxF>\n";
}

TEST_F(PointFileTest, readsLabAndNamesFromCxf)
{
    const auto found = points(cxf(object("Sky \xC3\xA9", spectrum + lab1) + object("Two", lab1)));
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].lab, (LabPoint{54.5f, -37.0f, -50.25f}));
    EXPECT_EQ(found[0].name, QStringLiteral("Sky é"));
    EXPECT_EQ(found[1].name, QStringLiteral("Two"));
}

TEST_F(PointFileTest, readsXyzFromCxfWhereThereIsNoLab)
{
    const auto found = points(cxf(object("x", xyz1) + object("y", xyz1 + lab1)));
    ASSERT_EQ(found.size(), 2);
    expectNear(found[0].lab, cieLab(20, 12, 3), 0.02f);
    EXPECT_EQ(found[1].lab, (LabPoint{54.5f, -37.0f, -50.25f}));
}

TEST_F(PointFileTest, takesTheValueForD50)
{
    QByteArray other = QByteArray(lab1).replace("S50", "S65").replace("54.5", "55.5");
    const auto found = points(cxf(object("x", other + lab1)));
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].lab.L, 54.5f);
}

TEST_F(PointFileTest, reportsOmittedObjectsOfCxf)
{
    const Result<PointSet> set = read(
        cxf(object("a", lab1) + object("b", spectrum) + object("c", QByteArray(lab1).replace("S50", "S65"))));
    ASSERT_TRUE(set);
    EXPECT_EQ(set->points.size(), 1);
    EXPECT_TRUE(set->partial);
    EXPECT_EQ(set->note->subject, name());
    EXPECT_EQ(ProblemText::english(set->note->about({})),
              QStringLiteral("2 of 3 objects have no CIELAB, XYZ or reflectance values for D50"));
}

TEST_F(PointFileTest, omitsObjectsOfCxfWhoseLabIsNotFinite)
{
    const QByteArray enormous = QByteArray(xyz1).replace(">20<", ">-3e38<").replace(">12<", ">3e38<");
    const Result<PointSet> set = read(cxf(object("a", enormous) + object("b", xyz1)));
    ASSERT_TRUE(set);
    ASSERT_EQ(set->points.size(), 1);
    EXPECT_EQ(set->points[0].name, QStringLiteral("b"));
}

TEST_F(PointFileTest, refusesCxfOfSpectraWithoutWavelengths)
{
    EXPECT_EQ(problem(cxf(object("a", spectrum))),
              "1 of 1 objects have no CIELAB, XYZ or reflectance values for D50");
    EXPECT_EQ(problem(cxf(QByteArray())), "the file contains no positions");
}

TEST_F(PointFileTest, readsReflectancesFromCxf)
{
    const QByteArray range = "<cc:MeasurementSpec><cc:WavelengthRange StartWL='380' Increment='10'/>"
                             "</cc:MeasurementSpec></cc:ColorSpecification>";
    const QByteArray grey = "<cc:ReflectanceSpectrum ColorSpecification='S50' StartWL='380'>" +
                            QByteArray("0.5 ").repeated(36) + "</cc:ReflectanceSpectrum>";
    const QByteArray text =
        cxf(object("grey", grey) + object("both", grey + lab1)).replace("</cc:ColorSpecification>", range);
    const auto found = points(text, {ProblemCode::SpectraComputed});
    ASSERT_EQ(found.size(), 2);
    expectNear(found[0].lab, LabPoint{76.0693f, 0, 0}, 0.002f);
    EXPECT_EQ(found[1].lab, (LabPoint{54.5f, -37.0f, -50.25f})); // Lab comes first
}

TEST_F(PointFileTest, refusesOtherOrInvalidXml)
{
    EXPECT_EQ(problem("<?xml version='1.0'?><html></html>"), "the XML is not CxF");
    const QByteArray whole = cxf(object("a", lab1));
    EXPECT_THAT(problem(whole.left(whole.size() / 2)), testing::StartsWith("line 2: the XML is invalid: "));
}

} // namespace
