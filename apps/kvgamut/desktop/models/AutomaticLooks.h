// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutListModel.h"

#include <QtCore/QObject>
#include <QtCore/QThreadPool>

/// Chooses the opacity of gamuts by which one is inside which, see bodyLooks(): the innermost opaque, the
/// next translucent, further ones faint. Only of gamuts whose opacity the user has not chosen, see
/// GamutEntry::automaticOpacity. Gamuts that are hidden or not yet computed hide nothing.
///
/// Computes in the background. The gamut list must outlive it; the destructor waits for the computation in
/// progress, at most some tenths of a second.
class AutomaticLooks : public QObject
{
    Q_OBJECT
public:
    explicit AutomaticLooks(GamutListModel& gamuts, QObject* parent = nullptr);
    ~AutomaticLooks() override;

    /// Whether the opacities belong to the gamuts of the list.
    bool isComplete() const { return !m_isRunning; }

private:
    void refresh();
    void start();
    void apply(const QList<float>& opacities);

    GamutListModel& m_gamuts;
    QList<quint64> m_asked; ///< revisions of the gamuts that the opacities are, or will be, computed for
    bool m_isRunning = false;
    bool m_isOutdated = false; ///< the list has changed since the computation in progress was started
    QThreadPool m_pool;
};
