// SPDX-License-Identifier: Apache-2.0
#include "PhotoCheck.h"

#include "ZoneFinder.h"
#include "model/inputs/InputGate.h"
#include "model/jobs/Jobs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>

namespace {

constexpr float differenceEdge = 1.0f; ///< of the cells for which differences are computed

/// A number of pixels with the same difference.
struct Weighted
{
    double difference = 0.0;
    qint64 count = 0;
};

PixelDifferences summary(std::vector<Weighted> outside, qint64 pixels)
{
    PixelDifferences result;
    std::sort(outside.begin(), outside.end(),
              [](const Weighted& p, const Weighted& q) { return p.difference > q.difference; });
    const double fivePercent = 0.05 * static_cast<double>(pixels);
    double above = 0.0;
    for (const Weighted& part : outside) {
        result.max = std::max(result.max, part.difference);
        result.mean += part.difference * static_cast<double>(part.count) / static_cast<double>(pixels);
        above += static_cast<double>(part.count);
        if (result.p95 == 0.0 && above > fivePercent)
            result.p95 = part.difference;
    }
    return result;
}

/// The cells outside the gamut, gathered in larger ones.
std::vector<LabCells::Cell> gathered(const std::vector<LabCells::Cell>& cells)
{
    struct Sum
    {
        std::array<double, 3> lab{};
        double count = 0.0;
    };
    std::map<LabPlace, Sum> sums;
    for (const auto& [lab, count] : cells) {
        Sum& sum = sums[labPlace(lab, differenceEdge)];
        const std::array<float, 3> values{lab.L, lab.a, lab.b};
        for (std::size_t i = 0; i < 3; ++i)
            sum.lab[i] += static_cast<double>(values[i]) * count;
        sum.count += count;
    }
    std::vector<LabCells::Cell> result;
    result.reserve(sums.size());
    for (const auto& [place, sum] : sums) {
        const auto mean = [&sum = sum](std::size_t i) { return static_cast<float>(sum.lab[i] / sum.count); };
        result.push_back({{mean(0), mean(1), mean(2)}, static_cast<std::uint32_t>(sum.count)});
    }
    return result;
}

using DifferenceOf = std::function<double(const KVGamut::LabPoint&)>;

/// The largest difference of a cell, among those that can have it by the difference of their larger cell.
double largest(const std::vector<LabCells::Cell>& cells, const std::vector<LabCells::Cell>& larger,
               const std::vector<Weighted>& differences, const DifferenceOf& differenceOf)
{
    double max = 0.0;
    for (const Weighted& part : differences)
        max = std::max(max, part.difference);
    constexpr double margin = 1.0; // more than two colours of a larger cell can differ by, nearly everywhere
    constexpr std::size_t maxTried = 2000;
    std::map<LabPlace, bool> isNear;
    for (std::size_t i = 0; i < larger.size(); ++i)
        if (differences[i].difference > max - margin)
            isNear[labPlace(larger[i].lab, differenceEdge)] = true;
    std::size_t tried = 0;
    for (const auto& [lab, count] : cells)
        if (isNear.contains(labPlace(lab, differenceEdge)) && tried++ < maxTried)
            max = std::max(max, differenceOf(lab));
    return max;
}

/// On how many threads a function may be called at the same time.
enum class Threads
{
    One,
    All,
};

Result<PixelDifferences> differencesOf(const std::vector<LabCells::Cell>& outside,
                                       const std::vector<LabCells::Cell>& larger, qint64 pixels,
                                       const DifferenceOf& differenceOf, Threads threads,
                                       const KVCompletionProtocolPtr& task)
{
    constexpr qsizetype colorsInPart = 64;
    const auto count = static_cast<qsizetype>(larger.size());
    std::vector<Weighted> differences(larger.size());
    const auto part = [&](qsizetype first, qsizetype end) {
        for (auto i = static_cast<std::size_t>(first); i < static_cast<std::size_t>(end); ++i) {
            if (InputGate::isCancelled(task))
                return;
            differences[i] = {std::max(0.0, differenceOf(larger[i].lab)), larger[i].count};
        }
    };
    const auto progress = [&task](float share) {
        if (task)
            task->setProgress(share);
    };
    if (threads == Threads::All)
        Jobs::runInParts(count, colorsInPart, part, progress);
    else
        part(0, count);
    if (InputGate::isCancelled(task))
        return failure(KVProblemCode::Cancelled);
    PixelDifferences result = summary(differences, pixels);
    result.max = largest(outside, larger, differences, differenceOf);
    return result;
}

} // namespace

Result<PhotoCheck> checkPhoto(const KVGamut::GamutObject& gamut, const PhotoColors& colors, float tolerance,
                              const DeviceRoundTrip* device, const KVCompletionProtocolPtr& task)
{
    PhotoCheck check;
    ZoneFinder zones(gamut, tolerance), sides(gamut, 0.0f);
    std::vector<LabCells::Cell> outside; // with a distance above 0, on the edge, too
    for (const LabCells::Cell& cell : colors.cells) {
        if (InputGate::isCancelled(task))
            return failure(KVProblemCode::Cancelled);
        const Side side = zones.sideOfColour(cell.lab);
        double& share = side == Side::Inside ? check.inside : side == Side::Edge ? check.edge : check.outside;
        share += static_cast<double>(cell.count) / static_cast<double>(colors.pixels);
        if (side == Side::Outside || (side == Side::Edge && sides.sideOfColour(cell.lab) == Side::Outside))
            outside.push_back(cell);
    }
    const std::vector<LabCells::Cell> larger = gathered(outside);
    const auto de76 = [&gamut](const KVGamut::LabPoint& lab) {
        const std::array<float, 3> values{lab.L, lab.a, lab.b};
        return static_cast<double>(gamut.nearest(values.data()).distance);
    };
    const auto de00 = [&gamut](const KVGamut::LabPoint& lab) {
        const std::array<float, 3> values{lab.L, lab.a, lab.b};
        return static_cast<double>(gamut.nearestByCiede2000(values.data()).distance);
    };
    const auto byDe76 = differencesOf(outside, larger, colors.pixels, de76, Threads::All, {});
    const auto byDe00 = differencesOf(outside, larger, colors.pixels, de00, Threads::All, task);
    if (!byDe00)
        return failure(byDe00.error());
    check.de76 = byDe76.value();
    check.de00 = *byDe00;
    if (!device)
        return check;
    const auto made = [device](const KVGamut::LabPoint& lab) {
        return KVGamut::ciede2000(lab, device->made(lab).lab);
    };
    const auto byMade =
        differencesOf(colors.cells, gathered(colors.cells), colors.pixels, made, Threads::One, task);
    if (!byMade)
        return failure(byMade.error());
    check.made = *byMade;
    return check;
}
