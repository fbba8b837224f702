// SPDX-License-Identifier: Apache-2.0
#include "TableNodes.h"

#include <lcms2_plugin.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace velmora {
namespace {

using Curves = std::vector<const cmsToneCurve*>;

float through(const Curves& curves, float value)
{
    for (const cmsToneCurve* curve : curves)
        value = cmsEvalToneCurveFloat(curve, value);
    return value;
}

// Where the curves reach the nodes of an axis with `count` nodes, and where they turn.
std::vector<float> placesOfNodes(const Curves& curves, std::size_t count)
{
    constexpr int steps = 1024;
    const auto cells = static_cast<float>(count - 1);
    std::vector<float> places{0.0f, 1.0f};
    float before = through(curves, 0.0f) * cells;
    std::optional<bool> rises;
    for (int i = 1; i <= steps; ++i) {
        const float after = through(curves, float(i) / float(steps)) * cells;
        const float low = std::min(before, after), high = std::max(before, after);
        if (!(high > low)) // a flat part, or not a number
            continue;
        if (rises && *rises != (after > before)) // the curve turns between two nodes
            places.push_back(float(i - 1) / float(steps));
        rises = after > before;
        for (float node = std::max(1.0f, std::ceil(low)); node <= std::min(high, cells - 1.0f); ++node)
            places.push_back((float(i - 1) + (node - before) / (after - before)) / float(steps));
        before = after;
    }
    std::sort(places.begin(), places.end());
    constexpr float minDistance = 1e-4f;
    const auto close = [](float p, float q) { return q - p < minDistance; };
    places.erase(std::unique(places.begin(), places.end(), close), places.end());
    places.back() = 1.0f;
    return places;
}

} // namespace

std::vector<std::vector<float>> tableNodes(cmsHPROFILE profile, cmsTagSignature tag)
{
    if (!cmsIsTag(profile, tag))
        return {};
    const auto* pipeline = static_cast<const cmsPipeline*>(cmsReadTag(profile, tag));
    if (!pipeline)
        return {};
    std::vector<Curves> before(cmsPipelineInputChannels(pipeline));
    for (cmsStage* stage = cmsPipelineGetPtrToFirstStage(pipeline); stage; stage = cmsStageNext(stage)) {
        if (cmsStageInputChannels(stage) != before.size())
            return {};
        if (cmsStageType(stage) == cmsSigCurveSetElemType) {
            const auto* data = static_cast<const _cmsStageToneCurvesData*>(cmsStageData(stage));
            for (std::size_t c = 0; c < before.size(); ++c)
                before[c].push_back(data->TheCurves[c]);
        } else if (cmsStageType(stage) == cmsSigCLutElemType) {
            const auto* data = static_cast<const _cmsStageCLutData*>(cmsStageData(stage));
            std::vector<std::vector<float>> nodes;
            for (std::size_t c = 0; c < before.size(); ++c)
                nodes.push_back(placesOfNodes(before[c], data->Params->nSamples[c]));
            return nodes;
        } else if (cmsStageType(stage) != cmsSigIdentityElemType) {
            return {};
        }
    }
    return {};
}

} // namespace velmora
