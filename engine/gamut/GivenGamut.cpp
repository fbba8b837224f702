// SPDX-License-Identifier: Apache-2.0
#include "GivenGamut.h"

#include "GamutData.h"
#include <engine/base/Parts.h>
#include <engine/mesh/ConvexHull.h>
#include <engine/mesh/MeshVolume.h>
#include <engine/mesh/SelfIntersection.h>

#include <algorithm>
#include <cmath>

namespace velmora {

using KVGamut::GamutData;

namespace {

bool isWithinLab(const LabPoint& v)
{
    return isFinite(toVec3(v)) && std::max({std::abs(v.L), std::abs(v.a), std::abs(v.b)}) <= float(maxLab);
}

bool allWithinLab(std::span<const LabPoint> points, const Task& task)
{
    bool all = true;
    forEachIndex(points.size(), task, [&](std::size_t i) { all = all && isWithinLab(points[i]); });
    return all;
}

/// What the functions on meshes need.
Result<void> checkGiven(const Mesh& surface, const Task& task)
{
    if (surface.triangles.empty())
        return failure(KVProblemCode::NoFaces);
    if (!allWithinLab(surface.lab, task))
        return failure(KVProblemCode::VertexOutOfRange);
    bool allExist = true;
    forEachIndex(surface.triangles.size(), task, [&](std::size_t f) {
        for (const int v : surface.triangles[f])
            allExist = allExist && v >= 0 && static_cast<std::size_t>(v) < surface.lab.size();
    });
    if (!allExist)
        return failure(KVProblemCode::VertexIndexOutOfRange);
    return {};
}

/// On the lattice, without device coordinates, and facing outwards.
Mesh prepared(const Mesh& surface, const Task& task)
{
    Mesh mesh;
    mesh.triangles = surface.triangles;
    growInParts(mesh.lab, surface.lab.size(), {}, task);
    forEachIndex(mesh.lab.size(), task,
                 [&](std::size_t i) { mesh.lab[i] = snapped(toVec3(surface.lab[i])); });
    if (task.isCancelled())
        return {};
    weld(mesh, task);
    if (!task.isCancelled() && !mesh.isEmpty() && signedVolume(mesh, task) < 0.0)
        flip(mesh, task);
    return mesh;
}

Result<void> checkIntersections(const Mesh& mesh, const Task& task)
{
    const std::optional<bool> intersects = selfIntersects(mesh, task);
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    if (!intersects)
        return failure(KVProblemCode::GivenSurfaceTooClose);
    if (*intersects)
        return failure(KVProblemCode::GivenSurfaceSelfIntersects);
    return {};
}

Result<QSharedDataPointer<const GamutData>> dataOf(Mesh mesh, KVGamut::Method method, double uncertainty,
                                                   const Task& task)
{
    const auto darker = [](const LabPoint& p, const LabPoint& q) { return p.L < q.L; };
    const auto [black, white] = std::minmax_element(mesh.lab.begin(), mesh.lab.end(), darker);
    GamutRecord record;
    record.method = method;
    record.intent = KVVMRenderAbsoluteColorimetric;
    record.decorated = true;
    record.volume = signedVolume(mesh, task);
    record.volumeUncertainty = std::min(uncertainty, record.volume);
    record.white = *white;
    record.black = *black;
    record.origin = *black;
    record.mesh = std::move(mesh);
    const QSharedDataPointer<const GamutData> data(new GamutData(std::move(record), task));
    data->outline(task);
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    task.setProgress(1.0);
    return data;
}

double surfaceArea(const Mesh& mesh, const Task& task)
{
    double sum = 0.0;
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t f) {
        const auto corner = [&](std::size_t i) {
            return toVec3(mesh.lab[static_cast<std::size_t>(mesh.triangles[f][i])]);
        };
        sum += length(cross(corner(1) - corner(0), corner(2) - corner(0))) / 2.0;
    });
    return sum;
}

/// Units of the hull for each dE. Those of the lattice, unless a colour is far outside of Lab.
double hullScale(std::span<const LabPoint> colors, const Task& task)
{
    constexpr double coarse = 8192.0;
    static_assert(maxLab * coarse <= double(maxHullCoordinate));
    double largest = 0.0;
    forEachIndex(colors.size(), task, [&](std::size_t i) {
        const LabPoint& v = colors[i];
        largest = std::max(largest, double(std::max({std::abs(v.L), std::abs(v.a), std::abs(v.b)})));
    });
    return largest * latticeScale <= double(maxHullCoordinate) ? latticeScale : coarse;
}

Result<Mesh> hullOf(std::span<const LabPoint> colors, const Task& task)
{
    const double scale = hullScale(colors, task);
    const auto coordinate = [scale](float v) {
        return static_cast<std::int32_t>(std::lround(double(v) * scale));
    };
    std::vector<HullPoint> points;
    growInParts(points, colors.size(), {}, task);
    forEachIndex(points.size(), task, [&](std::size_t i) {
        points[i] = {coordinate(colors[i].L), coordinate(colors[i].a), coordinate(colors[i].b)};
    });
    auto triangles = convexHull(points, task);
    if (!triangles)
        return failure(triangles);
    Mesh mesh;
    mesh.triangles = *std::move(triangles);
    growInParts(mesh.lab, points.size(), {}, task);
    const auto position = [scale](std::int32_t v) { return static_cast<float>(double(v) / scale); };
    forEachIndex(mesh.lab.size(), task, [&](std::size_t i) {
        mesh.lab[i] = {position(points[i].x), position(points[i].y), position(points[i].z)};
    });
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    dropUnusedVertices(mesh, task);
    return mesh;
}

} // namespace

Result<QSharedDataPointer<const GamutData>> surfaceData(const Mesh& surface, double uncertainty,
                                                        const Task& task)
{
    if (const auto checked = checkGiven(surface, task); !checked)
        return failure(checked);
    Mesh mesh = prepared(surface, task);
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    if (mesh.isEmpty())
        return failure(KVProblemCode::TooSmall);
    if (const auto checked = checkSurface(mesh, task); !checked)
        return failure(checked);
    if (const auto checked = checkIntersections(mesh, task); !checked)
        return failure(checked);
    return dataOf(std::move(mesh), KVGamut::Method::GivenSurface, uncertainty, task);
}

Result<QSharedDataPointer<const GamutData>> hullData(std::span<const LabPoint> colors,
                                                     double colorUncertainty, const Task& task)
{
    if (!allWithinLab(colors, task))
        return failure(KVProblemCode::VertexOutOfRange);
    auto mesh = hullOf(colors, task);
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    if (!mesh)
        return failure(mesh);
    if (mesh->isEmpty())
        return failure(KVProblemCode::TooSmall);
    if (const auto checked = checkSurface(*mesh, task); !checked)
        return failure(checked);
    const double uncertainty = colorUncertainty * surfaceArea(*mesh, task);
    return dataOf(*std::move(mesh), KVGamut::Method::ConvexHull, uncertainty, task);
}

} // namespace velmora
