// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Result.h>

#include <QtCore/QString>

#include <lcms2.h>
#include <lcms2_plugin.h>

#include <cstddef>
#include <memory>
#include <type_traits>

namespace velmora {

/// A private Little CMS context. Errors do not reach the global handler, but are kept; memory is limited, so
/// that a hostile profile cannot exhaust it. Use one context on one thread at a time.
class CmsContext
{
public:
    CmsContext();
    ~CmsContext();
    CmsContext(const CmsContext&) = delete;
    CmsContext& operator=(const CmsContext&) = delete;

    /// Null if the context could not be created.
    cmsContext get() const { return m_context; }
    /// The failure of a call in this context: @p withReason and the first error message of Little CMS as
    /// its argument, or @p code if there is no message.
    [[nodiscard]] tl::unexpected<KVProblem> failure(KVProblemCode code, KVProblemCode withReason) const
    {
        if (hasRunOutOfMemory())
            return velmora::failure(KVProblemCode::OutOfMemory);
        return m_error.isEmpty() ? velmora::failure(code) : velmora::failure(withReason, {m_error});
    }

    /// Whether an allocation in this context has failed. Then its objects must not be used: Little CMS does
    /// not report every failure, and crashes later.
    [[nodiscard]] bool hasRunOutOfMemory() const { return !m_context || m_ranOut; }

    static constexpr std::size_t memoryLimit = std::size_t(160) << 20; ///< bytes

private:
    static void keepError(cmsContext context, cmsUInt32Number code, const char* text);
    static void* allocate(cmsContext context, cmsUInt32Number size);
    static void release(cmsContext context, void* memory);
    static void* reallocate(cmsContext context, void* memory, cmsUInt32Number size);

    cmsContext m_context = nullptr;
    QString m_error;
    std::size_t m_allocated = 0;
    bool m_ranOut = false;
};

// Deleters of Little CMS handles.
struct CloseProfile
{
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
struct DeleteTransform
{
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};
using CmsProfile = std::unique_ptr<void, CloseProfile>;
using CmsTransform = std::unique_ptr<void, DeleteTransform>;

} // namespace velmora
