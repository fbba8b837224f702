// SPDX-License-Identifier: Apache-2.0
#include "app/support/Program.h"
#include "support/Spin.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <csignal>
#include <sys/stat.h>

#include <algorithm>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

using namespace kvtest;

namespace {

/// A server that accepts one connection and sends a text: no Wayland compositor.
class OtherServer
{
public:
    explicit OtherServer(const QString& path)
    {
        const QByteArray name = QFile::encodeName(path);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        EXPECT_LT(name.size(), static_cast<qsizetype>(sizeof address.sun_path));
        std::copy(name.cbegin(), name.cend(), address.sun_path);
        EXPECT_EQ(bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(m_socket, 1), 0);
        m_thread = std::thread([this] {
            const int client = accept(m_socket, nullptr, nullptr);
            const QByteArray greeting("220 ready for mail\r\n");
            send(client, greeting.constData(), static_cast<size_t>(greeting.size()), MSG_NOSIGNAL);
            close(client);
        });
    }
    ~OtherServer()
    {
        shutdown(m_socket, SHUT_RDWR); // ends accept()
        m_thread.join();
        close(m_socket);
    }
    OtherServer(const OtherServer&) = delete;
    OtherServer& operator=(const OtherServer&) = delete;

private:
    int m_socket = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::thread m_thread;
};

/// A server that accepts connections and never answers, on a port of an X server.
class SilentServer
{
public:
    SilentServer()
    {
        socklen_t size = sizeof m_address;
        auto* address = reinterpret_cast<sockaddr*>(&m_address);
        m_address.sin_family = AF_INET;
        m_address.sin_addr.s_addr = htonl(INADDR_LOOPBACK); // and any free port
        EXPECT_EQ(bind(m_socket, address, size), 0);
        EXPECT_EQ(getsockname(m_socket, address, &size), 0);
        EXPECT_EQ(listen(m_socket, 8), 0);
    }
    ~SilentServer() { close(m_socket); }
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    QString display() const { return QStringLiteral("127.0.0.1:%1").arg(ntohs(m_address.sin_port) - 6000); }

private:
    int m_socket = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in m_address{};
};

class DisplayTest : public ProgramTest
{
protected:
    /// What `kvgamut view` answers in an environment without a display, to which @p variables are added.
    static Answer viewWith(const QList<std::pair<QString, QString>>& variables)
    {
        QProcessEnvironment env = withoutDisplay();
        for (const auto& [name, value] : variables)
            env.insert(name, value);
        return kvgamut({QStringLiteral("view"), QStringLiteral("sRGB")}, env);
    }

    /// Whether the program says that none of @p displays answers.
    static testing::AssertionResult cannotReach(const Answer& answer, const QString& displays)
    {
        return failedWith(
            answer, BadOutput,
            QStringLiteral("kvgamut: no window can be opened: the display (%1) does not answer; "
                           "name one that runs, or use 'kvgamut render', which needs none")
                .arg(displays));
    }

    QStringList render(const QString& profile = QStringLiteral("sRGB"))
    {
        return {QStringLiteral("render"), profile, QStringLiteral("--size"), QStringLiteral("200x150"),
                QStringLiteral("-o"),     output()};
    }

    QString output() const { return path(QStringLiteral("out.png")); }

    /// An environment with neither a display nor drivers that draw without one.
    static QProcessEnvironment withoutDrivers()
    {
        QProcessEnvironment env = withoutDisplay();
        env.insert(QStringLiteral("__EGL_VENDOR_LIBRARY_FILENAMES"), QStringLiteral("/nonexistent"));
        return env;
    }

    /// The same, in which @p script replaces Xvfb.
    QProcessEnvironment withVirtualScreen(const QByteArray& script)
    {
        const QString file = path(QStringLiteral("Xvfb"));
        write(file, script);
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QProcessEnvironment env = withoutDrivers();
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

TEST_F(DisplayTest, rendersWithoutOneAndWithoutAnXServer)
{
    QProcessEnvironment env = withoutDisplay();
    env.insert(QStringLiteral("PATH"), path(QString())); // no Xvfb
    EXPECT_TRUE(succeeded(kvgamut(render(), env)));
    EXPECT_EQ(QImage(output()).size(), QSize(200, 150));
}

TEST_F(DisplayTest, rendersTheSamePictureOnAnXServerOfItsOwn)
{
    ASSERT_TRUE(succeeded(kvgamut(render())));
    const QByteArray withDisplay = contents(output());
    ASSERT_TRUE(QFile::remove(output()));
    EXPECT_TRUE(succeeded(kvgamut(render(), withoutDrivers())));
    EXPECT_FALSE(withDisplay.isEmpty());
    EXPECT_EQ(contents(output()), withDisplay);
}

TEST_F(DisplayTest, rendersTransparentPicturesAndMarkersAlikeEverywhere)
{
    const QString points = path(QStringLiteral("points.csv"));
    write(points, "L,a,b,name\n50,40,30,one\n70,-20,60,two\n");
    const QStringList arguments{QStringLiteral("render"),   QStringLiteral("sRGB"),
                                QStringLiteral("AdobeRGB"), QStringLiteral("--no-background"),
                                QStringLiteral("--points"), points,
                                QStringLiteral("--size"),   QStringLiteral("333x207"),
                                QStringLiteral("-o"),       output()};
    ASSERT_TRUE(succeeded(kvgamut(arguments)));
    const QByteArray withDisplay = contents(output());
    ASSERT_TRUE(succeeded(kvgamut(arguments, withoutDisplay())));
    EXPECT_EQ(contents(output()), withDisplay);
    ASSERT_TRUE(succeeded(kvgamut(arguments, withoutDrivers())));
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

TEST_F(DisplayTest, rendersLargerThanTheScreenOfAnXServerOfItsOwn)
{
    EXPECT_TRUE(succeeded(kvgamut({QStringLiteral("render"), QStringLiteral("sRGB"), QStringLiteral("--size"),
                                   QStringLiteral("1000x3000"), QStringLiteral("-o"), output()},
                                  withoutDrivers())));
    EXPECT_EQ(QImage(output()).size(), QSize(1000, 3000));
}

TEST_F(DisplayTest, mayEndWithItsLastClient)
{
    // The server of this display ends as soon as nobody is connected to it.
    const Answer answer =
        shell(QStringLiteral("exec 9< <(exec Xvfb -displayfd 1 -screen 0 640x480x24 -terminate 2>/dev/null)\n"
                             "read -r -u 9 number\n"
                             "DISPLAY=:$number QT_QPA_PLATFORM=xcb \"$KVGAMUT\" \"$@\""),
              render(), withoutDisplay());
    EXPECT_TRUE(succeeded(answer));
    EXPECT_EQ(QImage(output()).size(), QSize(200, 150));
}

TEST_F(DisplayTest, passesTheExitCodeOnWithoutOne)
{
    const QString missing = path(QStringLiteral("missing.icc"));
    EXPECT_TRUE(failedWith(kvgamut(render(missing), withoutDisplay()), BadInput,
                           QStringLiteral("kvgamut: '%1': no such file").arg(missing)));
}

TEST_F(DisplayTest, reportsAMissingXvfb)
{
    QProcessEnvironment env = withoutDrivers();
    env.insert(QStringLiteral("PATH"), path(QString()));
    const Answer answer = kvgamut(render(), env);
    EXPECT_EQ(answer.exitCode, BadOutput);
    EXPECT_EQ(answer.errors.count('\n'), 1);
    EXPECT_TRUE(answer.errors.contains("Xvfb")) << answer.errors.toStdString();
    EXPECT_TRUE(answer.errors.contains("not installed")) << answer.errors.toStdString();
    EXPECT_FALSE(QFile::exists(output()));
}

TEST_F(DisplayTest, reportsAnXServerThatEndsOrGivesNone)
{
    const QString line = QStringLiteral("kvgamut: there is no display, and Xvfb gave none");
    EXPECT_TRUE(failedWith(kvgamut(render(), withVirtualScreen("#!/bin/sh\nexit 7\n")), BadOutput, line));
    // It keeps running, but closes the file into which it should write the number of the display. The program
    // waits for its end, so it must end it.
    const QByteArray silent = "#!/bin/bash\neval \"exec $2>&-\"\nexec sleep 1000\n";
    EXPECT_TRUE(failedWith(kvgamut(render(), withVirtualScreen(silent)), BadOutput, line));
}

/// The X server that the program has started, and what becomes of it when the program is killed.
class VirtualScreenTest : public DisplayTest, public testing::WithParamInterface<int>
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(mkfifo(QFile::encodeName(stalled()).constData(), 0600), 0);
        m_program.setProcessEnvironment(
            withVirtualScreen("#!/bin/sh\necho $$ > '" + QFile::encodeName(pidFile()) + ".new'\nmv '" +
                              QFile::encodeName(pidFile()) + ".new' '" + QFile::encodeName(pidFile()) +
                              "'\nexec /usr/bin/Xvfb \"$@\"\n"));
        m_program.start(binary(), render(stalled())); // never gets to draw
        ASSERT_TRUE(spinUntil([this] { return QFile::exists(pidFile()); }));
        m_server = contents(pidFile()).trimmed();
    }

    QString stalled() const { return path(QStringLiteral("stalled.icc")); }
    QString pidFile() const { return path(QStringLiteral("pid")); }

    /// Sends the signal to the program and waits for its end.
    void killProgram()
    {
        ASSERT_EQ(kill(static_cast<pid_t>(m_program.processId()), GetParam()), 0);
        ASSERT_TRUE(m_program.waitForFinished(-1));
    }

    /// Ended; a process that nobody has waited for yet counts as ended.
    bool serverHasEnded() const
    {
        const QByteArray status = contents(QStringLiteral("/proc/%1/stat").arg(QLatin1String(m_server)));
        return status.isEmpty() || status.mid(status.lastIndexOf(')') + 2, 1) == "Z";
    }

    /// The socket on which the server accepts connections; empty if there is none yet.
    QString serverSocket() const
    {
        QStringList own; // "socket:[inode]"
        const QDir descriptors(QStringLiteral("/proc/%1/fd").arg(QLatin1String(m_server)));
        for (const QString& name : descriptors.entryList(QDir::AllEntries | QDir::System))
            own.append(QFile::symLinkTarget(descriptors.filePath(name)).section(u'/', -1));
        const QList<QByteArray> sockets = contents(QStringLiteral("/proc/net/unix")).split('\n');
        for (const QByteArray& line : sockets) {
            const QStringList columns = QString::fromLatin1(line).simplified().split(u' ');
            if (columns.value(7).startsWith(QLatin1String("/tmp/.X11-unix/")) &&
                own.contains(QStringLiteral("socket:[%1]").arg(columns.value(6))))
                return columns.value(7);
        }
        return {};
    }

private:
    QProcess m_program;
    QByteArray m_server; ///< number of its process
};

TEST_P(VirtualScreenTest, endsWhenTheProgramIsKilledWhileItStarts)
{
    killProgram();
    EXPECT_TRUE(spinUntil([this] { return serverHasEnded(); }));
}

TEST_P(VirtualScreenTest, endsWhenTheProgramIsKilledLater)
{
    ASSERT_TRUE(spinUntil([this] { return !serverSocket().isEmpty(); }, 20000));
    const QString socket = serverSocket();
    spinFor(200); // the program has connected to it by now, or is about to
    killProgram();
    EXPECT_TRUE(spinUntil([this] { return serverHasEnded(); }));
    EXPECT_FALSE(QFile::exists(socket));
}

INSTANTIATE_TEST_SUITE_P(AnySignal, VirtualScreenTest, testing::Values(SIGTERM, SIGINT, SIGHUP, SIGKILL));

TEST_F(DisplayTest, reportsMissingOpenGL)
{
    QProcessEnvironment env = environment();
    env.insert(QStringLiteral("LIBGL_DRIVERS_PATH"), QStringLiteral("/nonexistent"));
    env.insert(QStringLiteral("__GLX_VENDOR_LIBRARY_NAME"), QStringLiteral("nonexistent")); // Mesa 25
    env.insert(QStringLiteral("__EGL_VENDOR_LIBRARY_FILENAMES"), QStringLiteral("/nonexistent"));
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

const std::pair staleWayland(QStringLiteral("WAYLAND_DISPLAY"), QStringLiteral("wayland-987"));
const std::pair staleX(QStringLiteral("DISPLAY"), QStringLiteral(":987"));

TEST_F(DisplayTest, viewReportsAWaylandDisplayThatDoesNotExist)
{
    EXPECT_TRUE(cannotReach(viewWith({staleWayland}), QStringLiteral("WAYLAND_DISPLAY=wayland-987")));
}

TEST_F(DisplayTest, viewReportsAnXDisplayThatDoesNotExist)
{
    EXPECT_TRUE(cannotReach(viewWith({staleX}), QStringLiteral("DISPLAY=:987")));
}

TEST_F(DisplayTest, viewReportsBothIfNeitherAnswers)
{
    EXPECT_TRUE(cannotReach(viewWith({staleWayland, staleX}),
                            QStringLiteral("WAYLAND_DISPLAY=wayland-987, DISPLAY=:987")));
}

TEST_F(DisplayTest, viewReportsAWaylandDisplayThatIsAnotherServer)
{
    const QString socket = path(QStringLiteral("mail"));
    const OtherServer server(socket);
    EXPECT_TRUE(cannotReach(viewWith({{QStringLiteral("WAYLAND_DISPLAY"), socket}}),
                            QStringLiteral("WAYLAND_DISPLAY=") + socket));
}

TEST_F(DisplayTest, viewReportsAWaylandConnectionThatIsNone)
{
    EXPECT_TRUE(cannotReach(viewWith({{QStringLiteral("WAYLAND_SOCKET"), QStringLiteral("987")}}),
                            QStringLiteral("WAYLAND_SOCKET=987")));
}

TEST_F(DisplayTest, doesNotWaitForEverForASilentXServer)
{
    const SilentServer server;
    const QString display = server.display();
    EXPECT_TRUE(
        cannotReach(viewWith({{QStringLiteral("DISPLAY"), display}}), QStringLiteral("DISPLAY=") + display));
    QProcessEnvironment env = withoutDrivers();
    env.insert(QStringLiteral("DISPLAY"), display);
    EXPECT_TRUE(succeeded(kvgamut(render(), env))) << "on an X server of its own";
    EXPECT_FALSE(contents(output()).isEmpty());
}

TEST_F(DisplayTest, viewUsesXWhenWaylandDoesNotAnswer)
{
    QProcessEnvironment env = environment();
    env.insert(staleWayland.first, staleWayland.second);
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("wayland"));
    // the file is read only when the window has been made
    const QString missing = path(QStringLiteral("missing.icc"));
    EXPECT_TRUE(failedWith(kvgamut({QStringLiteral("view"), missing}, env), BadInput,
                           QStringLiteral("kvgamut: '%1': no such file").arg(missing)));
}

TEST_F(DisplayTest, rendersOnAnXServerOfItsOwnWhenNoDisplayAnswers)
{
    QProcessEnvironment env = withoutDrivers();
    env.insert(staleWayland.first, staleWayland.second);
    env.insert(staleX.first, staleX.second);
    EXPECT_TRUE(succeeded(kvgamut(render(), env)));
    EXPECT_EQ(QImage(output()).size(), QSize(200, 150));
}

} // namespace
