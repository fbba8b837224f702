// SPDX-License-Identifier: Apache-2.0
#include "VirtualScreen.h"

#include <QtCore/QByteArray>
#include <QtCore/QRandomGenerator>
#include <QtCore/QtEndian>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <type_traits>
#include <unistd.h>
#include <utility>

namespace {

constexpr int maxStartMs = 60000; // a busy machine may take seconds

/// A pipe whose ends are closed by exec() and by the destructor.
struct Pipe
{
    std::array<int, 2> ends{-1, -1};

    Pipe()
    {
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            ends = {-1, -1};
    }
    ~Pipe()
    {
        closeReader();
        closeWriter();
    }
    Q_DISABLE_COPY_MOVE(Pipe)

    [[nodiscard]] bool isOpen() const { return ends[0] >= 0; }
    [[nodiscard]] int reader() const { return ends[0]; }
    [[nodiscard]] int writer() const { return ends[1]; }
    void closeReader() { closeEnd(ends[0]); }
    void closeWriter() { closeEnd(ends[1]); }

private:
    static void closeEnd(int& end)
    {
        if (end >= 0)
            close(std::exchange(end, -1));
    }
};

/// The path of the file that is open as @p descriptor, for this process and, unless the descriptor is closed
/// there, for a process that it starts.
QByteArray pathOf(int descriptor)
{
    return "/proc/self/fd/" + QByteArray::number(descriptor);
}

void append(QByteArray& entry, const QByteArray& text)
{
    const quint16 length = qToBigEndian(static_cast<quint16>(text.size()));
    entry.append(reinterpret_cast<const char*>(&length), sizeof length).append(text);
}

/// A file in memory with a new secret, without which other users cannot connect to the server. Its format is
/// that of xauth. @return its descriptor, or -1
int makeCookieFile()
{
    QByteArray cookie(16, Qt::Uninitialized);
    QRandomGenerator::system()->generate(reinterpret_cast<quint32*>(cookie.data()),
                                         reinterpret_cast<quint32*>(cookie.data()) + 4);
    QByteArray entry("\xff\xff", 2); // for any host
    append(entry, {});
    append(entry, {}); // and any display
    append(entry, "MIT-MAGIC-COOKIE-1");
    append(entry, cookie);
    const int file = memfd_create("kvgamut-xauth", 0); // open in the server, too
    if (file >= 0 && write(file, entry.constData(), static_cast<size_t>(entry.size())) != entry.size()) {
        close(file);
        return -1;
    }
    return file;
}

/// What the new process does. Only functions that are allowed between fork() and exec().
[[noreturn]] void becomeServer(pid_t parent, int display, int failure, char* const* words)
{
    prctl(PR_SET_PDEATHSIG, SIGTERM); // kept by exec()
    if (getppid() != parent)
        _exit(EXIT_FAILURE);
    signal(SIGPIPE, SIG_DFL);
    const int nowhere = open("/dev/null", O_RDWR);
    for (int standard = STDIN_FILENO; standard <= STDERR_FILENO && nowhere >= 0; ++standard)
        dup2(nowhere, standard);
    fcntl(display, F_SETFD, 0); // stays open
    execvp(words[0], words);
    const int error = errno;
    [[maybe_unused]] const ssize_t written = write(failure, &error, sizeof error);
    _exit(EXIT_FAILURE);
}

/// Reads until a line break. Empty if the server ends or says nothing for too long.
QByteArray firstLine(int descriptor)
{
    QByteArray text;
    pollfd waiting{descriptor, POLLIN, 0};
    for (;;) {
        const int ready = poll(&waiting, 1, maxStartMs);
        if (ready < 0 && errno == EINTR)
            continue;
        char letter = 0;
        if (ready <= 0 || read(descriptor, &letter, 1) != 1)
            return {};
        if (letter == '\n')
            return text;
        text.append(letter);
    }
}

} // namespace

VirtualScreen::~VirtualScreen()
{
    if (m_server > 0) {
        kill(m_server, SIGTERM);
        while (waitpid(m_server, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    if (m_cookieFile >= 0)
        close(m_cookieFile);
}

VirtualScreen::Outcome VirtualScreen::start()
{
    using Kind = Outcome::Kind;
    static_assert(std::is_same_v<decltype(m_server), pid_t>);
    Pipe display, failure;
    m_cookieFile = makeCookieFile();
    if (!display.isOpen() || !failure.isOpen() || m_cookieFile < 0)
        return {Kind::SystemFailed, errno};

    // The picture need not fit on this screen. A colour depth of 8 bits has no OpenGL.
    std::array<QByteArray, 10> words{"Xvfb",
                                     "-displayfd",
                                     QByteArray::number(display.writer()),
                                     "-screen",
                                     "0",
                                     "1280x1024x24",
                                     "-nolisten",
                                     "tcp",
                                     "-auth",
                                     pathOf(m_cookieFile)};
    std::array<char*, words.size() + 1> pointers{};
    for (size_t i = 0; i < words.size(); ++i)
        pointers[i] = words[i].data();

    const pid_t parent = getpid();
    m_server = fork();
    if (m_server < 0)
        return {Kind::SystemFailed, errno};
    if (m_server == 0)
        becomeServer(parent, display.writer(), failure.writer(), pointers.data());
    display.closeWriter();
    failure.closeWriter();

    int error = 0;
    if (read(failure.reader(), &error, sizeof error) == sizeof error)
        return error == ENOENT ? Outcome{Kind::NotInstalled} : Outcome{Kind::SystemFailed, error};
    const QByteArray number = firstLine(display.reader());
    if (number.isEmpty())
        return {Kind::NoDisplay};
    qputenv("DISPLAY", ':' + number);
    qputenv("XAUTHORITY", pathOf(m_cookieFile));
    return {Kind::Started};
}
