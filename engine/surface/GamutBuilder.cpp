// SPDX-License-Identifier: Apache-2.0
#include "GamutBuilder.h"

#include "DeviceCubeMesh.h"
#include "DeviceSolid.h"
#include "FoldCheck.h"
#include "LatticeSurface.h"
#include "RadialHull.h"
#include "ReachedVolume.h"
#include "Refinement.h"
#include <engine/mesh/Columns.h>
#include <engine/mesh/MeshVolume.h>
#include <engine/mesh/SelfIntersection.h>

#include <algorithm>
#include <optional>

namespace velmora {
namespace {

// Above this share of reversed volume the image of the device cube's surface does not bound the gamut. Real
// RGB spaces have none; encodings with clipped corners have a few percent.
constexpr double maxFoldShare = 0.001;
// Share of the volume in which a surface's winding number may be neither 0 nor 1.
constexpr double maxInvalidShare = 0.001;
// Allowed relative difference between the volume of a hull and that of the device solid, which is measured
// on a coarser grid.
constexpr double concavityTolerance = 0.02;
// Faces of a lattice surface with the default grid or a finer one. With more faces less is cut off the edges
// of the solid.
constexpr double latticeFaces = 100'000.0;
constexpr int foldCheckNodes = 17;
// Allowed relative difference of the volumes of two hulls on different grids, for solids that cannot be
// checked in another way.
constexpr double hullTolerance = 0.1;
// From this number of channels on there are too many two-dimensional faces to sample all of them.
constexpr int manyChannels = 7;

DeviceNodes thinned(const DeviceNodes& nodes, std::size_t count)
{
    DeviceNodes result;
    for (const auto& axis : nodes)
        result.push_back(thinnedAxis(axis, count));
    return result;
}

Result<WindingCheck> windingOf(const Mesh& mesh, const Task& task)
{
    const LatticeBox box = boundsOf(latticePoints(mesh, task));
    const double extent = std::max(box.high.a - box.low.a, box.high.b - box.low.b) / latticeScale;
    const double pitch = std::min(2.0, std::max(extent, 0.1) / 64.0);
    const ColumnGrid grid = columnsOver(box, pitch);
    return castColumns(mesh, grid, task).map([&grid](const ColumnCrossings& columns) {
        return checkWinding(columns, grid);
    });
}

Result<bool> hasIntersections(const Mesh& mesh, const Task& task)
{
    return countIntersections(mesh, 1, task).map([](std::size_t count) { return count > 0; });
}

enum class CoincidentSheets
{
    Allowed,
    Refused
};

// Coincident sheets do not intersect, and where three of them coincide the winding number is still 0 or 1. A
// refined surface is therefore checked for coincident sheets as well.
Result<bool> isSimple(const Mesh& mesh, CoincidentSheets coincident, const Task& task)
{
    const auto check = windingOf(mesh, task);
    if (!check)
        return failure(check);
    if (check->invalidVolume > maxInvalidShare * check->insideVolume)
        return false;
    if (coincident == CoincidentSheets::Refused &&
        check->coincidentArea > maxInvalidShare * check->coveredArea)
        return false;
    return hasIntersections(mesh, task).map([](bool intersects) { return !intersects; });
}

void faceOutwards(Mesh& mesh, const Task& task)
{
    if (signedVolume(mesh, task) < 0.0)
        flip(mesh, task);
}

class Builder
{
public:
    Builder(const DeviceTransform& transform, const GamutRequest& request, const Task& task)
        : m_transform(transform), m_request(request), m_task(task)
    {
    }

    Result<GamutRecord> run()
    {
        m_record.gridPoints = effectiveGridPoints(m_request.gridPoints, m_transform.channels());
        for (const auto step : {&Builder::findSurface, &Builder::refineSurface, &Builder::checkRecord,
                                &Builder::findEndPoints, &Builder::findPrimaries})
            if (const auto done = (this->*step)(); !done)
                return failure(done);
        return std::move(m_record);
    }

private:
    Result<void> findSurface()
    {
        auto nodes = equalisedNodes(m_transform, m_record.gridPoints, minEvenShare, m_task.part(0.0, 0.1));
        if (!nodes)
            return failure(nodes);
        m_nodes = std::move(*nodes);
        const auto found = m_transform.channels() == 3 ? directMesh() : Result<bool>(false);
        if (!found)
            return failure(found);
        return *found ? Result<void>() : hullMesh();
    }

    // @return false if another method must be used
    Result<bool> directMesh()
    {
        const auto folds = checkFolds(m_transform, thinned(m_nodes, foldCheckNodes), m_task.part(0.1, 0.2));
        if (!folds)
            return failure(folds);
        m_record.foldShare = folds->foldShare;
        if (folds->sweptVolume < minVolume)
            return failure(KVProblemCode::TooSmall);
        auto mesh = deviceCubeMesh(m_transform, m_nodes, m_task.part(0.25, 0.4));
        if (!mesh)
            return failure(mesh);
        faceOutwards(*mesh, m_task);
        if (folds->foldShare > maxFoldShare)
            return false;
        auto simple = isSimple(*mesh, CoincidentSheets::Allowed, m_task);
        if (!simple || !*simple)
            return simple;
        m_task.setProgress(0.6);
        const std::size_t nodes = m_nodes.front().size();
        const Mesh coarse = thinnedCubeMesh(*mesh, nodes, halfOf(nodes), m_task);
        take(std::move(*mesh), coarse, KVGamut::Method::DeviceMesh);
        return true;
    }

    // Reduces the number of nodes if the requested ones would need too many samples. With three channels the
    // positions are chosen anew, because a hull is then only needed for a map that folds.
    Result<void> chooseHullNodes()
    {
        const int channels = m_transform.channels();
        int count = m_record.gridPoints;
        if (channels >= manyChannels)
            count = nodesForOutermostFaces(channels, count);
        while (channels < manyChannels && hullSampleCount(channels, count) > maxHullSamples(channels))
            --count;
        if (count == m_record.gridPoints && channels != 3)
            return {};
        m_record.gridPoints = count;
        const double evenShare = channels == 3 ? evenShareOfFolds : minEvenShare;
        auto nodes = equalisedNodes(m_transform, count, evenShare, m_task.part(0.2, 0.25));
        if (!nodes)
            return failure(nodes);
        m_nodes = std::move(*nodes);
        return {};
    }

    Result<void> hullMesh()
    {
        if (auto chosen = chooseHullNodes(); !chosen)
            return chosen;
        auto mesh = radialHull(m_transform, m_nodes, m_task.part(0.25, 0.5));
        if (!mesh)
            return failure(mesh);
        const auto starShaped = isStarShaped(*mesh);
        if (!starShaped)
            return failure(starShaped);
        if (!*starShaped)
            return latticeMesh();
        const auto coarse = radialHull(m_transform, halved(), m_task.part(0.55, 0.7));
        if (!coarse)
            return failure(coarse);
        if (m_transform.channels() > maxSolidChannels)
            if (auto filled = checkFilled(*mesh, *coarse); !filled)
                return filled;
        take(std::move(*mesh), *coarse, KVGamut::Method::RadialHull);
        return {};
    }

    // For more channels than DeviceSolid supports: checks that the hull contains only device colours, and all
    // of them as far as a coarser grid can show.
    Result<void> checkFilled(const Mesh& hull, const Mesh& coarse)
    {
        const auto reached = reachedVolume(hull, m_transform, m_task.part(0.7, 0.75));
        if (!reached)
            return failure(reached);
        const double volume = signedVolume(hull);
        if (std::abs(*reached - volume) > concavityTolerance * volume ||
            std::abs(signedVolume(coarse) - volume) > hullTolerance * volume)
            return failure(KVProblemCode::UnresolvedConcavity);
        return {};
    }

    // The radial hull of a solid that is not star-shaped is a surface, too, but it encloses too much or
    // self-intersects.
    Result<bool> isStarShaped(const Mesh& hull)
    {
        const int channels = m_transform.channels();
        if (channels > maxSolidChannels) {
            auto simple = isSimple(hull, CoincidentSheets::Allowed, m_task);
            if (simple && !*simple)
                return failure(KVProblemCode::SurfaceSelfIntersects);
            return simple;
        }
        constexpr std::array<std::size_t, 4> fromThree{17, 9, 7, 5};
        const DeviceNodes nodes = thinned(m_nodes, fromThree[static_cast<std::size_t>(channels - 3)]);
        const auto solid = deviceSolid(m_transform, nodes, m_task.part(0.5, 0.55));
        if (!solid)
            return failure(solid);
        const auto covered = coveredVolume(*solid, m_castBudget, m_task);
        if (!covered)
            return failure(covered);
        if (*covered < minVolume)
            return failure(KVProblemCode::TooSmall);
        if (std::abs(signedVolume(hull, m_task) - *covered) > concavityTolerance * *covered)
            return false;
        return isSimple(hull, CoincidentSheets::Allowed, m_task);
    }

    Result<void> latticeMesh()
    {
        m_record.gridPoints = effectiveGridPoints(m_request.gridPoints, m_transform.channels());
        auto nodes = solidNodes(m_transform, m_record.gridPoints, m_task.part(0.55, 0.56));
        if (!nodes)
            return failure(nodes);
        m_nodes = std::move(*nodes);
        const auto solid = deviceSolid(m_transform, m_nodes, m_task.part(0.56, 0.6));
        if (!solid)
            return failure(solid);
        const auto half = deviceSolid(m_transform, halved(), m_task.part(0.6, 0.62));
        if (!half)
            return failure(half);
        return latticeMesh(*solid, *half);
    }

    Result<void> latticeMesh(const DeviceSolid& solid, const DeviceSolid& half)
    {
        const double fineness = double(m_record.gridPoints) / effectiveGridPoints(-1, m_transform.channels());
        const double faces = latticeFaces * std::min(1.0, fineness * fineness);
        const auto pitch = pitchForFaces(half, faces, m_castBudget, m_task.part(0.62, 0.64));
        if (!pitch)
            return failure(pitch);
        auto mesh = latticeSurface(solid, *pitch, m_castBudget, m_task.part(0.64, 0.72));
        if (!mesh)
            return failure(mesh);
        const auto coarse = latticeSurface(half, 2.0 * *pitch, m_castBudget, m_task.part(0.72, 0.75));
        if (!coarse)
            return failure(coarse);
        removeTinyComponents(*mesh, m_task);
        const auto intersects = hasIntersections(*mesh, m_task);
        if (!intersects)
            return failure(intersects);
        if (*intersects)
            return failure(KVProblemCode::SurfaceSelfIntersects);
        take(std::move(*mesh), *coarse, KVGamut::Method::LatticeSurface);
        return {};
    }

    // Refines as often as requested, but not if the surface would then self-intersect: the device colour
    // midway between two vertices may lie deep inside the gamut. A lattice surface is not refined: its faces
    // are small, and its vertices have only approximate device colours.
    Result<void> refineSurface()
    {
        const double rounds = m_request.refinements;
        for (int i = 0; i < m_request.refinements; ++i) {
            if (m_record.method == KVGamut::Method::LatticeSurface)
                return {};
            if (m_task.isCancelled())
                return failure(KVProblemCode::Cancelled);
            Mesh finer = m_record.mesh;
            const Task task = m_task.part(0.75 + 0.05 * i / rounds, 0.75 + 0.05 * (i + 1) / rounds);
            auto refined = refine(finer, m_transform, std::max(0.0, m_request.maxEdge), 1, task);
            if (!refined)
                return refined;
            if (finer.triangles.size() == m_record.mesh.triangles.size())
                return {};
            auto simple = isSimple(finer, CoincidentSheets::Refused, m_task);
            if (!simple)
                return failure(simple);
            if (!*simple)
                return {};
            m_record.mesh = std::move(finer);
        }
        return {};
    }

    Result<void> checkRecord()
    {
        m_task.setProgress(0.8);
        auto checked = checkSurface(m_record.mesh, m_task);
        if (checked)
            m_task.setProgress(0.9);
        return checked;
    }

    static std::size_t halfOf(std::size_t nodes) { return std::max<std::size_t>(2, (nodes + 1) / 2); }

    DeviceNodes halved() const
    {
        DeviceNodes nodes;
        for (const auto& axis : m_nodes)
            nodes.push_back(thinnedAxis(axis, halfOf(axis.size())));
        return nodes;
    }

    // The error is proportional to the square of the step, so that of the finer surface is a third of the
    // difference between both (Richardson extrapolation). Half of it allows for deviations from that law.
    void take(Mesh mesh, const Mesh& coarse, KVGamut::Method method)
    {
        const double volume = signedVolume(mesh, m_task);
        const double common = commonError(method);
        m_record.volumeUncertainty =
            0.5 * std::abs(volume - std::abs(signedVolume(coarse, m_task))) + common * volume;
        m_record.mesh = std::move(mesh);
        m_record.method = method;
    }

    // The relative error that both surfaces may have in common: a hull may pass through samples just below
    // the true surface, the ridge of a fold may lie between nodes, and a lattice cuts off a solid's edges.
    double commonError(KVGamut::Method method) const
    {
        constexpr double ofMesh = 1e-6, ofHull = 5e-4, ofLattice = 1e-3, ofFold = 4.0;
        if (method == KVGamut::Method::DeviceMesh)
            return ofMesh;
        if (method == KVGamut::Method::LatticeSurface)
            return ofLattice;
        const double steps = double(m_nodes.front().size()) - 1.0;
        return m_transform.channels() == 3 ? ofHull + ofFold / (steps * steps) : ofHull;
    }

    Result<void> findEndPoints()
    {
        std::vector<float> device = m_transform.white();
        for (const auto& colour : {m_transform.black(), m_transform.origin()})
            device.insert(device.end(), colour.begin(), colour.end());
        const auto lab = m_transform.toLab(device, m_task.part(0.9, 0.92));
        if (!lab)
            return failure(lab);
        m_record.white = snapped((*lab)[0]);
        m_record.black = snapped((*lab)[1]);
        m_record.origin = snapped((*lab)[2]);
        return {};
    }

    Result<void> findPrimaries()
    {
        m_record.decorated = m_request.withDecoration;
        if (!m_request.withDecoration || m_transform.kind() == ChannelKind::Coordinates)
            return {};
        const auto channels = static_cast<std::size_t>(m_transform.channels());
        for (std::size_t channel = 0; channel < channels; ++channel) {
            auto ramp = primary(channel, double(channel + 1) / double(channels));
            if (!ramp)
                return failure(ramp);
            m_record.primaries.push_back(std::move(*ramp));
        }
        return {};
    }

    Result<Ramp> primary(std::size_t channel, double shareDone)
    {
        const std::vector<float> origin = m_transform.origin();
        const auto steps =
            equalisedRamp(m_transform, origin, channel, m_record.gridPoints, m_task.part(0.92, 0.93));
        if (!steps)
            return failure(steps);
        std::vector<float> device;
        for (std::size_t i = 1; i < steps->size(); ++i) {
            device.insert(device.end(), origin.begin(), origin.end());
            device[device.size() - origin.size() + channel] = (*steps)[i];
        }
        const auto lab = m_transform.toLab(device, m_task.part(0.93, 0.93 + 0.06 * shareDone));
        if (!lab)
            return failure(lab);
        Ramp ramp;
        for (const Vec3& p : *lab)
            ramp.push_back(snapped(p));
        return ramp;
    }

    const DeviceTransform& m_transform;
    const GamutRequest& m_request;
    const Task& m_task;
    GamutRecord m_record;
    DeviceNodes m_nodes;
    CastBudget m_castBudget;
};

} // namespace

int effectiveGridPoints(int requested, int channels)
{
    if (requested < 2)
        return channels >= 5 ? 17 : 33;
    return std::clamp(requested, 3, 129);
}

Result<GamutRecord> buildGamut(const DeviceTransform& transform, const GamutRequest& request,
                               const Task& task)
{
    auto record = Builder(transform, request, task).run();
    if (task.isCancelled()) // a step that is not complete may fail for some other reason
        return failure(KVProblemCode::Cancelled);
    return record;
}

} // namespace velmora
