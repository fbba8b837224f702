// SPDX-License-Identifier: Apache-2.0
#include "CmsContext.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace velmora {
namespace {

// The size of each block is stored in front of it. The prefix keeps the alignment of malloc().
constexpr std::size_t prefix = alignof(std::max_align_t);

std::size_t& sizeOf(void* block)
{
    return *static_cast<std::size_t*>(block);
}

// A context is used on one thread at a time, so it needs no locks. Little CMS crashes if it cannot allocate
// its own.
void* createLock(cmsContext context)
{
    return context;
}
void destroyLock(cmsContext, void*) {}
cmsBool lock(cmsContext, void*)
{
    return TRUE;
}
void unlock(cmsContext, void*) {}

cmsPluginMutex withoutLocks()
{
    cmsPluginMutex plugin{};
    plugin.base.Magic = cmsPluginMagicNumber;
    plugin.base.ExpectedVersion = 2000;
    plugin.base.Type = cmsPluginMutexSig;
    plugin.CreateMutexPtr = createLock;
    plugin.DestroyMutexPtr = destroyLock;
    plugin.LockMutexPtr = lock;
    plugin.UnlockMutexPtr = unlock;
    return plugin;
}

} // namespace

CmsContext::CmsContext()
{
    cmsPluginMutex locks = withoutLocks();
    cmsPluginMemHandler handler{};
    handler.base.Magic = cmsPluginMagicNumber;
    handler.base.ExpectedVersion = 2000;
    handler.base.Type = cmsPluginMemHandlerSig;
    handler.base.Next = &locks.base;
    handler.MallocPtr = allocate;
    handler.FreePtr = release;
    handler.ReallocPtr = reallocate;
    m_context = cmsCreateContext(&handler, this);
    if (m_context)
        cmsSetLogErrorHandlerTHR(m_context, keepError);
}

CmsContext::~CmsContext()
{
    if (m_context)
        cmsDeleteContext(m_context);
}

void CmsContext::keepError(cmsContext context, cmsUInt32Number, const char* text)
{
    auto* self = static_cast<CmsContext*>(cmsGetContextUserData(context));
    if (self && self->m_error.isEmpty())
        self->m_error = QString::fromUtf8(text).simplified();
}

// While Little CMS creates or deletes the context itself, it has no user data. Those few small blocks are
// not counted.
void* CmsContext::allocate(cmsContext context, cmsUInt32Number size)
{
    auto* self = static_cast<CmsContext*>(cmsGetContextUserData(context));
    if (self && self->m_allocated + size > memoryLimit)
        return nullptr;
    void* block = std::malloc(prefix + size);
    if (!block) {
        if (self)
            self->m_ranOut = true;
        return nullptr;
    }
    sizeOf(block) = size;
    if (self)
        self->m_allocated += size;
    return static_cast<char*>(block) + prefix;
}

void CmsContext::release(cmsContext context, void* memory)
{
    if (!memory)
        return;
    void* block = static_cast<char*>(memory) - prefix;
    if (auto* self = static_cast<CmsContext*>(cmsGetContextUserData(context)))
        self->m_allocated -= std::min(self->m_allocated, sizeOf(block));
    std::free(block);
}

void* CmsContext::reallocate(cmsContext context, void* memory, cmsUInt32Number size)
{
    if (!memory)
        return allocate(context, size);
    void* fresh = allocate(context, size);
    if (!fresh)
        return nullptr;
    const std::size_t old = sizeOf(static_cast<char*>(memory) - prefix);
    std::memcpy(fresh, memory, std::min<std::size_t>(old, size));
    release(context, memory);
    return fresh;
}

} // namespace velmora
