// SPDX-License-Identifier: Apache-2.0
#include "desktop/models/FileWatch.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>

namespace {

using kvtest::spinUntil;

class Watch : public testing::Test
{
protected:
    QString path(const char* name) const { return folder.filePath(QLatin1String(name)); }
    static void overwrite(const QString& file, const QByteArray& bytes)
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
    static void replace(const QString& file, const QByteArray& bytes)
    {
        QSaveFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
        ASSERT_TRUE(out.commit());
    }
    bool isTold(int count)
    {
        return spinUntil([&] { return changes.count() == count; });
    }

    QTemporaryDir folder;
    FileWatch watch;
    QSignalSpy changes{&watch, &FileWatch::changed};
};

TEST_F(Watch, tellsThatAFileWasWrittenAgain)
{
    overwrite(path("a"), "one");
    overwrite(path("b"), "one");
    watch.setFiles({path("a"), path("b")});
    overwrite(path("a"), "other");
    ASSERT_TRUE(isTold(1));
    EXPECT_EQ(changes[0][0].toString(), path("a"));
}

TEST_F(Watch, survivesThatAFileIsReplaced)
{
    overwrite(path("a"), "one");
    watch.setFiles({path("a")});
    for (int i = 1; i <= 3; ++i) {
        replace(path("a"), QByteArray::number(i));
        ASSERT_TRUE(isTold(i));
    }
    overwrite(path("a"), "in place");
    EXPECT_TRUE(isTold(4));
}

TEST_F(Watch, waitsForAFileThatIsGone)
{
    overwrite(path("a"), "one");
    watch.setFiles({path("a")});
    ASSERT_TRUE(QFile::remove(path("a")));
    overwrite(path("b"), "another file of the folder");
    overwrite(path("a"), "other");
    ASSERT_TRUE(isTold(1));
    EXPECT_EQ(changes[0][0].toString(), path("a"));
}

TEST_F(Watch, waitsUntilAFileIsComplete)
{
    overwrite(path("a"), "one");
    watch.setFiles({path("a")});
    QFile out(path("a"));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    for (int i = 0; i < 60; ++i) {
        out.write("part");
        kvtest::spinFor(20);
    }
    out.close();
    ASSERT_TRUE(isTold(1));
    EXPECT_EQ(QFile(path("a")).size(), 240);
    overwrite(path("a"), "again");
    EXPECT_TRUE(isTold(2)) << "once for the parts";
}

TEST_F(Watch, forgetsFilesThatAreClosed)
{
    overwrite(path("a"), "one");
    overwrite(path("b"), "one");
    watch.setFiles({path("a"), path("b")});
    watch.setFiles({path("b")});
    overwrite(path("a"), "other");
    overwrite(path("b"), "other");
    ASSERT_TRUE(isTold(1));
    EXPECT_EQ(changes[0][0].toString(), path("b"));
}

} // namespace
