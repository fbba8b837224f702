// SPDX-License-Identifier: Apache-2.0
#include "model/export/OutputFile.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

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

} // namespace
