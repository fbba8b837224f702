// SPDX-License-Identifier: Apache-2.0
#include "DeviceRoundTrip.h"

#include "model/inputs/LittleCms.h"

#include <algorithm>
#include <array>

namespace {

/// Little CMS prefers them to the tables of fixed cost.
bool hasElementTables(cmsHPROFILE profile)
{
    constexpr std::array tags{cmsSigBToD0Tag, cmsSigBToD1Tag, cmsSigBToD2Tag, cmsSigBToD3Tag};
    return std::any_of(tags.begin(), tags.end(),
                       [profile](cmsTagSignature tag) { return cmsIsTag(profile, tag) != 0; });
}

} // namespace

struct DeviceRoundTrip::Private
{
    LittleCms::Context context{cmsCreateContext(nullptr, nullptr)};
    LittleCms::Profile profile;
    LittleCms::Transform toDevice, toLab;
    std::size_t channels = 0;
};

std::shared_ptr<const DeviceRoundTrip> DeviceRoundTrip::create(const KVProfilePtr& profile,
                                                               KVVMRenderType intent)
{
    if (!profile || KVProfileTableProblem(*profile, intent))
        return nullptr;
    auto d = std::make_shared<Private>();
    d->profile.reset(cmsOpenProfileFromMemTHR(d->context.get(), profile->bytes.constData(),
                                              static_cast<cmsUInt32Number>(profile->bytes.size())));
    if (!d->profile || hasElementTables(d->profile.get()))
        return nullptr;
    const cmsUInt32Number space = cmsGetColorSpace(d->profile.get()); // may be none of the enumeration
    d->channels = cmsChannelsOf(static_cast<cmsColorSpaceSignature>(space));
    if (d->channels == 0 || d->channels > cmsMAXCHANNELS)
        return nullptr;
    // values 0..1 for inks, too, because the format does not name the space
    const auto format = static_cast<cmsUInt32Number>(FLOAT_SH(1) | CHANNELS_SH(d->channels) | BYTES_SH(0));
    constexpr cmsUInt32Number flags = cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE;
    const LittleCms::Profile lab(cmsCreateLab4ProfileTHR(d->context.get(), nullptr));
    const cmsUInt32Number back = intent == KVVMRenderAbsoluteColorimetric ? INTENT_ABSOLUTE_COLORIMETRIC
                                                                          : INTENT_RELATIVE_COLORIMETRIC;
    d->toDevice.reset(cmsCreateTransformTHR(d->context.get(), lab.get(), TYPE_Lab_DBL, d->profile.get(),
                                            format, static_cast<cmsUInt32Number>(intent), flags));
    d->toLab.reset(cmsCreateTransformTHR(d->context.get(), d->profile.get(), format, lab.get(), TYPE_Lab_DBL,
                                         back, flags));
    if (!d->toDevice || !d->toLab)
        return nullptr;
    auto result = std::make_shared<DeviceRoundTrip>();
    result->d = d;
    return result;
}

DeviceRoundTrip::Made DeviceRoundTrip::made(const KVGamut::LabPoint& lab) const
{
    const cmsCIELab asked{static_cast<double>(lab.L), static_cast<double>(lab.a), static_cast<double>(lab.b)};
    std::array<double, cmsMAXCHANNELS> device{};
    cmsDoTransform(d->toDevice.get(), &asked, device.data(), 1);
    Made made;
    for (std::size_t i = 0; i < d->channels; ++i) {
        device[i] = std::clamp(device[i], 0.0, 1.0); // a matrix profile goes beyond
        made.device.push_back(device[i] * 100.0);
    }
    cmsCIELab back{};
    cmsDoTransform(d->toLab.get(), device.data(), &back, 1);
    made.lab = {static_cast<float>(back.L), static_cast<float>(back.a), static_cast<float>(back.b)};
    return made;
}
