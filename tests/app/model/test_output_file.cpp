// SPDX-License-Identifier: Apache-2.0
#include "model/export/OutputFile.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <filesystem>

namespace {

class OutputStreamTest : public testing::Test
{
protected:
    QByteArray content() const
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }

    QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("out.csv"));
};

TEST_F(OutputStreamTest, replacesAFileWhenAllPartsAreWritten)
{
    EXPECT_EQ(writeOutput(name, "old"), std::nullopt);
    OutputStream output(name);
    EXPECT_TRUE(output.write("new "));
    EXPECT_TRUE(output.write("content"));
    EXPECT_EQ(content(), "old");
    EXPECT_EQ(output.finish(), std::nullopt);
    EXPECT_EQ(content(), "new content");
}

TEST_F(OutputStreamTest, leavesTheOldFileWhenItIsNotFinished)
{
    EXPECT_EQ(writeOutput(name, "old"), std::nullopt);
    {
        OutputStream output(name);
        EXPECT_TRUE(output.write("half"));
    }
    EXPECT_EQ(content(), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1); // nothing temporary
}

TEST_F(OutputStreamTest, saysWhyItCannotWrite)
{
    const QString inNoFolder = folder.filePath(QStringLiteral("missing/out.csv"));
    OutputStream output(inNoFolder);
    EXPECT_FALSE(output.write("x"));
    const auto problem = output.finish();
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->code, Problem::Code(ProblemCode::CannotWrite));
    EXPECT_EQ(problem->subject, inNoFolder);
}

TEST_F(OutputStreamTest, writesNothingMoreAfterAFailure)
{
    OutputStream output(QStringLiteral("/dev/full"));
    EXPECT_FALSE(output.write("x"));
    EXPECT_FALSE(output.write("y"));
    const auto problem = output.finish();
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->code, Problem::Code(ProblemCode::CannotWrite));
}

TEST_F(OutputStreamTest, knowsAnInputByItsOtherNames)
{
    EXPECT_EQ(writeOutput(name, "old"), std::nullopt);
    const QString soft = folder.filePath(QStringLiteral("soft.csv"));
    const QString hard = folder.filePath(QStringLiteral("hard.csv"));
    ASSERT_TRUE(QFile::link(name, soft));
    std::filesystem::create_hard_link(name.toStdString(), hard.toStdString());
    const QString around = folder.filePath(QStringLiteral("../")) + QDir(folder.path()).dirName() +
                           QStringLiteral("//./out.csv@pixels");
    for (const QString& input : {name, soft, hard, around}) {
        const auto problem = overwritesInput(name, {QStringLiteral("-"), input});
        ASSERT_TRUE(problem) << input.toStdString();
        EXPECT_EQ(problem->code, Problem::Code(ProblemCode::OutputIsInput));
        EXPECT_EQ(problem->subject, input);
    }
}

TEST_F(OutputStreamTest, mayBeADeviceOrAnotherFileThanTheInput)
{
    const QString other = folder.filePath(QStringLiteral("other.csv"));
    const QString missing = folder.filePath(QStringLiteral("missing.csv"));
    EXPECT_EQ(writeOutput(name, "old"), std::nullopt);
    EXPECT_EQ(writeOutput(other, "old"), std::nullopt);
    EXPECT_EQ(overwritesInput(name, {other, missing, folder.path()}), std::nullopt);
    EXPECT_EQ(overwritesInput(missing, {other, missing}), std::nullopt);
    for (const QString& both : {QStringLiteral("/dev/null"), folder.path(), QStringLiteral("-"), QString()})
        EXPECT_EQ(overwritesInput(both, {both}), std::nullopt) << both.toStdString();
}

} // namespace
