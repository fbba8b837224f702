// SPDX-License-Identifier: Apache-2.0
#include "DeviceTransform.h"

#include "CmsContext.h"
#include "IccTables.h"
#include "MediaWhite.h"
#include "ProfileReader.h"
#include "TableNodes.h"

#include <algorithm>

namespace velmora {
namespace {

bool isInRange(Vec3 p)
{
    return isFinite(p) && std::max({std::abs(p.L), std::abs(p.a), std::abs(p.b)}) < maxLab;
}

} // namespace

// Each channel beyond the sixth doubles the time of a transform: interpolation reads 2^n table nodes.
std::size_t DeviceTransform::blockSize() const
{
    return maxBlock >> std::clamp(channels() - 6, 0, 9);
}

Result<std::vector<Vec3>> DeviceTransform::toLab(std::span<const float> device, const Task& task) const
{
    const auto stride = static_cast<std::size_t>(channels());
    const std::size_t count = device.size() / stride;
    const std::size_t block = blockSize();
    if (task.isCancelled()) // the list of colours may be incomplete, or even empty
        return failure(KVProblemCode::Cancelled);
    std::vector<Vec3> lab(count);
    for (std::size_t done = 0; done < count; done += block) {
        if (task.isCancelled())
            return failure(KVProblemCode::Cancelled);
        const std::size_t size = std::min(block, count - done);
        convertBlock(device.data() + done * stride, lab.data() + done, size);
        if (!std::all_of(lab.data() + done, lab.data() + done + size, isInRange))
            return failure(KVProblemCode::LabOutOfRange);
        task.setProgress(static_cast<double>(done + size) / static_cast<double>(count));
    }
    return lab;
}

namespace {

struct DeviceSpace
{
    ChannelKind kind;
    std::vector<float> white;
    std::vector<float> black;
    std::vector<float> origin;
};

Result<void> checkClass(cmsProfileClassSignature profileClass)
{
    switch (profileClass) {
    case cmsSigInputClass:
    case cmsSigDisplayClass:
    case cmsSigOutputClass:
    case cmsSigColorSpaceClass:
        return {};
    case cmsSigLinkClass:
        return failure(KVProblemCode::DeviceLink);
    case cmsSigAbstractClass:
        return failure(KVProblemCode::AbstractProfile);
    case cmsSigNamedColorClass:
        return failure(KVProblemCode::NamedColorProfile);
    default:
        return failure(KVProblemCode::UnsupportedClass, {signatureText(profileClass)});
    }
}

Result<void> checkSpace(cmsColorSpaceSignature space, int channels)
{
    switch (space) {
    case cmsSigXYZData:
    case cmsSigLabData:
    case cmsSigLuvData:
    case cmsSigYxyData:
        return failure(KVProblemCode::NotADeviceSpace, {signatureText(space)});
    default:
        break;
    }
    if (channels == 1)
        return failure(KVProblemCode::OneChannel);
    if (channels == 2)
        return failure(KVProblemCode::TwoChannels);
    if (_cmsLCMScolorSpace(space) <= 0) // cmsChannelsOf() returns 3 for unknown spaces
        return failure(KVProblemCode::UnknownDeviceSpace, {signatureText(space)});
    return {};
}

DeviceSpace describe(cmsColorSpaceSignature space, int channels)
{
    const auto n = static_cast<std::size_t>(channels);
    const std::vector<float> zeros(n, 0.0f);
    const std::vector<float> ones(n, 1.0f);
    switch (space) {
    case cmsSigRgbData:
        return {ChannelKind::Additive, ones, zeros, zeros};
    case cmsSigYCbCrData:
        return {ChannelKind::Coordinates, {1.0f, 0.5f, 0.5f}, {0.0f, 0.5f, 0.5f}, {0.0f, 0.5f, 0.5f}};
    case cmsSigHsvData:
        return {ChannelKind::Coordinates, {0.0f, 0.0f, 1.0f}, zeros, zeros};
    case cmsSigHlsData:
        return {ChannelKind::Coordinates, {0.0f, 1.0f, 0.0f}, zeros, zeros};
    default: // CMY, CMYK, and the numbered colorants
        return {ChannelKind::Subtractive, zeros, ones, zeros};
    }
}

// Spaces whose channels Little CMS expects in 0..100 in floating-point formats.
bool isInkSpace(int pixelType)
{
    switch (pixelType) {
    case PT_CMY:
    case PT_CMYK:
    case PT_MCH5:
    case PT_MCH6:
    case PT_MCH7:
    case PT_MCH8:
    case PT_MCH9:
    case PT_MCH10:
    case PT_MCH11:
    case PT_MCH12:
    case PT_MCH13:
    case PT_MCH14:
    case PT_MCH15:
        return true;
    default:
        return false;
    }
}

// What happens to the colours besides the transform of Little CMS.
struct Adjusted
{
    KVGamut::Conversion conversion;
    LabAdjustment adjustment;
};

class CmsDeviceTransform final : public DeviceTransform
{
public:
    CmsDeviceTransform(std::unique_ptr<CmsContext> context, CmsTransform transform, int channels,
                       DeviceSpace space, double fullScale, Adjusted adjusted,
                       std::vector<std::vector<float>> tableNodes)
        : m_context(std::move(context)), m_transform(std::move(transform)), m_channels(channels),
          m_space(std::move(space)), m_fullScale(fullScale), m_adjusted(std::move(adjusted)),
          m_tableNodes(std::move(tableNodes))
    {
    }

    int channels() const override { return m_channels; }
    ChannelKind kind() const override { return m_space.kind; }
    std::vector<float> white() const override { return m_space.white; }
    std::vector<float> black() const override { return m_space.black; }
    std::vector<float> origin() const override { return m_space.origin; }
    KVGamut::Conversion conversion() const override { return m_adjusted.conversion; }
    std::vector<std::vector<float>> tableNodes() const override { return m_tableNodes; }

protected:
    void convertBlock(const float* block, Vec3* lab, std::size_t count) const override
    {
        static_assert(sizeof(Vec3) == sizeof(cmsCIELab), "Lab doubles are written in place");
        m_scaled.resize(maxBlock * static_cast<std::size_t>(m_channels));
        std::transform(block, block + count * static_cast<std::size_t>(m_channels), m_scaled.begin(),
                       [this](float v) { return m_fullScale * double(v); });
        cmsDoTransform(m_transform.get(), m_scaled.data(), lab, static_cast<cmsUInt32Number>(count));
        m_adjusted.adjustment.apply(lab, count);
    }

private:
    std::unique_ptr<CmsContext> m_context; // outlives the transform
    CmsTransform m_transform;
    int m_channels;
    DeviceSpace m_space;
    double m_fullScale;
    Adjusted m_adjusted;
    std::vector<std::vector<float>> m_tableNodes;
    mutable std::vector<double> m_scaled;
};

} // namespace

namespace {

// A transform from device values to Lab.
Result<CmsTransform> labTransform(const CmsContext& context, cmsHPROFILE device, cmsUInt32Number format,
                                  int intent, bool blackPointCompensation)
{
    // Little CMS always applies black-point compensation for the perceptual and saturation intents if the
    // destination is a version 4 profile, such as its Lab profile. With version 2.1 the space is the same,
    // but the caller can choose.
    const CmsProfile labSpace(cmsCreateLab4ProfileTHR(context.get(), nullptr));
    if (!labSpace)
        return failure(KVProblemCode::OutOfMemory);
    cmsSetProfileVersion(labSpace.get(), 2.1);

    cmsUInt32Number flags = cmsFLAGS_NOCACHE;
    if (blackPointCompensation && intent != INTENT_ABSOLUTE_COLORIMETRIC)
        flags |= cmsFLAGS_BLACKPOINTCOMPENSATION;
    CmsTransform transform(cmsCreateTransformTHR(context.get(), device, format, labSpace.get(), TYPE_Lab_DBL,
                                                 static_cast<cmsUInt32Number>(intent), flags));
    if (transform)
        return transform;
    return context.failure(KVProblemCode::NoTransform, KVProblemCode::NoTransformBecause);
}

KVGamut::Conversion describe(const IccTags& tags, const ColorTable& table, const KVGamut::Settings& settings)
{
    KVGamut::Conversion conversion;
    conversion.table = tableName(table);
    conversion.tableIsFallback = table.isFallback;
    conversion.mediaWhite = mediaWhite(tags);
    if (settings.intent == KVVMRenderAbsoluteColorimetric)
        conversion.adaptation = settings.adaptation;
    if (const auto adapted = whiteAdaptation(tags))
        conversion.adaptationSource = adapted->source;
    conversion.cicp = codePointsOf(tags);
    return conversion;
}

// The black of the device that Little CMS maps to L* 0.
KVGamut::LabPoint mappedBlack(cmsHPROFILE device, int intent)
{
    cmsCIEXYZ black{};
    cmsDetectBlackPoint(&black, device, static_cast<cmsUInt32Number>(intent), 0);
    const Vec3 lab = labOf({black.X, black.Y, black.Z}, d50);
    return {static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b)};
}

Result<Adjusted> adjusted(const IccTags& tags, const ColorTable& table, cmsHPROFILE device,
                          const KVGamut::Settings& settings)
{
    Adjusted result{describe(tags, table, settings), {}};
    if (settings.intent == KVVMRenderAbsoluteColorimetric) {
        auto adjustment = absoluteAdjustment(tags, table, settings.adaptation);
        if (!adjustment)
            return failure(adjustment);
        result.adjustment = *adjustment;
    } else if (settings.blackPointCompensation) {
        if (table.intent != INTENT_ABSOLUTE_COLORIMETRIC)
            result.conversion.mappedBlack = mappedBlack(device, table.intent);
        result.adjustment.clipBlack();
    }
    return result;
}

Result<void> checkSettings(const KVGamut::Settings& settings)
{
    if (const auto checked = checkIntent(settings.intent); !checked)
        return checked;
    const int adaptation = static_cast<int>(settings.adaptation);
    if (adaptation < 0 || adaptation > static_cast<int>(KVGamut::Adaptation::NoneD65))
        return failure(KVProblemCode::UnknownSetting, {QStringLiteral("adaptation %1").arg(adaptation)});
    return {};
}

// The context passes to the transform; if there is none, it stays with the caller, whose profile needs it.
Result<std::unique_ptr<DeviceTransform>> openTransform(std::unique_ptr<CmsContext>& context,
                                                       cmsHPROFILE device, const IccTags& tags,
                                                       const KVGamut::Settings& settings)
{
    if (const auto checked = checkClass(cmsGetDeviceClass(device)); !checked)
        return failure(checked);
    const cmsColorSpaceSignature space = cmsGetColorSpace(device);
    const int channels = static_cast<int>(cmsChannelsOf(space));
    if (const auto checked = checkSpace(space, channels); !checked)
        return failure(checked);
    const bool compensates =
        settings.blackPointCompensation && settings.intent != KVVMRenderAbsoluteColorimetric;
    const auto table = colorTable(tags, settings.intent, compensates);
    if (!table)
        return failure(table);

    constexpr cmsUInt32Number doubles = 0;
    const cmsUInt32Number format = cmsFormatterForColorspaceOfProfile(device, doubles, TRUE);
    auto transform = labTransform(*context, device, format, table->intent, compensates);
    if (context->hasRunOutOfMemory())
        return failure(KVProblemCode::OutOfMemory);
    if (!transform)
        return failure(transform);
    auto rest = adjusted(tags, *table, device, settings);
    if (context->hasRunOutOfMemory())
        return failure(KVProblemCode::OutOfMemory);
    if (!rest)
        return failure(rest);
    auto nodes = tableNodes(device, static_cast<cmsTagSignature>(table->tag));
    if (context->hasRunOutOfMemory())
        return failure(KVProblemCode::OutOfMemory);
    const double fullScale = isInkSpace(T_COLORSPACE(format)) ? 100.0 : 1.0;
    return std::make_unique<CmsDeviceTransform>(std::move(context), std::move(*transform), channels,
                                                describe(space, channels), fullScale, std::move(*rest),
                                                std::move(nodes));
}

Result<std::unique_ptr<DeviceTransform>> readTransform(const QByteArray& profile,
                                                       const KVGamut::Settings& settings, const Task& task)
{
    if (const auto checked = checkSettings(settings); !checked)
        return failure(checked);
    auto context = std::make_unique<CmsContext>();
    if (context->hasRunOutOfMemory())
        return failure(KVProblemCode::OutOfMemory);
    ProfileReader reader(*context, profile, task);
    const CmsProfile device = reader.open();
    if (!device)
        return context->failure(KVProblemCode::NotAProfile, KVProblemCode::UnusableProfile);
    return openTransform(context, device.get(), IccTags(profile), settings);
}

} // namespace

Result<std::unique_ptr<DeviceTransform>>
DeviceTransform::create(const QByteArray& profile, const KVGamut::Settings& settings, const Task& task)
{
    auto transform = readTransform(profile, settings, task);
    if (task.isCancelled()) // the profile could not be read for this reason
        return failure(KVProblemCode::Cancelled);
    return transform;
}

Result<std::unique_ptr<DeviceTransform>>
DeviceTransform::create(const QByteArray& profile, int intent, bool blackPointCompensation, const Task& task)
{
    KVGamut::Settings settings;
    settings.intent = static_cast<KVVMRenderType>(intent);
    settings.blackPointCompensation = blackPointCompensation;
    return create(profile, settings, task);
}

} // namespace velmora
