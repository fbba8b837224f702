// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <functional>

/// Calls @p act once the picture of the shown viewer is up to date. It does not wait for loads: call it
/// after they have ended.
inline void whenDrawn(KVGamutView& view, const std::function<void()>& act)
{
    if (view.viewer()->isSettled())
        act();
    else
        QObject::connect(&view, &KVGamutView::settled, &view, act, Qt::SingleShotConnection);
}
