#pragma once

#include <platform/KVCoreCommon.h>

namespace velmora {

/// Progress and cancellation of one gamut, as its steps see it. Without a protocol nothing is
/// reported and nobody cancels.
class Task
{
public:
    Task() = default;
    explicit Task(KVCompletionProtocolPtr protocol) : m_protocol(std::move(protocol)) {}

    bool isCancelled() const { return m_protocol && m_protocol->isCancelled(); }
    void setProgress(double share) const
    {
        if (m_protocol)
            m_protocol->setProgress(static_cast<float>(share));
    }

private:
    KVCompletionProtocolPtr m_protocol;
};

} // namespace velmora
