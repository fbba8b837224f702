// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutListModel.h"
#include "PointLayer.h"

#include <QtCore/QTimer>
#include <QtGui/QUndoStack>

#include <optional>

/// Undo and redo of the user's changes of gamuts, their settings and looks, files of points and their
/// tolerance.
///
/// All changes until the event loop is reached again are one step, and so is everything that is opened
/// together: a step is complete when its inputs are loaded. An input that cannot be opened is no step.
/// Opacities that follow automatically which gamut is inside which are not part of a step. A gamut that
/// returns is computed again.
///
/// What the steps change belongs to a document, for example a session file. Undo returns to the document of
/// that time, too.
class History : public QObject
{
    Q_OBJECT
public:
    History(GamutListModel& gamuts, PointLayer& points, QObject* parent = nullptr);

    QUndoStack& steps() { return m_steps; }
    /// Whether all changes so far are steps.
    bool isUpToDate() const { return !m_soon.isActive(); }

    /// What is shown now, and what is being loaded, is as it was saved or opened; later changes are unsaved.
    void setUnchanged();
    /// Whether nothing has changed since setUnchanged(), or all of it was undone. Inputs that cannot be
    /// opened are no change.
    bool isUnchanged() const;
    /// The number of the document that the content belongs to; 0 at first.
    int document() const { return m_document; }
    void setDocument(int document) { m_document = document; }

    /// What the user can change.
    struct State
    {
        int document = 0;
        QList<GamutEntry> gamuts; ///< without the computed gamuts
        int active = -1;
        QStringList points;
        float tolerance = 0.0f;
    };
    /// Makes @p state the present one.
    void restore(const State& state);

Q_SIGNALS:
    void restored(); ///< a step was undone or done again
    void recorded(); ///< isUnchanged() may have changed

private:
    void recordSoon();
    void record();
    void takeStep(const State& now);
    bool isLoading() const;
    State present() const;

    GamutListModel& m_gamuts;
    PointLayer& m_points;
    QUndoStack m_steps;
    State m_last;                     ///< after the last step
    std::optional<State> m_unchanged; ///< of setUnchanged(), until it is loaded
    int m_document = 0;
    QTimer m_soon;
};
