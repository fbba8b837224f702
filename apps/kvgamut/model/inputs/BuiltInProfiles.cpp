// SPDX-License-Identifier: Apache-2.0
#include "BuiltInProfiles.h"

#include "LittleCms.h"

#include <lcms2.h>

#include <array>
#include <memory>

namespace {

/// Y = ((a·X + b)^gamma where X >= d, else c·X): parametric type 4 of Little CMS.
struct Curve
{
    double gamma, a, b, c, d;
};

struct RgbSpace
{
    const char* name;
    cmsCIExyY white;
    cmsCIExyYTRIPLE primaries; // red, green, blue
    Curve curve;
};

constexpr qsizetype creationTimeOffset = 24; // in the header of an ICC profile

constexpr cmsCIExyY d65{0.3127, 0.3290, 1.0};
constexpr cmsCIExyY d50{0.3457, 0.3585, 1.0};

constexpr Curve power(double gamma)
{
    return {gamma, 1.0, 0.0, 0.0, 0.0};
}

// The piecewise curve of IEC 61966-2-1.
constexpr Curve srgbCurve{2.4, 1.0 / 1.055, 0.055 / 1.055, 1.0 / 12.92, 0.04045};

// Inverse of the BT.2020 curve. Alpha and beta are defined such that the two branches meet with equal value
// and slope.
constexpr double bt2020Alpha = 1.09929682680944;
constexpr double bt2020Beta = 0.018053968510807;
constexpr Curve bt2020Curve{1.0 / 0.45, 1.0 / bt2020Alpha, (bt2020Alpha - 1.0) / bt2020Alpha, 1.0 / 4.5,
                            4.5 * bt2020Beta};

constexpr std::array<RgbSpace, 5> spaces{{
    // IEC 61966-2-1:1999, primaries of ITU-R BT.709
    {"sRGB", d65, {{0.64, 0.33, 1}, {0.30, 0.60, 1}, {0.15, 0.06, 1}}, srgbCurve},
    // Adobe RGB (1998) Color Image Encoding, version 2005-05, section 4.3
    {"AdobeRGB", d65, {{0.64, 0.33, 1}, {0.21, 0.71, 1}, {0.15, 0.06, 1}}, power(563.0 / 256.0)},
    // primaries of SMPTE RP 431-2 and white of SMPTE EG 432-1, with the curve of IEC 61966-2-1
    {"DisplayP3", d65, {{0.680, 0.320, 1}, {0.265, 0.690, 1}, {0.150, 0.060, 1}}, srgbCurve},
    // ITU-R BT.2020-2, tables 3 and 4
    {"Rec2020", d65, {{0.708, 0.292, 1}, {0.170, 0.797, 1}, {0.131, 0.046, 1}}, bt2020Curve},
    // ISO 22028-2:2013 (ROMM RGB)
    {"ProPhoto",
     d50,
     {{0.7347, 0.2653, 1}, {0.1596, 0.8404, 1}, {0.0366, 0.0001, 1}},
     {1.8, 1.0, 0.0, 1.0 / 16.0, 1.0 / 32.0}},
}};

using LittleCms::Profile;
using ToneCurve = std::unique_ptr<cmsToneCurve, decltype(&cmsFreeToneCurve)>;

void describe(const Profile& profile, const char* name)
{
    const std::unique_ptr<cmsMLU, decltype(&cmsMLUfree)> text(cmsMLUalloc(nullptr, 1), cmsMLUfree);
    if (text && cmsMLUsetASCII(text.get(), "en", "US", name))
        cmsWriteTag(profile.get(), cmsSigProfileDescriptionTag, text.get());
}

QByteArray bytesOf(const Profile& profile)
{
    cmsUInt32Number size = 0;
    if (!cmsSaveProfileToMem(profile.get(), nullptr, &size))
        return {};
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    if (!cmsSaveProfileToMem(profile.get(), bytes.data(), &size))
        return {};
    // Little CMS writes the present time. The same profile has the same bytes each time, also in a picture.
    constexpr QByteArrayView firstOf2000("\x07\xd0\0\x01\0\x01\0\0\0\0\0\0", 12);
    return bytes.replace(creationTimeOffset, firstOf2000.size(), firstOf2000);
}

QByteArray make(const RgbSpace& space)
{
    const std::array<double, 5> parameters{space.curve.gamma, space.curve.a, space.curve.b, space.curve.c,
                                           space.curve.d};
    const ToneCurve curve(cmsBuildParametricToneCurve(nullptr, 4, parameters.data()), cmsFreeToneCurve);
    if (!curve)
        return {};
    const std::array<cmsToneCurve*, 3> curves{curve.get(), curve.get(), curve.get()};
    const Profile profile(cmsCreateRGBProfile(&space.white, &space.primaries, curves.data()));
    if (!profile)
        return {};
    describe(profile, space.name);
    return bytesOf(profile);
}

} // namespace

QStringList BuiltInProfiles::names()
{
    QStringList names;
    for (const RgbSpace& space : spaces)
        names.append(QLatin1String(space.name));
    return names;
}

QByteArray BuiltInProfiles::profile(const QString& name)
{
    for (const RgbSpace& space : spaces)
        if (name.compare(QLatin1String(space.name), Qt::CaseInsensitive) == 0)
            return make(space);
    return {};
}
