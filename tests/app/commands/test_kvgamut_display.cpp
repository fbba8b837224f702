// SPDX-License-Identifier: Apache-2.0
#include "app/support/Program.h"

#include <QtCore/QFile>

using namespace kvtest;

namespace {

class DisplayTest : public ProgramTest
{
protected:
    QStringList render(const QString& profile = QStringLiteral("sRGB"))
    {
        return {QStringLiteral("render"), profile, QStringLiteral("--size"), QStringLiteral("200x150"),
                QStringLiteral("-o"),     output()};
    }

    QString output() const { return path(QStringLiteral("out.png")); }

    /// An environment without a display, in which @p script replaces xvfb-run.
    QProcessEnvironment withVirtualScreen(const QByteArray& script)
    {
        const QString file = path(QStringLiteral("xvfb-run"));
        write(file, script);
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QProcessEnvironment env = withoutDisplay();
        env.insert(QStringLiteral("PATH"), path(QString()) + QStringLiteral(":/usr/bin:/bin"));
        return env;
    }
};

TEST_F(DisplayTest, rendersTheSamePictureWithoutOne)
{
    ASSERT_TRUE(succeeded(kvgamut(render())));
    const QByteArray withDisplay = contents(output());
    ASSERT_TRUE(QFile::remove(output()));
    EXPECT_TRUE(succeeded(kvgamut(render(), withoutDisplay())));
    EXPECT_FALSE(withDisplay.isEmpty());
    EXPECT_EQ(contents(output()), withDisplay);
}

TEST_F(DisplayTest, rendersWithoutOneWhateverPlatformTheEnvironmentNames)
{
    QProcessEnvironment env = withoutDisplay();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    EXPECT_TRUE(succeeded(kvgamut(render(), env)));
    EXPECT_EQ(QImage(output()).size(), QSize(200, 150));
}

TEST_F(DisplayTest, rendersWhenTheDisplayDoesNotAnswer)
{
    QProcessEnvironment env = withoutDisplay();
    env.insert(QStringLiteral("DISPLAY"), QStringLiteral(":987"));
    EXPECT_TRUE(succeeded(kvgamut(render(), env)));
    EXPECT_EQ(QImage(output()).size(), QSize(200, 150));
}

TEST_F(DisplayTest, rendersLargerThanACommonScreenWithoutOne)
{
    EXPECT_TRUE(succeeded(kvgamut({QStringLiteral("render"), QStringLiteral("sRGB"), QStringLiteral("--size"),
                                   QStringLiteral("2000x1500"), QStringLiteral("-o"), output()},
                                  withoutDisplay())));
    EXPECT_EQ(QImage(output()).size(), QSize(2000, 1500));
}

TEST_F(DisplayTest, requestsAVirtualScreenOfFixedSizeForAnyPicture)
{
    // the replacement of xvfb-run prints its arguments
    const QProcessEnvironment env = withVirtualScreen("#!/bin/sh\nprintf '%s\\n' \"$@\"\nexit 0\n");
    const Answer answer =
        kvgamut({QStringLiteral("render"), QStringLiteral("a profile"), QStringLiteral("--size"),
                 QStringLiteral("1000x3000"), QStringLiteral("-o"), output()},
                env);
    EXPECT_EQ(answer.exitCode, Done);
    EXPECT_TRUE(answer.output.contains("-screen 0 1280x1024x24")) << answer.output.toStdString();
    EXPECT_TRUE(answer.output.contains("\nrender\na profile\n--size\n1000x3000\n"))
        << answer.output.toStdString();
}

TEST_F(DisplayTest, passesTheExitCodeOnWithoutOne)
{
    const QString missing = path(QStringLiteral("missing.icc"));
    EXPECT_TRUE(failedWith(kvgamut(render(missing), withoutDisplay()), BadInput,
                           QStringLiteral("kvgamut: '%1': no such file").arg(missing)));
}

TEST_F(DisplayTest, reportsAMissingXvfb)
{
    QProcessEnvironment env = withoutDisplay();
    env.insert(QStringLiteral("PATH"), path(QString()));
    const Answer answer = kvgamut(render(), env);
    EXPECT_EQ(answer.exitCode, BadOutput);
    EXPECT_EQ(answer.errors.count('\n'), 1);
    EXPECT_TRUE(answer.errors.contains("xvfb-run")) << answer.errors.toStdString();
    EXPECT_TRUE(answer.errors.contains("not installed")) << answer.errors.toStdString();
    EXPECT_FALSE(QFile::exists(output()));
}

TEST_F(DisplayTest, runsAgainAtMostOnce)
{
    // provides no display: only skips its own options and starts the command
    const QProcessEnvironment env = withVirtualScreen("#!/bin/sh\nshift 3\nexec \"$@\"\n");
    EXPECT_TRUE(
        failedWith(kvgamut(render(), env), BadOutput, QStringLiteral("kvgamut: xvfb-run gave no display")));
}

TEST_F(DisplayTest, reportsMissingOpenGL)
{
    QProcessEnvironment env = environment();
    env.insert(QStringLiteral("LIBGL_DRIVERS_PATH"), QStringLiteral("/nonexistent"));
    env.insert(QStringLiteral("__GLX_VENDOR_LIBRARY_NAME"), QStringLiteral("nonexistent")); // Mesa 25
    const Answer answer = kvgamut(render(), env);
    EXPECT_EQ(answer.exitCode, BadOutput);
    EXPECT_TRUE(answer.errors.contains("kvgamut: this display has no OpenGL")) << answer.errors.toStdString();
    EXPECT_FALSE(QFile::exists(output()));
}

TEST_F(DisplayTest, isWhatViewNeeds)
{
    const Answer answer = kvgamut({QStringLiteral("view"), QStringLiteral("sRGB")}, withoutDisplay());
    EXPECT_TRUE(failedWith(answer, BadOutput,
                           QStringLiteral("kvgamut: there is no display to open a window on; "
                                          "'kvgamut render' needs none")));
}

} // namespace
