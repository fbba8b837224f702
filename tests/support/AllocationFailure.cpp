// SPDX-License-Identifier: Apache-2.0
#include "AllocationFailure.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>

namespace {

constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();
constexpr int maxFrames = 100;

std::atomic<std::uint64_t> count{0};
std::atomic<std::uint64_t> failing{never};
std::array<void*, maxFrames> origin;
std::atomic<int> originSize{0};
thread_local bool ignored = false; // allocations of this thread

/// Without it a crash would not say which allocation had failed.
void reportCrash(int signal)
{
    kvtest::AllocationFailure::printOrigin();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

bool contains(const char* text, const char* part)
{
    return text && std::strstr(text, part);
}

/// Functions whose own allocations do not fail here, because no program can prevent that such a failure
/// crashes or ends the process. All of them are small.
constexpr const char* unprepared[] = {
    // Constructors, connections and properties of QObject: the private part is used without a check, and
    // signals are noexcept.
    "QObject", "QMetaObject",
    // Qt's threads, futures, timers and events: they have no failure to report, or are destroyed half made.
    "QThread", "QTimer", "QFuture", "ResultStore", "QCoreApplication", "QEventLoop", "EventDispatcher"};

bool isUnprepared(const char* function)
{
    return std::any_of(std::begin(unprepared), std::end(unprepared),
                       [function](const char* name) { return contains(function, name); });
}

/// Whether the libraries under test make the allocation that is in progress.
bool isOfTheLibraries()
{
    const kvtest::AllocationsWork now;
    std::array<void*, maxFrames> frames;
    const int size = backtrace(frames.data(), maxFrames);
    bool ours = false;
    for (int i = 0; i < size && !ours; ++i) {
        Dl_info info{};
        if (!dladdr(frames[static_cast<std::size_t>(i)], &info))
            continue;
        if (isUnprepared(info.dli_sname))
            break;
        ours = contains(info.dli_fname, "libKV");
    }
    if (ours) {
        origin = frames;
        originSize = size;
    }
    return ours;
}

bool mustFail()
{
    if (ignored || failing.load(std::memory_order_relaxed) == never)
        return false;
    // The origin takes longer than the load itself, so it is determined once.
    if (count.fetch_add(1) != failing.load() || !isOfTheLibraries())
        return false;
    errno = ENOMEM;
    return true;
}

} // namespace

// Definitions in the program replace those of the C library for all libraries in the process.
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size)
{
    return mustFail() ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t n, std::size_t size)
{
    return mustFail() ? nullptr : __libc_calloc(n, size);
}

void* realloc(void* block, std::size_t size)
{
    return mustFail() ? nullptr : __libc_realloc(block, size);
}

} // extern "C"

kvtest::AllocationFailure::AllocationFailure(std::uint64_t n)
{
    void* frame = nullptr;
    backtrace(&frame, 1); // the first call allocates
    for (const int signal : {SIGSEGV, SIGABRT})
        std::signal(signal, reportCrash);
    originSize = 0;
    count = 0;
    failing = n;
}

kvtest::AllocationFailure::~AllocationFailure()
{
    failing = never;
}

bool kvtest::AllocationFailure::wasReached() const
{
    return count > failing;
}

bool kvtest::AllocationFailure::hasFailed() const
{
    return originSize > 0;
}

void kvtest::AllocationFailure::printOrigin()
{
    constexpr char text[] = "the failed allocation:\n";
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text, sizeof text - 1);
    backtrace_symbols_fd(origin.data(), originSize, STDERR_FILENO);
}

kvtest::AllocationsWork::AllocationsWork()
{
    ignored = true;
}

kvtest::AllocationsWork::~AllocationsWork()
{
    ignored = false;
}
