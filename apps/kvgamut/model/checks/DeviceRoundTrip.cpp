// SPDX-License-Identifier: Apache-2.0
#include "DeviceRoundTrip.h"

#include "model/inputs/LittleCms.h"

#include <algorithm>
#include <array>
#include <cmath>

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
    Made made{device(lab), {}};
    made.lab = labOf(made.device);
    return made;
}

std::vector<double> DeviceRoundTrip::device(const KVGamut::LabPoint& lab) const
{
    const cmsCIELab asked{static_cast<double>(lab.L), static_cast<double>(lab.a), static_cast<double>(lab.b)};
    std::array<double, cmsMAXCHANNELS> device{};
    cmsDoTransform(d->toDevice.get(), &asked, device.data(), 1);
    std::vector<double> percent;
    percent.reserve(d->channels);
    for (std::size_t i = 0; i < d->channels; ++i)
        percent.push_back(std::clamp(device[i], 0.0, 1.0) * 100.0); // a matrix profile goes beyond
    return percent;
}

KVGamut::LabPoint DeviceRoundTrip::labOf(const std::vector<double>& percent) const
{
    std::array<double, cmsMAXCHANNELS> device{};
    std::transform(percent.begin(), percent.end(), device.begin(),
                   [](double value) { return value / 100.0; });
    cmsCIELab lab{};
    cmsDoTransform(d->toLab.get(), device.data(), &lab, 1);
    return {static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b)};
}

namespace {

using Vector = std::array<double, 3>;

/// What is missing from @p lab to @p wanted.
Vector difference(const KVGamut::LabPoint& wanted, const KVGamut::LabPoint& lab)
{
    return {double(wanted.L) - double(lab.L), double(wanted.a) - double(lab.a),
            double(wanted.b) - double(lab.b)};
}

double dot(const Vector& p, const Vector& q)
{
    return p[0] * q[0] + p[1] * q[1] + p[2] * q[2];
}

Vector cross(const Vector& p, const Vector& q)
{
    return {p[1] * q[2] - p[2] * q[1], p[2] * q[0] - p[0] * q[2], p[0] * q[1] - p[1] * q[0]};
}

/// Solves (J^T J + damping) x = J^T r, in which @p columns are those of J; by Cramer's rule.
Vector dampedStep(const std::array<Vector, 3>& columns, const Vector& residual, double damping)
{
    std::array<Vector, 3> normal{};
    Vector right{};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j)
            normal[i][j] = dot(columns[i], columns[j]) + (i == j ? damping : 0.0);
        right[i] = dot(columns[i], residual);
    }
    const double determinant = dot(normal[0], cross(normal[1], normal[2]));
    if (!(std::abs(determinant) > 0.0))
        return {};
    return {dot(right, cross(normal[1], normal[2])) / determinant,
            dot(normal[0], cross(right, normal[2])) / determinant,
            dot(normal[0], cross(normal[1], right)) / determinant};
}

} // namespace

DeviceRoundTrip::Made DeviceRoundTrip::inverted(const KVGamut::LabPoint& lab, const Made& start) const
{
    constexpr int maxSteps = 40;
    constexpr double probe = 0.5, enough = 1e-4; // percent; squared dE
    Made best = start;
    if (best.device.size() < 3)
        return best;
    double damping = 1e-3;
    for (int step = 0; step < maxSteps; ++step) {
        const Vector missing = difference(lab, best.lab);
        const double error = dot(missing, missing);
        if (error < enough)
            break;
        std::array<Vector, 3> columns{}; // change of Lab for a percent
        for (std::size_t i = 0; i < 3; ++i) {
            std::vector<double> moved = best.device;
            const double by = moved[i] > 50.0 ? -probe : probe;
            moved[i] += by;
            columns[i] = difference(labOf(moved), best.lab);
            for (double& value : columns[i])
                value /= by;
            // a value at its limit that would go beyond it stays
            if ((best.device[i] <= 0.0 && dot(columns[i], missing) < 0.0) ||
                (best.device[i] >= 100.0 && dot(columns[i], missing) > 0.0))
                columns[i] = {};
        }
        const Vector change = dampedStep(columns, missing, damping);
        Made next = best;
        for (std::size_t i = 0; i < 3; ++i)
            next.device[i] = std::clamp(best.device[i] + change[i], 0.0, 100.0);
        next.lab = labOf(next.device);
        const Vector left = difference(lab, next.lab);
        const bool isBetter = dot(left, left) < error;
        damping = isBetter ? damping / 10.0 : damping * 10.0;
        constexpr double maxDamping = 1e8;
        if (damping > maxDamping)
            break;
        if (isBetter)
            best = next;
    }
    return best;
}
