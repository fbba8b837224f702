// SPDX-License-Identifier: Apache-2.0
#include "DeviceColours.h"

#include "model/inputs/BuiltInNames.h"
#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/InputGate.h"
#include "model/inputs/LittleCms.h"

#include <platform/KVVelmoraFramework.h>

#include <algorithm>
#include <memory>

namespace {

constexpr std::size_t coloursPerBlock = 1024; // between two checks for a cancellation

/// @p problem of the file @p space; for one that does not exist with the built-in name that is near.
Problem whyUnread(const QString& space, const Problem& problem)
{
    const bool isMissing = problem.cause && problem.cause->code == Problem::Code(ProblemCode::NoSuchFile);
    const QString near = isMissing ? BuiltInNames::near(space) : QString();
    return near.isEmpty() ? problem.about({}) : Problem(ProblemCode::NoSuchInput, {near});
}

/// The profile, checked by the engine: Little CMS alone would open a small file whose conversion takes hours.
Result<KVProfilePtr> openedSpace(const QString& space, KVVMRenderType intent,
                                 const KVCompletionProtocolPtr& task)
{
    QByteArray bytes = BuiltInProfiles::profile(space);
    if (bytes.isEmpty()) {
        const Result<QByteArray> read = InputGate::read(space, InputKind::Profile, task);
        if (!read && read.error().isCancelled())
            return failure(read.error());
        if (!read) // the problem of the file of colours is about that one
            return failure(
                Problem(ProblemCode::PointSpaceUnusable, {space}).because(whyUnread(space, read.error())));
        bytes = *read;
    }
    KVProfilePtr profile(KVProfileCreateWithData(bytes.constData(), static_cast<int>(bytes.size())),
                         KVProfileRelease);
    const auto problem = profile ? KVProfileTableProblem(*profile, intent) : KVProfileProblem();
    if (problem)
        return failure(Problem(ProblemCode::PointSpaceUnusable, {space}).because(Problem(*problem)));
    return profile;
}

Result<std::vector<KVGamut::LabPoint>> transformed(cmsHTRANSFORM transform, std::span<const double> values,
                                                   std::size_t channels, const KVCompletionProtocolPtr& task)
{
    const std::size_t count = values.size() / channels;
    std::vector<cmsCIELab> block(coloursPerBlock);
    std::vector<KVGamut::LabPoint> labs;
    labs.reserve(count);
    for (std::size_t start = 0; start < count; start += coloursPerBlock) {
        if (InputGate::isCancelled(task))
            return failure(KVProblemCode::Cancelled);
        const std::size_t size = std::min(coloursPerBlock, count - start);
        cmsDoTransform(transform, values.data() + start * channels, block.data(),
                       static_cast<cmsUInt32Number>(size));
        for (const cmsCIELab& lab : std::span(block).first(size))
            labs.push_back({static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b)});
    }
    return labs;
}

} // namespace

Result<std::vector<KVGamut::LabPoint>> labOfDevice(std::span<const double> values, int channels,
                                                   const QString& space, KVVMRenderType intent,
                                                   const KVCompletionProtocolPtr& task)
{
    return openedSpace(space, intent, task).and_then([&](const KVProfilePtr& opened) {
        return labOfDevice(values, channels, opened, space, intent, task);
    });
}

Result<std::vector<KVGamut::LabPoint>> labOfDevice(std::span<const double> values, int channels,
                                                   const KVProfilePtr& opened, const QString& space,
                                                   KVVMRenderType intent, const KVCompletionProtocolPtr& task)
{
    if (const auto problem = KVProfileTableProblem(*opened, intent))
        return failure(Problem(ProblemCode::PointSpaceUnusable, {space}).because(Problem(*problem)));
    const QByteArray& bytes = opened->bytes;
    const LittleCms::Context context(cmsCreateContext(nullptr, nullptr));
    const LittleCms::Profile profile(cmsOpenProfileFromMemTHR(context.get(), bytes.constData(),
                                                              static_cast<cmsUInt32Number>(bytes.size())));
    const bool isRgb = channels == 3;
    if (!profile || cmsGetColorSpace(profile.get()) != (isRgb ? cmsSigRgbData : cmsSigCmykData))
        return failure(ProblemCode::PointSpaceDiffers,
                       {space, isRgb ? QStringLiteral("RGB") : QStringLiteral("CMYK")});
    const LittleCms::Profile lab(cmsCreateLab4ProfileTHR(context.get(), nullptr));
    if (lab) // for version 4, Little CMS forces black-point compensation for some intents
        cmsSetProfileVersion(lab.get(), 2.1);
    const LittleCms::Transform transform(
        cmsCreateTransformTHR(context.get(), profile.get(), isRgb ? TYPE_RGB_DBL : TYPE_CMYK_DBL, lab.get(),
                              TYPE_Lab_DBL, static_cast<cmsUInt32Number>(intent), cmsFLAGS_NOCACHE));
    if (!transform)
        return failure(ProblemCode::PointSpaceUnusable, {space});
    return transformed(transform.get(), values, static_cast<std::size_t>(channels), task);
}
