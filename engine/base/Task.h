// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVCoreCommon.h>

#include <functional>
#include <memory>
#include <utility>

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

    /// Cancelled as soon as @p check returns true; it is called at each look.
    explicit Task(std::function<bool()> check)
        : m_check(std::make_shared<const std::function<bool()>>(std::move(check)))
    {
    }

    /// Cheap. Loops over vertices or triangles look in each step, so that a computation ends within
    /// milliseconds. Once it is true, it stays true.
    [[nodiscard]] bool isCancelled() const
    {
        return (m_protocol && m_protocol->isCancelled()) || (m_check && (*m_check)());
    }
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
    std::shared_ptr<const std::function<bool()>> m_check;
    double m_from = 0.0;
    double m_to = 1.0;
};

} // namespace velmora
