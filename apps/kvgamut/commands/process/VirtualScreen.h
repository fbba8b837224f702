// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <QtCore/QtGlobal>

#include <optional>
#include <sys/types.h>

/// An X server without a monitor (Xvfb) that belongs to this process: it ends when this object is destroyed,
/// and also if the process is killed. It leaves no files behind.
class VirtualScreen
{
public:
    VirtualScreen() = default;
    ~VirtualScreen();
    Q_DISABLE_COPY_MOVE(VirtualScreen)

    /// Starts the server and puts its address into the environment. Call from the main thread before the
    /// QGuiApplication is created: the system ends the server with the thread that started it.
    /// @return why that failed
    std::optional<Problem> start();

private:
    pid_t m_server = 0;
    int m_cookieFile = -1;
};
