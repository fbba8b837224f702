// SPDX-License-Identifier: Apache-2.0
#include "WorkCount.h"

#include "support/AllocationCount.h"

#include <lcms2.h>

#include <dlfcn.h>

#include <atomic>
#include <utility>

namespace {

std::atomic<std::uint64_t> colours{0};
std::atomic<std::uint64_t> corners{0};

std::uint64_t pendingAt = 0;
const std::function<void()>* pending = nullptr;
work::Work workBefore;

void actWhenDue()
{
    if (!pending || work::soFar().total() < pendingAt)
        return;
    workBefore = work::soFar();
    (*std::exchange(pending, nullptr))();
}

work::Work difference(const work::Work& a, const work::Work& b)
{
    return {a.colours - b.colours, a.corners - b.corners, a.bytes - b.bytes};
}

} // namespace

// This definition in the program replaces that of the library, for the colour engine in the program, too.
extern "C" void cmsDoTransform(cmsHTRANSFORM transform, const void* input, void* output, cmsUInt32Number size)
{
    using Transform = decltype(&cmsDoTransform);
    static const auto libraryFunction = reinterpret_cast<Transform>(dlsym(RTLD_NEXT, "cmsDoTransform"));
    colours += size;
    corners += std::uint64_t(size) << T_CHANNELS(cmsGetTransformInputFormat(transform));
    actWhenDue();
    libraryFunction(transform, input, output, size);
}

work::Work work::soFar()
{
    return {colours, corners, kvtest::bytesAllocatedSoFar()};
}

work::Work work::of(const std::function<void()>& computation)
{
    const Work before = soFar();
    computation();
    return difference(soFar(), before);
}

work::Work work::after(std::uint64_t total, const std::function<void()>& action,
                       const std::function<void()>& computation)
{
    pendingAt = soFar().total() + total;
    pending = &action;
    kvtest::setAllocationHook(actWhenDue);
    computation();
    kvtest::setAllocationHook(nullptr);
    const bool wasDue = !std::exchange(pending, nullptr);
    return wasDue ? difference(soFar(), workBefore) : Work();
}
