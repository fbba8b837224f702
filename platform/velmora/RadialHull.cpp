#include "RadialHull.h"

#include "ConvexHull.h"

#include <algorithm>

namespace velmora {
namespace {

constexpr double exponent = 0.05;

// Middle of the bounding box of the samples.
Vec3 centreOf(const std::vector<Vec3>& points)
{
    Vec3 low = points.front();
    Vec3 high = points.front();
    for (const Vec3& p : points) {
        low = {std::min(low.L, p.L), std::min(low.a, p.a), std::min(low.b, p.b)};
        high = {std::max(high.L, p.L), std::max(high.a, p.a), std::max(high.b, p.b)};
    }
    return 0.5 * (low + high);
}

std::vector<HullPoint> compressed(const std::vector<Vec3>& points, Vec3 centre)
{
    double farthest = 0.0;
    for (const Vec3& p : points)
        farthest = std::max(farthest, length(p - centre));
    const double scale = largestHullCoordinate / std::max(1e-300, std::pow(farthest, exponent));
    std::vector<HullPoint> result;
    result.reserve(points.size());
    for (const Vec3& p : points) {
        const Vec3 d = p - centre;
        const double r = length(d);
        const double s = r > 1e-9 ? scale * std::pow(r, exponent - 1.0) : 0.0;
        const auto coordinate = [s](double v) {
            return std::clamp(static_cast<std::int32_t>(std::lround(s * v)), -largestHullCoordinate,
                              largestHullCoordinate);
        };
        result.push_back({coordinate(d.L), coordinate(d.a), coordinate(d.b)});
    }
    return result;
}

} // namespace

std::size_t hullSampleCount(int channels, int nodesPerAxis)
{
    if (channels == 3)
        return static_cast<std::size_t>(nodesPerAxis) * static_cast<std::size_t>(nodesPerAxis) *
               static_cast<std::size_t>(nodesPerAxis);
    const auto n = static_cast<std::size_t>(channels);
    const auto inner = static_cast<std::size_t>(nodesPerAxis) - 2;
    const std::size_t corners = std::size_t(1) << n;
    return corners + n * corners / 2 * inner + n * (n - 1) / 2 * corners / 4 * inner * inner;
}

std::vector<float> hypercubeFaceSamples(const DeviceNodes& nodes)
{
    const int n = static_cast<int>(nodes.size());
    std::vector<float> samples;
    std::vector<float> colour(nodes.size());
    // The free channels u < v take their inner nodes (u = v: an edge, u < 0: a corner); the others
    // take the bits of a corner.
    const auto emit = [&](int u, int v) {
        const unsigned freeMask = (u >= 0 ? 1u << u : 0u) | (v >= 0 ? 1u << v : 0u);
        const auto inner = [&](int axis) {
            return axis >= 0 ? nodes[static_cast<std::size_t>(axis)].size() - 2 : std::size_t(1);
        };
        for (unsigned corner = 0; corner < 1u << n; ++corner) {
            if (corner & freeMask)
                continue;
            for (int c = 0; c < n; ++c)
                colour[static_cast<std::size_t>(c)] = static_cast<float>(corner >> c & 1u);
            for (std::size_t i = 1; i <= inner(u); ++i)
                for (std::size_t j = 1; j <= inner(v); ++j) {
                    if (u >= 0)
                        colour[static_cast<std::size_t>(u)] = nodes[static_cast<std::size_t>(u)][i];
                    if (v >= 0)
                        colour[static_cast<std::size_t>(v)] = nodes[static_cast<std::size_t>(v)][j];
                    samples.insert(samples.end(), colour.begin(), colour.end());
                }
        }
    };
    emit(-1, -1);
    for (int u = 0; u < n; ++u)
        emit(u, -1);
    for (int u = 0; u < n; ++u)
        for (int v = u + 1; v < n; ++v)
            emit(u, v);
    return samples;
}

std::vector<float> cubeSamples(const DeviceNodes& nodes)
{
    std::vector<float> samples;
    samples.reserve(nodes[0].size() * nodes[1].size() * nodes[2].size() * 3);
    for (float x : nodes[0])
        for (float y : nodes[1])
            for (float z : nodes[2])
                samples.insert(samples.end(), {x, y, z});
    return samples;
}

SurfaceMesh radialHull(const DeviceTransform& transform, const DeviceNodes& nodes, const Task& task,
                       QString& reason)
{
    SurfaceMesh mesh;
    mesh.channels = transform.channels();
    mesh.device = mesh.channels == 3 ? cubeSamples(nodes) : hypercubeFaceSamples(nodes);
    std::vector<Vec3> lab(mesh.device.size() / static_cast<std::size_t>(mesh.channels));
    if (!transform.toLab(mesh.device.data(), lab.data(), lab.size(), task.part(0.0, 0.3), reason))
        return {};
    const Vec3 centre = centreOf(lab);
    ConvexHull hull = convexHull(compressed(lab, centre), task.part(0.3, 1.0));
    if (hull.cancelled) {
        reason = QStringLiteral("cancelled");
        return {};
    }
    if (hull.triangles.empty()) {
        reason = QStringLiteral("the colours of the profile span no volume");
        return {};
    }
    mesh.lab.reserve(lab.size());
    for (const Vec3& p : lab)
        mesh.lab.push_back(snapped(p));
    mesh.triangles = std::move(hull.triangles);
    dropUnusedVertices(mesh);
    return mesh;
}

} // namespace velmora
