// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace velmora {

/// Calls a function at the end of each thread that asked for it. ThreadEnd_posix.cpp and
/// ThreadEnd_windows.cpp implement it; CMake chooses one. Free of Qt.
///
/// Not a thread_local object with a destructor: the C++ library ends the process if there is no memory to
/// register one. This reports it.
class ThreadEnd
{
public:
    /// @param atEnd called on each thread with the value that it has given
    explicit ThreadEnd(void (*atEnd)(void*));
    ThreadEnd(const ThreadEnd&) = delete;
    ThreadEnd& operator=(const ThreadEnd&) = delete;

    /// For the calling thread; @p value is not null.
    /// @return false if there is no memory, or if the system has no room for another function
    bool ask(void* value) const;

private:
    unsigned long m_key = 0;
    bool m_exists = false;
};

} // namespace velmora
