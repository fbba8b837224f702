// SPDX-License-Identifier: Apache-2.0
#include "ProfileMap.h"

#include <lcms2_plugin.h>

#include <memory>

namespace kvdevices {
namespace {

constexpr std::size_t matrixSteps = 32;
constexpr std::size_t blockColours = 65536;

using CurvePtr = std::shared_ptr<cmsToneCurve>;

std::vector<CurvePtr> curvesOf(const cmsStage* stage)
{
    const auto* data = static_cast<const _cmsStageToneCurvesData*>(cmsStageData(stage));
    std::vector<CurvePtr> curves;
    for (cmsUInt32Number i = 0; i < data->nCurves; ++i)
        curves.emplace_back(cmsDupToneCurve(data->TheCurves[i]), cmsFreeToneCurve);
    return curves;
}

bool areLinear(const std::vector<CurvePtr>& curves)
{
    return std::all_of(curves.begin(), curves.end(), [](const CurvePtr& curve) {
        for (int i = 0; i <= 64; ++i)
            if (std::abs(double(cmsEvalToneCurveFloat(curve.get(), float(i) / 64.0f)) - i / 64.0) > 1e-4)
                return false;
        return true;
    });
}

// The smallest device value at which a monotone curve reaches a value.
double deviceAt(const std::function<double(double)>& curve, double value)
{
    double low = 0.0, high = 1.0;
    if (curve(low) >= value)
        return low;
    for (int i = 0; i < 40; ++i) {
        const double middle = 0.5 * (low + high);
        (curve(middle) < value ? low : high) = middle;
    }
    return high;
}

std::vector<double> evenNodes(std::size_t count)
{
    std::vector<double> nodes;
    for (std::size_t i = 0; i < count; ++i)
        nodes.push_back(double(i) / double(count - 1));
    return nodes;
}

cmsTagSignature tableTag(cmsHPROFILE profile)
{
    for (const cmsTagSignature tag : {cmsSigDToB1Tag, cmsSigAToB1Tag, cmsSigAToB0Tag})
        if (cmsIsTag(profile, tag))
            return tag;
    return {};
}

} // namespace

ProfileMap::ProfileMap(const QByteArray& bytes) : m_transform(bytes)
{
    const cmsHPROFILE profile =
        cmsOpenProfileFromMem(bytes.constData(), static_cast<cmsUInt32Number>(bytes.size()));
    m_bends = cmsGetPCS(profile) == cmsSigXYZData;
    if (const cmsTagSignature tag = tableTag(profile))
        readTable(profile, tag);
    else
        readMatrix(profile);
    cmsCloseProfile(profile);
}

void ProfileMap::readTable(cmsHPROFILE profile, cmsTagSignature tag)
{
    const auto* pipeline = static_cast<const cmsPipeline*>(cmsReadTag(profile, tag));
    std::vector<CurvePtr> curves(channels());
    bool behindTable = false;
    for (const cmsStage* stage = cmsPipelineGetPtrToFirstStage(pipeline); stage != nullptr;
         stage = cmsStageNext(stage)) {
        if (cmsStageType(stage) == cmsSigCurveSetElemType && !behindTable)
            curves = curvesOf(stage);
        else if (cmsStageType(stage) == cmsSigCurveSetElemType)
            m_bends = m_bends || !areLinear(curvesOf(stage));
        if (cmsStageType(stage) != cmsSigCLutElemType)
            continue;
        behindTable = true;
        const auto* table = static_cast<const _cmsStageCLutData*>(cmsStageData(stage));
        for (std::size_t c = 0; c < channels(); ++c)
            addAxis(
                [curve = curves[c]](double v) {
                    return curve ? double(cmsEvalToneCurveFloat(curve.get(), float(v))) : v;
                },
                evenNodes(table->Params->nSamples[c]));
    }
}

void ProfileMap::readMatrix(cmsHPROFILE profile)
{
    std::vector<double> nodes = evenNodes(matrixSteps + 1);
    for (double& node : nodes)
        node *= node * node; // L* grows with the cube root
    for (const cmsTagSignature tag : {cmsSigRedTRCTag, cmsSigGreenTRCTag, cmsSigBlueTRCTag}) {
        const CurvePtr curve(cmsDupToneCurve(static_cast<const cmsToneCurve*>(cmsReadTag(profile, tag))),
                             cmsFreeToneCurve);
        addAxis([curve](double v) { return double(cmsEvalToneCurveFloat(curve.get(), float(v))); }, nodes);
    }
}

void ProfileMap::addAxis(const Curve& curve, std::vector<double> nodes)
{
    const double low = std::clamp(curve(0.0), 0.0, 1.0), high = std::clamp(curve(1.0), 0.0, 1.0);
    std::vector<double> reached{low};
    for (double node : nodes)
        if (node > low + 1e-6 && node < high - 1e-6)
            reached.push_back(node);
    reached.push_back(high);
    m_nodes.push_back(std::move(reached));
    m_inverse.push_back([curve](double value) { return deviceAt(curve, value); });
}

std::size_t ProfileMap::minSteps() const
{
    std::size_t steps = m_nodes.front().size() - 1;
    for (const auto& nodes : m_nodes)
        steps = std::min(steps, nodes.size() - 1);
    return steps;
}

std::vector<double> ProfileMap::positions(std::size_t channel, std::size_t parts) const
{
    const std::vector<double>& nodes = m_nodes[channel];
    std::vector<double> device;
    for (std::size_t i = 0; i + 1 < nodes.size(); ++i)
        for (std::size_t p = 0; p < parts; ++p)
            device.push_back(
                m_inverse[channel](nodes[i] + (nodes[i + 1] - nodes[i]) * double(p) / double(parts)));
    device.push_back(m_inverse[channel](nodes.back()));
    return device;
}

GridImage ProfileMap::gridImage(std::size_t parts) const
{
    const std::size_t n = channels();
    GridImage image;
    std::vector<std::vector<double>> axes;
    std::size_t total = 1;
    for (std::size_t c = 0; c < n; ++c) {
        axes.push_back(positions(c, parts));
        image.nodes.push_back(axes.back().size());
        total *= axes.back().size();
    }
    image.lab.reserve(total);
    std::vector<double> device;
    for (std::size_t i = 0; i < total; ++i) {
        device.resize(device.size() + n);
        for (std::size_t c = n, rest = i; c-- > 0; rest /= axes[c].size())
            device[device.size() - n + c] = axes[c][rest % axes[c].size()];
        if (device.size() == blockColours * n || i + 1 == total) {
            const auto lab = m_transform(std::move(device));
            image.lab.insert(image.lab.end(), lab.begin(), lab.end());
            device.clear();
        }
    }
    return image;
}

} // namespace kvdevices
