// SPDX-License-Identifier: Apache-2.0
#include "PhotoSpace.h"

#include "model/inputs/LittleCms.h"

#include <cmath>
#include <limits>
#include <vector>

namespace {

struct DeviceFormat
{
    cmsColorSpaceSignature signature;
    cmsUInt32Number format; ///< with values 0..1
    int channels;
    double scale; ///< of a value 1
};

DeviceFormat formatFor(PhotoFacts::Space space)
{
    switch (space) {
    case PhotoFacts::Space::Grey:
        return {cmsSigGrayData, TYPE_GRAY_DBL, 1, 1.0};
    case PhotoFacts::Space::Cmyk:
        return {cmsSigCmykData, TYPE_CMYK_DBL, 4, 100.0}; // ink in percent
    case PhotoFacts::Space::Rgb:
    case PhotoFacts::Space::Lab:
        break;
    }
    return {cmsSigRgbData, TYPE_RGB_DBL, 3, 1.0};
}

KVGamut::LabPoint checked(const cmsCIELab& lab)
{
    constexpr double max = 10000.0; // far beyond any colour
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const bool isColour = std::abs(lab.L) <= max && std::abs(lab.a) <= max && std::abs(lab.b) <= max;
    if (!isColour)
        return {nan, nan, nan};
    return {static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b)};
}

} // namespace

struct PhotoSpace::Private
{
    LittleCms::Context context{cmsCreateContext(nullptr, nullptr)};
    LittleCms::Profile profile;
    LittleCms::Transform transform;
    DeviceFormat device{};
    std::size_t copies = 1; ///< of each value: 3 for grey with an RGB profile
};

Result<PhotoSpace> PhotoSpace::open(const QByteArray& icc, PhotoFacts::Space space, bool absolute)
{
    const KVVMRenderType intent = absolute ? KVVMRenderAbsoluteColorimetric : KVVMRenderRelativeColorimetric;
    const KVProfilePtr opened(KVProfileCreateWithData(icc.constData(), static_cast<int>(icc.size())),
                              KVProfileRelease);
    if (const auto problem = opened ? KVProfileTableProblem(*opened, intent) : KVProfileProblem())
        return failure(Problem(ProblemCode::PictureProfileInvalid).because(Problem(*problem)));
    const auto d = std::make_shared<Private>();
    d->device = formatFor(space);
    d->profile.reset(cmsOpenProfileFromMemTHR(d->context.get(), opened->bytes.constData(),
                                              static_cast<cmsUInt32Number>(opened->bytes.size())));
    if (!d->profile)
        return failure(ProblemCode::PictureProfileInvalid);
    const cmsUInt32Number signature = cmsGetColorSpace(d->profile.get()); // may be none of the enumeration
    if (space == PhotoFacts::Space::Grey && signature == cmsSigRgbData) {
        d->device = formatFor(PhotoFacts::Space::Rgb);
        d->copies = 3;
    }
    if (signature != d->device.signature)
        return failure(ProblemCode::PictureSpaceDiffers);
    const LittleCms::Profile lab(cmsCreateLab4ProfileTHR(d->context.get(), nullptr));
    // not optimised, because that replaces the profile by a coarse table
    d->transform.reset(
        cmsCreateTransformTHR(d->context.get(), d->profile.get(), d->device.format, lab.get(), TYPE_Lab_DBL,
                              absolute ? INTENT_ABSOLUTE_COLORIMETRIC : INTENT_RELATIVE_COLORIMETRIC,
                              cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE));
    if (!d->transform)
        return failure(ProblemCode::PictureProfileHasNoLab);
    PhotoSpace result;
    result.d = d;
    return result;
}

int PhotoSpace::channels() const
{
    return d->copies > 1 ? 1 : d->device.channels;
}

void PhotoSpace::convert(std::span<const double> device, std::span<KVGamut::LabPoint> lab) const
{
    std::vector<double> scaled;
    scaled.reserve(device.size() * d->copies);
    for (const double value : device)
        scaled.insert(scaled.end(), d->copies, value * d->device.scale);
    std::vector<cmsCIELab> converted(lab.size());
    cmsDoTransform(d->transform.get(), scaled.data(), converted.data(),
                   static_cast<cmsUInt32Number>(lab.size()));
    for (std::size_t i = 0; i < lab.size(); ++i)
        lab[i] = checked(converted[i]);
}
