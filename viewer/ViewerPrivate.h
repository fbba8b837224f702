// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>

#include <viewer/Backdrop.h>
#include <viewer/ViewerScene.h>

class QPlatformSurfaceEvent;

/// The data of the public class, whose header only declares it.
class Q_DECL_HIDDEN KVGamut3DViewer::Private : public ViewerScene
{
public:
    using ViewerScene::ViewerScene;

    void onSurfaceEvent(const QPlatformSurfaceEvent& event);
    void onHide();
    void onExpose();

    Backdrop backdrop{viewer};
};
