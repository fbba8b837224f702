// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutCanvas.h>
#include <KVGamutQuickView.h>

#include <QtGui/QImage>

/// What an item shows, and its last picture.
class Q_DECL_HIDDEN KVGamutQuickView::Private
{
public:
    KVGamutCanvas canvas;
    KVGamutQuickModel model{canvas.view()};
    QImage frame;             ///< the last one
    bool hasNewFrame = false; ///< it is not yet in the scene graph
    bool settled = false;     ///< as last reported
};
