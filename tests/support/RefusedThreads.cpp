// SPDX-License-Identifier: Apache-2.0
#include "support/RefusedThreads.h"

#include <dlfcn.h>
#include <pthread.h>

#include <atomic>
#include <cerrno>

namespace {
std::atomic<bool> refused{false};
std::atomic<int> untilRefusal{0}; ///< how many starts until one is refused; below 1: none is
} // namespace

void kvtest::refuseThreads(bool refuse)
{
    refused = refuse;
    untilRefusal = 0;
}

void kvtest::refuseThread(int number)
{
    untilRefusal = number;
}

#if !defined(__SANITIZE_THREAD__) && !defined(__SANITIZE_ADDRESS__)

// A definition in the program replaces that of the C library for all libraries in the process, if it is
// visible.
#pragma GCC visibility push(default)
extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
                              void* argument) noexcept
{
    if (refused || untilRefusal-- == 1)
        return EAGAIN;
    static const auto original =
        reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
    return original(thread, attributes, run, argument);
}
#pragma GCC visibility pop

#endif
