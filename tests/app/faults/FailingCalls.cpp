// SPDX-License-Identifier: Apache-2.0
// A library for LD_PRELOAD that makes one call of a process fail, or sends the process a signal there.
//
// KV_FAULT is KIND:N or KIND:N+. KIND is "alloc" (memory), "thread" (pthread_create), "read" or "write"; the
// N-th call of that kind fails, with + all later ones, too. KIND may also be a number: that signal is raised
// in the N-th allocation. KV_THREAD_LIMIT is the number of threads that may live at the same time, apart from
// the first one. KV_FAULT_COUNT names a file that then holds the number of calls as four 64-bit integers, in
// the order of the kinds, also after the process was killed.

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

enum Kind
{
    Alloc,
    Thread,
    Read,
    Write,
    KindCount
};

using Count = std::atomic<std::int64_t>;

Count ownCounts[KindCount];
Count* counts = ownCounts;
int faultKind = -1;
int faultSignal = 0;
std::int64_t faultAt = 0;
bool faultStays = false;
bool threadsAreLimited = false;
std::atomic<std::int64_t> freeThreads{0}; ///< how many more threads may be started, if they are limited

bool startsWith(const char* text, const char* start)
{
    return std::strncmp(text, start, std::strlen(start)) == 0;
}

/// Runs when the library is loaded. Allocates nothing.
__attribute__((constructor)) void readEnvironment()
{
    if (const char* file = std::getenv("KV_FAULT_COUNT")) {
        const int descriptor = open(file, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (descriptor >= 0 && ftruncate(descriptor, sizeof ownCounts) == 0) {
            void* shared = mmap(nullptr, sizeof ownCounts, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
            if (shared != MAP_FAILED)
                counts = static_cast<Count*>(shared);
        }
        close(descriptor);
    }
    if (const char* limit = std::getenv("KV_THREAD_LIMIT")) {
        threadsAreLimited = true;
        freeThreads = std::atoll(limit);
    }
    const char* fault = std::getenv("KV_FAULT");
    const char* colon = fault ? std::strchr(fault, ':') : nullptr;
    if (!colon)
        return;
    faultAt = std::strtoll(colon + 1, nullptr, 10);
    faultStays = fault[std::strlen(fault) - 1] == '+';
    const char* const names[] = {"alloc:", "thread:", "read:", "write:"};
    for (int kind = 0; kind < KindCount; ++kind)
        if (startsWith(fault, names[kind]))
            faultKind = kind;
    if (faultKind < 0)
        faultSignal = std::atoi(fault);
}

bool counting = false; ///< main() has started

/// Counts a call. @return whether it must fail
bool fails(Kind kind)
{
    if (!counting)
        return false;
    const std::int64_t call = ++counts[kind];
    if (kind == Alloc && faultSignal > 0 && call == faultAt)
        raise(faultSignal);
    return kind == faultKind && (call == faultAt || (faultStays && call > faultAt));
}

template <typename Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// dlsym() allocates, so the first calls come before the real functions are known.
alignas(16) char early[65536];
std::atomic<size_t> earlyUsed{0};
thread_local bool looking = false;

void* allocateEarly(size_t size)
{
    const size_t start = earlyUsed.fetch_add((size + 31) & ~size_t(15)) + 16;
    if (start + size > sizeof early)
        return nullptr;
    std::memcpy(early + start - 16, &size, sizeof size);
    return early + start;
}

bool isEarly(const void* memory)
{
    return memory >= early && memory < early + sizeof early;
}

/// The function that @p name stands for, looked up once; null while it is being looked up.
template <typename Function>
Function* real(std::atomic<Function*>& known, const char* name)
{
    if (Function* found = known.load())
        return found;
    if (looking)
        return nullptr;
    looking = true;
    known = next<Function>(name);
    looking = false;
    return known;
}

std::atomic<void* (*)(size_t)> realMalloc;
std::atomic<void* (*)(size_t, size_t)> realCalloc;
std::atomic<void* (*)(void*, size_t)> realRealloc;
std::atomic<void (*)(void*)> realFree;

template <typename Function>
using Pointer = std::atomic<Function*>;

struct Start
{
    void* (*run)(void*);
    void* argument;
};

/// Runs a thread that counts until it ends.
void* runCounted(void* argument)
{
    const struct End
    {
        ~End() { ++freeThreads; }
    } end;
    const Start start = *static_cast<Start*>(argument);
    realFree.load()(argument);
    return start.run(start.argument);
}

int (*realMain)(int, char**, char**) = nullptr;

int countingMain(int count, char** arguments, char** environment)
{
    counting = true;
    return realMain(count, arguments, environment);
}

void* noMemory()
{
    errno = ENOMEM;
    return nullptr;
}

} // namespace

extern "C" {

void* malloc(size_t size)
{
    auto* call = real(reinterpret_cast<Pointer<void*(size_t)>&>(realMalloc), "malloc");
    if (!call)
        return allocateEarly(size);
    return fails(Alloc) ? noMemory() : call(size);
}

void* calloc(size_t count, size_t size)
{
    auto* call = real(reinterpret_cast<Pointer<void*(size_t, size_t)>&>(realCalloc), "calloc");
    if (!call)
        return allocateEarly(count * size); // zero, because it is used once
    return fails(Alloc) ? noMemory() : call(count, size);
}

void* realloc(void* memory, size_t size)
{
    auto* call = real(reinterpret_cast<Pointer<void*(void*, size_t)>&>(realRealloc), "realloc");
    if (!call || isEarly(memory)) {
        void* fresh = malloc(size);
        size_t before = 0;
        if (memory && fresh) {
            std::memcpy(&before, static_cast<char*>(memory) - 16, sizeof before);
            std::memcpy(fresh, memory, before < size ? before : size);
        }
        return fresh;
    }
    return fails(Alloc) ? noMemory() : call(memory, size);
}

void free(void* memory)
{
    if (!memory || isEarly(memory))
        return;
    if (auto* call = real(reinterpret_cast<Pointer<void(void*)>&>(realFree), "free"))
        call(memory);
}

/// Starts the program. Calls are counted from its main() on: what libraries do before it cannot be caught.
int __libc_start_main(int (*mainFunction)(int, char**, char**), int count, char** arguments, void (*init)(),
                      void (*fini)(), void (*loaderFini)(), void* stackEnd)
{
    using Start = int(int (*)(int, char**, char**), int, char**, void (*)(), void (*)(), void (*)(), void*);
    realMain = mainFunction;
    return next<Start>("__libc_start_main")(countingMain, count, arguments, init, fini, loaderFini, stackEnd);
}

int posix_memalign(void** memory, size_t alignment, size_t size)
{
    static auto* const call = next<int(void**, size_t, size_t)>("posix_memalign");
    return fails(Alloc) ? ENOMEM : call(memory, alignment, size);
}

void* aligned_alloc(size_t alignment, size_t size)
{
    static auto* const call = next<void*(size_t, size_t)>("aligned_alloc");
    return fails(Alloc) ? noMemory() : call(alignment, size);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* argument)
{
    static auto* const call =
        next<int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*)>("pthread_create");
    if (fails(Thread))
        return EAGAIN;
    if (!threadsAreLimited)
        return call(thread, attributes, start, argument);
    auto* counted = static_cast<Start*>(realMalloc.load()(sizeof(Start)));
    if (--freeThreads < 0 || !counted) {
        ++freeThreads;
        std::free(counted);
        return EAGAIN;
    }
    *counted = {start, argument};
    return call(thread, attributes, runCounted, counted);
}

ssize_t read(int file, void* to, size_t size)
{
    static auto* const call = next<ssize_t(int, void*, size_t)>("read");
    if (fails(Read)) {
        errno = EIO;
        return -1;
    }
    return call(file, to, size);
}

ssize_t write(int file, const void* from, size_t size)
{
    static auto* const call = next<ssize_t(int, const void*, size_t)>("write");
    if (fails(Write)) {
        errno = ENOSPC;
        return -1;
    }
    return call(file, from, size);
}

ssize_t writev(int file, const iovec* from, int count)
{
    static auto* const call = next<ssize_t(int, const iovec*, int)>("writev");
    if (fails(Write)) {
        errno = ENOSPC;
        return -1;
    }
    return call(file, from, count);
}

} // extern "C"
