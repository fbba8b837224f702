// SPDX-License-Identifier: Apache-2.0
#include <gamut/MeshEdges.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>

namespace {

/// The edges found so far, without regard to their direction, as a hash table of indices. One block of
/// memory, which is released at once: a set with a node for each edge takes milliseconds to destroy.
class EdgeTable
{
public:
    explicit EdgeTable(std::size_t triangles)
        : m_slots(std::bit_ceil(4 * triangles + 1), 0u), m_mask(m_slots.size() - 1)
    {
        edges.reserve(triangles * 3 / 2); // of a closed surface
    }

    void insert(const MeshEdge& edge)
    {
        const auto [low, high] = std::minmax(edge[0], edge[1]);
        std::size_t slot = scattered(low, high) & m_mask;
        for (; m_slots[slot] != 0; slot = (slot + 1) & m_mask) {
            const MeshEdge& known = edges[m_slots[slot] - 1];
            if (std::minmax(known[0], known[1]) == std::pair<const int&, const int&>(low, high))
                return;
        }
        edges.push_back(edge);
        m_slots[slot] = static_cast<std::uint32_t>(edges.size());
    }

    std::vector<MeshEdge> edges;

private:
    static std::size_t scattered(int low, int high)
    {
        std::uint64_t key =
            std::uint64_t(static_cast<std::uint32_t>(low)) << 32 | static_cast<std::uint32_t>(high);
        key = (key ^ key >> 32) * 0xbf58476d1ce4e5b9u;
        return static_cast<std::size_t>(key ^ key >> 29);
    }

    std::vector<std::uint32_t> m_slots; ///< index of an edge plus 1; 0: free
    std::size_t m_mask;
};

} // namespace

std::vector<MeshEdge> kvUniqueEdges(const KVGamut::Mesh& mesh, const KVCancelCheck& cancelled)
{
    constexpr int trianglesBetweenChecks = 1024;
    CancelPacer pacer(cancelled, trianglesBetweenChecks);
    EdgeTable table(mesh.triangles.size());
    for (const KVGamut::Mesh::Triangle& t : mesh.triangles) {
        if (pacer.isCancelled())
            break;
        for (const MeshEdge& edge : {MeshEdge{t[0], t[1]}, MeshEdge{t[1], t[2]}, MeshEdge{t[2], t[0]}})
            table.insert(edge);
    }
    return std::move(table.edges);
}
