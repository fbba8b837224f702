// SPDX-License-Identifier: Apache-2.0
#include "PointWhite.h"

#include <lcms2.h>

namespace {

struct Illuminant
{
    const char* name;
    cmsCIEXYZ white;
};

// CIE 15:2004, table T.3, for the 2 degree observer; D50 as in ICC.1.
constexpr Illuminant illuminants[] = {
    {"D50", {0.9642, 1.0, 0.8249}},   {"D55", {0.95682, 1.0, 0.92149}}, {"D65", {0.95047, 1.0, 1.08883}},
    {"D75", {0.94972, 1.0, 1.22638}}, {"A", {1.09850, 1.0, 0.35585}},   {"C", {0.98074, 1.0, 1.18232}},
    {"E", {1.0, 1.0, 1.0}},
};

cmsCIEXYZ whiteOf(const QString& name)
{
    for (const Illuminant& illuminant : illuminants)
        if (name == QLatin1String(illuminant.name))
            return illuminant.white;
    return illuminants[0].white;
}

KVGamut::LabPoint labOfAdapted(const cmsCIEXYZ& xyz, const QString& white)
{
    cmsCIEXYZ adapted = xyz;
    const cmsCIEXYZ from = whiteOf(white);
    if (white != QLatin1String(illuminants[0].name) && !white.isEmpty())
        cmsAdaptToIlluminant(&adapted, &from, &illuminants[0].white, &xyz);
    cmsCIELab lab;
    cmsXYZ2Lab(&illuminants[0].white, &lab, &adapted);
    return {static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b)};
}

} // namespace

QStringList PointWhite::names()
{
    QStringList names;
    for (const Illuminant& illuminant : illuminants)
        names.append(QLatin1String(illuminant.name));
    return names;
}

QString PointWhite::known(const QString& word)
{
    for (const Illuminant& illuminant : illuminants)
        if (word.compare(QLatin1String(illuminant.name), Qt::CaseInsensitive) == 0)
            return QLatin1String(illuminant.name);
    return {};
}

KVGamut::LabPoint PointWhite::fromLab(const KVGamut::LabPoint& lab, const QString& white)
{
    if (white.isEmpty() || white == QLatin1String(illuminants[0].name))
        return lab;
    const cmsCIELab from{double(lab.L), double(lab.a), double(lab.b)};
    const cmsCIEXYZ reference = whiteOf(white);
    cmsCIEXYZ xyz;
    cmsLab2XYZ(&reference, &xyz, &from);
    return labOfAdapted(xyz, white);
}

KVGamut::LabPoint PointWhite::fromXyz(const std::array<float, 3>& xyz, double whiteY, const QString& white)
{
    return labOfAdapted({double(xyz[0]) / whiteY, double(xyz[1]) / whiteY, double(xyz[2]) / whiteY}, white);
}
