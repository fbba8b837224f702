// SPDX-License-Identifier: Apache-2.0
#include "Comparing.h"

#include "GamutData.h"
#include <engine/mesh/Compare.h>
#include <engine/mesh/ShareInside.h>

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

using KVGamut::Comparison;
using KVGamut::ComparisonReport;
using KVGamut::ComparisonUncertainty;
using KVGamut::GamutData;

// One of the two gamuts.
struct Side
{
    double volume = 0.0;
    double uncertainty = 0.0; // of the volume
    double missing = 0.0;     // the volume that the surface leaves out; negative if it encloses too much
    double shareInside = 0.0; // of the area of the surface, inside the other one

    // A hull encloses too much where it bridges hollows. Those of inks are mostly outside of displays, and
    // the reverse.
    double missingInside() const { return shareInside * (missing < 0.0 ? 0.5 * missing : missing); }
    double errorInside() const { return errorOfPart(shareInside); }
    double errorOutside() const { return errorOfPart(1.0 - shareInside); }

private:
    // The error of the volume beside a part of the surface. Errors of different parts cancel in the whole, so
    // a part is less certain; and what is missing is not spread quite evenly. test_engine_random_pairs tests
    // the constants.
    double errorOfPart(double share) const
    {
        const double unevenness = missing < 0.0 ? 2.5 : 0.8;
        return std::hypot(uncertainty * std::cbrt(share),
                          unevenness * missing * std::sqrt(share * (1.0 - share)));
    }
};

Side sideOf(const GamutData* data)
{
    if (!data)
        return {};
    const GamutRecord& record = data->record;
    return {record.volume, record.volumeUncertainty, record.volume - data->surfaceVolume, 0.0};
}

// Fills in what is inside. A surface that is inside the other one has all of its area there.
void findShares(const GamutData& first, const GamutData& second, double common, Side& p, Side& q,
                const Task& task)
{
    if (common == first.surfaceVolume) {
        p.shareInside = 1.0;
    } else if (common == second.surfaceVolume) {
        q.shareInside = 1.0;
    } else if (common > 0.0) {
        p.shareInside = shareInside(first.record.mesh, second.index(), task);
        q.shareInside = shareInside(second.record.mesh, first.index(), task);
    }
}

// The error of @p common as a share of the volume of @p whole. Where the surface of the whole is inside, an
// error of it changes both volumes.
double errorOfShare(double common, const Side& whole, const Side& other)
{
    if (whole.volume <= 0.0)
        return 0.0;
    const double share = common / whole.volume;
    const double ofWhole = (1.0 - share) * whole.errorInside() + share * whole.errorOutside();
    return std::min(1.0, std::hypot(ofWhole, other.errorInside()) / whole.volume);
}

Comparison valuesOf(double common, const Side& first, const Side& second)
{
    Comparison c;
    c.volumeFirst = static_cast<float>(first.volume);
    c.volumeSecond = static_cast<float>(second.volume);
    c.intersection = static_cast<float>(common);
    c.unionVolume = static_cast<float>(first.volume + second.volume - common);
    c.secondCovered = second.volume > 0.0 ? static_cast<float>(common / second.volume) : 0.0f;
    c.firstCovered = first.volume > 0.0 ? static_cast<float>(common / first.volume) : 0.0f;
    return c;
}

bool areSame(const GamutData& first, const GamutData& second)
{
    return &first == &second ||
           (first.record.volume == second.record.volume && first.record.mesh.lab == second.record.mesh.lab &&
            first.record.mesh.triangles == second.record.mesh.triangles);
}

ComparisonReport ofSame(const Side& side)
{
    return {.values = valuesOf(side.volume, side, side),
            .uncertainty = {.intersection = side.uncertainty, .unionVolume = side.uncertainty},
            .problem = {}};
}

} // namespace

ComparisonReport compared(const GamutData* first, const GamutData* second, const Task& task)
{
    Side p = sideOf(first), q = sideOf(second);
    if (first && second && areSame(*first, *second))
        return ofSame(p);
    double common = 0.0;
    if (first && second) {
        const double ofSurfaces = intersectionVolume(first->record.mesh, second->record.mesh, task);
        findShares(*first, *second, ofSurfaces, p, q, task);
        if (task.isCancelled())
            return {.values = {}, .uncertainty = {}, .problem = KVProblem{KVProblemCode::Cancelled, {}, {}}};
        common = std::clamp(ofSurfaces + (p.missingInside() + q.missingInside()), 0.0,
                            std::min(p.volume, q.volume));
    }
    const ComparisonUncertainty uncertainty{
        .intersection = std::hypot(p.errorInside(), q.errorInside()),
        .unionVolume = std::hypot(p.errorOutside(), q.errorOutside()),
        .secondCovered = errorOfShare(common, q, p),
        .firstCovered = errorOfShare(common, p, q),
    };
    return {.values = valuesOf(common, p, q), .uncertainty = uncertainty, .problem = {}};
}

} // namespace velmora
