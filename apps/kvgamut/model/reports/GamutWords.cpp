// SPDX-License-Identifier: Apache-2.0
#include "GamutWords.h"

QString GamutWords::intent(KVVMRenderType intent)
{
    switch (intent) {
    case KVVMRenderPerceptual:
        return QStringLiteral("perceptual");
    case KVVMRenderRelativeColorimetric:
        return QStringLiteral("relative");
    case KVVMRenderSaturation:
        return QStringLiteral("saturation");
    case KVVMRenderAbsoluteColorimetric:
        return QStringLiteral("absolute");
    }
    return {};
}

QString GamutWords::method(KVGamut::Method method)
{
    switch (method) {
    case KVGamut::Method::None:
        break;
    case KVGamut::Method::DeviceMesh:
        return QStringLiteral("device mesh");
    case KVGamut::Method::RadialHull:
        return QStringLiteral("radial hull");
    case KVGamut::Method::LatticeSurface:
        return QStringLiteral("lattice surface");
    }
    return {};
}

bool GamutWords::blackPointCompensated(const KVGamut::Report& report)
{
    return report.blackPointCompensation && report.intent != KVVMRenderAbsoluteColorimetric;
}
