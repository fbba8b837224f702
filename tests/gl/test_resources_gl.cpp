// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"

#include <scene/ShaderPrograms.h>

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtOpenGL/QOpenGLShaderProgram>

namespace {

const char* const soundVertex = "#version 120\nattribute vec3 vertex;\nvarying highp float height;\n"
                                "void main() { height = vertex.y; gl_Position = vec4(vertex, 1.0); }\n";
const char* const soundFragment =
    "#version 120\nvarying highp float height;\nvoid main() { gl_FragColor = vec4(height); }\n";

void write(const QString& file, const QByteArray& content)
{
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    ASSERT_EQ(out.write(content), content.size());
}

/// A current context, and a folder with two sound shader files.
class Shaders : public testing::Test
{
protected:
    Shaders()
    {
        QSurfaceFormat format;
        format.setRenderableType(QSurfaceFormat::OpenGL);
        format.setVersion(1, 2);
        surface.setFormat(format);
        surface.create();
        context.setFormat(format);
        EXPECT_TRUE(context.create());
        EXPECT_TRUE(context.makeCurrent(&surface));
        write(vertexFile(), soundVertex);
        write(fragmentFile(), soundFragment);
    }

    QString vertexFile() const { return m_dir.filePath(QStringLiteral("a.vert")); }
    QString fragmentFile() const { return m_dir.filePath(QStringLiteral("a.frag")); }
    bool builds() const { return ShaderPrograms::build(vertexFile(), fragmentFile())->isLinked(); }
    /// Why the programs of the context cannot be built.
    KVProblem problem() const { return ShaderPrograms::problemOf(&context).value_or(KVProblem()); }

    /// Fails unless the shader that begins with @p beginning is reported for @p file, once for three
    /// programs.
    void expectRefused(const QString& file)
    {
        kvtest::expectMessage(file);
        for (int i = 0; i < 3; ++i)
            EXPECT_FALSE(builds());
        EXPECT_EQ(kvtest::messages().size(), 1);
        EXPECT_EQ(problem().code, KVProblemCode::ShaderNotBuilt);
        EXPECT_EQ(problem().subject, file);
        EXPECT_TRUE(kvtest::messages().value(0).endsWith(problem().text()));
        EXPECT_FALSE(problem().arguments.value(0).isEmpty());
        EXPECT_FALSE(problem().text().contains(QLatin1Char('\n')));
    }

    QOffscreenSurface surface;
    QOpenGLContext context;

private:
    QTemporaryDir m_dir;
};

/// Runs a viewer as an application of its own, in a temporary folder.
class Application : public testing::Test
{
protected:
    Application()
    {
        EXPECT_TRUE(QDir(m_dir.path()).mkpath(QStringLiteral("bin")));
        EXPECT_TRUE(QFile::copy(QStringLiteral(KV_RESOURCE_PROBE), probe()));
    }

    QString resource(const char* name) const
    {
        return m_dir.filePath(QLatin1String("Resources/") + QLatin1String(name));
    }

    /// Copies the files of the source tree to `../Resources`, relative to the application.
    void placeResources() const
    {
        for (const char* file : {"Shaders/simple.vert", "Shaders/simple.frag", "Images/gamut.png"}) {
            EXPECT_TRUE(QDir().mkpath(QFileInfo(resource(file)).path()));
            EXPECT_TRUE(QFile::copy(QLatin1String(KV_RESOURCES "/") + QLatin1String(file), resource(file)));
        }
    }

    /// The picture that the application shows. What it logs is in @p lines, the problem that the view reports
    /// is in @p reported.
    QImage show()
    {
        const QString output = m_dir.filePath(QStringLiteral("picture.png"));
        QFile::remove(output);
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("kv.core.debug=false"));
        process.setProcessEnvironment(environment);
        process.start(probe(), {output});
        EXPECT_TRUE(process.waitForFinished(300000));
        EXPECT_EQ(process.exitCode(), 0);
        reported = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
        lines =
            QString::fromUtf8(process.readAllStandardError()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        return QImage(output);
    }

    /// Whether all pixels have one colour.
    static bool isEmpty(const QImage& picture)
    {
        QImage expected = picture;
        expected.fill(picture.pixelColor(0, 0));
        return !picture.isNull() && picture == expected;
    }

    /// Fails unless the application shows nothing and prints one line that names @p file.
    void expectOneLineAbout(const char* file)
    {
        EXPECT_TRUE(isEmpty(show())) << file;
        EXPECT_EQ(lines.size(), 1) << lines.join(QLatin1Char('\n')).toStdString();
        EXPECT_TRUE(reported.contains(resource(file))) << reported.toStdString();
        EXPECT_TRUE(lines.value(0).endsWith(reported)) << lines.value(0).toStdString();
    }

    QStringList lines;
    QString reported;

private:
    QString probe() const
    {
        return m_dir.filePath(QLatin1String("bin/") +
                              QFileInfo(QStringLiteral(KV_RESOURCE_PROBE)).fileName());
    }

    QTemporaryDir m_dir;
};

} // namespace

// --- Programs ------------------------------------------------------------------------------------

TEST_F(Shaders, ofTheApplicationAreBuilt)
{
    EXPECT_TRUE(builds());
    EXPECT_FALSE(ShaderPrograms::problemOf(&context));
}

TEST_F(Shaders, ofTheLibraryAreBuiltWithoutFiles)
{
    ASSERT_TRUE(QFile::remove(vertexFile()));
    ASSERT_TRUE(QFile::remove(fragmentFile()));
    const auto program = ShaderPrograms::build(vertexFile(), fragmentFile());
    EXPECT_TRUE(program->isLinked());
    EXPECT_GE(program->uniformLocation("ambientStrenght"), 0);
}

TEST_F(Shaders, eachObjectHasAProgramOfItsOwn)
{
    const auto one = ShaderPrograms::build(vertexFile(), fragmentFile());
    const auto other = ShaderPrograms::build(vertexFile(), fragmentFile());
    EXPECT_NE(one->programId(), other->programId());
}

TEST_F(Shaders, whoseFragmentStageIsFaultyAreReportedOnce)
{
    write(fragmentFile(), "#version 120\n\nvoid main() { gl_FragColor = nothing; }\n");
    expectRefused(fragmentFile());
    EXPECT_TRUE(problem().arguments.value(0).contains(QLatin1String("nothing")));
    EXPECT_TRUE(problem().arguments.value(0).contains(QLatin1Char('3'))) << "the line in the file";
}

TEST_F(Shaders, whoseVertexStageIsFaultyAreReportedOnce)
{
    write(vertexFile(), "no shader at all");
    expectRefused(vertexFile());
}

TEST_F(Shaders, thatDoNotFitTogetherAreReportedOnce)
{
    write(vertexFile(),
          "#version 120\nattribute vec3 vertex;\nvoid main() { gl_Position = vec4(vertex, 1.0); }\n");
    expectRefused(vertexFile() + QLatin1String(" + ") + fragmentFile());
}

TEST_F(Shaders, thatAreEmptyAreReportedOnce)
{
    write(fragmentFile(), "");
    expectRefused(fragmentFile());
}

TEST_F(Shaders, withoutPositionsAreReportedOnce)
{
    write(vertexFile(),
          "#version 120\nvarying float height;\nvoid main() { height = 0.0; gl_Position = vec4(0.0); }\n");
    expectRefused(vertexFile() + QLatin1String(" + ") + fragmentFile());
}

TEST_F(Shaders, thatCannotBeReadAreReportedOnce)
{
    kvtest::expectMessage(fragmentFile() + QLatin1String("': no such file"));
    ASSERT_TRUE(QFile::remove(fragmentFile()));
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(builds());
    EXPECT_EQ(kvtest::messages().size(), 1);
    EXPECT_EQ(problem(), (KVProblem{KVProblemCode::FileNotFound, {}, fragmentFile()}));
}

TEST_F(Shaders, areTriedAgainAfterAChangeOfTheFiles)
{
    kvtest::expectMessage(fragmentFile());
    write(fragmentFile(), "faulty");
    EXPECT_FALSE(builds());
    write(fragmentFile(), soundFragment);
    EXPECT_TRUE(builds());
}

TEST_F(Shaders, areTriedAndReportedAgainInAnotherContext)
{
    kvtest::expectMessage(fragmentFile());
    write(fragmentFile(), "faulty");
    EXPECT_FALSE(builds());
    QOpenGLContext other;
    other.setFormat(context.format());
    ASSERT_TRUE(other.create());
    EXPECT_FALSE(ShaderPrograms::problemOf(&other));
    ASSERT_TRUE(other.makeCurrent(&surface));
    EXPECT_FALSE(builds());
    EXPECT_TRUE(ShaderPrograms::problemOf(&other));
    EXPECT_EQ(kvtest::messages().size(), 2);
    other.doneCurrent();
}

TEST_F(Shaders, areNotBuiltWithoutAContext)
{
    context.doneCurrent();
    EXPECT_FALSE(builds());
    EXPECT_FALSE(ShaderPrograms::problemOf(nullptr));
}

// --- Applications --------------------------------------------------------------------------------

TEST_F(Application, withoutResourcesShowsTheSamePicture)
{
    const QImage without = show();
    EXPECT_FALSE(isEmpty(without));
    EXPECT_EQ(reported, QString());
    EXPECT_TRUE(lines.isEmpty()) << lines.join(QLatin1Char('\n')).toStdString();
    placeResources();
    EXPECT_EQ(show(), without);
}

TEST_F(Application, resourcesReplaceThoseOfTheLibrary)
{
    placeResources();
    write(resource("Shaders/simple.frag"), "void main() { gl_FragColor = vec4(1.0, 0.0, 1.0, 1.0); }");
    const QImage picture = show();
    EXPECT_EQ(picture.pixelColor(picture.width() / 2 + 5, picture.height() / 2 + 5), QColor(255, 0, 255));
}

TEST_F(Application, withAFaultyShaderShowsNothingAndSaysSoOnce)
{
    placeResources();
    write(resource("Shaders/simple.frag"), "faulty");
    expectOneLineAbout("Shaders/simple.frag");
    write(resource("Shaders/simple.vert"), "faulty");
    expectOneLineAbout("Shaders/simple.vert");
}

TEST_F(Application, withADeviceAsShaderShowsNothingAndSaysSoOnce)
{
    placeResources();
    ASSERT_TRUE(QFile::remove(resource("Shaders/simple.vert")));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), resource("Shaders/simple.vert")));
    expectOneLineAbout("Shaders/simple.vert");
}
