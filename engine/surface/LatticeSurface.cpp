// SPDX-License-Identifier: Apache-2.0
#include "LatticeSurface.h"

#include <engine/base/Parts.h>

#include <algorithm>

namespace velmora {
namespace {

using Step = std::array<int, 3>;

// Directions of the tetrahedra's edges: along the axes, the diagonals of the cell's facets and of the cell.
// The first runs along L*; its lines decide which nodes lie in the solid.
constexpr std::array<Step, 7> directions{
    {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 0}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}}};

std::size_t directionOf(const Step& d)
{
    return static_cast<std::size_t>(std::find(directions.begin(), directions.end(), d) - directions.begin());
}

// Vertices keep this share of their edge away from its ends, so that no face degenerates.
constexpr double endShare = 0.02;

struct Lattice
{
    Vec3 origin;
    double pitch = 1.0;
    Step counts{0, 0, 0};

    std::size_t node(int i, int j, int k) const
    {
        return (static_cast<std::size_t>(i) * static_cast<std::size_t>(counts[1]) +
                static_cast<std::size_t>(j)) *
                   static_cast<std::size_t>(counts[2]) +
               static_cast<std::size_t>(k);
    }
    std::size_t size() const { return node(counts[0] - 1, counts[1] - 1, counts[2] - 1) + 1; }
    std::size_t offset(const Step& d) const { return node(d[0], d[1], d[2]); }
    Vec3 place(const Step& n) const
    {
        return origin + pitch * Vec3{double(n[0]), double(n[1]), double(n[2])};
    }
};

// At least one node around the solid on all sides. The offsets keep lattice planes away from the solid's
// bounds, where box-shaped solids would have their facets.
Lattice latticeAround(const DeviceSolid& solid, double pitch)
{
    Vec3 low = solid.points.front(), high = low;
    for (const Vec3& p : solid.points) {
        low = {std::min(low.L, p.L), std::min(low.a, p.a), std::min(low.b, p.b)};
        high = {std::max(high.L, p.L), std::max(high.a, p.a), std::max(high.b, p.b)};
    }
    Lattice lattice;
    lattice.pitch = pitch;
    lattice.origin = low - pitch * Vec3{1.37, 1.41, 1.29};
    const auto count = [pitch](double from, double to) { return static_cast<int>((to - from) / pitch) + 3; };
    lattice.counts = {count(lattice.origin.L, high.L), count(lattice.origin.a, high.a),
                      count(lattice.origin.b, high.b)};
    return lattice;
}

// The lines along one direction. Coordinates are sheared so that the lines are parallel to the direction's
// first non-zero axis.
class Lines
{
public:
    Lines(const Lattice& lattice, const Step& direction) : m_lattice(lattice), m_direction(direction)
    {
        while (direction[static_cast<std::size_t>(m_main)] == 0)
            ++m_main;
        m_second = (m_main + 1) % 3;
        m_third = (m_main + 2) % 3;
        const Vec3 start = sheared(lattice.origin);
        const int back = countOf(m_main) - 1;
        m_firstA = -directionOf(m_second) * back;
        m_firstB = -directionOf(m_third) * back;
        m_grid.step = lattice.pitch;
        m_grid.a0 = start.a + m_firstA * lattice.pitch;
        m_grid.b0 = start.b + m_firstB * lattice.pitch;
        m_grid.na = countOf(m_second) - m_firstA;
        m_grid.nb = countOf(m_third) - m_firstB;
    }

    const LineGrid& grid() const { return m_grid; }

    Vec3 sheared(Vec3 p) const
    {
        const std::array<double, 3> x{p.L, p.a, p.b};
        const double along = x[static_cast<std::size_t>(m_main)];
        return {along, x[static_cast<std::size_t>(m_second)] - directionOf(m_second) * along,
                x[static_cast<std::size_t>(m_third)] - directionOf(m_third) * along};
    }

    std::size_t lineOf(const Step& n) const
    {
        const int along = n[static_cast<std::size_t>(m_main)];
        const int i = n[static_cast<std::size_t>(m_second)] - directionOf(m_second) * along - m_firstA;
        const int j = n[static_cast<std::size_t>(m_third)] - directionOf(m_third) * along - m_firstB;
        return static_cast<std::size_t>(j) * static_cast<std::size_t>(m_grid.na) +
               static_cast<std::size_t>(i);
    }

    double placeOf(const Step& n) const { return sheared(m_lattice.place(n)).L; }

private:
    int directionOf(int axis) const { return m_direction[static_cast<std::size_t>(axis)]; }
    int countOf(int axis) const { return m_lattice.counts[static_cast<std::size_t>(axis)]; }

    const Lattice& m_lattice;
    Step m_direction;
    int m_main = 0, m_second = 1, m_third = 2;
    int m_firstA = 0, m_firstB = 0;
    LineGrid m_grid;
};

// Calls visit(node, index of the node) for all nodes that have a neighbour in the direction. False if the
// task was cancelled before.
template <typename Visit>
bool forEdges(const Lattice& lattice, const Step& d, const Task& task, const Visit& visit)
{
    for (int i = 0; i + d[0] < lattice.counts[0]; ++i)
        for (int j = 0; j + d[1] < lattice.counts[1]; ++j) {
            if (task.isCancelled())
                return false;
            for (int k = 0; k + d[2] < lattice.counts[2]; ++k)
                visit(Step{i, j, k}, lattice.node(i, j, k));
        }
    return true;
}

class Marcher
{
public:
    Marcher(const DeviceSolid& solid, double pitch) : m_solid(solid), m_lattice(latticeAround(solid, pitch))
    {
    }

    Result<void> findCrossings(CastBudget& budget, const Task& task)
    {
        m_mesh.channels = m_solid.channels;
        std::vector<std::array<int, 4>> tetrahedra = m_solid.tetrahedra;
        std::vector<Vec3> points(m_solid.points.size());
        for (std::size_t d = 0; d < directions.size(); ++d) {
            const Lines lines(m_lattice, directions[d]);
            forEachIndex(points.size(), task,
                         [&](std::size_t i) { points[i] = lines.sheared(m_solid.points[i]); });
            const auto intervals =
                castThrough(points, tetrahedra, lines.grid(), innerParts(d, lines, task), budget, task);
            if (!intervals)
                return failure(intervals);
            if (d == 0)
                occupy(lines, *intervals, task);
            addVertices(d, lines, *intervals, tetrahedra, task);
            if (d == 0)
                keepTetrahedraAtSurface(tetrahedra, task);
            if (task.isCancelled())
                return failure(KVProblemCode::Cancelled);
            task.setProgress(double(d + 1) / double(directions.size() + 1));
        }
        return {};
    }

    Result<void> march(const Task& task)
    {
        const auto marchOne = [this](const Step&, std::size_t node) { marchCell(node); };
        if (!forEdges(m_lattice, {1, 1, 1}, task, marchOne))
            return failure(KVProblemCode::Cancelled);
        return {};
    }

    Mesh takeMesh() { return std::move(m_mesh); }

private:
    struct Crossing
    {
        std::size_t node;
        int vertex;
    };

    // Incomplete if the task is cancelled, as the next two.
    void occupy(const Lines& lines, const LineIntervals& columns, const Task& task)
    {
        growInParts(m_occupied, m_lattice.size(), '\0', task);
        for (int j = 0; j < m_lattice.counts[1] && !task.isCancelled(); ++j)
            for (int k = 0; k < m_lattice.counts[2]; ++k) {
                const std::size_t line = lines.lineOf({0, j, k});
                for (std::uint32_t s = columns.first[line]; s < columns.first[line + 1]; ++s) {
                    const Interval& interval = columns.intervals[s];
                    const auto from = static_cast<int>(
                        std::ceil((double(interval.low) - m_lattice.origin.L) / m_lattice.pitch));
                    const auto to = static_cast<int>(
                        std::floor((double(interval.high) - m_lattice.origin.L) / m_lattice.pitch));
                    for (int i = from; i <= to; ++i)
                        m_occupied[m_lattice.node(i, j, k)] = 1;
                }
            }
    }

    // After the first direction only tetrahedra near the surface matter: removes those that overlap no cell
    // with nodes both inside and outside.
    void keepTetrahedraAtSurface(std::vector<std::array<int, 4>>& tetrahedra, const Task& task)
    {
        std::vector<char> atSurface; // of the cell above each node
        growInParts(atSurface, m_lattice.size(), '\0', task);
        const Step last{m_lattice.counts[0] - 1, m_lattice.counts[1] - 1, m_lattice.counts[2] - 1};
        forEdges(m_lattice, {1, 1, 1}, task, [&](const Step&, std::size_t node) {
            int sum = 0;
            for (std::size_t corner : cellCorners())
                sum += m_occupied[node + corner];
            atSurface[node] = sum != 0 && sum != 8;
        });
        const auto cellOf = [this, &last](Vec3 p) {
            const Vec3 x = (1.0 / m_lattice.pitch) * (p - m_lattice.origin);
            return Step{std::clamp(static_cast<int>(x.L), 0, last[0]),
                        std::clamp(static_cast<int>(x.a), 0, last[1]),
                        std::clamp(static_cast<int>(x.b), 0, last[2])};
        };
        const auto isAtSurface = [&](const std::array<int, 4>& t) {
            Vec3 low = m_solid.points[static_cast<std::size_t>(t[0])], high = low;
            for (int v : t) {
                const Vec3& p = m_solid.points[static_cast<std::size_t>(v)];
                low = {std::min(low.L, p.L), std::min(low.a, p.a), std::min(low.b, p.b)};
                high = {std::max(high.L, p.L), std::max(high.a, p.a), std::max(high.b, p.b)};
            }
            const Step from = cellOf(low), to = cellOf(high);
            for (int i = from[0]; i <= to[0]; ++i)
                for (int j = from[1]; j <= to[1]; ++j)
                    for (int k = from[2]; k <= to[2]; ++k)
                        if (atSurface[m_lattice.node(i, j, k)])
                            return true;
            return false;
        };
        std::size_t kept = 0;
        forEachIndex(tetrahedra.size(), task, [&](std::size_t t) {
            if (isAtSurface(tetrahedra[t]))
                tetrahedra[kept++] = tetrahedra[t];
        });
        tetrahedra.resize(kept);
    }

    // The longest part of each line between two nodes at the surface; all of a line that does not cross it.
    // Before it is known which nodes are inside, none.
    std::vector<LinePart> innerParts(std::size_t direction, const Lines& lines, const Task& task) const
    {
        std::vector<LinePart> parts(lines.grid().size(), direction > 0 ? LinePart::whole() : LinePart());
        std::vector<float> entered(direction > 0 ? parts.size() : 0, std::numeric_limits<float>::max());
        const Step& d = directions[direction];
        const auto look = [&](const Step& n, std::size_t node) {
            if (m_occupied[node] == m_occupied[node + m_lattice.offset(d)])
                return;
            const std::size_t line = lines.lineOf(n);
            LinePart& part = parts[line];
            part = part.isWhole() ? LinePart() : part;
            constexpr double within = 2.0 * placeTolerance; // the nodes themselves are not part of it
            const double place = lines.placeOf(n);
            const LinePart inner{entered[line], static_cast<float>(place - within)};
            if (!m_occupied[node])
                entered[line] = static_cast<float>(place + m_lattice.pitch + within);
            else if (inner.length() > std::max(0.0f, part.length()))
                part = inner;
        };
        if (direction > 0)
            forEdges(m_lattice, d, task, look);
        return parts;
    }

    std::array<std::size_t, 8> cellCorners() const
    {
        std::array<std::size_t, 8> corners{};
        for (std::size_t c = 0; c < 8; ++c)
            corners[c] = m_lattice.offset({int(c >> 2 & 1), int(c >> 1 & 1), int(c & 1)});
        return corners;
    }

    void addVertices(std::size_t direction, const Lines& lines, const LineIntervals& intervals,
                     const std::vector<std::array<int, 4>>& tetrahedra, const Task& task)
    {
        const Step& d = directions[direction];
        const std::size_t offset = m_lattice.offset(d);
        forEdges(m_lattice, d, task, [&](const Step& n, std::size_t node) {
            if (m_occupied[node] == m_occupied[node + offset])
                return;
            const double from = lines.placeOf(n);
            const bool leaves = m_occupied[node] != 0;
            const std::size_t line = lines.lineOf(n);
            const Interval* begin = intervals.intervals.data() + intervals.first[line];
            const Interval* end = intervals.intervals.data() + intervals.first[line + 1];
            // Because of rounding a line may miss a tetrahedron that the line along L* through the node hits.
            // The surface is then assumed to pass through the node.
            double place = leaves ? from : from + m_lattice.pitch;
            int tetrahedron = -1;
            for (const Interval* s = begin; s != end; ++s)
                if (double(s->low) <= place + placeTolerance && place <= double(s->high) + placeTolerance) {
                    tetrahedron = leaves ? s->highTetrahedron : s->lowTetrahedron;
                    place = double(leaves ? s->high : s->low);
                    break;
                }
            const double share = (place - from) / m_lattice.pitch;
            addVertex(n, d, std::clamp(share, endShare, 1.0 - endShare), share,
                      tetrahedron < 0 ? nullptr : &tetrahedra[static_cast<std::size_t>(tetrahedron)]);
            m_crossings[direction].push_back({node, static_cast<int>(m_mesh.lab.size()) - 1});
        });
    }

    void addVertex(const Step& n, const Step& d, double share, double trueShare,
                   const std::array<int, 4>* tetrahedron)
    {
        const Vec3 along = m_lattice.pitch * Vec3{double(d[0]), double(d[1]), double(d[2])};
        const Vec3 start = m_lattice.place(n);
        m_mesh.lab.push_back(snapped(start + share * along));
        const auto channels = static_cast<std::size_t>(m_solid.channels);
        const Vec3 x = start + trueShare * along;
        const std::array<double, 4> weights =
            tetrahedron ? barycentric(*tetrahedron, x) : std::array{1.0, 0.0, 0.0, 0.0};
        for (std::size_t c = 0; c < channels; ++c) {
            double value = 0.0;
            for (std::size_t i = 0; i < 4; ++i) {
                const auto corner =
                    tetrahedron ? static_cast<std::size_t>((*tetrahedron)[i]) : nearestPoint(x);
                value += weights[i] * double(m_solid.device[corner * channels + c]);
            }
            m_mesh.device.push_back(static_cast<float>(std::clamp(value, 0.0, 1.0)));
        }
    }

    // Barycentric coordinates of a point in a tetrahedron.
    std::array<double, 4> barycentric(const std::array<int, 4>& tetrahedron, Vec3 x) const
    {
        std::array<Vec3, 4> p;
        for (std::size_t i = 0; i < 4; ++i)
            p[i] = m_solid.points[static_cast<std::size_t>(tetrahedron[i])];
        const Vec3 u = p[1] - p[0], v = p[2] - p[0], w = p[3] - p[0], t = x - p[0];
        const double volume = dot(u, cross(v, w));
        const double q = dot(t, cross(v, w)) / volume, r = dot(t, cross(w, u)) / volume,
                     s = dot(t, cross(u, v)) / volume;
        return {1.0 - q - r - s, q, r, s};
    }

    std::size_t nearestPoint(Vec3 x) const
    {
        const auto nearest =
            std::min_element(m_solid.points.begin(), m_solid.points.end(),
                             [x](Vec3 p, Vec3 q) { return dot(p - x, p - x) < dot(q - x, q - x); });
        return static_cast<std::size_t>(nearest - m_solid.points.begin());
    }

    int vertexOn(std::size_t node, const Step& from, const Step& to) const
    {
        Step d{to[0] - from[0], to[1] - from[1], to[2] - from[2]};
        Step start = from;
        if (d[0] + d[1] + d[2] < 0) {
            d = {-d[0], -d[1], -d[2]};
            start = to;
        }
        const std::size_t at = node + m_lattice.offset(start);
        const auto& crossings = m_crossings[velmora::directionOf(d)];
        const auto found = std::lower_bound(crossings.begin(), crossings.end(), at,
                                            [](const Crossing& c, std::size_t x) { return c.node < x; });
        return found->vertex;
    }

    void marchCell(std::size_t node)
    {
        int sum = 0;
        for (std::size_t corner : cellCorners())
            sum += m_occupied[node + corner];
        if (sum == 0 || sum == 8)
            return;
        // Each tetrahedron follows the path from the cell's lowest corner to its highest, one axis after the
        // other. Odd permutations of the axes are left-handed.
        constexpr std::array<std::array<int, 3>, 6> orders{
            {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {1, 0, 2}, {2, 1, 0}, {0, 2, 1}}};
        for (std::size_t o = 0; o < orders.size(); ++o) {
            std::array<Step, 4> corners{Step{0, 0, 0}, Step{0, 0, 0}, Step{0, 0, 0}, Step{1, 1, 1}};
            corners[1][static_cast<std::size_t>(orders[o][0])] = 1;
            corners[2] = corners[1];
            corners[2][static_cast<std::size_t>(orders[o][1])] = 1;
            if (o >= 3)
                std::swap(corners[1], corners[2]);
            marchTetrahedron(node, corners);
        }
    }

    // The tetrahedron is right-handed: seen from its last corner, the others are counter-clockwise.
    void marchTetrahedron(std::size_t node, std::array<Step, 4> corners)
    {
        const auto inside = [&](const Step& corner) {
            return m_occupied[node + m_lattice.offset(corner)] != 0;
        };
        // Sorts the corners that are inside first. Each swap reverses the orientation.
        bool right = true;
        for (std::size_t i = 0; i < 4; ++i)
            for (std::size_t j = 0; j < 3; ++j)
                if (!inside(corners[j]) && inside(corners[j + 1])) {
                    std::swap(corners[j], corners[j + 1]);
                    right = !right;
                }
        int count = 0;
        for (const Step& corner : corners)
            count += inside(corner);
        const auto vertex = [&](std::size_t i, std::size_t j) {
            return vertexOn(node, corners[i], corners[j]);
        };
        const auto add = [&](int p, int q, int r) {
            m_mesh.triangles.push_back(right ? Triangle{p, q, r} : Triangle{p, r, q});
        };
        if (count == 1) {
            add(vertex(0, 1), vertex(0, 2), vertex(0, 3));
        } else if (count == 3) {
            add(vertex(3, 0), vertex(3, 1), vertex(3, 2));
        } else if (count == 2) {
            add(vertex(0, 2), vertex(0, 3), vertex(1, 3));
            add(vertex(0, 2), vertex(1, 3), vertex(1, 2));
        }
    }

    static constexpr double placeTolerance = 1e-3; // dE; an interval that ends this close contains the node

    const DeviceSolid& m_solid;
    Lattice m_lattice;
    std::vector<char> m_occupied;
    std::array<std::vector<Crossing>, 7> m_crossings; // sorted by node
    Mesh m_mesh;
};

} // namespace

Result<Mesh> latticeSurface(const DeviceSolid& solid, double pitch, CastBudget& budget, const Task& task)
{
    Marcher marcher(solid, pitch);
    if (const auto found = marcher.findCrossings(budget, task); !found)
        return failure(found);
    if (const auto marched = marcher.march(task); !marched)
        return failure(marched);
    return marcher.takeMesh();
}

Result<double> pitchForFaces(const DeviceSolid& solid, double faces, CastBudget& budget, const Task& task)
{
    Vec3 low = solid.points.front(), high = low;
    for (const Vec3& p : solid.points) {
        low = {std::min(low.L, p.L), std::min(low.a, p.a), std::min(low.b, p.b)};
        high = {std::max(high.L, p.L), std::max(high.a, p.a), std::max(high.b, p.b)};
    }
    // A coarse trial; the number of faces is proportional to 1 / pitch squared.
    const double extent = std::max({high.L - low.L, high.a - low.a, high.b - low.b});
    const double trial = extent / 40.0;
    if (!(trial > 0.0))
        return failure(KVProblemCode::TooSmall);
    const auto mesh = latticeSurface(solid, trial, budget, task);
    if (!mesh)
        return failure(mesh);
    if (mesh->triangles.empty())
        return failure(KVProblemCode::TooSmall);
    constexpr double maxNodes = 6e6;
    const Vec3 box = high - low + trial * Vec3{1, 1, 1};
    return std::max(std::cbrt(box.L * box.a * box.b / maxNodes),
                    trial * std::sqrt(double(mesh->triangles.size()) / faces));
}

} // namespace velmora
