// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>

#include <QtCore/QTimer>

#include <functional>

/// Calls @p act once the shown @p viewer has drawn all that it was told: no move, no fade and no change
/// is left. The viewer knows nothing of loads in progress: call this when they have reported back.
inline void whenDrawn(KVGamut3DViewer& viewer, std::function<void()> act)
{
    auto* timer = new QTimer(&viewer);
    QObject::connect(timer, &QTimer::timeout, &viewer, [timer, &viewer, act = std::move(act)] {
        if (!viewer.isSettled() || viewer.picture().isNull())
            return;
        timer->deleteLater();
        timer->stop();
        act();
    });
    timer->start(50);
}
