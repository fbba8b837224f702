// SPDX-License-Identifier: Apache-2.0
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
    /// @p share of this task's own part, 0..1
    void setProgress(double share) const
    {
        if (m_protocol)
            m_protocol->setProgress(static_cast<float>(m_from + share * (m_to - m_from)));
    }
    /// The same computation's interval between two shares of this part.
    Task part(double from, double to) const
    {
        Task task = *this;
        task.m_from = m_from + from * (m_to - m_from);
        task.m_to = m_from + to * (m_to - m_from);
        return task;
    }

private:
    KVCompletionProtocolPtr m_protocol;
    double m_from = 0.0;
    double m_to = 1.0;
};

} // namespace velmora
