// SPDX-License-Identifier: Apache-2.0
#include "WaylandServer.h"

#include <QtCore/QByteArray>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr int maxWaitMs = 10000; // for the answer: a busy compositor may take seconds

class Socket
{
public:
    Socket() : m_descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
    ~Socket()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    [[nodiscard]] bool connectTo(const QByteArray& path) const
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path.size() >= static_cast<qsizetype>(sizeof address.sun_path))
            return false;
        std::copy(path.cbegin(), path.cend(), address.sun_path);
        return connect(m_descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }

    /// Makes a request of the Wayland protocol: wl_display.sync. The socket may be that of another program.
    [[nodiscard]] bool answers() const
    {
        constexpr std::uint32_t display = 1, callback = 2, size = 12, sync = 0, deleted = 1;
        const std::array<std::uint32_t, 3> request{display, size << 16 | sync, callback};
        if (send(m_descriptor, request.data(), sizeof request, MSG_NOSIGNAL) != sizeof request)
            return false;
        pollfd event{m_descriptor, POLLIN, 0};
        while (poll(&event, 1, maxWaitMs) < 0) {
            if (errno != EINTR)
                return false;
        }
        // the callback is done, or its number can be used again; both messages have 12 bytes
        std::array<std::uint32_t, 3> reply{};
        return recv(m_descriptor, reply.data(), sizeof reply, 0) == sizeof reply &&
               ((reply[0] == callback && reply[1] == size << 16) ||
                (reply[0] == display && reply[1] == (size << 16 | deleted)));
    }

private:
    int m_descriptor;
};

/// Whether a parent process has opened a connection for this one. It takes precedence over WAYLAND_DISPLAY.
bool isInheritedConnection(int descriptor)
{
    struct stat status
    {
    };
    return fstat(descriptor, &status) == 0 && S_ISSOCK(status.st_mode);
}

bool connects()
{
    if (qEnvironmentVariableIsSet("WAYLAND_SOCKET")) {
        bool isNumber = false;
        const int descriptor = qEnvironmentVariableIntValue("WAYLAND_SOCKET", &isNumber);
        return isNumber && isInheritedConnection(descriptor);
    }
    QByteArray path = qgetenv("WAYLAND_DISPLAY");
    if (path.isEmpty())
        return false;
    if (!path.startsWith('/'))
        path.prepend(qgetenv("XDG_RUNTIME_DIR") + '/');
    const Socket socket;
    return socket.connectTo(path) && socket.answers();
}

} // namespace

bool WaylandServer::isReachable()
{
    static const bool reachable = connects();
    return reachable;
}
