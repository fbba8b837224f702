// SPDX-License-Identifier: Apache-2.0
#include <scene/ResourceFiles.h>

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <sys/stat.h>

namespace {

/// The folder of an application's own files, empty at first.
class ResourceFolder : public testing::Test
{
protected:
    QString path(const char* name) const { return m_dir.filePath(QString::fromLatin1(name)); }
    QString vertexFile() const { return path("simple.vert"); }
    QString fragmentFile() const { return path("simple.frag"); }

    static void write(const QString& file, const QByteArray& content)
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        ASSERT_EQ(out.write(content), content.size());
    }

    /// Why the shaders cannot be read when simple.vert is sound and simple.frag is as the test made it.
    KVProblem problemBesideASoundVertexShader() const
    {
        write(vertexFile(), "void main() {}");
        const auto shaders = ResourceFiles::shaders(vertexFile(), fragmentFile());
        EXPECT_FALSE(shaders);
        return shaders ? KVProblem() : shaders.error();
    }

private:
    QTemporaryDir m_dir;
};

/// The content of a file of the source tree's folder resources/.
QByteArray shipped(const char* file)
{
    QFile in(QStringLiteral(KV_RESOURCES) + QString::fromLatin1(file));
    EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << file;
    return in.readAll();
}

} // namespace

// --- Shaders -------------------------------------------------------------------------------------

TEST_F(ResourceFolder, withoutShadersGivesTheCompiledInOnes)
{
    const auto shaders = ResourceFiles::shaders(vertexFile(), fragmentFile());
    ASSERT_TRUE(shaders);
    EXPECT_EQ(shaders->vertex, shipped("/Shaders/simple.vert"));
    EXPECT_EQ(shaders->fragment, shipped("/Shaders/simple.frag"));
    EXPECT_TRUE(shaders->fragmentFile.startsWith(QLatin1String(":/")));
}

TEST_F(ResourceFolder, withDanglingLinksGivesTheCompiledInShaders)
{
    ASSERT_TRUE(QFile::link(path("nowhere"), vertexFile()));
    ASSERT_TRUE(QFile::link(path("nowhere"), fragmentFile()));
    const auto shaders = ResourceFiles::shaders(vertexFile(), fragmentFile());
    ASSERT_TRUE(shaders);
    EXPECT_EQ(shaders->vertex, shipped("/Shaders/simple.vert"));
}

TEST_F(ResourceFolder, replacesTheCompiledInShaders)
{
    write(vertexFile(), "own vertex");
    write(fragmentFile(), "");
    const auto shaders = ResourceFiles::shaders(vertexFile(), fragmentFile());
    ASSERT_TRUE(shaders);
    EXPECT_EQ(*shaders, (ShaderSources{vertexFile(), fragmentFile(), "own vertex", ""}));
}

TEST_F(ResourceFolder, withOneShaderReportsTheOther)
{
    EXPECT_EQ(problemBesideASoundVertexShader(),
              (KVProblem{KVProblemCode::FileNotFound, {}, fragmentFile()}));
}

TEST_F(ResourceFolder, refusesADirectoryInPlaceOfAShader)
{
    ASSERT_TRUE(QDir().mkdir(fragmentFile()));
    EXPECT_EQ(problemBesideASoundVertexShader(), (KVProblem{KVProblemCode::NotAFile, {}, fragmentFile()}));
}

TEST_F(ResourceFolder, doesNotReadADeviceInPlaceOfAShader)
{
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), fragmentFile()));
    EXPECT_EQ(problemBesideASoundVertexShader(), (KVProblem{KVProblemCode::NotAFile, {}, fragmentFile()}));
}

TEST_F(ResourceFolder, doesNotWaitForAPipeInPlaceOfAShader)
{
    ASSERT_EQ(mkfifo(fragmentFile().toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(problemBesideASoundVertexShader(), (KVProblem{KVProblemCode::NotAFile, {}, fragmentFile()}));
}

TEST_F(ResourceFolder, refusesAHugeShader)
{
    write(fragmentFile(), "");
    ASSERT_TRUE(QFile::resize(fragmentFile(), qint64(1) << 36)); // sparse
    EXPECT_EQ(problemBesideASoundVertexShader(),
              (KVProblem{KVProblemCode::ShaderTooLarge, {}, fragmentFile()}));
}

TEST_F(ResourceFolder, refusesAShaderThatCannotBeRead)
{
    ASSERT_TRUE(QFile::link(QStringLiteral("/proc/self/mem"), fragmentFile())); // its first byte has no page
    const KVProblem problem = problemBesideASoundVertexShader();
    EXPECT_EQ(problem.code, KVProblemCode::FileUnreadable);
    EXPECT_EQ(problem.subject, fragmentFile());
    EXPECT_FALSE(problem.arguments.value(0).isEmpty());
}

// --- Image of the plane --------------------------------------------------------------------------

TEST_F(ResourceFolder, missingGivesTheCompiledInImage)
{
    const QImage image = ResourceFiles::planeImage(path("Images"));
    EXPECT_FALSE(image.isNull());
    EXPECT_EQ(image, QImage::fromData(shipped("/Images/gamut.png")));
}

TEST_F(ResourceFolder, withoutAnImageGivesNone)
{
    ASSERT_TRUE(QDir().mkdir(path("Images")));
    EXPECT_TRUE(ResourceFiles::planeImage(path("Images")).isNull());
}

TEST_F(ResourceFolder, replacesTheCompiledInImage)
{
    ASSERT_TRUE(QDir().mkdir(path("Images")));
    QImage own(3, 2, QImage::Format_RGB32);
    own.fill(Qt::magenta);
    ASSERT_TRUE(own.save(path("Images/gamut.png")));
    EXPECT_EQ(ResourceFiles::planeImage(path("Images")), own);
}

TEST_F(ResourceFolder, doesNotReadADeviceOrWaitForAPipeInPlaceOfTheImage)
{
    ASSERT_TRUE(QDir().mkdir(path("Images")));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), path("Images/gamut.png")));
    EXPECT_TRUE(ResourceFiles::planeImage(path("Images")).isNull());
    ASSERT_TRUE(QFile::remove(path("Images/gamut.png")));
    ASSERT_EQ(mkfifo(path("Images/gamut.png").toLocal8Bit().constData(), 0600), 0);
    EXPECT_TRUE(ResourceFiles::planeImage(path("Images")).isNull());
}

TEST_F(ResourceFolder, refusesAHugeImage)
{
    ASSERT_TRUE(QDir().mkdir(path("Images")));
    write(path("Images/gamut.png"), shipped("/Images/gamut.png"));
    ASSERT_TRUE(QFile::resize(path("Images/gamut.png"), qint64(1) << 36)); // sparse
    EXPECT_TRUE(ResourceFiles::planeImage(path("Images")).isNull());
}
