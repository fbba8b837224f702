// SPDX-License-Identifier: Apache-2.0
#include "BodyLooks.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

namespace {

constexpr double minShare = 0.25;

/// Some hundred points spread over the volume of a gamut: on lines from the middle of its grey axis to the
/// vertices of its surface.
std::vector<KVGamut::LabPoint> pointsInside(const KVGamut::GamutObject& gamut)
{
    constexpr std::size_t wanted = 300;
    const auto& lab = gamut.mesh().lab;
    const KVGamut::LabPoint white = gamut.whitePoint(), black = gamut.blackPoint();
    const KVGamut::LabPoint centre{(white.L + black.L) / 2, (white.a + black.a) / 2, (white.b + black.b) / 2};
    const std::size_t stride = std::max<std::size_t>(1, lab.size() / wanted);
    std::vector<KVGamut::LabPoint> points;
    for (std::size_t v = 0; v < lab.size(); v += stride) {
        // the volume within a share t of the distance is proportional to its cube
        const float t = std::cbrt(static_cast<float>(points.size() % 10) / 10.0f + 0.05f);
        points.push_back({centre.L + t * (lab[v].L - centre.L), centre.a + t * (lab[v].a - centre.a),
                          centre.b + t * (lab[v].b - centre.b)});
    }
    return points;
}

bool hides(const KVGamut::GamutObject& large, const KVGamut::GamutObject& small)
{
    const auto points = pointsInside(small);
    const auto inside = std::count_if(points.begin(), points.end(), [&large](const KVGamut::LabPoint& p) {
        const float lab[3]{p.L, p.a, p.b};
        return large.isInside(lab);
    });
    return !points.empty() && double(inside) >= minShare * double(points.size());
}

} // namespace

QList<BodyLook> bodyLooks(const QList<KVGamut::GamutObject>& gamuts)
{
    QList<qsizetype> bySize(gamuts.size());
    std::iota(bySize.begin(), bySize.end(), 0);
    std::stable_sort(bySize.begin(), bySize.end(),
                     [&](qsizetype p, qsizetype q) { return gamuts[p].volume() < gamuts[q].volume(); });
    QList<BodyLook> looks(gamuts.size(), BodyLook::Solid);
    for (qsizetype i = 0; i < bySize.size(); ++i) {
        BodyLook& look = looks[bySize[i]];
        for (qsizetype j = 0; j < i && look != BodyLook::Lines; ++j)
            if (hides(gamuts[bySize[i]], gamuts[bySize[j]]))
                look = looks[bySize[j]] == BodyLook::Solid ? BodyLook::Translucent : BodyLook::Lines;
    }
    return looks;
}
