// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutListModel.h"
#include "PointLayer.h"

#include <QtCore/QTimer>
#include <QtGui/QUndoStack>

/// Undo and redo of the user's changes of gamuts, their settings and looks, files of points and their
/// tolerance.
///
/// All changes until the event loop is reached again are one step, and so is everything that is opened
/// together: a step is complete when its inputs are loaded. An input that cannot be opened is no step.
/// Opacities that follow automatically which gamut is inside which are not part of a step. A gamut that
/// returns is computed again.
class History : public QObject
{
    Q_OBJECT
public:
    History(GamutListModel& gamuts, PointLayer& points, QObject* parent = nullptr);

    QUndoStack& steps() { return m_steps; }
    /// Whether all changes so far are steps.
    bool isUpToDate() const { return !m_soon.isActive(); }

    /// What the user can change.
    struct State
    {
        QList<GamutEntry> gamuts; ///< without the computed gamuts
        int active = -1;
        QStringList points;
        float tolerance = 0.0f;
    };
    /// Makes @p state the present one.
    void restore(const State& state);

Q_SIGNALS:
    void restored(); ///< a step was undone or done again

private:
    void recordSoon();
    void record();
    bool isLoading() const;
    State present() const;

    GamutListModel& m_gamuts;
    PointLayer& m_points;
    QUndoStack m_steps;
    State m_last; ///< after the last step
    QTimer m_soon;
};
