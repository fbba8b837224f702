// SPDX-License-Identifier: Apache-2.0
#include "Cells.h"

#include "ColumnHull.h"

#include <numeric>
#include <random>

namespace kvdevices {
namespace {

constexpr std::size_t maxLinear = 4;
// The orders in which a path along the edges of a cube goes from (0, 0, 0) to (1, 1, 1).
constexpr std::size_t paths[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};

// The indices of the nodes of a grid.
class Indices
{
public:
    explicit Indices(const GridImage& image) : m_nodes(image.nodes), m_strides(image.nodes.size(), 1)
    {
        for (std::size_t c = m_nodes.size() - 1; c-- > 0;)
            m_strides[c] = m_strides[c + 1] * m_nodes[c + 1];
    }
    std::size_t stride(std::size_t channel) const { return m_strides[channel]; }
    // The first nodes of all cells.
    std::vector<std::size_t> cells() const
    {
        std::vector<std::size_t> firsts{0};
        for (std::size_t c = 0; c < m_nodes.size(); ++c) {
            std::vector<std::size_t> longer;
            for (std::size_t first : firsts)
                for (std::size_t i = 0; i + 1 < m_nodes[c]; ++i)
                    longer.push_back(first + i * m_strides[c]);
            firsts = std::move(longer);
        }
        return firsts;
    }
    // The corners of the tetrahedron on a path over the last three channels.
    std::array<std::size_t, 4> tetrahedron(std::size_t first, const std::size_t path[3]) const
    {
        std::array<std::size_t, 4> corners{first};
        for (std::size_t i = 0; i < 3; ++i)
            corners[i + 1] = corners[i] + m_strides[m_strides.size() - 3 + path[i]];
        return corners;
    }

private:
    std::vector<std::size_t> m_nodes, m_strides;
};

double sixfoldVolume(const std::array<Point, 4>& p)
{
    return std::abs(dot(cross(p[1] - p[0], p[2] - p[0]), p[3] - p[0]));
}

// Rounding may decide on which side of a face the opposite corner is.
bool isFlat(const std::array<Point, 4>& p)
{
    double longest = 0.0;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = i + 1; j < 4; ++j)
            longest = std::max(longest, length(p[j] - p[i]));
    return sixfoldVolume(p) <= 1e-9 * longest * longest * longest;
}

void insertTetrahedron(const std::array<Point, 4>& p, ColumnUnion& columns)
{
    if (isFlat(p))
        return;
    Polytope polytope;
    for (std::size_t i = 0; i < 4; ++i) {
        const Point &a = p[(i + 1) % 4], &b = p[(i + 2) % 4], &c = p[(i + 3) % 4];
        const Point normal = cross(b - a, c - a);
        const double side = dot(normal, p[i] - a);
        polytope.cut(side < 0.0 ? normal : -1.0 * normal, side < 0.0 ? dot(normal, a) : -dot(normal, a));
    }
    Box box;
    for (const Point& corner : p)
        box.include(corner);
    const auto x = columns.columnsX(box.low[0], box.high[0]), y = columns.columnsY(box.low[1], box.high[1]);
    for (int j = y.low; j <= y.high; ++j)
        for (int i = x.low; i <= x.high; ++i)
            if (const auto part = polytope.at(columns.placeX(i), columns.placeY(j)))
                columns.insert(i, j, *part);
}

// The image of a product of intervals of the linear channels and a tetrahedron: four points for each corner
// of the product of the intervals.
struct Element
{
    std::size_t linear;
    std::array<std::array<Point, 4>, 1u << maxLinear> corners;

    std::size_t count() const { return std::size_t(1) << linear; }
    std::span<const Point> points() const { return {corners[0].data(), 4 * count()}; }
    // The half at the low or the high end of one interval.
    Element half(std::size_t axis, bool high) const
    {
        Element part = *this;
        const std::size_t bit = std::size_t(1) << axis;
        for (std::size_t i = 0; i < count(); ++i)
            if (((i & bit) != 0) != high)
                for (std::size_t v = 0; v < 4; ++v)
                    part.corners[i][v] = midpoint(corners[i & ~bit][v], corners[i | bit][v]);
        return part;
    }
    Point edge(std::size_t from, std::size_t to) const { return corners[0][to] - corners[0][from]; }
    Point interval(std::size_t axis) const { return corners[std::size_t(1) << axis][0] - corners[0][0]; }
};

// The normals of the faces of an element if the map is affine in it.
std::vector<Point> normalsOf(const Element& element)
{
    std::vector<Point> edges, intervals, normals;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = i + 1; j < 4; ++j)
            edges.push_back(element.edge(i, j));
    for (std::size_t axis = 0; axis < element.linear; ++axis)
        intervals.push_back(element.interval(axis));
    for (const auto& [i, j] : {std::pair{0, 1}, {0, 2}, {1, 2}, {3, 4}})
        normals.push_back(cross(edges[std::size_t(i)], edges[std::size_t(j)]));
    for (std::size_t i = 0; i < intervals.size(); ++i) {
        for (const Point& edge : edges)
            normals.push_back(cross(intervals[i], edge));
        for (std::size_t j = i + 1; j < intervals.size(); ++j)
            normals.push_back(cross(intervals[i], intervals[j]));
    }
    return normals;
}

// Contains the element; equal to it if the map is affine in it.
Polytope polytopeAround(const Element& element, const Box& box)
{
    Polytope polytope;
    for (const Point& normal : normalsOf(element)) {
        double low = 1e300, high = -1e300;
        for (const Point& p : element.points()) {
            low = std::min(low, dot(normal, p));
            high = std::max(high, dot(normal, p));
        }
        if (length(normal) < 1e-12)
            continue;
        polytope.cut(normal, high);
        polytope.cut(-1.0 * normal, -low);
    }
    polytope.cut({0, 0, 1}, box.high[2]);
    polytope.cut({0, 0, -1}, -box.low[2]);
    return polytope;
}

class CellInserter
{
public:
    CellInserter(const GridImage& image, std::size_t slices, ColumnUnion& columns)
        : m_image(image), m_indices(image), m_linear(image.nodes.size() - 3), m_columns(columns)
    {
        while (slices > 1) {
            m_halvings += m_linear;
            slices /= 2;
        }
    }

    // In random order, so that much of the solid is covered soon.
    void insertAll()
    {
        std::vector<std::size_t> cells = m_indices.cells();
        std::shuffle(cells.begin(), cells.end(), std::mt19937(5));
        for (std::size_t first : cells)
            insertCell(first);
    }

private:
    std::size_t cornerOf(std::size_t first, std::size_t bits) const
    {
        for (std::size_t c = 0; bits != 0; ++c, bits >>= 1)
            first += bits & 1u ? m_indices.stride(c) : 0;
        return first;
    }

    void insertCell(std::size_t first)
    {
        Box box;
        for (std::size_t bits = 0; bits < std::size_t(1) << (m_linear + 3); ++bits)
            box.include(m_image.lab[cornerOf(first, bits)]);
        if (m_columns.coversBox(box))
            return;
        for (const auto& path : paths) {
            Element element{m_linear, {}};
            for (std::size_t bits = 0; bits < element.count(); ++bits) {
                const auto corners = m_indices.tetrahedron(cornerOf(first, bits), path);
                for (std::size_t v = 0; v < 4; ++v)
                    element.corners[bits][v] = m_image.lab[corners[v]];
            }
            insert(element, m_halvings);
        }
    }

    void insert(const Element& element, std::size_t halvings)
    {
        Box box;
        for (const Point& p : element.points())
            box.include(p);
        if (m_columns.coversBox(box))
            return;
        const Polytope around = polytopeAround(element, box);
        if (halvings == 0) {
            insertHull(element, box, around);
        } else if (needsMore(box, around)) {
            const std::size_t axis = halvings % m_linear;
            insert(element.half(axis, false), halvings - 1);
            insert(element.half(axis, true), halvings - 1);
        }
    }

    bool needsMore(const Box& box, const Polytope& around) const
    {
        const auto x = m_columns.columnsX(box.low[0], box.high[0]),
                   y = m_columns.columnsY(box.low[1], box.high[1]);
        for (int j = y.low; j <= y.high; ++j)
            for (int i = x.low; i <= x.high; ++i) {
                const auto part = around.at(m_columns.placeX(i), m_columns.placeY(j));
                if (part && !m_columns.covers(i, j, *part))
                    return true;
            }
        return false;
    }

    void insertHull(const Element& element, const Box& box, const Polytope& around)
    {
        const auto x = m_columns.columnsX(box.low[0], box.high[0]),
                   y = m_columns.columnsY(box.low[1], box.high[1]);
        for (int j = y.low; j <= y.high; ++j)
            for (int i = x.low; i <= x.high; ++i) {
                const double placeX = m_columns.placeX(i), placeY = m_columns.placeY(j);
                const auto outer = around.at(placeX, placeY);
                if (!outer || m_columns.covers(i, j, *outer))
                    continue;
                if (const auto part = columnOfHull(element.points(), placeX, placeY))
                    m_columns.insert(i, j, *part);
            }
    }

    const GridImage& m_image;
    const Indices m_indices;
    const std::size_t m_linear;
    std::size_t m_halvings = 0;
    ColumnUnion& m_columns;
};

} // namespace

Tetrahedra insertTetrahedra(const GridImage& image, ColumnUnion& columns)
{
    const Indices indices(image);
    double volume = 0.0;
    for (std::size_t first : indices.cells())
        for (const auto& path : paths) {
            const auto corners = indices.tetrahedron(first, path);
            const std::array<Point, 4> p{image.lab[corners[0]], image.lab[corners[1]], image.lab[corners[2]],
                                         image.lab[corners[3]]};
            volume += sixfoldVolume(p) / 6.0;
            insertTetrahedron(p, columns);
        }
    return {volume};
}

void insertCells(const GridImage& image, std::size_t slices, ColumnUnion& columns)
{
    CellInserter(image, slices, columns).insertAll();
}

double twistOf(const GridImage& image)
{
    const Indices indices(image);
    const std::size_t channels = image.nodes.size();
    double squares = 0.0;
    std::size_t count = 0;
    for (std::size_t first : indices.cells())
        for (std::size_t c = 0; c + 3 < channels; ++c)
            for (std::size_t other = c + 1; other < channels; ++other, ++count) {
                const std::size_t i = indices.stride(c), j = indices.stride(other);
                const Point twist =
                    image.lab[first + i + j] - image.lab[first + i] - image.lab[first + j] + image.lab[first];
                squares += dot(twist, twist);
            }
    return count == 0 ? 0.0 : std::sqrt(squares / double(count));
}

} // namespace kvdevices
