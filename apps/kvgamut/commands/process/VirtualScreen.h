// SPDX-License-Identifier: Apache-2.0
#pragma once

/// An X server without a monitor (Xvfb) that belongs to this process: it ends when this object is destroyed,
/// and also if the process is killed. It leaves no files behind. VirtualScreen_posix.cpp and
/// VirtualScreen_windows.cpp implement it; CMake chooses one. Free of Qt.
///
/// Windows has no such server, and needs none: its desktop is always there.
class VirtualScreen
{
public:
    VirtualScreen() = default;
    ~VirtualScreen();
    VirtualScreen(const VirtualScreen&) = delete;
    VirtualScreen& operator=(const VirtualScreen&) = delete;

    /// How start() ended.
    struct Outcome
    {
        enum class Kind
        {
            Started,
            NotInstalled, ///< there is no Xvfb
            NoDisplay,    ///< it started, but gave no display; also where there are no such servers
            SystemFailed  ///< it cannot be started
        };
        Kind kind = Kind::Started;
        int error = 0; ///< the errno of SystemFailed
    };

    /// Starts the server and puts its address into the environment. Call from the main thread before the
    /// QGuiApplication is created: the system ends the server with the thread that started it.
    [[nodiscard]] Outcome start();

private:
    int m_server = 0;      ///< its process; 0 if there is none
    int m_cookieFile = -1; ///< open while the server runs
};
