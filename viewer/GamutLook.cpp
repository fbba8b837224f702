// SPDX-License-Identifier: Apache-2.0
#include <viewer/GamutLook.h>

void kvApplyLook(KVGamut3DViewer& viewer, const QString& id, const KVGamutLook& look)
{
    viewer.setGamutVisible(id, look.visible);
    viewer.setDisplayMode(id, look.mode);
    viewer.changeGamutColor(id, look.color);
    viewer.changeGamutAlpha(id, look.opacity, 0);
    viewer.setGamutAmbientStrength(id, look.ambientStrength);
    viewer.setDisplayGamut(id, look.surface);
    viewer.setDisplayProjection(id, look.projection);
    viewer.setDisplayPrimaries(id, look.primaries);
}

KVGamutLook kvLookOf(const KVGamut3DViewer& viewer, const QString& id)
{
    KVGamutLook look;
    look.visible = viewer.gamutVisible(id);
    look.mode = viewer.displayMode(id);
    look.color = viewer.gamutColor(id);
    look.opacity = viewer.gamutAlpha(id);
    look.ambientStrength = viewer.gamutAmbientStrength(id);
    look.surface = viewer.displayGamut(id);
    look.projection = viewer.displayProjection(id);
    look.primaries = viewer.displayPrimaries(id);
    return look;
}
