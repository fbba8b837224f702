// SPDX-License-Identifier: Apache-2.0
#include "GamutBuilder.h"

#include "GridSurface.h"
#include "Refinement.h"
#include "SurfaceChecks.h"
#include <engine/mesh/MeshVolume.h>
#include <engine/profile/DeviceNodes.h>

#include <algorithm>

namespace velmora {
namespace {

class Builder
{
public:
    Builder(const DeviceTransform& transform, const GamutRequest& request, const Task& task)
        : m_transform(transform), m_request(request), m_task(task)
    {
    }

    Result<GamutRecord> run()
    {
        const bool isAccurate = m_request.construction == KVGamut::Construction::Accurate;
        for (const auto step :
             {isAccurate ? &Builder::searchSurface : &Builder::sampleGrid, &Builder::refineSurface,
              &Builder::checkRecord, &Builder::findEndPoints, &Builder::findPrimaries})
            if (const auto done = (this->*step)(); !done)
                return failure(done);
        return std::move(m_record);
    }

private:
    Result<void> searchSurface()
    {
        const int gridPoints = effectiveGridPoints(m_request.gridPoints, m_transform.channels());
        return takeSurface(findSurface(m_transform, gridPoints, m_task.part(0.0, 0.75)));
    }

    Result<void> sampleGrid()
    {
        return takeSurface(gridSurface(m_transform, m_request.construction, m_task.part(0.0, 0.75)));
    }

    Result<void> takeSurface(Result<FoundSurface> found)
    {
        if (!found)
            return failure(found);
        m_record.mesh = std::move(found->mesh);
        m_record.method = found->method;
        m_record.gridPoints = found->gridPoints;
        m_record.foldShare = found->foldShare;
        m_record.volume = found->volume;
        m_record.volumeUncertainty = found->uncertainty;
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
            takeRefined(std::move(finer));
        }
        return {};
    }

    // With very few nodes refinement changes the surface by more than the uncertainty of the volume. Then the
    // refined surface is the better estimate.
    void takeRefined(Mesh finer)
    {
        const double before = signedVolume(m_record.mesh, m_task), after = signedVolume(finer, m_task);
        if (std::abs(after - before) > m_record.volumeUncertainty) {
            m_record.volume = after;
            m_record.volumeUncertainty = std::abs(after - before);
        }
        m_record.mesh = std::move(finer);
    }

    Result<void> checkRecord()
    {
        m_task.setProgress(0.8);
        auto checked = checkSurface(m_record.mesh, m_task);
        if (checked)
            m_task.setProgress(0.9);
        return checked;
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
};

} // namespace

Result<GamutRecord> buildGamut(const DeviceTransform& transform, const GamutRequest& request,
                               const Task& task)
{
    auto record = Builder(transform, request, task).run();
    if (task.isCancelled()) // a step that is not complete may fail for some other reason
        return failure(KVProblemCode::Cancelled);
    return record;
}

} // namespace velmora
