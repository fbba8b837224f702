// SPDX-License-Identifier: Apache-2.0
#include <glwindow/MotionDetail.h>

bool MotionDetail::isCoarse(qint64 now, Move move) const
{
    return m_isSlow && (move == Move::Ongoing || !rests(now));
}

void MotionDetail::noteFrame(qint64 now, Move move, bool coarse, qint64 tookMs)
{
    if (move != Move::None)
        m_lastMove = now;
    m_showsCoarse = coarse;
    if (!coarse)
        m_isSlow = tookMs > slowFrameMs;
}
