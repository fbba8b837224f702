// SPDX-License-Identifier: Apache-2.0
#include "ProfileReader.h"

#include <cstring>

namespace velmora {

ProfileReader::ProfileReader(const CmsContext& context, const QByteArray& bytes, const Task& task)
    : m_context(context), m_bytes(bytes), m_task(task)
{
    m_handler.stream = this;
    m_handler.ContextID = context.get();
    m_handler.ReportedSize = static_cast<cmsUInt32Number>(bytes.size());
    m_handler.Read = read;
    m_handler.Seek = seek;
    m_handler.Close = close;
    m_handler.Tell = tell;
    m_handler.Write = write;
}

CmsProfile ProfileReader::open()
{
    return CmsProfile(cmsOpenProfileFromIOhandlerTHR(m_context.get(), &m_handler));
}

cmsUInt32Number ProfileReader::read(cmsIOHANDLER* handler, void* to, cmsUInt32Number size,
                                    cmsUInt32Number count)
{
    ProfileReader& self = of(handler);
    const std::uint64_t bytes = std::uint64_t(size) * count;
    const cmsUInt32Number left = handler->ReportedSize - self.m_at;
    if (bytes > left) {
        cmsSignalError(handler->ContextID, cmsERROR_READ,
                       "Read from memory error. Got %d bytes, block should be of %d bytes", left,
                       count * size);
        return 0;
    }
    if (self.m_task.isCancelled())
        return 0;
    std::memcpy(to, self.m_bytes.constData() + self.m_at, bytes);
    self.m_at += static_cast<cmsUInt32Number>(bytes);
    return count;
}

cmsBool ProfileReader::seek(cmsIOHANDLER* handler, cmsUInt32Number offset)
{
    if (offset > handler->ReportedSize) {
        cmsSignalError(handler->ContextID, cmsERROR_SEEK, "Too few data; probably corrupted profile");
        return FALSE;
    }
    of(handler).m_at = offset;
    return TRUE;
}

cmsBool ProfileReader::close(cmsIOHANDLER*)
{
    return TRUE;
}

cmsUInt32Number ProfileReader::tell(cmsIOHANDLER* handler)
{
    return of(handler).m_at;
}

cmsBool ProfileReader::write(cmsIOHANDLER*, cmsUInt32Number, const void*)
{
    return FALSE;
}

} // namespace velmora
