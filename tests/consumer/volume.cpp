// SPDX-License-Identifier: Apache-2.0
// The colour engine without a viewer: prints the volume of sRGB.

#include <platform/KVVelmoraFramework.h>

#include <QtGui/QColorSpace>

#include <cstdio>

int main()
{
    const QByteArray profile = QColorSpace(QColorSpace::SRgb).iccProfile();
    const KVProfilePtr opened(KVProfileCreateWithData(profile.constData(), int(profile.size())),
                              KVProfileRelease);
    KVGamut::GamutObject gamut;
    if (!gamut.init(opened, KVVMRenderRelativeColorimetric, false, false, 10.0f, -1, 0, nullptr)) {
        std::fprintf(stderr, "volume: %s\n", qPrintable(gamut.problem()->text()));
        return 1;
    }
    std::printf("%.0f\n", gamut.volume());
}
