// SPDX-License-Identifier: Apache-2.0
#include "Compare.h"

#include "Columns.h"
#include "MeshVolume.h"
#include <engine/base/Parts.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

namespace velmora {
namespace {

// A face seen along L*: its projection, counter-clockwise, and its plane L = L0 + u (a - a0) + v (b - b0).
struct Sheet
{
    std::array<std::array<double, 2>, 3> ab;
    double L0, u, v;
    double lowL, highL;
    double sign; // +1 if it faces up
    double lowA, highA, lowB, highB;

    double lightness(double a, double b) const
    {
        return std::clamp(L0 + u * (a - ab[0][0]) + v * (b - ab[0][1]), lowL, highL);
    }
};

std::vector<Sheet> sheetsOf(const Mesh& mesh, const Task& task)
{
    const auto points = latticePoints(mesh);
    std::vector<Sheet> sheets;
    sheets.reserve(mesh.triangles.size());
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t f) {
        const Triangle& t = mesh.triangles[f];
        const LatticePoint& p = points[static_cast<std::size_t>(t[0])];
        LatticePoint q = points[static_cast<std::size_t>(t[1])];
        LatticePoint r = points[static_cast<std::size_t>(t[2])];
        std::int64_t area = orientationAb(p, q, r);
        if (area == 0)
            return; // parallel to L*: its projection has no area
        Sheet s;
        s.sign = area > 0 ? 1.0 : -1.0;
        if (area < 0) {
            std::swap(q, r);
            area = -area;
        }
        const auto place = [](const LatticePoint& x) {
            return std::array<double, 2>{x.a / latticeScale, x.b / latticeScale};
        };
        s.ab = {place(p), place(q), place(r)};
        s.L0 = p.L / latticeScale;
        s.u = (double(q.L - p.L) * double(r.b - p.b) - double(r.L - p.L) * double(q.b - p.b)) / double(area);
        s.v = (double(r.L - p.L) * double(q.a - p.a) - double(q.L - p.L) * double(r.a - p.a)) / double(area);
        s.lowL = std::min({p.L, q.L, r.L}) / latticeScale;
        s.highL = std::max({p.L, q.L, r.L}) / latticeScale;
        s.lowA = std::min({s.ab[0][0], s.ab[1][0], s.ab[2][0]});
        s.highA = std::max({s.ab[0][0], s.ab[1][0], s.ab[2][0]});
        s.lowB = std::min({s.ab[0][1], s.ab[1][1], s.ab[2][1]});
        s.highB = std::max({s.ab[0][1], s.ab[1][1], s.ab[2][1]});
        sheets.push_back(s);
    });
    return sheets;
}

struct Vertex
{
    double a, b;
    double height;     // the integrand
    double difference; // lightness of the second sheet minus that of the first
};

// A triangle that is clipped by up to four half-planes. A clip adds at most one vertex, except in very thin
// triangles: there rounding can put successive vertices on alternating sides, and n vertices become at most
// 3n/2. The numbers of vertices after the four clips are therefore at most 4, 6, 9 and 13.
struct Polygon
{
    std::array<Vertex, 13> vertices;
    std::size_t size = 0;

    void add(const Vertex& v) { vertices[size++] = v; }
};

// The part of a polygon where side(vertex) >= 0 (Sutherland and Hodgman 1974).
template <typename Side>
Polygon cut(const Polygon& polygon, const Side& side)
{
    Polygon result;
    for (std::size_t i = 0; i < polygon.size; ++i) {
        const Vertex& p = polygon.vertices[i];
        const Vertex& q = polygon.vertices[i + 1 < polygon.size ? i + 1 : 0];
        const double sp = side(p), sq = side(q);
        if (sp >= 0.0)
            result.add(p);
        if ((sp >= 0.0) != (sq >= 0.0)) {
            const double t = sp / (sp - sq);
            result.add({p.a + t * (q.a - p.a), p.b + t * (q.b - p.b), p.height + t * (q.height - p.height),
                        p.difference + t * (q.difference - p.difference)});
        }
    }
    return result;
}

// The integral of the height, which is linear on the polygon.
double integral(const Polygon& polygon)
{
    double sum = 0.0;
    for (std::size_t i = 2; i < polygon.size; ++i) {
        const Vertex& p = polygon.vertices[0];
        const Vertex& q = polygon.vertices[i - 1];
        const Vertex& r = polygon.vertices[i];
        const double twiceArea = (q.a - p.a) * (r.b - p.b) - (q.b - p.b) * (r.a - p.a);
        sum += twiceArea / 6.0 * (p.height + q.height + r.height);
    }
    return sum;
}

// The integral of the lower of two sheets over their common projection.
double lowerIntegral(const Sheet& s, const Sheet& t)
{
    Polygon common;
    for (const auto& corner : s.ab)
        common.add({corner[0], corner[1], 0.0, 0.0});
    for (std::size_t i = 0; i < 3 && common.size > 2; ++i) {
        const auto& from = t.ab[i];
        const auto& to = t.ab[(i + 1) % 3];
        common = cut(common, [&](const Vertex& c) {
            return (to[0] - from[0]) * (c.b - from[1]) - (to[1] - from[1]) * (c.a - from[0]);
        });
    }
    if (common.size < 3)
        return 0.0;
    bool sUnder = true, tUnder = true;
    for (std::size_t i = 0; i < common.size; ++i) {
        Vertex& c = common.vertices[i];
        const double Ls = s.lightness(c.a, c.b), Lt = t.lightness(c.a, c.b);
        c.height = Ls;
        c.difference = Lt - Ls;
        sUnder = sUnder && c.difference >= 0.0;
        tUnder = tUnder && c.difference <= 0.0;
    }
    if (sUnder)
        return integral(common);
    const auto asT = [](Polygon polygon) {
        for (std::size_t i = 0; i < polygon.size; ++i)
            polygon.vertices[i].height += polygon.vertices[i].difference;
        return polygon;
    };
    if (tUnder)
        return integral(asT(common));
    return integral(cut(common, [](const Vertex& c) { return c.difference; })) +
           integral(asT(cut(common, [](const Vertex& c) { return -c.difference; })));
}

// A grid over the common ab bounds of both solids. Each cell lists the sheets whose bounds overlap it.
class CellGrid
{
public:
    CellGrid(double lowA, double highA, double lowB, double highB) : m_lowA(lowA), m_lowB(lowB)
    {
        constexpr double cellsAcross = 96.0;
        m_size = std::max({highA - lowA, highB - lowB, 1e-9}) / cellsAcross;
        m_columns = static_cast<int>((highA - lowA) / m_size) + 1;
        m_rows = static_cast<int>((highB - lowB) / m_size) + 1;
    }

    int column(double a) const
    {
        return std::clamp(static_cast<int>((a - m_lowA) / m_size), 0, m_columns - 1);
    }
    int row(double b) const { return std::clamp(static_cast<int>((b - m_lowB) / m_size), 0, m_rows - 1); }
    int cell(int column, int row) const { return row * m_columns + column; }
    std::size_t size() const
    {
        return static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows);
    }

    struct Lists
    {
        std::vector<int> first;
        std::vector<int> sheets;
    };

    Lists listed(const std::vector<Sheet>& sheets) const
    {
        Lists lists;
        lists.first.assign(size() + 1, 0);
        const auto forCells = [this](const Sheet& s, const auto& visit) {
            for (int j = row(s.lowB); j <= row(s.highB); ++j)
                for (int i = column(s.lowA); i <= column(s.highA); ++i)
                    visit(static_cast<std::size_t>(cell(i, j)));
        };
        for (const Sheet& s : sheets)
            forCells(s, [&](std::size_t c) { ++lists.first[c + 1]; });
        std::partial_sum(lists.first.begin(), lists.first.end(), lists.first.begin());
        lists.sheets.resize(static_cast<std::size_t>(lists.first.back()));
        std::vector<int> next(lists.first.begin(), lists.first.end() - 1);
        for (std::size_t s = 0; s < sheets.size(); ++s)
            forCells(sheets[s], [&](std::size_t c) {
                lists.sheets[static_cast<std::size_t>(next[c]++)] = static_cast<int>(s);
            });
        return lists;
    }

private:
    double m_lowA, m_lowB;
    double m_size = 1.0;
    int m_columns = 1;
    int m_rows = 1;
};

bool overlap(const Sheet& s, const Sheet& t)
{
    return s.lowA < t.highA && t.lowA < s.highA && s.lowB < t.highB && t.lowB < s.highB;
}

void keepWithin(std::vector<Sheet>& sheets, double lowA, double highA, double lowB, double highB)
{
    std::erase_if(sheets, [=](const Sheet& s) {
        return s.highA <= lowA || s.lowA >= highA || s.highB <= lowB || s.lowB >= highB;
    });
}

} // namespace

double intersectionVolume(const Mesh& first, const Mesh& second, const Task& task)
{
    if (first.triangles.empty() || second.triangles.empty())
        return 0.0;
    const LatticeBox p = boundsOf(latticePoints(first)), q = boundsOf(latticePoints(second));
    if (p.low.L >= q.high.L || q.low.L >= p.high.L)
        return 0.0;
    const double lowA = std::max(p.low.a, q.low.a) / latticeScale;
    const double highA = std::min(p.high.a, q.high.a) / latticeScale;
    const double lowB = std::max(p.low.b, q.low.b) / latticeScale;
    const double highB = std::min(p.high.b, q.high.b) / latticeScale;
    if (lowA >= highA || lowB >= highB)
        return 0.0;

    std::vector<Sheet> ours = sheetsOf(first, task), theirs = sheetsOf(second, task);
    keepWithin(ours, lowA, highA, lowB, highB);
    keepWithin(theirs, lowA, highA, lowB, highB);
    const CellGrid grid(lowA, highA, lowB, highB);
    const CellGrid::Lists ourLists = grid.listed(ours), theirLists = grid.listed(theirs);
    double volume = 0.0;
    for (std::size_t c = 0; c < grid.size() && !task.isCancelled(); ++c)
        for (int i = ourLists.first[c]; i < ourLists.first[c + 1]; ++i) {
            const Sheet& s = ours[static_cast<std::size_t>(ourLists.sheets[static_cast<std::size_t>(i)])];
            for (int j = theirLists.first[c]; j < theirLists.first[c + 1]; ++j) {
                const Sheet& t =
                    theirs[static_cast<std::size_t>(theirLists.sheets[static_cast<std::size_t>(j)])];
                if (!overlap(s, t))
                    continue;
                // A pair can share several cells; it is counted in that of the lower corner of its overlap.
                const int home =
                    grid.cell(grid.column(std::max(s.lowA, t.lowA)), grid.row(std::max(s.lowB, t.lowB)));
                if (static_cast<std::size_t>(home) == c)
                    volume += s.sign * t.sign * lowerIntegral(s, t);
            }
        }

    // Terms that should cancel leave rounding errors: snap to the exact result of touching solids (nothing
    // in common) and of nested ones (the smaller solid).
    const double smaller = std::min(signedVolume(first, task), signedVolume(second, task));
    constexpr double rounding = 1e-8;
    if (std::abs(volume) < rounding * smaller)
        return 0.0;
    if (std::abs(volume - smaller) < rounding * smaller)
        return smaller;
    return std::clamp(volume, 0.0, smaller);
}

} // namespace velmora
