// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CmsContext.h"
#include <engine/base/Task.h>

#include <QtCore/QByteArray>

namespace velmora {

/// Gives Little CMS the bytes of a profile in memory, without a copy.
///
/// Little CMS reads tables value by value, so that a large profile takes long. Every read looks for
/// cancellation; a cancelled read fails like one behind the end, and so the call of Little CMS fails.
class ProfileReader
{
public:
    /// @param bytes, context and task must outlive this object
    ProfileReader(const CmsContext& context, const QByteArray& bytes, const Task& task);
    Q_DISABLE_COPY_MOVE(ProfileReader)

    /// Opens the profile. Null if it is not one; the context has the reason. The profile reads from this
    /// object until it is closed.
    [[nodiscard]] CmsProfile open();

private:
    static ProfileReader& of(cmsIOHANDLER* handler) { return *static_cast<ProfileReader*>(handler->stream); }
    static cmsUInt32Number read(cmsIOHANDLER* handler, void* to, cmsUInt32Number size, cmsUInt32Number count);
    static cmsBool seek(cmsIOHANDLER* handler, cmsUInt32Number offset);
    static cmsBool close(cmsIOHANDLER* handler);
    static cmsUInt32Number tell(cmsIOHANDLER* handler);
    static cmsBool write(cmsIOHANDLER* handler, cmsUInt32Number size, const void* from);

    const CmsContext& m_context;
    const QByteArray& m_bytes;
    const Task& m_task;
    cmsIOHANDLER m_handler{};
    cmsUInt32Number m_at = 0;
};

} // namespace velmora
