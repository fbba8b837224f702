// SPDX-License-Identifier: Apache-2.0
#include "StalledFile.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdarg>
#include <cstring>
#include <mutex>
#include <thread>

namespace {

using kvtest::StalledCall;

struct State
{
    std::mutex mutex;
    std::condition_variable changed;
    StalledCall call = StalledCall::None;
    int blocked = 0;
};

/// Never destroyed, because threads may be blocked until the process ends.
State& state()
{
    static auto* theState = new State;
    return *theState;
}

std::atomic<int> stalledDescriptor{-1};

bool isName(const char* path)
{
    return path && std::strstr(path, "stalled");
}

void block(StalledCall call)
{
    State& s = state();
    std::unique_lock lock(s.mutex);
    if (s.call != call)
        return;
    ++s.blocked;
    s.changed.wait(lock, [&] { return s.call != call; });
    --s.blocked;
}

template <typename Function>
Function next(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/// The threads that are still blocked go on while the process ends.
struct ReleaseAtExit
{
    ~ReleaseAtExit()
    {
        if (!kvtest::isStalled())
            return;
        kvtest::releaseStalled();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
} releaseAtExit;

} // namespace

void kvtest::stallIn(StalledCall call)
{
    const std::lock_guard lock(state().mutex);
    state().call = call;
}

bool kvtest::isStalled()
{
    const std::lock_guard lock(state().mutex);
    return state().blocked > 0;
}

void kvtest::releaseStalled()
{
    stallIn(StalledCall::None);
    state().changed.notify_all();
}

// Definitions in the program replace those of the C library for all libraries in the process, if they are
// visible.
#pragma GCC visibility push(default)
extern "C" {

int statx(int folder, const char* path, int flags, unsigned int mask, struct statx* result)
{
    if (isName(path))
        block(StalledCall::Status);
    static const auto original = next<decltype(&statx)>("statx");
    return original(folder, path, flags, mask, result);
}

int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (isName(path))
        block(StalledCall::Open);
    static const auto original = next<int (*)(const char*, int, ...)>("open64");
    const int descriptor = original(path, flags, mode);
    if (isName(path))
        stalledDescriptor = descriptor;
    return descriptor;
}

ssize_t read(int descriptor, void* bytes, size_t size)
{
    if (descriptor >= 0 && descriptor == stalledDescriptor)
        block(StalledCall::Read);
    static const auto original = next<decltype(&read)>("read");
    return original(descriptor, bytes, size);
}

} // extern "C"
#pragma GCC visibility pop
