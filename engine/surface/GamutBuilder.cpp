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
#include <engine/mesh/SelfCrossing.h>

#include <algorithm>
#include <optional>

namespace velmora {
namespace {

// Share of the volume that may run backwards before the image of the device cube's surface no longer
// bounds the gamut. Real RGB spaces have none at all, encodings with clipped corners some percent.
constexpr double largestFoldShare = 0.001;
// Share of the volume that a surface may wind around other than once.
constexpr double largestInvalidShare = 0.001;
// How far a hull's volume may be off what the device covers, which is measured on a coarser grid.
constexpr double concaveSlack = 0.02;
// Faces of a lattice surface from the default grid on: what it cuts off the solid's edges falls with them.
constexpr double latticeFaces = 100'000.0;
constexpr int foldCheckNodes = 17;
// How far two hulls of different grids may be apart where nothing else is known about the solid.
constexpr double hullSlack = 0.1;
// From here on the two-dimensional faces are too many to be sampled all.
constexpr int manyChannels = 7;
DeviceNodes thinned(const DeviceNodes& nodes, std::size_t count)
{
    DeviceNodes result;
    for (const auto& axis : nodes)
        result.push_back(thinnedAxis(axis, count));
    return result;
}

WindingCheck windingOf(const SurfaceMesh& mesh, const Task& task)
{
    const LatticeBox box = boundsOf(latticePoints(mesh));
    const double extent = std::max(box.high.a - box.low.a, box.high.b - box.low.b) / latticeScale;
    const double pitch = std::min(2.0, std::max(extent, 0.1) / 64.0);
    const ColumnGrid grid = columnsOver(box, pitch);
    return checkWinding(castColumns(mesh, grid, task), grid);
}

bool crossesItself(const SurfaceMesh& mesh, const Task& task)
{
    return countCrossings(mesh, 1, task) > 0;
}

// Sheets that lie upon each other do not cross; where they do, the surface winds twice.
bool isSimple(const SurfaceMesh& mesh, const Task& task)
{
    const WindingCheck check = windingOf(mesh, task);
    return check.invalidVolume <= largestInvalidShare * check.insideVolume && !crossesItself(mesh, task);
}

// A finer surface is handed out only when it is as sound as the one that it stands for. Sheets that lie
// upon each other may wind once as one and three times as three, so they are looked for as such.
bool staysSimple(const SurfaceMesh& mesh, const Task& task)
{
    const WindingCheck check = windingOf(mesh, task);
    return check.invalidVolume <= largestInvalidShare * check.insideVolume &&
           check.coincidentArea <= largestInvalidShare * check.coveredArea && !crossesItself(mesh, task);
}

void lookOutwards(SurfaceMesh& mesh)
{
    if (signedVolume(mesh) < 0.0)
        flip(mesh);
}

class Builder
{
public:
    Builder(const DeviceTransform& transform, const GamutRequest& request, const Task& task,
            GamutRecord& record, QString& reason)
        : m_transform(transform), m_request(request), m_task(task), m_record(record), m_reason(reason)
    {
    }

    bool run()
    {
        const int channels = m_transform.channels();
        m_record.gridPoints = effectiveGridPoints(m_request.gridPoints, channels);
        m_nodes =
            equalisedNodes(m_transform, m_record.gridPoints, smallEvenShare, m_task.part(0.0, 0.1), m_reason);
        if (m_nodes.empty())
            return false;
        const bool found = (channels == 3 && directMesh()) || (m_reason.isEmpty() && hullMesh());
        if (!found)
            return false;
        if (!refineSurface())
            return false;
        m_task.setProgress(0.8);
        m_reason = surfaceProblem(m_record.mesh);
        if (!m_reason.isEmpty())
            return false;
        m_task.setProgress(0.9);
        return endPoints() && primaries();
    }

private:
    // False with a reason when it ends here, without one when another method has to be taken.
    bool directMesh()
    {
        const FoldCheck folds =
            checkFolds(m_transform, thinned(m_nodes, foldCheckNodes), m_task.part(0.1, 0.2), m_reason);
        if (!folds.done)
            return false;
        m_record.foldShare = folds.foldShare;
        if (folds.sweptVolume < smallestVolume) {
            m_reason = flatProblem();
            return false;
        }
        SurfaceMesh mesh = deviceCubeMesh(m_transform, m_nodes, m_task.part(0.25, 0.4), m_reason);
        if (mesh.triangles.empty())
            return false;
        lookOutwards(mesh);
        if (folds.foldShare > largestFoldShare || !isSimple(mesh, m_task))
            return false;
        m_task.setProgress(0.6);
        const std::size_t nodes = m_nodes.front().size();
        const SurfaceMesh coarse = thinnedCubeMesh(mesh, nodes, halfOf(nodes));
        take(std::move(mesh), coarse, KVGamut::Method::DeviceMesh);
        return true;
    }

    bool hullMesh()
    {
        const int channels = m_transform.channels();
        int count = m_record.gridPoints;
        if (channels >= manyChannels)
            count = nodesForOutermostFaces(channels, count);
        while (channels < manyChannels && hullSampleCount(channels, count) > mostHullSamples(channels))
            --count;
        if (count < m_record.gridPoints || channels == 3) {
            m_record.gridPoints = count;
            const double evenShare = channels == 3 ? evenShareOfFolds : smallEvenShare;
            m_nodes = equalisedNodes(m_transform, count, evenShare, m_task.part(0.2, 0.25), m_reason);
            if (m_nodes.empty())
                return false;
        }
        SurfaceMesh mesh = radialHull(m_transform, m_nodes, m_task.part(0.25, 0.5), m_reason);
        if (mesh.triangles.empty())
            return false;
        if (!isStarShaped(mesh))
            return m_reason.isEmpty() && latticeMesh();
        const SurfaceMesh coarse = radialHull(m_transform, halved(), m_task.part(0.55, 0.7), m_reason);
        if (coarse.triangles.empty())
            return false;
        if (channels > mostSolidChannels && !isFilled(mesh, coarse))
            return false;
        take(std::move(mesh), coarse, KVGamut::Method::RadialHull);
        return true;
    }

    // Of more channels than a solid can be made of: whether the device shows what the hull encloses, and
    // the hull encloses what the device shows.
    bool isFilled(const SurfaceMesh& hull, const SurfaceMesh& coarse)
    {
        const std::optional<double> reached =
            reachedVolume(hull, m_transform, m_task.part(0.7, 0.75), m_reason);
        if (!reached)
            return false;
        const double volume = signedVolume(hull);
        if (std::abs(*reached - volume) > concaveSlack * volume ||
            std::abs(signedVolume(coarse) - volume) > hullSlack * volume)
            m_reason = QStringLiteral("the solid of this device has hollows, which are not found with so "
                                      "many channels");
        return m_reason.isEmpty();
    }

    // A hull of what no centre sees all of is a surface too, but around too much, or through itself.
    // False with a reason when it ends here.
    bool isStarShaped(const SurfaceMesh& hull)
    {
        const int channels = m_transform.channels();
        if (channels > mostSolidChannels) {
            if (isSimple(hull, m_task))
                return true;
            m_reason = QStringLiteral("the surface found for this device passes through itself");
            return false;
        }
        constexpr std::array<std::size_t, 4> fromThree{17, 9, 7, 5};
        const DeviceNodes nodes = thinned(m_nodes, fromThree[static_cast<std::size_t>(channels - 3)]);
        const DeviceSolid solid = deviceSolid(m_transform, nodes, m_task.part(0.5, 0.55), m_reason);
        if (solid.points.empty())
            return false;
        const double covered = coveredVolume(solid, m_castBudget, m_task);
        if (castFailed())
            return false;
        if (covered < smallestVolume) {
            m_reason = flatProblem();
            return false;
        }
        return std::abs(signedVolume(hull) - covered) <= concaveSlack * covered && isSimple(hull, m_task);
    }

    bool castFailed()
    {
        if (m_task.isCancelled())
            m_reason = QStringLiteral("cancelled");
        else if (m_castBudget.isExceeded)
            m_reason = QStringLiteral("the device's colours overlap too often for a surface to be found");
        return !m_reason.isEmpty();
    }

    bool latticeMesh()
    {
        m_record.gridPoints = effectiveGridPoints(m_request.gridPoints, m_transform.channels());
        m_nodes = solidNodes(m_transform, m_record.gridPoints, m_task.part(0.55, 0.56), m_reason);
        if (m_nodes.empty())
            return false;
        const DeviceSolid solid = deviceSolid(m_transform, m_nodes, m_task.part(0.56, 0.6), m_reason);
        const DeviceSolid half = deviceSolid(m_transform, halved(), m_task.part(0.6, 0.62), m_reason);
        if (solid.points.empty() || half.points.empty())
            return false;
        const double fineness = double(m_record.gridPoints) / effectiveGridPoints(-1, m_transform.channels());
        const double faces = latticeFaces * std::min(1.0, fineness * fineness);
        const double pitch = pitchForFaces(half, faces, m_castBudget, m_task.part(0.62, 0.64));
        if (castFailed())
            return false;
        if (!(pitch > 0.0)) {
            m_reason = flatProblem();
            return false;
        }
        SurfaceMesh mesh = latticeSurface(solid, pitch, m_castBudget, m_task.part(0.64, 0.72));
        const SurfaceMesh coarse = latticeSurface(half, 2.0 * pitch, m_castBudget, m_task.part(0.72, 0.75));
        if (castFailed())
            return false;
        keepNoteworthyParts(mesh);
        if (crossesItself(mesh, m_task)) {
            m_reason = QStringLiteral("the surface found for this device passes through itself");
            return false;
        }
        take(std::move(mesh), coarse, KVGamut::Method::LatticeSurface);
        return true;
    }

    // As fine as asked for, or as the surface can be without meeting itself: halfway between
    // the ends of an edge the device's colour may lie deep inside. A lattice's faces are small, and
    // their corners not where the device's colours are.
    bool refineSurface()
    {
        const double rounds = m_request.refinements;
        for (int i = 0; i < m_request.refinements; ++i) {
            if (m_record.method == KVGamut::Method::LatticeSurface)
                return true;
            SurfaceMesh finer = m_record.mesh;
            const Task task = m_task.part(0.75 + 0.05 * i / rounds, 0.75 + 0.05 * (i + 1) / rounds);
            if (!refine(finer, m_transform, std::max(0.0, m_request.maxEdge), 1, task, m_reason))
                return false;
            if (finer.triangles.size() == m_record.mesh.triangles.size() || !staysSimple(finer, m_task))
                return true;
            m_record.mesh = std::move(finer);
        }
        return true;
    }

    static std::size_t halfOf(std::size_t nodes) { return std::max<std::size_t>(2, (nodes + 1) / 2); }

    DeviceNodes halved() const
    {
        DeviceNodes nodes;
        for (const auto& axis : m_nodes)
            nodes.push_back(thinnedAxis(axis, halfOf(axis.size())));
        return nodes;
    }

    // The error of both surfaces falls with the square of the step, so the finer one is off by a
    // third of their difference; half of it allows for what is not quite quadratic.
    void take(SurfaceMesh mesh, const SurfaceMesh& coarse, KVGamut::Method method)
    {
        const double volume = signedVolume(mesh);
        const double common = commonError(method);
        m_record.volumeUncertainty =
            0.5 * std::abs(volume - std::abs(signedVolume(coarse))) + common * volume;
        m_record.mesh = std::move(mesh);
        m_record.method = method;
    }

    // The share of the volume that both surfaces may miss alike: samples just below the surface may lie
    // on a hull, the ridge of a fold may run between nodes or through them, and a lattice cuts a solid's
    // edges off.
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

    bool endPoints()
    {
        std::vector<float> device = m_transform.white();
        for (const auto& colour : {m_transform.black(), m_transform.origin()})
            device.insert(device.end(), colour.begin(), colour.end());
        std::array<Vec3, 3> lab;
        if (!m_transform.toLab(device.data(), lab.data(), lab.size(), m_task.part(0.9, 0.92), m_reason))
            return false;
        m_record.white = snapped(lab[0]);
        m_record.black = snapped(lab[1]);
        m_record.origin = snapped(lab[2]);
        return true;
    }

    bool primaries()
    {
        m_record.decorated = m_request.withDecoration;
        if (!m_request.withDecoration || m_transform.kind() == ChannelKind::Coordinates)
            return true;
        const std::vector<float> origin = m_transform.origin();
        for (std::size_t channel = 0; channel < origin.size(); ++channel) {
            const auto ramp = equalisedRamp(m_transform, origin, channel, m_record.gridPoints,
                                            m_task.part(0.92, 0.93), m_reason);
            if (ramp.empty())
                return false;
            std::vector<float> device;
            for (std::size_t i = 1; i < ramp.size(); ++i) {
                device.insert(device.end(), origin.begin(), origin.end());
                device[device.size() - origin.size() + channel] = ramp[i];
            }
            std::vector<Vec3> lab(ramp.size() - 1);
            const double share = double(channel + 1) / double(origin.size());
            if (!m_transform.toLab(device.data(), lab.data(), lab.size(),
                                   m_task.part(0.93, 0.93 + 0.06 * share), m_reason))
                return false;
            Ramp group;
            for (const Vec3& p : lab)
                group.push_back(snapped(p));
            m_record.primaries.push_back(std::move(group));
        }
        return true;
    }

    const DeviceTransform& m_transform;
    const GamutRequest& m_request;
    const Task& m_task;
    GamutRecord& m_record;
    QString& m_reason;
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

bool buildGamut(const DeviceTransform& transform, const GamutRequest& request, const Task& task,
                GamutRecord& record, QString& reason)
{
    return Builder(transform, request, task, record, reason).run();
}

} // namespace velmora
