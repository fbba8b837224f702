// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVCoreCommon.h>

namespace velmora {

/// Progress and cancellation of one step of a computation.
///
/// A value; cheap to copy. Each step reports 0..1 of its own part, which is mapped to its range of the whole.
/// Without a protocol nothing is reported and nothing is cancelled. Callable from any thread.
class Task
{
public:
    Task() = default;
    explicit Task(KVCompletionProtocolPtr protocol) : m_protocol(std::move(protocol)) {}

    [[nodiscard]] bool isCancelled() const { return m_protocol && m_protocol->isCancelled(); }
    /// Reports the finished share of this part, 0..1.
    void setProgress(double share) const
    {
        if (m_protocol)
            m_protocol->setProgress(static_cast<float>(m_from + share * (m_to - m_from)));
    }
    /// The range @p from .. @p to of this part, 0..1, as a task for a step of it.
    [[nodiscard]] Task part(double from, double to) const
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
