// SPDX-License-Identifier: Apache-2.0
#include "RadialHull.h"

#include "MissedColours.h"
#include <engine/base/Parts.h>
#include <engine/mesh/ConvexHull.h>

#include <algorithm>
#include <array>
#include <tuple>
#include <unordered_set>

namespace velmora {
namespace {

constexpr double exponent = 0.05;

// If the task of one of these functions is cancelled, its result has no meaning.

// Centre of the samples' bounding box.
Vec3 centreOf(const std::vector<Vec3>& points, const Task& task)
{
    Vec3 low = points.front();
    Vec3 high = points.front();
    forEachIndex(points.size(), task, [&](std::size_t i) {
        const Vec3& p = points[i];
        low = {std::min(low.L, p.L), std::min(low.a, p.a), std::min(low.b, p.b)};
        high = {std::max(high.L, p.L), std::max(high.a, p.a), std::max(high.b, p.b)};
    });
    return 0.5 * (low + high);
}

double maxDistance(const std::vector<Vec3>& points, Vec3 centre, const Task& task)
{
    double distance = 0.0;
    forEachIndex(points.size(), task,
                 [&](std::size_t i) { distance = std::max(distance, length(points[i] - centre)); });
    return distance;
}

std::vector<HullPoint> compressed(const std::vector<Vec3>& points, Vec3 centre, const Task& task)
{
    const double maxRadius = maxDistance(points, centre, task);
    const double scale = maxHullCoordinate / std::max(1e-300, std::pow(maxRadius, exponent));
    std::vector<HullPoint> result;
    result.reserve(points.size());
    for (const Vec3& p : points) {
        if (task.isCancelled())
            break;
        const Vec3 d = p - centre;
        const double r = length(d);
        const double s = r > 1e-9 ? scale * std::pow(r, exponent - 1.0) : 0.0;
        const auto coordinate = [s](double v) {
            return std::clamp(static_cast<std::int32_t>(std::lround(s * v)), -maxHullCoordinate,
                              maxHullCoordinate);
        };
        result.push_back({coordinate(d.L), coordinate(d.a), coordinate(d.b)});
    }
    return result;
}

} // namespace

bool doTurn(const std::vector<float>& turns)
{
    return std::any_of(turns.begin(), turns.end(), [](float turn) { return turn < 1.0f; });
}

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

std::vector<float> hypercubeFaceSamples(const DeviceNodes& nodes, const Task& task)
{
    const int n = static_cast<int>(nodes.size());
    std::vector<float> samples;
    std::vector<float> colour(nodes.size());
    // The free channels u < v take their inner nodes; v < 0 means an edge, u < 0 a corner. The other channels
    // take the bits of a corner.
    const auto emit = [&](int u, int v) {
        const unsigned freeMask = (u >= 0 ? 1u << u : 0u) | (v >= 0 ? 1u << v : 0u);
        const auto inner = [&](int axis) {
            return axis >= 0 ? nodes[static_cast<std::size_t>(axis)].size() - 2 : std::size_t(1);
        };
        for (unsigned corner = 0; corner < 1u << n; ++corner) {
            if (corner & freeMask)
                continue;
            if (task.isCancelled())
                return;
            for (int c = 0; c < n; ++c)
                colour[static_cast<std::size_t>(c)] = static_cast<float>(corner >> c & 1u);
            for (std::size_t i = 1; i <= inner(u) && !task.isCancelled(); ++i)
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

std::vector<float> cubeSamples(const DeviceNodes& nodes, const Task& task)
{
    std::vector<float> samples;
    samples.reserve(nodes[0].size() * nodes[1].size() * nodes[2].size() * 3);
    for (float x : nodes[0])
        for (float y : nodes[1]) {
            if (task.isCancelled())
                return samples;
            for (float z : nodes[2])
                samples.insert(samples.end(), {x, y, z});
        }
    return samples;
}

std::size_t maxHullSamples(int channels)
{
    constexpr std::array<std::size_t, 5> fromEleven{64'000, 40'000, 20'000, 12'000, 8'000};
    return channels <= 10 ? 100'000 : fromEleven[static_cast<std::size_t>(std::min(channels, 15) - 11)];
}

namespace {

// Faces of a zonotope of n vectors, the gamut of n inks that mix linearly.
double zonotopeFaces(int channels)
{
    return double(channels) * (channels - 1);
}

// Adjacent faces share the samples of their common edge: of n by n samples (n - 1)^2 are counted for a face.
std::size_t samplesPerFace(std::size_t nodesPerAxis)
{
    return (nodesPerAxis - 1) * (nodesPerAxis - 1);
}

} // namespace

int nodesForOutermostFaces(int channels, int wanted)
{
    constexpr double margin =
        3.0; // inks do not mix linearly, and the choice of outermost faces is a heuristic
    const double perFace = double(maxHullSamples(channels)) / (margin * zonotopeFaces(channels));
    return std::clamp(static_cast<int>(std::sqrt(perFace)) + 1, 3, wanted);
}

int nodesForHull(int channels, int wanted)
{
    constexpr int manyChannels = 7;
    if (channels >= manyChannels)
        return nodesForOutermostFaces(channels, wanted);
    while (hullSampleCount(channels, wanted) > maxHullSamples(channels))
        --wanted;
    return wanted;
}

namespace {

// Depth of each point below the convex hull of all points; 0 on the hull.
Result<std::vector<double>> depthsBelowHull(const std::vector<Vec3>& points, const Task& task)
{
    const Vec3 centre = centreOf(points, task);
    const double maxRadius = std::max(1e-9, maxDistance(points, centre, task));
    const double scale = (maxHullCoordinate - 1) / maxRadius;
    std::vector<HullPoint> scaled;
    forEachIndex(points.size(), task, [&](std::size_t i) {
        const Vec3 d = scale * (points[i] - centre);
        scaled.push_back({static_cast<std::int32_t>(std::lround(d.L)),
                          static_cast<std::int32_t>(std::lround(d.a)),
                          static_cast<std::int32_t>(std::lround(d.b))});
    });
    struct Plane
    {
        Vec3 normal;
        double offset;
    };
    std::vector<Plane> planes;
    const auto triangles = convexHull(scaled, task);
    if (!triangles)
        return failure(triangles);
    for (const auto& t : *triangles) {
        const Vec3 p = points[static_cast<std::size_t>(t[0])];
        const Vec3 n =
            cross(points[static_cast<std::size_t>(t[1])] - p, points[static_cast<std::size_t>(t[2])] - p);
        if (const double size = length(n); size > 1e-9)
            planes.push_back({(1.0 / size) * n, dot(n, p) / size});
    }
    std::vector<double> depths;
    depths.reserve(points.size());
    for (const Vec3& p : points) {
        if (task.isCancelled())
            return failure(KVProblemCode::Cancelled);
        double depth = maxRadius;
        for (const Plane& plane : planes)
            depth = std::min(depth, plane.offset - dot(plane.normal, p));
        depths.push_back(std::max(0.0, depth));
    }
    return depths;
}

struct HypercubeFace
{
    float depth;
    std::uint16_t corner; // the bits of the fixed channels
    std::uint8_t u, v;    // the free channels
};

// The outermost two-dimensional faces, sorted by depth. Incomplete if the task is cancelled.
std::vector<HypercubeFace> outermostFaces(int channels, const std::vector<double>& depths, std::size_t count,
                                          const Task& task)
{
    const auto before = [](const HypercubeFace& p, const HypercubeFace& q) {
        return std::tie(p.depth, p.corner, p.u, p.v) < std::tie(q.depth, q.corner, q.u, q.v);
    };
    std::vector<HypercubeFace> faces;
    for (int u = 0; u < channels; ++u)
        for (int v = u + 1; v < channels && !task.isCancelled(); ++v) {
            const unsigned moving = 1u << u | 1u << v;
            for (unsigned corner = 0; corner < 1u << channels; ++corner)
                if (!(corner & moving))
                    faces.push_back({static_cast<float>(depths[corner] + depths[corner | 1u << u] +
                                                        depths[corner | 1u << v] + depths[corner | moving]),
                                     static_cast<std::uint16_t>(corner), static_cast<std::uint8_t>(u),
                                     static_cast<std::uint8_t>(v)});
            const std::size_t kept = std::min(count, faces.size()); // no more than that of all so far
            std::partial_sort(faces.begin(), faces.begin() + static_cast<std::ptrdiff_t>(kept), faces.end(),
                              before);
            faces.resize(kept);
        }
    return faces;
}

// Faces beyond this number do not reach the surface, however few samples each has.
std::size_t outermostFaceCount(int channels, std::size_t nodesPerAxis)
{
    constexpr double maxRatio = 6.0;
    return std::min(maxHullSamples(channels) / samplesPerFace(nodesPerAxis),
                    static_cast<std::size_t>(maxRatio * zonotopeFaces(channels)));
}

// Collects the device colours of faces of the hypercube, each once: with many channels transforms are too
// slow to convert a corner or an edge again for each of its faces.
class FaceSampler
{
public:
    explicit FaceSampler(const DeviceNodes& nodes) : m_nodes(nodes), m_colour(nodes.size()) {}

    void add(const HypercubeFace& face)
    {
        for (std::size_t c = 0; c < m_colour.size(); ++c)
            m_colour[c] = static_cast<float>(face.corner >> c & 1u);
        const std::size_t count = m_nodes[0].size();
        for (std::size_t i = 0; i < count; ++i)
            for (std::size_t j = 0; j < count; ++j)
                if (isNew(face, i, j)) {
                    m_colour[face.u] = m_nodes[face.u][i];
                    m_colour[face.v] = m_nodes[face.v][j];
                    m_samples.insert(m_samples.end(), m_colour.begin(), m_colour.end());
                }
    }

    std::vector<float> takeSamples() { return std::move(m_samples); }

private:
    // A sample's key: its corner, and the axes and nodes where it is not at an end of its axis.
    bool isNew(const HypercubeFace& face, std::size_t i, std::size_t j)
    {
        std::uint64_t key = face.corner;
        const auto along = [&](unsigned axis, std::size_t node, int shift) {
            if (node == m_nodes[0].size() - 1)
                key |= std::uint64_t(1) << axis;
            else if (node > 0)
                key |= (std::uint64_t(axis + 1) << 8 | node) << shift;
        };
        constexpr int ofLower = 16, ofUpper = 32;
        const bool isEdge = i == 0 || i == m_nodes[0].size() - 1;
        along(face.u, i, ofLower);
        along(face.v, j, isEdge ? ofLower : ofUpper);
        return m_known.insert(key).second;
    }

    const DeviceNodes& m_nodes;
    std::vector<float> m_colour;
    std::vector<float> m_samples;
    std::unordered_set<std::uint64_t> m_known;
};

// Lab of all corners of the hypercube. From fourteen channels on, where that would take seconds, an estimate:
// the sum of the effects of the single channels. It is good enough to tell outer faces from inner ones.
Result<std::vector<Vec3>> cornerColours(const DeviceTransform& transform, const std::vector<float>& corners,
                                        const Task& task)
{
    const int n = transform.channels();
    constexpr int maxEvaluated = 13;
    if (n <= maxEvaluated)
        return transform.toLab(corners, task);
    const auto count = static_cast<std::size_t>(n);
    std::vector<float> alone((count + 1) * count, 0.0f);
    for (std::size_t c = 0; c < count; ++c)
        alone[(c + 1) * count + c] = 1.0f;
    const auto steps = transform.toLab(alone, task);
    if (!steps)
        return failure(steps);
    std::vector<Vec3> lab(corners.size() / count, steps->front());
    const bool all = forEachIndex(lab.size(), task, [&](std::size_t corner) {
        for (std::size_t c = 0; c < count; ++c)
            if (corner >> c & 1u)
                lab[corner] = lab[corner] + ((*steps)[c + 1] - steps->front());
    });
    if (!all)
        return failure(KVProblemCode::Cancelled);
    return lab;
}

// @param ends of the channels
Result<std::vector<float>> outermostFaceSamples(const DeviceTransform& transform, const DeviceNodes& nodes,
                                                const std::vector<float>& ends, const Task& task)
{
    const int n = transform.channels();
    std::vector<float> corners;
    forEachIndex(std::size_t(1) << n, task, [&](std::size_t corner) {
        for (int c = 0; c < n; ++c)
            corners.push_back(corner >> c & 1u ? ends[static_cast<std::size_t>(c)] : 0.0f);
    });
    const auto lab = cornerColours(transform, corners, task.part(0.0, 0.9));
    if (!lab)
        return failure(lab);
    const auto depths = depthsBelowHull(*lab, task.part(0.9, 1.0));
    if (!depths)
        return failure(depths);
    FaceSampler sampler(nodes);
    for (const HypercubeFace& face :
         outermostFaces(n, *depths, outermostFaceCount(n, nodes[0].size()), task)) {
        if (task.isCancelled())
            return failure(KVProblemCode::Cancelled);
        sampler.add(face);
    }
    std::vector<float> samples = sampler.takeSamples();
    forEachIndex(samples.size(), task, [&](std::size_t i) { samples[i] *= ends[i % ends.size()]; });
    return samples;
}

// Device colours of all samples, or of those on the outermost faces if there are too many.
Result<std::vector<float>> hullSamples(const DeviceTransform& transform, const DeviceNodes& nodes,
                                       const Task& task)
{
    const int channels = transform.channels();
    if (channels == 3)
        return cubeSamples(nodes, task);
    if (hullSampleCount(channels, static_cast<int>(nodes[0].size())) <= maxHullSamples(channels))
        return hypercubeFaceSamples(nodes, task);
    return outermostFaceSamples(transform, nodes, std::vector<float>(nodes.size(), 1.0f), task);
}

} // namespace

std::vector<float> samplesOfTurnedFaces(const DeviceNodes& nodes, const std::vector<float>& turns,
                                        const Task& task)
{
    if (!doTurn(turns))
        return {};
    constexpr std::size_t maxSamples = 20'000;
    const int channels = static_cast<int>(nodes.size());
    std::size_t count = nodes.front().size();
    while (count > 3 && hullSampleCount(channels, static_cast<int>(count)) > maxSamples)
        --count;
    std::vector<float> samples = hypercubeFaceSamples(thinnedNodes(nodes, count), task);
    forEachIndex(samples.size(), task, [&](std::size_t i) { samples[i] *= turns[i % turns.size()]; });
    return samples;
}

namespace {

Result<Mesh> hullOf(std::vector<float> samples, const DeviceTransform& transform, const Task& task)
{
    const auto lab = transform.toLab(samples, task.part(0.1, 0.3));
    if (!lab)
        return failure(lab);
    const std::vector<HullPoint> points = compressed(*lab, centreOf(*lab, task), task);
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    auto hull = convexHull(points, task.part(0.3, 1.0));
    if (!hull)
        return failure(hull);
    if (hull->empty())
        return failure(KVProblemCode::NoVolume);
    Mesh mesh;
    mesh.channels = transform.channels();
    mesh.device = std::move(samples);
    mesh.lab = snappedAll(*lab, task);
    mesh.triangles = std::move(*hull);
    dropUnusedVertices(mesh, task);
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    return mesh;
}

} // namespace

Result<Mesh> radialHull(const DeviceTransform& transform, const DeviceNodes& nodes, const Task& task,
                        const std::vector<float>& added)
{
    auto samples = hullSamples(transform, nodes, task.part(0.0, 0.1));
    if (!samples)
        return failure(samples);
    samples->insert(samples->end(), added.begin(), added.end());
    return hullOf(std::move(*samples), transform, task);
}

Result<Mesh> turnedHull(const DeviceTransform& transform, const DeviceNodes& nodes,
                        const std::vector<float>& turns, const Task& task, const std::vector<float>& added)
{
    auto samples = outermostFaceSamples(transform, nodes, turns, task.part(0.0, 0.05));
    if (!samples)
        return failure(samples);
    const auto first = hullOf(*samples, transform, task.part(0.05, 0.4));
    if (!first)
        return failure(first);
    const std::size_t half = std::max<std::size_t>(3, (nodes.front().size() + 1) / 2);
    const auto others = hullSamples(transform, thinnedNodes(nodes, half), task.part(0.4, 0.45));
    if (!others)
        return failure(others);
    const auto outside = coloursOutside(*first, transform, *others, task.part(0.45, 0.5));
    if (!outside)
        return failure(outside);
    if (outside->empty() && added.empty())
        return first;
    samples->insert(samples->end(), outside->begin(), outside->end());
    samples->insert(samples->end(), added.begin(), added.end());
    return hullOf(std::move(*samples), transform, task.part(0.5, 1.0));
}

} // namespace velmora
