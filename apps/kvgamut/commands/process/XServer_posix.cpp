// SPDX-License-Identifier: Apache-2.0
#include "XServer.h"

#include "model/inputs/ThreadCheck.h"

#include <QtCore/qglobal.h>

#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

constexpr int maxWaitMs = 10000; // for the answer: a busy server may take seconds

bool connects()
{
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr); // never null
    if (xcb_connection_has_error(connection) == 0)
        return true; // and keep the connection
    xcb_disconnect(connection);
    return false;
}

/// A process that connects first. xcb_connect() waits for ever for a server that accepts connections and does
/// not answer, and cannot be interrupted. The process keeps its connection while this object exists: a server
/// may end or reset itself when its last client leaves.
class Scout
{
public:
    Scout()
    {
        int ends[2];
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
            return;
        const pid_t parent = getpid();
        m_process = fork();
        if (m_process == 0)
            run(parent, ends[1]);
        close(ends[1]);
        m_end = ends[0];
    }
    ~Scout()
    {
        if (m_process > 0) {
            kill(m_process, SIGKILL);
            while (waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
            }
        }
        if (m_end >= 0)
            close(m_end);
    }
    Q_DISABLE_COPY_MOVE(Scout)

    /// Whether it has connected in time.
    [[nodiscard]] bool hasConnected() const
    {
        if (m_process <= 0)
            return false;
        pollfd event{m_end, POLLIN, 0};
        while (poll(&event, 1, maxWaitMs) < 0) {
            if (errno != EINTR)
                return false;
        }
        char answer = 0;
        return recv(m_end, &answer, 1, MSG_DONTWAIT) == 1;
    }

private:
    /// In the new process. Says that it has connected, and waits to be killed.
    [[noreturn]] static void run(pid_t parent, int end)
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const char connected = 1;
        if (getppid() == parent && connects() && send(end, &connected, 1, MSG_NOSIGNAL) == 1)
            pause();
        _exit(0);
    }

    pid_t m_process = -1;
    int m_end = -1;
};

} // namespace

bool XServer::isReachable()
{
    // Qt reads from the server on a thread of its own, for which it would wait for ever.
    static const bool reachable = !qEnvironmentVariableIsEmpty("DISPLAY") && threadsAreAvailable() &&
                                  Scout().hasConnected() && connects();
    return reachable;
}
