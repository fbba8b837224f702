// SPDX-License-Identifier: Apache-2.0
#include "app/support/Boxes.h"
#include "app/support/Numbers.h"

using namespace kvtest;

namespace {

class CompareTest : public NumbersTest
{
protected:
    void SetUp() override
    {
        write(fileA, boxA.profile());
        write(fileB, boxB.profile());
        write(fileC, boxC.profile());
    }

    QList<QJsonObject> compare(const QStringList& arguments)
    {
        return json(words(QStringLiteral("compare --intent relative")) + arguments);
    }

    /// The tolerance covers the rounding of the boxes to 16 bits.
    static void expectVolume(const QJsonObject& row, const char* key, double expected)
    {
        EXPECT_NEAR(number(row, key), expected, 100.0) << key;
    }

    static void expectPair(const QJsonObject& row, const Box& a, const Box& b)
    {
        const double common = a.common(b).volume();
        expectVolume(row, "volume_a", a.volume());
        expectVolume(row, "volume_b", b.volume());
        expectVolume(row, "intersection", common);
        expectVolume(row, "union", a.volume() + b.volume() - common);
        EXPECT_NEAR(number(row, "coverage_a_of_b"), common / b.volume(), 0.0003);
        EXPECT_NEAR(number(row, "coverage_b_of_a"), common / a.volume(), 0.0003);
    }

    const Box boxA{{20, -40, -40}, {80, 40, 40}};
    const Box boxB{{40, -20, -40}, {90, 60, 40}}; // contains half of A
    const Box boxC{{30, -20, -30}, {70, 20, 0}};  // inside A
    const QString fileA = path(QStringLiteral("a.icc"));
    const QString fileB = path(QStringLiteral("b.icc"));
    const QString fileC = path(QStringLiteral("c.icc"));
};

TEST_F(CompareTest, equalsTheIntersectionOfTwoBoxes)
{
    ASSERT_EQ(boxA.common(boxB).volume(), 192000.0);
    const auto rows = compare({fileA, fileB});
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(word(rows[0], "a"), fileA);
    EXPECT_EQ(word(rows[0], "b"), fileB);
    expectPair(rows[0], boxA, boxB);
    EXPECT_NEAR(number(rows[0], "coverage_a_of_b"), 0.6, 0.0003);
    EXPECT_NEAR(number(rows[0], "coverage_b_of_a"), 0.5, 0.0003);
}

TEST_F(CompareTest, theReverseOrderOnlyExchangesTheSides)
{
    const QJsonObject ab = compare({fileA, fileB}).value(0), ba = compare({fileB, fileA}).value(0);
    for (const char* same : {"intersection", "union", "intersection_uncertainty", "union_uncertainty"})
        EXPECT_EQ(number(ab, same), number(ba, same)) << same;
    for (const auto& [one, other] :
         {std::pair{"coverage_a_of_b", "coverage_b_of_a"}, std::pair{"volume_a", "volume_b"},
          std::pair{"uncertainty_a", "uncertainty_b"},
          std::pair{"coverage_uncertainty_a_of_b", "coverage_uncertainty_b_of_a"}}) {
        EXPECT_EQ(number(ab, one), number(ba, other)) << one;
        EXPECT_EQ(number(ab, other), number(ba, one)) << other;
    }
}

TEST_F(CompareTest, theTruthOfBoxesIsWithinTheUncertainty)
{
    const QJsonObject row = compare({fileA, fileB}).value(0);
    const double rounding = 100.0; // of the boxes to 16 bits
    const auto expectHeld = [&row](const char* key, const char* uncertainty, double truth, double more) {
        EXPECT_NEAR(number(row, key), truth, number(row, uncertainty) + more) << key;
        EXPECT_GT(number(row, uncertainty), 0.0) << key;
        EXPECT_LT(number(row, uncertainty), 0.005 * truth) << key;
    };
    expectHeld("intersection", "intersection_uncertainty", 192000.0, rounding);
    expectHeld("union", "union_uncertainty", boxA.volume() + boxB.volume() - 192000.0, rounding);
    expectHeld("coverage_a_of_b", "coverage_uncertainty_a_of_b", 0.6, 0.0003);
    expectHeld("coverage_b_of_a", "coverage_uncertainty_b_of_a", 0.5, 0.0003);
}

TEST_F(CompareTest, comparesTheFirstWithEachOther)
{
    const auto rows = compare({fileA, fileB, fileC});
    ASSERT_EQ(rows.size(), 2);
    expectPair(rows[0], boxA, boxB);
    expectPair(rows[1], boxA, boxC);
    EXPECT_NEAR(number(rows[1], "coverage_a_of_b"), 1.0, 0.0003); // C is inside A
}

TEST_F(CompareTest, comparesAllPairsWhenAsked)
{
    const auto rows = compare({fileA, fileB, fileC, QStringLiteral("--pairs")});
    ASSERT_EQ(rows.size(), 3);
    expectPair(rows[0], boxA, boxB);
    expectPair(rows[1], boxA, boxC);
    expectPair(rows[2], boxB, boxC);
    EXPECT_EQ(word(rows[2], "a"), fileB);
}

TEST_F(CompareTest, printsCoveragesAsAMatrix)
{
    // rows and columns A, B, C: the shares of the row's volume; C lies in A
    const double bInA = 0.6, aInB = 0.5, cInA = 1.0;
    const double aInC = boxC.volume() / boxA.volume();
    const auto rows = compare({fileA, fileB, fileC, QStringLiteral("--matrix")});
    ASSERT_EQ(rows.size(), 3);
    const auto at = [&rows](qsizetype row, const char* key, qsizetype column) {
        return rows[row].value(QLatin1String(key)).toArray().at(column).toDouble();
    };
    EXPECT_NEAR(at(0, "coverage", 1), aInB, 0.0003);
    EXPECT_NEAR(at(1, "coverage", 0), bInA, 0.0003);
    EXPECT_NEAR(at(0, "coverage", 2), aInC, 0.0003);
    EXPECT_NEAR(at(2, "coverage", 0), cInA, 0.0003);
    for (qsizetype i = 0; i < 3; ++i)
        EXPECT_EQ(at(i, "coverage", i), 1.0);
    EXPECT_GT(at(0, "uncertainty", 1), 0.0);
    EXPECT_EQ(word(rows[2], "profile"), fileC);
    EXPECT_EQ(rows[1].value(QLatin1String("profiles")).toArray().at(0).toString(), fileA);

    const Answer csv = run(words(QStringLiteral("compare --intent relative --matrix --format csv")) +
                           QStringList{fileA, fileB});
    const QList<QByteArray> lines = csv.output.split('\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines[0], "profile," + fileA.toUtf8() + ',' + fileB.toUtf8());
    EXPECT_TRUE(lines[1].startsWith(fileA.toUtf8() + ",1.000000,0.")) << lines[1].constData();
    const Answer text =
        run(words(QStringLiteral("compare --intent relative --matrix")) + QStringList{fileA, fileB});
    const QList<QByteArray> row = text.output.split('\n').value(2).simplified().split(' ');
    EXPECT_EQ(row, (QList<QByteArray>{fileB.toUtf8(), "60.00", "%", "100.00", "%"}));
}

TEST_F(CompareTest, leavesBadInputsOutOfTheMatrix)
{
    const Answer answer = run(words(QStringLiteral("compare --matrix --format json --intent relative")) +
                              QStringList{missing, fileA, fileB});
    EXPECT_EQ(answer.exitCode, BadInput);
    const auto rows = rowsOf(answer.output);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_NEAR(rows[1].value(QLatin1String("coverage")).toArray().at(0).toDouble(), 0.6, 0.0003);
}

TEST_F(CompareTest, doesNotDependOnTheNumberOfJobs)
{
    const auto with = [this](const char* jobs) {
        return run({QStringLiteral("compare"), fileA, fileB, fileC, QStringLiteral("--matrix"),
                    QStringLiteral("--jobs"), QLatin1String(jobs)})
            .output;
    };
    EXPECT_FALSE(with("1").isEmpty());
    EXPECT_EQ(with("1"), with("7"));
    EXPECT_EQ(run({QStringLiteral("compare"), fileA, fileB, QStringLiteral("--jobs"), QStringLiteral("0")})
                  .exitCode,
              WrongUsage);
}

TEST_F(CompareTest, disjointGamutsHaveNoIntersection)
{
    write(fileC, Box{{85, -40, -40}, {95, 40, 40}}.profile());
    const QJsonObject row = compare({fileA, fileC}).value(0);
    EXPECT_EQ(number(row, "intersection"), 0.0);
    EXPECT_EQ(number(row, "coverage_a_of_b"), 0.0);
}

TEST_F(CompareTest, aGamutCoversItself)
{
    const QJsonObject row = compare({sRGB, sRGB}).value(0);
    EXPECT_NEAR(number(row, "coverage_a_of_b"), 1.0, 1e-5);
    EXPECT_NEAR(number(row, "intersection") / number(row, "volume_a"), 1.0, 1e-5);
}

TEST_F(CompareTest, hasTheDocumentedKeys)
{
    EXPECT_EQ(keysOf(compare({fileA, fileB}).value(0)),
              words(QStringLiteral(
                  "a adaptation_a adaptation_b b black_a black_b bpc_a bpc_b coverage_a_of_b "
                  "coverage_b_of_a coverage_uncertainty_a_of_b coverage_uncertainty_b_of_a "
                  "grid_a grid_b intent_a intent_b intersection intersection_uncertainty kind_a kind_b "
                  "measured_more measured_more_at measured_more_by_hue measured_more_distance patch_de00_max "
                  "patch_de00_max_at patch_de00_mean patch_de00_p95 profile_more profile_more_at "
                  "profile_more_by_hue "
                  "profile_more_distance program seconds sha256_a sha256_b uncertainty_a uncertainty_b "
                  "union union_uncertainty volume_a volume_b white_a white_b")));
}

TEST_F(CompareTest, saysWhereAProfileClaimsMoreThanWasMeasured)
{
    // a small print: Lab = (20 + 20 (r + g + b), 30 (r - g), 30 (g - b))
    QByteArray text =
        "CGATS.17\nBEGIN_DATA_FORMAT\nRGB_R RGB_G RGB_B LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\nBEGIN_DATA\n";
    for (int i = 0; i < 8; ++i) {
        const int r = i & 1, g = i >> 1 & 1, b = i >> 2 & 1;
        for (const int value : {r, g, b, 20 + 20 * (r + g + b), 30 * (r - g), 30 * (g - b)})
            text += QByteArray::number(value) + ' ';
        text += '\n';
    }
    const QString chart = path(QStringLiteral("chart.txt"));
    kvtest::write(chart, text + "END_DATA\n");
    const QJsonObject row = compare({chart, QStringLiteral("sRGB")}).value(0);
    EXPECT_NEAR(number(row, "profile_more"), number(row, "volume_b") - number(row, "intersection"), 1.0);
    EXPECT_NEAR(number(row, "measured_more"), number(row, "volume_a") - number(row, "intersection"), 1.0);
    EXPECT_GT(number(row, "profile_more_distance"), 50.0); // sRGB has much more chroma
    EXPECT_EQ(row.value(QLatin1String("profile_more_by_hue")).toArray().size(), 12);
    EXPECT_GT(row.value(QLatin1String("profile_more_by_hue")).toArray().at(9).toDouble(), 50.0); // blue
    EXPECT_GT(number(row, "patch_de00_mean"), 5.0);
    EXPECT_GE(number(row, "patch_de00_max"), number(row, "patch_de00_p95"));
    const Answer answer = run({QStringLiteral("compare"), QStringLiteral("sRGB"), chart});
    EXPECT_TRUE(answer.output.contains("The profile claims more than was measured by a volume of "))
        << answer.output.toStdString();
    EXPECT_TRUE(compare({fileA, fileB}).value(0).value(QStringLiteral("profile_more")).isNull());
}

TEST_F(CompareTest, dependsOnTheIntent)
{
    const QJsonObject relative = compare({sRGB, cmyk}).value(0);
    const QJsonObject absolute = json({QStringLiteral("compare"), sRGB, cmyk}).value(0);
    EXPECT_EQ(word(relative, "intent_a"), QStringLiteral("relative"));
    EXPECT_EQ(word(absolute, "intent_b"), QStringLiteral("absolute"));
    EXPECT_GT(number(relative, "intersection"), number(absolute, "intersection") + 10000);
}

TEST_F(CompareTest, explainsTheCoveragesInItsHelp)
{
    const Answer answer = run(words(QStringLiteral("compare --help")));
    EXPECT_TRUE(answer.output.contains("coverage_a_of_b = intersection / volume of b"));
    EXPECT_TRUE(answer.output.contains("coverage_b_of_a = intersection / volume of a"));
}

TEST_F(CompareTest, printsPercentagesInText)
{
    const Answer answer = run(words(QStringLiteral("compare --intent relative")) + QStringList{fileA, fileB});
    EXPECT_TRUE(succeeded(answer));
    EXPECT_TRUE(answer.output.contains("60.00 %")) << answer.output.toStdString();
    EXPECT_TRUE(answer.output.contains("50.00 %"));
    EXPECT_TRUE(answer.output.contains("b in a: the share of b's volume that a covers"));
}

TEST_F(CompareTest, leavesThePairsOfABadInputOut)
{
    const Answer answer =
        run(words(QStringLiteral("compare --pairs --format json")) + QStringList{fileA, missing, fileB});
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(answer.errors, missingLine.toUtf8() + '\n');
    const auto rows = rowsOf(answer.output);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(word(rows[0], "b"), fileB);
}

TEST_F(CompareTest, hasNothingToCompareWithWhenTheFirstIsBad)
{
    const Answer answer =
        run(words(QStringLiteral("compare --format json")) + QStringList{missing, fileA, fileB});
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(answer.errors, missingLine.toUtf8() + '\n');
    EXPECT_TRUE(rowsOf(answer.output).isEmpty());
}

TEST_F(CompareTest, requiresTwoInputs)
{
    const Answer answer = run({QStringLiteral("compare"), sRGB});
    EXPECT_EQ(answer.exitCode, WrongUsage);
    EXPECT_TRUE(answer.errors.contains("At least 2 required")) << answer.errors.toStdString();
    EXPECT_TRUE(answer.output.isEmpty());
}

} // namespace
