// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

/// Whether a long computation must stop. Empty: it is never stopped.
using KVCancelCheck = std::function<bool()>;

/// Asks a KVCancelCheck once in a number of steps of a loop, because a call in every step would be slow.
class CancelPacer
{
public:
    /// @param check must outlive this object
    explicit CancelPacer(const KVCancelCheck& check, int stepsBetweenChecks)
        : m_check(check), m_stepsBetweenChecks(stepsBetweenChecks)
    {
    }

    /// To be called in each step. Once it is true, it stays true.
    bool isCancelled()
    {
        if (!m_cancelled && m_check && ++m_steps >= m_stepsBetweenChecks) {
            m_steps = 0;
            m_cancelled = m_check();
        }
        return m_cancelled;
    }

private:
    const KVCancelCheck& m_check;
    const int m_stepsBetweenChecks;
    int m_steps = 0;
    bool m_cancelled = false;
};
