// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <optional>

/// Decides which frames show coarse surfaces: those in which the view moves, if exact ones take too long.
///
/// Times are milliseconds of any one clock. A value without GL.
class MotionDetail
{
public:
    static constexpr qint64 slowFrameMs = 40; ///< a frame that takes longer is too slow to move
    static constexpr qint64 restMs = 150;     ///< the view rests when it has not moved for that long

    /// How the camera of a frame came to differ from that of the last frame.
    enum class Move
    {
        None,    ///< it did not
        Set,     ///< by one call; several of them without a rest in between are a movement
        Ongoing, ///< by input of the user, or by an animation: it will go on
    };

    /// Before a frame is drawn: whether it shows coarse surfaces.
    [[nodiscard]] bool isCoarse(qint64 now, Move move) const;
    /// After a frame was drawn. @p coarse whether any coarse surface was shown, @p tookMs its time.
    void noteFrame(qint64 now, Move move, bool coarse, qint64 tookMs);

    bool showsCoarse() const { return m_showsCoarse; } ///< in the last frame
    /// Whether the next frame is due although nothing changed: the exact surfaces after a movement.
    [[nodiscard]] bool mustRefine(qint64 now) const { return m_showsCoarse && rests(now); }
    /// Whether a frame with exact surfaces was slow, so that coarse ones are worth making.
    bool isSlow() const { return m_isSlow; }

private:
    bool rests(qint64 now) const { return !m_lastMove || now - *m_lastMove >= restMs; }

    std::optional<qint64> m_lastMove; ///< end of the last frame with another camera
    bool m_isSlow = false;            ///< the last frame with exact surfaces
    bool m_showsCoarse = false;
};
