// SPDX-License-Identifier: Apache-2.0
#include "desktop/files/RecentFiles.h"
#include "model/inputs/FileName.h"
#include "model/inputs/InputLimits.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <fcntl.h>
#include <unistd.h>

namespace {

class RecentFilesTest : public testing::Test
{
protected:
    void SetUp() override { qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.path())); }
    void TearDown() override
    {
        qputenv("XDG_CONFIG_HOME", m_before);
        for (const QByteArray& file : m_made) // Qt does not remove files whose names are not UTF-8
            ::unlink(file.constData());
    }

    /// An empty file with the name @p name.
    QString made(const QByteArray& name)
    {
        const QString file = m_folder.path() + QLatin1Char('/') + FileName::decoded(name);
        const int descriptor =
            ::open(FileName::encoded(file).constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        EXPECT_GE(descriptor, 0);
        m_made.append(FileName::encoded(file));
        ::close(descriptor);
        return file;
    }

    QString list() const { return m_folder.filePath(QStringLiteral("kvgamut/recent-files")); }

    void writeList(const QByteArray& content) const
    {
        EXPECT_TRUE(QDir(m_folder.path()).mkpath(QStringLiteral("kvgamut")));
        QFile file(list());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
    }

private:
    QTemporaryDir m_folder;
    QList<QByteArray> m_made;
    const QByteArray m_before = qgetenv("XDG_CONFIG_HOME");
};

TEST_F(RecentFilesTest, areTheLastNineThatExist)
{
    QStringList files;
    for (int i = 0; i < 11; ++i) {
        files.prepend(made("file " + QByteArray::number(i)));
        RecentFiles::add(files.first());
    }
    EXPECT_EQ(RecentFiles::list(), files.mid(0, 9));
    RecentFiles::add(files[3]);
    files.move(3, 0);
    EXPECT_EQ(RecentFiles::list(), files.mid(0, 9));
    QFile::remove(files[1]);
    files.removeAt(1);
    EXPECT_EQ(RecentFiles::list(), files.mid(0, 8));
    RecentFiles::clear();
    EXPECT_TRUE(RecentFiles::list().isEmpty());
}

TEST_F(RecentFilesTest, keepEveryByteOfTheirNames)
{
    QStringList files;
    for (const char* name :
         {"größe", "not UTF-8: \xE9", "100%25", "two\nlines\r", "@Variant(x), \"y\"", " "}) {
        files.prepend(made(name));
        RecentFiles::add(files.first());
    }
    EXPECT_EQ(RecentFiles::list(), files);
}

TEST_F(RecentFilesTest, ignoreAListThatCannotBeOurs)
{
    const QByteArray line = made("file").toUtf8() + '\n';
    writeList(line + "/x%00y\n\n\xFF\n" + line);
    EXPECT_EQ(RecentFiles::list(), QStringList(QString::fromUtf8(line).trimmed()));
    writeList(line.repeated(InputLimits::maxBytes(InputKind::Settings) / line.size() + 1));
    EXPECT_TRUE(RecentFiles::list().isEmpty());
    QFile::remove(list());
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), list()));
    EXPECT_TRUE(RecentFiles::list().isEmpty());
}

} // namespace
