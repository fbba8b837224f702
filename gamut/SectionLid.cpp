// SPDX-License-Identifier: Apache-2.0
#include <gamut/GamutMeshes.h>
#include <gamut/SectionLid.h>

#include <vector>

GeometryData kvUnshadedLid(std::span<const KVGamut::SectionLoop> loops)
{
    return kvUnshadedSurface(kvSectionTriangles(loops, kvLidCell));
}

GeometryData kvSectionLid(const KVGamut::Mesh& surface, float L)
{
    const float plane[4] = {1.0f, 0.0f, 0.0f, -L};
    const std::vector<KVGamut::SectionLoop> loops = KVGamut::sectionLoops(plane, surface);
    return kvUnshadedLid(loops);
}

void KVSectionLid::setDisplayMode(int mode)
{
    constexpr int wireframeMode = 3;
    storeDisplayMode(mode);
    setVisible(mode != wireframeMode);
}
