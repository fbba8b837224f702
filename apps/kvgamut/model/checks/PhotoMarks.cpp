// SPDX-License-Identifier: Apache-2.0
#include "PhotoMarks.h"

#include "ZoneFinder.h"
#include "model/points/MeasuredPoint.h"

#include <algorithm>
#include <map>

namespace {

/// The grey of @p lab, lighter.
QRgb keptColor(const KVGamut::LabPoint& lab)
{
    constexpr float lightest = 96.0f, share = 0.6f;
    const float L = std::clamp(lab.L, 0.0f, 100.0f);
    return screenColor({lightest - share * (100.0f - L), 0.0f, 0.0f}).rgb();
}

} // namespace

Result<QImage> PhotoMarks::mask(PhotoFile& photo, const PhotoReading& reading,
                                const KVGamut::GamutObject& gamut, float tolerance,
                                const KVCompletionProtocolPtr& task)
{
    ZoneFinder zones(gamut, tolerance);
    const QRgb lost = sideColor(Side::Outside).rgb();
    const auto pixelOf = [&](const KVGamut::LabPoint& lab) -> PhotoPixel {
        if (zones.sideOfColour(lab) == Side::Outside)
            return {lost, 1.0f};
        return {keptColor(lab), 0.0f};
    };
    return photoPicture(photo, reading, pixelOf, task);
}

Result<QImage> PhotoMarks::map(PhotoFile& photo, const PhotoReading& reading,
                               const KVGamut::GamutObject& gamut, const LossScale& scale,
                               const KVCompletionProtocolPtr& task)
{
    constexpr float cellEdge = 1.0f;
    std::map<LabPlace, float> distances; // of the middle of the cells
    const auto exactOf = [&gamut](const KVGamut::LabPoint& lab) {
        return gamut.nearestByCiede2000(std::array{lab.L, lab.a, lab.b}.data()).distance;
    };
    const auto distanceOf = [&](const KVGamut::LabPoint& lab) {
        const LabPlace place = labPlace(lab, cellEdge);
        auto known = distances.find(place);
        if (known == distances.end())
            known = distances.emplace(place, exactOf(labCentre(place, cellEdge))).first;
        const bool isNearThreshold = std::abs(known->second - scale.threshold) < cellEdge;
        return isNearThreshold ? exactOf(lab) : known->second;
    };
    const auto pixelOf = [&](const KVGamut::LabPoint& lab) -> PhotoPixel {
        const float distance = distanceOf(lab);
        if (distance <= scale.threshold)
            return {keptColor(lab), 0.0f};
        return {scale.colorOf(distance).rgb(), distance};
    };
    return photoPicture(photo, reading, pixelOf, task);
}
