// SPDX-License-Identifier: Apache-2.0
#include "LossMap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace {

constexpr QRgb insideColor = 0xffd8d8d8;
constexpr std::array<QRgb, 5> lossColors{0xffffd040, 0xfff08020, 0xffd03060, 0xff8a1a90, 0xff380460};

// Evenly spaced along the colours; share from 0 to 1.
QColor mixedColor(double share)
{
    const double place = share * double(lossColors.size() - 1);
    const auto from = std::min(static_cast<std::size_t>(place), lossColors.size() - 2);
    const double rest = place - double(from);
    const auto channel = [&](int (*of)(QRgb)) {
        const int p = of(lossColors[from]), q = of(lossColors[from + 1]);
        return static_cast<int>(std::lround(p + rest * (q - p)));
    };
    return QColor(channel(qRed), channel(qGreen), channel(qBlue));
}

bool isCancelled(KVCompletionProtocolPtr* protocol)
{
    return protocol && *protocol && (*protocol)->isCancelled();
}

} // namespace

std::vector<float> lossOf(std::span<const KVGamut::LabPoint> colors, const KVGamut::GamutObject& other,
                          ColourMetric metric, KVCompletionProtocolPtr* protocol)
{
    std::vector<KVGamut::LabPoint> outside;
    for (const KVGamut::LabPoint& lab : colors)
        if (!other.isInside(&lab.L))
            outside.push_back(lab);
    std::vector<KVGamut::Nearest> nearest;
    if (metric == ColourMetric::Ciede2000)
        nearest = other.nearestByCiede2000(outside, protocol);
    else
        for (std::size_t i = 0; i < outside.size() && !isCancelled(protocol); ++i)
            nearest.push_back(other.nearest(&outside[i].L));
    if (nearest.size() < outside.size() || isCancelled(protocol))
        return {};

    std::vector<float> loss;
    loss.reserve(colors.size());
    auto next = nearest.begin();
    for (const KVGamut::LabPoint& lab : colors)
        loss.push_back(other.isInside(&lab.L) ? 0.0f : (next++)->distance);
    return loss;
}

std::vector<float> lossOnSurface(const KVGamut::Mesh& surface, const KVGamut::GamutObject& other,
                                 ColourMetric metric, KVCompletionProtocolPtr* protocol)
{
    std::vector<float> loss = lossOf(surface.lab, other, metric, protocol);
    if (loss.empty())
        return loss;
    std::set<std::size_t> beside;
    for (const KVGamut::Mesh::Triangle& triangle : surface.triangles) {
        const auto isOutside = [&loss](int vertex) { return loss[static_cast<std::size_t>(vertex)] > 0.0f; };
        if (std::any_of(triangle.begin(), triangle.end(), isOutside))
            for (const int vertex : triangle)
                if (!isOutside(vertex))
                    beside.insert(static_cast<std::size_t>(vertex));
    }
    for (const std::size_t vertex : beside) {
        if (isCancelled(protocol))
            return {};
        const float* lab = &surface.lab[vertex].L;
        loss[vertex] = metric == ColourMetric::Ciede2000 ? other.nearestByCiede2000(lab).distance
                                                         : other.nearest(lab).distance;
    }
    return loss;
}

LossScale LossScale::forDistances(const std::vector<float>& distances, float threshold)
{
    const float most = distances.empty() ? 0.0f : *std::max_element(distances.begin(), distances.end());
    return {threshold, std::max(std::ceil(most), threshold + 1.0f)};
}

QColor LossScale::colorOf(float distance) const
{
    if (!(distance > threshold))
        return QColor(insideColor);
    return mixedColor(double(std::min(1.0f, (distance - threshold) / (largest - threshold))));
}

QList<std::pair<float, QRgb>> LossScale::stops() const
{
    QList<std::pair<float, QRgb>> stops{{threshold, insideColor}};
    constexpr auto steps = static_cast<float>(lossColors.size() - 1);
    for (std::size_t i = 0; i < lossColors.size(); ++i)
        stops.append({threshold + static_cast<float>(i) / steps * (largest - threshold), lossColors[i]});
    return stops;
}

QList<QColor> LossScale::colors() const
{
    constexpr int count = 100;
    QList<QColor> colors;
    for (int i = 0; i < count; ++i)
        colors.append(colorOf(largest * (float(i) + 0.5f) / float(count)));
    return colors;
}
