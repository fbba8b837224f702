// SPDX-License-Identifier: Apache-2.0
#include "MissedColours.h"

#include <engine/base/Parts.h>
#include <engine/mesh/NearestIndex.h>
#include <engine/mesh/WindingIndex.h>

#include <algorithm>
#include <random>

namespace velmora {
namespace {

// Outside by less is the error of the chords between the vertices.
constexpr double minDepth = 0.1;

// Depth of colours outside a surface.
class Outside
{
public:
    Outside(const Mesh& surface, const Task& task)
        : m_surface(surface), m_task(task), m_winding(surface, task)
    {
    }

    // 0 if the task is cancelled

    double depthOf(Vec3 colour)
    {
        if (m_winding.isInside(colour))
            return 0.0;
        if (!m_hasNearest)
            m_nearest = NearestIndex(m_surface, m_task);
        m_hasNearest = true;
        if (m_task.isCancelled())
            return 0.0;
        return length(m_nearest.nearest(colour) - colour);
    }

private:
    const Mesh& m_surface;
    const Task& m_task;
    WindingIndex m_winding;
    NearestIndex m_nearest; // seldom needed
    bool m_hasNearest = false;
};

// The vector of a vertex whose length is its share of the surface's area, and that points outwards.
std::vector<Vec3> areaVectors(const Mesh& mesh, const Task& task)
{
    std::vector<Vec3> vectors(mesh.lab.size());
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t f) {
        const Triangle& t = mesh.triangles[f];
        const auto corner = [&](std::size_t i) { return toVec3(mesh.lab[static_cast<std::size_t>(t[i])]); };
        const Vec3 part = (1.0 / 6.0) * cross(corner(1) - corner(0), corner(2) - corner(0));
        for (int v : t)
            vectors[static_cast<std::size_t>(v)] = vectors[static_cast<std::size_t>(v)] + part;
    });
    return vectors;
}

class VertexCheck
{
public:
    VertexCheck(const Mesh& mesh, Outside& outside) : m_mesh(mesh), m_outside(outside) {}

    Result<double> missedVolume(const DeviceTransform& transform, const Task& task)
    {
        // with more channels a colour takes longer, and more channels are moved
        constexpr std::size_t maxMoves = 24'000;
        const auto n = static_cast<std::size_t>(m_mesh.channels);
        const std::size_t checked = maxMoves / n / steps.size() / (n > 5 ? 2 : 1);
        const std::size_t stride = std::max<std::size_t>(1, m_mesh.lab.size() / checked);
        for (std::size_t v = 0; v < m_mesh.lab.size(); v += stride)
            addMoves(static_cast<int>(v));
        const auto lab = transform.toLab(m_moved, task);
        if (!lab)
            return failure(lab);
        return static_cast<double>(stride) * volumeOf(*lab, task);
    }

private:
    static constexpr std::array<float, 2> steps{1.0f / 16.0f, 3.0f / 16.0f};

    void addMoves(int vertex)
    {
        const float* colour = m_mesh.deviceOf(vertex);
        for (int c = 0; c < m_mesh.channels; ++c) {
            if (colour[c] != 0.0f && colour[c] != 1.0f)
                continue;
            for (float step : steps) {
                m_moved.insert(m_moved.end(), colour, colour + m_mesh.channels);
                m_moved[m_moved.size() - static_cast<std::size_t>(m_mesh.channels - c)] =
                    colour[c] == 0.0f ? step : 1.0f - step;
                m_vertex.push_back(vertex);
            }
        }
    }

    double volumeOf(const std::vector<Vec3>& lab, const Task& task)
    {
        const std::vector<Vec3> vectors = areaVectors(m_mesh, task);
        double volume = 0.0;
        for (std::size_t i = 0; i < lab.size() && !task.isCancelled();) {
            const auto vertex = static_cast<std::size_t>(m_vertex[i]);
            const Vec3 place = toVec3(m_mesh.lab[vertex]);
            double depth = 0.0;
            for (; i < lab.size() && static_cast<std::size_t>(m_vertex[i]) == vertex; ++i)
                if (dot(vectors[vertex], lab[i] - place) > 0.0)
                    depth = std::max(depth, m_outside.depthOf(lab[i]));
            if (depth > minDepth)
                volume += depth * length(vectors[vertex]);
        }
        return volume;
    }

    const Mesh& m_mesh;
    Outside& m_outside;
    std::vector<float> m_moved;
    std::vector<int> m_vertex;
};

// Moves the channels of device colours so that the colours lie as far out as possible.
class OutwardMoves
{
public:
    OutwardMoves(const Mesh& mesh, const DeviceTransform& transform, const Task& task)
        : m_transform(transform), m_task(task), m_channels(static_cast<std::size_t>(mesh.channels))
    {
        const std::size_t maxVertices = m_channels > 7 ? 12'000 : 2'000; // the others have cells
        const std::vector<Vec3> vectors = areaVectors(mesh, task);
        const std::size_t stride = 1 + mesh.lab.size() / maxVertices;
        for (std::size_t v = 0; v < mesh.lab.size(); v += stride) {
            const double area = length(vectors[v]);
            if (!(area > 0.0))
                continue;
            const float* device = mesh.deviceOf(static_cast<int>(v));
            m_start.push_back(toVec3(mesh.lab[v]));
            m_out.push_back((1.0 / area) * vectors[v]);
            m_device.insert(m_device.end(), device, device + m_channels);
        }
        m_place = m_start;
        m_isEnd.resize(m_device.size());
        for (std::size_t i = 0; i < m_device.size(); ++i)
            m_isEnd[i] = m_device[i] == 0.0f || m_device[i] == 1.0f;
    }

    // Tries each of @p steps, in both directions, with each channel that was at an end; then all moves of a
    // colour that lead outwards, together.
    Result<void> move(const std::vector<float>& steps)
    {
        std::vector<float> tried;
        std::vector<std::size_t> places; // of the moved channels in m_device
        for (std::size_t i = 0; i < m_device.size(); ++i) {
            if (!m_isEnd[i])
                continue;
            for (const float step : steps) {
                for (const float value : {m_device[i] - step, m_device[i] + step}) {
                    if (value < 0.0f || value > 1.0f)
                        continue;
                    const auto colour = m_device.begin() + static_cast<std::ptrdiff_t>(i - i % m_channels);
                    tried.insert(tried.end(), colour, colour + static_cast<std::ptrdiff_t>(m_channels));
                    tried[tried.size() - m_channels + i % m_channels] = value;
                    places.push_back(i);
                }
            }
        }
        const auto lab = m_transform.toLab(tried, m_task);
        if (!lab)
            return failure(lab);
        return take(tried, places, *lab);
    }

    // Those that have moved outwards.
    std::vector<float> moved() const
    {
        std::vector<float> colours;
        for (std::size_t k = 0; k < m_place.size(); ++k) {
            const auto first = m_device.begin() + static_cast<std::ptrdiff_t>(k * m_channels);
            if (dot(m_out[k], m_place[k] - m_start[k]) > minDepth)
                colours.insert(colours.end(), first, first + static_cast<std::ptrdiff_t>(m_channels));
        }
        return colours;
    }

private:
    Result<void> take(const std::vector<float>& tried, const std::vector<std::size_t>& places,
                      const std::vector<Vec3>& lab)
    {
        std::vector<double> gains(m_device.size());
        std::vector<float> together = m_device;
        for (std::size_t t = 0; t < places.size(); ++t) {
            const std::size_t i = places[t], k = i / m_channels;
            const double gain = dot(m_out[k], lab[t] - m_place[k]);
            if (gain <= gains[i])
                continue;
            gains[i] = gain;
            together[i] = tried[t * m_channels + i % m_channels];
        }
        const auto all = m_transform.toLab(together, m_task);
        if (!all)
            return failure(all);
        for (std::size_t k = 0; k < m_place.size(); ++k) {
            const auto first = gains.begin() + static_cast<std::ptrdiff_t>(k * m_channels);
            const auto best = static_cast<std::size_t>(
                std::max_element(first, first + static_cast<std::ptrdiff_t>(m_channels)) - gains.begin());
            const bool isBetter = dot(m_out[k], (*all)[k] - m_place[k]) >= gains[best];
            for (std::size_t i = k * m_channels; i < (k + 1) * m_channels; ++i)
                if (isBetter || i == best)
                    m_device[i] = together[i];
        }
        auto moved = m_transform.toLab(m_device, m_task);
        if (!moved)
            return failure(moved);
        m_place = std::move(*moved);
        return {};
    }

    const DeviceTransform& m_transform;
    const Task& m_task;
    const std::size_t m_channels;
    std::vector<float> m_device; // of all colours
    std::vector<bool> m_isEnd;   // the channel was at an end of its range at first
    std::vector<Vec3> m_start;
    std::vector<Vec3> m_place;
    std::vector<Vec3> m_out; // directions outwards
};

Result<double> shareOutside(Outside& outside, const DeviceTransform& transform, const Task& task)
{
    constexpr std::size_t count = 4096;
    std::mt19937 random(1);
    std::vector<float> colours(count * static_cast<std::size_t>(transform.channels()));
    constexpr float scale = 1.0f / 16'777'216.0f; // std::uniform_real_distribution differs between libraries
    for (float& value : colours)
        value = static_cast<float>(random() >> 8) * scale;
    const auto lab = transform.toLab(colours, task);
    if (!lab)
        return failure(lab);
    std::size_t far = 0;
    for (const Vec3& colour : *lab) {
        if (task.isCancelled())
            return failure(KVProblemCode::Cancelled);
        far += outside.depthOf(colour) > minDepth;
    }
    return static_cast<double>(far) / static_cast<double>(count);
}

} // namespace

Result<MissedColours> findMissedColours(const Mesh& surface, const DeviceTransform& transform,
                                        const Task& task)
{
    Outside outside(surface, task);
    const auto volume = VertexCheck(surface, outside).missedVolume(transform, task.part(0.0, 0.7));
    if (!volume)
        return failure(volume);
    const auto share = shareOutside(outside, transform, task.part(0.7, 1.0));
    if (!share)
        return failure(share);
    return MissedColours{*volume, *share};
}

Result<std::vector<float>> coloursBeyond(const Mesh& surface, const DeviceTransform& transform,
                                         const Task& task)
{
    OutwardMoves moves(surface, transform, task);
    for (const std::vector<float>& steps : {std::vector{1.0f / 16.0f, 1.0f / 8.0f, 3.0f / 16.0f, 0.25f},
                                            std::vector{1.0f / 32.0f}, std::vector{1.0f / 64.0f}})
        if (const auto moved = moves.move(steps); !moved)
            return failure(moved);
    return moves.moved();
}

Result<std::vector<float>> coloursOutside(const Mesh& surface, const DeviceTransform& transform,
                                          const std::vector<float>& colours, const Task& task)
{
    const auto channels = static_cast<std::size_t>(transform.channels());
    const auto lab = transform.toLab(colours, task);
    if (!lab)
        return failure(lab);
    const WindingIndex winding(surface, task);
    std::vector<float> outside;
    for (std::size_t i = 0; i < lab->size(); ++i) {
        if (task.isCancelled())
            return failure(KVProblemCode::Cancelled);
        const auto first = colours.begin() + static_cast<std::ptrdiff_t>(i * channels);
        if (!winding.isInside((*lab)[i]))
            outside.insert(outside.end(), first, first + static_cast<std::ptrdiff_t>(channels));
    }
    return outside;
}

} // namespace velmora
