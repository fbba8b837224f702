// SPDX-License-Identifier: Apache-2.0
#include "Program.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>

namespace {

constexpr int maxRunMs = 300000;

kvtest::Answer run(const QString& program, const QStringList& arguments, const QProcessEnvironment& env)
{
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(program, arguments);
    kvtest::Answer answer;
    if (process.waitForFinished(maxRunMs) && process.exitStatus() == QProcess::NormalExit)
        answer.exitCode = process.exitCode();
    answer.output = process.readAllStandardOutput();
    answer.errors = process.readAllStandardError();
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
    }
    return answer;
}

} // namespace

QStringList kvtest::words(const QString& line)
{
    return line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QStringList kvtest::words(const char* line)
{
    return words(QString::fromUtf8(line));
}

void kvtest::PrintTo(const Answer& answer, std::ostream* out)
{
    *out << "exit code " << answer.exitCode << ", " << answer.output.size()
         << " bytes of output, errors: " << answer.errors.toStdString();
}

QProcessEnvironment kvtest::environment()
{
    static const QTemporaryDir runtime; // Qt warns if there is none
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), runtime.path()); // not the settings of the user
    env.insert(QStringLiteral("XDG_STATE_HOME"), runtime.path());  // nor the user's unsaved changes
    env.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("default.warning=true"));
    // not the language, desktop (which has its own dialogs) and input method of the user
    env.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    for (const char* name :
         {"COLUMNS", "LANGUAGE", "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "QT_QPA_PLATFORMTHEME",
          "QT_STYLE_OVERRIDE", "QT_SCALE_FACTOR", "QT_IM_MODULE", "XMODIFIERS"})
        env.remove(QLatin1String(name));
    return env;
}

QProcessEnvironment kvtest::withoutDisplay()
{
    QProcessEnvironment env = environment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "XAUTHORITY", "QT_QPA_PLATFORM"})
        env.remove(QLatin1String(name));
    return env;
}

QString kvtest::binary()
{
    return QStringLiteral(KVGAMUT_BINARY);
}

kvtest::Answer kvtest::kvgamut(const QStringList& arguments, const QProcessEnvironment& env)
{
    return run(binary(), arguments, env);
}

kvtest::Answer kvtest::shell(const QString& script, const QStringList& arguments,
                             const QProcessEnvironment& env)
{
    QProcessEnvironment withBinary = env;
    withBinary.insert(QStringLiteral("KVGAMUT"), binary());
    return run(QStringLiteral("/bin/bash"),
               QStringList{QStringLiteral("-c"), script, QStringLiteral("bash")} + arguments, withBinary);
}

testing::AssertionResult kvtest::succeeded(const Answer& answer)
{
    if (answer.exitCode == 0 && answer.errors.isEmpty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << testing::PrintToString(answer);
}

testing::AssertionResult kvtest::failedWith(const Answer& answer, int exitCode, const QString& line)
{
    const QByteArray expected = line.toUtf8() + '\n';
    if (answer.exitCode == exitCode && answer.errors == expected && answer.output.isEmpty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << testing::PrintToString(answer) << "expected exit code " << exitCode
                                       << ", errors: " << expected.toStdString();
}

QStringList kvtest::ProgramTest::files() const
{
    return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QByteArray kvtest::ProgramTest::renderedBytes(const QStringList& arguments)
{
    const QString file = path(QStringLiteral("picture.png"));
    QFile::remove(file);
    QStringList all{QStringLiteral("render"), QStringLiteral("-o"), file};
    if (!arguments.contains(QStringLiteral("--annotate")))
        all << QStringLiteral("--annotate") << QStringLiteral("none");
    const Answer answer = kvgamut(all + arguments);
    EXPECT_TRUE(succeeded(answer)) << arguments.join(QLatin1Char(' ')).toStdString();
    return contents(file);
}

QImage kvtest::ProgramTest::rendered(const QStringList& arguments)
{
    const QImage picture = QImage::fromData(renderedBytes(arguments), "PNG");
    EXPECT_FALSE(picture.isNull());
    return picture;
}

QByteArray kvtest::contents(const QString& file)
{
    QFile input(file);
    return input.open(QIODevice::ReadOnly) ? input.readAll() : QByteArray();
}

void kvtest::write(const QString& file, const QByteArray& bytes)
{
    QFile output(file);
    ASSERT_TRUE(output.open(QIODevice::WriteOnly));
    ASSERT_EQ(output.write(bytes), bytes.size());
}
