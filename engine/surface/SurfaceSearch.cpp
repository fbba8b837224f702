// SPDX-License-Identifier: Apache-2.0
#include "SurfaceSearch.h"

#include "DeviceCubeMesh.h"
#include "DeviceVolume.h"
#include "FoldCheck.h"
#include "LatticeSearch.h"
#include "MissedColours.h"
#include "RadialHull.h"
#include "ReachedVolume.h"
#include "SurfaceChecks.h"
#include <engine/mesh/MeshVolume.h>

#include <algorithm>

namespace velmora {
namespace {

using KVGamut::Method;

// Above this share of reversed volume the image of the device cube's surface does not bound the gamut. Real
// RGB spaces have none; encodings with clipped corners have a few percent.
constexpr double maxFoldShare = 0.001;
// Up to this share a fold does not change the volume.
constexpr double negligibleFoldShare = 1e-5;
constexpr int foldCheckNodes = 17;
// Allowed relative difference between the volume of a hull and that of the device's colours. A hull bridges
// hollows; the lattice surface is as accurate without.
constexpr double hullTolerance = 0.005;
constexpr double inkHullTolerance = 0.01; // noisy inks have many small hollows
// If there is no lattice surface either, because of many channels, or because the cells overlap too often.
constexpr double lastHullTolerance = 0.05;
// Allowed relative difference between the volumes of a lattice surface and of the device's colours. The
// lattice loses what is near sharp edges, which is much of a solid with few nodes.
constexpr double latticeTolerance = 0.9;
// If it is less near, the surface is looked for in the interior of the hypercube as well.
constexpr double cellsTolerance = 0.01;
constexpr double missedTolerance = 0.003; // of a hull without colours of the interior

void faceOutwards(Mesh& mesh, const Task& task)
{
    if (signedVolume(mesh, task) < 0.0)
        flip(mesh, task);
}

class SurfaceSearch
{
public:
    SurfaceSearch(const DeviceTransform& transform, int gridPoints, const Task& task)
        : m_transform(transform), m_requested(gridPoints), m_task(task),
          m_cells(transform, double(gridPoints) / effectiveGridPoints(-1, transform.channels()), task),
          m_volume(transform, m_cells, task)
    {
        m_found.gridPoints = gridPoints;
    }

    Result<FoundSurface> run()
    {
        auto nodes = equalisedNodes(m_transform, m_requested, minEvenShare, m_task.part(0.0, 0.1));
        if (!nodes)
            return failure(nodes);
        m_nodes = std::move(*nodes);
        if (channels() == 3)
            if (const auto followed = followTable(); !followed)
                return failure(followed);
        if (const auto searched = channels() == 3 ? surfaceOfCube() : surfaceOfInks(); !searched)
            return failure(searched);
        m_found.volume = m_volume.value();
        m_found.uncertainty = m_volume.uncertainty();
        return std::move(m_found);
    }

private:
    int channels() const { return m_transform.channels(); }

    // If the map is linear between the nodes of the device's table, these give the exact surface.
    Result<void> followTable()
    {
        const auto isLinear = m_cells.isLinearBetweenNodesOfTable();
        if (!isLinear)
            return failure(isLinear);
        if (*isLinear)
            m_volume.followTable();
        const auto requested = static_cast<std::size_t>(m_requested);
        if (!*isLinear || m_cells.maxTableNodes() > requested)
            return {};
        auto nodes = m_cells.nodesOfMesh(requested);
        if (!nodes)
            return failure(nodes);
        m_meshIsExact = !nodes->empty();
        if (m_meshIsExact)
            m_nodes = std::move(*nodes);
        return {};
    }

    // --- Three channels

    Result<void> surfaceOfCube()
    {
        const auto found = directMesh();
        if (!found)
            return failure(found);
        return *found ? Result<void>() : surfaceOfFoldedCube();
    }

    // @return false if another method must be used
    Result<bool> directMesh()
    {
        const auto folds =
            checkFolds(m_transform, thinnedNodes(m_nodes, foldCheckNodes), m_task.part(0.1, 0.2));
        if (!folds)
            return failure(folds);
        m_found.foldShare = folds->foldShare;
        if (folds->sweptVolume < minVolume)
            return failure(KVProblemCode::TooSmall);
        if (folds->foldShare > maxFoldShare)
            return false;
        auto mesh = deviceCubeMesh(m_transform, m_nodes, m_task.part(0.2, 0.3));
        if (!mesh)
            return failure(mesh);
        faceOutwards(*mesh, m_task);
        const auto winding = windingOf(*mesh, m_task);
        if (!winding)
            return failure(winding);
        if (winding->invalidVolume > maxInvalidShare * winding->insideVolume)
            return false;
        extrapolate(*mesh, winding->invalidVolume);
        if (folds->foldShare > negligibleFoldShare) {
            constexpr double ofLines = 5e-4;
            if (const auto measured = m_volume.measure(*mesh, ofLines, m_task.part(0.3, 0.6)); !measured)
                return failure(measured);
        } else if (const auto compared = compareWithTable(); !compared) {
            return failure(compared);
        }
        return takeMesh(std::move(*mesh));
    }

    // The error of a mesh is proportional to the square of the step: two meshes give the limit (Richardson).
    void extrapolate(const Mesh& mesh, double invalidVolume)
    {
        const std::size_t nodes = m_nodes.front().size(), half = halfOf(nodes);
        const double volume = signedVolume(mesh, m_task);
        if (m_meshIsExact) {
            constexpr double ofTable = 4.5e-4; // its steps are straight, but its cells may be twisted
            m_volume.set(volume, ofTable * volume + 2.0 * invalidVolume);
            return;
        }
        const Mesh coarse = thinnedCubeMesh(mesh, nodes, half, m_task);
        const double difference = volume - std::abs(signedVolume(coarse, m_task));
        const double ratio = double(nodes - 1) / double(half - 1);
        constexpr double ofRounding = 1e-6;
        m_volume.set(half < nodes ? volume + difference / (ratio * ratio - 1.0) : volume,
                     0.5 * std::abs(difference) + ofRounding * volume + 2.0 * invalidVolume);
    }

    // The nodes of a noisy table are far from what lies between them. If the mesh through these nodes has
    // another volume, it is the better one, because the extremes of the map are at its nodes.
    Result<void> compareWithTable()
    {
        if (m_meshIsExact || m_transform.tableNodes().empty())
            return {};
        const auto nodes = m_cells.nodesOfMesh(static_cast<std::size_t>(m_requested));
        if (!nodes)
            return failure(nodes);
        if (nodes->empty())
            return {};
        const auto mesh = deviceCubeMesh(m_transform, *nodes, m_task);
        if (!mesh)
            return failure(mesh);
        const double volume = std::abs(signedVolume(*mesh, m_task));
        const double difference = std::abs(volume - m_volume.value());
        constexpr double maxDifference = 5e-4;
        constexpr double ofKinks = 1.5e-4; // at the nodes of the table the error is not that of a smooth map
        m_volume.set(difference > maxDifference * volume ? volume : m_volume.value(),
                     std::max({difference, m_volume.uncertainty(), ofKinks * volume}));
        return {};
    }

    // A fine mesh may intersect itself where the map nearly folds. A coarser one may not; the volume stays
    // that of the fine mesh. False if all of them intersect themselves.
    Result<bool> takeMesh(Mesh mesh)
    {
        constexpr std::size_t minNodes = 9;
        std::size_t count = m_nodes.front().size();
        for (;;) {
            const auto intersects = hasIntersections(mesh, m_task);
            if (!intersects)
                return failure(intersects);
            if (!*intersects) {
                take(std::move(mesh), Method::DeviceMesh);
                return true;
            }
            count = count * 3 / 4;
            if (count < minNodes)
                return false;
            auto coarser = deviceCubeMesh(m_transform, thinnedNodes(m_nodes, count), m_task);
            if (!coarser)
                return failure(coarser);
            mesh = std::move(*coarser);
            faceOutwards(mesh, m_task);
        }
    }

    Result<void> surfaceOfFoldedCube()
    {
        auto hull = hullOfSamples();
        if (!hull)
            return failure(hull);
        constexpr double ofLines = 2.5e-3; // a hull that bridges hollows helps little
        if (m_volume.value() <= 0.0)
            if (auto measured = m_volume.measure(*hull, ofLines, m_task.part(0.5, 0.6)); !measured)
                return measured;
        const auto fits = isAccurate(*hull);
        if (!fits)
            return failure(fits);
        if (!*fits)
            return latticeMesh();
        take(std::move(*hull), Method::RadialHull);
        return {};
    }

    // --- Four channels and more

    Result<void> surfaceOfInks()
    {
        auto hull = hullOfSamples();
        if (!hull)
            return failure(hull);
        const auto coarse = hullOfInks(halved(), m_task.part(0.4, 0.45));
        if (!coarse)
            return failure(coarse);
        const double volume = signedVolume(*hull, m_task);
        constexpr double ofSamplesBelow = 3e-4; // both grids may take them for the surface
        const double uncertainty =
            0.5 * std::abs(volume - signedVolume(*coarse, m_task)) + ofSamplesBelow * volume;
        m_volume.set(volume, uncertainty);
        if (channels() > DeviceCells::maxChannels)
            return unmeasuredHull(std::move(*hull), *coarse);
        const auto measured = m_volume.measureInks(*hull, uncertainty, m_task.part(0.45, 0.6));
        if (!measured && channels() > maxSolidChannels && !m_task.isCancelled())
            return unmeasuredHull(std::move(*hull), *coarse);
        if (!measured)
            return failure(measured);
        return m_volume.hasInterior() ? surfaceWithInterior(*hull) : takeHullOrLattice(std::move(*hull));
    }

    // Takes colours of the interior as samples of the hull, too: nodes of the cells, and if the hull misses
    // many, colours that are farther out than its vertices.
    Result<void> surfaceWithInterior(const Mesh& hull)
    {
        m_needsCells = signedVolume(hull, m_task) < (1.0 - cellsTolerance) * m_volume.value();
        const auto nodes = m_cells.nodes(DeviceCells::Grid::Coarse);
        const auto turns = m_cells.turns();
        if (!nodes || !turns)
            return nodes ? failure(turns) : failure(nodes);
        auto added = coloursOutside(hull, m_transform, gridColours(*nodes, m_task), m_task);
        if (!added)
            return failure(added);
        const std::vector<float> turned = samplesOfTurnedFaces(m_nodes, *turns, m_task);
        added->insert(added->end(), turned.begin(), turned.end());
        if (signedVolume(hull, m_task) < (1.0 - missedTolerance) * m_volume.value()) {
            const auto beyond = coloursBeyond(hull, m_transform, m_task.part(0.6, 0.61));
            if (!beyond)
                return failure(beyond);
            added->insert(added->end(), beyond->begin(), beyond->end());
        }
        auto complete = radialHull(m_transform, m_nodes, m_task.part(0.61, 0.65), *added);
        if (!complete)
            return failure(complete);
        if (const auto measured = m_volume.measureAgain(*complete, m_task); !measured)
            return measured;
        return takeHullOrLattice(std::move(*complete));
    }

    Result<void> takeHullOrLattice(Mesh hull)
    {
        const auto fits = isAccurate(hull);
        if (!fits)
            return failure(fits);
        if (*fits) {
            take(std::move(hull), Method::RadialHull);
            return {};
        }
        if (channels() > maxSolidChannels)
            return refusalOf(hull);
        auto lattice = latticeMesh();
        if (!lattice && m_needsCells && !m_task.isCancelled() && !isNear(hull, lastHullTolerance)) {
            m_needsCells = false;
            lattice = latticeMesh();
        }
        if (lattice || m_task.isCancelled() || !isNear(hull, lastHullTolerance))
            return lattice;
        const auto simple = isSimple(hull, CoincidentSheets::Allowed, m_task);
        if (!simple || !*simple)
            return lattice;
        m_found.gridPoints = m_requested;
        take(std::move(hull), Method::RadialHull);
        return {};
    }

    // With so many channels there is no lattice surface.
    Result<void> refusalOf(const Mesh& hull)
    {
        const auto simple = isSimple(hull, CoincidentSheets::Allowed, m_task);
        if (!simple)
            return failure(simple);
        return failure(*simple ? KVProblemCode::UnresolvedConcavity : KVProblemCode::SurfaceSelfIntersects);
    }

    Result<void> unmeasuredHull(Mesh hull, const Mesh& coarse)
    {
        const auto simple = isSimple(hull, CoincidentSheets::Allowed, m_task);
        if (!simple)
            return failure(simple);
        if (!*simple)
            return failure(KVProblemCode::SurfaceSelfIntersects);
        if (const auto filled = checkFilled(hull, coarse, m_transform, m_task.part(0.7, 0.75)); !filled)
            return filled;
        return takeWithInterior(std::move(hull));
    }

    // Looks for colours of the interior beyond the hull. If there are many, it takes them as samples. The
    // more channels, the longer a colour takes: then they are only uncertainty, or not looked for.
    Result<void> takeWithInterior(Mesh hull)
    {
        constexpr int maxMovedChannels = 10;
        constexpr int maxLookedAtChannels = 12;
        constexpr double few = 1e-3; // share of the volume
        if (channels() <= maxLookedAtChannels) {
            const auto missed = findMissedColours(hull, m_transform, m_task.part(0.75, 0.78));
            if (!missed)
                return failure(missed);
            const bool areMany = missed->volume > few * m_volume.value();
            if (areMany && channels() <= maxMovedChannels)
                return takeBeyond(hull);
            // each channel was moved alone; together they may reach as many times farther
            m_volume.set(m_volume.value(),
                         m_volume.uncertainty() + (areMany ? channels() : 1) * missed->volume);
        }
        take(std::move(hull), Method::RadialHull);
        return {};
    }

    Result<void> takeBeyond(const Mesh& hull)
    {
        const auto beyond = coloursBeyond(hull, m_transform, m_task.part(0.78, 0.85));
        if (!beyond)
            return failure(beyond);
        auto complete = hullOfInks(m_nodes, m_task.part(0.85, 0.92), *beyond);
        if (!complete)
            return failure(complete);
        const auto simple = isSimple(*complete, CoincidentSheets::Allowed, m_task);
        if (!simple)
            return failure(simple);
        if (!*simple)
            return failure(KVProblemCode::SurfaceSelfIntersects);
        const auto left = findMissedColours(*complete, m_transform, m_task.part(0.92, 0.95));
        if (!left)
            return failure(left);
        const double volume = signedVolume(*complete, m_task);
        constexpr double ofAdded = 0.1; // the added colours are at fewer places than the vertices of a hull
        m_volume.set(volume,
                     m_volume.uncertainty() + left->volume + ofAdded * std::abs(volume - m_volume.value()));
        take(std::move(*complete), Method::RadialHull);
        return {};
    }

    // --- All

    Result<Mesh> hullOfSamples()
    {
        if (const auto chosen = chooseHullNodes(); !chosen)
            return failure(chosen);
        return hullOfInks(m_nodes, m_task.part(0.3, 0.4));
    }

    // With many inks that turn back, the outermost faces are those up to the turns.
    Result<Mesh> hullOfInks(const DeviceNodes& nodes, const Task& task, const std::vector<float>& added = {})
    {
        if (channels() > DeviceCells::maxChannels && m_turns.empty()) {
            auto turns = turningPoints(m_transform, task);
            if (!turns)
                return failure(turns);
            m_turns = std::move(*turns);
        }
        return doTurn(m_turns) ? turnedHull(m_transform, nodes, m_turns, task, added)
                               : radialHull(m_transform, nodes, task, added);
    }

    // Reduces the number of nodes if the requested ones would need too many samples. With three channels the
    // positions are chosen anew, because a hull is then only needed for a map that folds.
    Result<void> chooseHullNodes()
    {
        const int count = nodesForHull(channels(), m_requested);
        if (count == m_requested && channels() != 3)
            return {};
        m_found.gridPoints = count;
        const double evenShare = channels() == 3 ? evenShareOfFolds : minEvenShare;
        auto nodes = equalisedNodes(m_transform, count, evenShare, m_task.part(0.3, 0.31));
        if (!nodes)
            return failure(nodes);
        m_nodes = std::move(*nodes);
        return {};
    }

    Result<bool> isAccurate(const Mesh& hull)
    {
        const double tolerance = channels() == 3                 ? hullTolerance
                                 : channels() > maxSolidChannels ? lastHullTolerance
                                                                 : inkHullTolerance;
        if (!isNear(hull, tolerance))
            return false;
        return isSimple(hull, CoincidentSheets::Allowed, m_task);
    }

    // The surface is first looked for among the three-dimensional faces of the hypercube. If these, or the
    // two-dimensional ones, enclose less than the device's colours, all cells are needed.
    Result<void> latticeMesh()
    {
        m_found.gridPoints = m_requested;
        auto nodes = solidNodes(m_transform, m_requested, m_task.part(0.6, 0.61));
        if (!nodes)
            return failure(nodes);
        m_nodes = std::move(*nodes);
        auto mesh = m_needsCells ? latticeOfCells() : latticeOfFaces();
        if (channels() > 3 && !m_needsCells && mesh && !isNear(*mesh, cellsTolerance))
            mesh = latticeOfCells();
        if (!mesh)
            return failure(mesh);
        if (!isNear(*mesh, latticeTolerance))
            return failure(KVProblemCode::UnresolvedConcavity);
        // a hull that bridges hollows did not help the measurement; the lattice surface does
        if (const auto measured = m_volume.measureAgain(*mesh, m_task.part(0.9, 0.99)); !measured)
            return measured;
        take(std::move(*mesh), Method::LatticeSurface);
        return {};
    }

    Result<Mesh> latticeOfFaces()
    {
        return latticeOf(deviceSolid(m_transform, m_nodes, m_task),
                         deviceSolid(m_transform, halved(), m_task), fineness(), m_task.part(0.65, 0.9));
    }

    Result<Mesh> latticeOfCells()
    {
        const auto fine = m_cells.solid(DeviceCells::Grid::Coarse);
        if (!fine)
            return failure(fine);
        return latticeOf(fine, m_cells.solid(DeviceCells::Grid::Look), fineness(), m_task.part(0.65, 0.9));
    }

    double fineness() const { return double(m_requested) / effectiveGridPoints(-1, channels()); }

    bool isNear(const Mesh& mesh, double tolerance) const
    {
        return std::abs(signedVolume(mesh, m_task) - m_volume.value()) <= tolerance * m_volume.value();
    }

    DeviceNodes halved() const { return halvedNodes(m_nodes); }

    void take(Mesh mesh, Method method)
    {
        m_found.mesh = std::move(mesh);
        m_found.method = method;
    }

    const DeviceTransform& m_transform;
    const int m_requested;
    const Task& m_task;
    FoundSurface m_found;
    DeviceNodes m_nodes;
    std::vector<float> m_turns; // of more inks than DeviceCells supports; empty if they are not known
    bool m_needsCells = false;  // much of the surface is inside the hypercube
    bool m_meshIsExact = false; // its nodes are those of the table, and the map is linear between them
    DeviceCells m_cells;
    DeviceVolume m_volume;
};

} // namespace

int effectiveGridPoints(int requested, int channels)
{
    if (requested < 2)
        return channels >= 5 ? 17 : 33;
    return std::clamp(requested, 3, 129);
}

Result<FoundSurface> findSurface(const DeviceTransform& transform, int gridPoints, const Task& task)
{
    return SurfaceSearch(transform, gridPoints, task).run();
}

} // namespace velmora
