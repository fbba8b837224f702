// SPDX-License-Identifier: Apache-2.0
#include "SlowGeometry.h"

#include <clipper.hpp>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace slow {

std::vector<Face> facesOf(const KVGamut::GamutObject& gamut)
{
    std::vector<Face> faces;
    for (const auto& nodes : gamut.faces()) {
        Face face;
        for (std::size_t i = 0; i < 3; ++i) {
            const auto& lab = nodes[static_cast<qsizetype>(i)].lab;
            face[i] = {lab[0], lab[1], lab[2]};
        }
        faces.push_back(face);
    }
    return faces;
}

Point minus(const Point& p, const Point& q)
{
    return {p[0] - q[0], p[1] - q[1], p[2] - q[2]};
}

double determinant(const Point& u, const Point& v, const Point& w)
{
    return u[0] * (v[1] * w[2] - v[2] * w[1]) + u[1] * (v[2] * w[0] - v[0] * w[2]) +
           u[2] * (v[0] * w[1] - v[1] * w[0]);
}

double zonotopeVolume(const std::vector<Point>& vectors)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < vectors.size(); ++i)
        for (std::size_t j = i + 1; j < vectors.size(); ++j)
            for (std::size_t k = j + 1; k < vectors.size(); ++k)
                sum += std::abs(determinant(vectors[i], vectors[j], vectors[k]));
    return sum;
}

double volume(const std::vector<Face>& faces)
{
    double sum = 0.0;
    for (const Face& f : faces)
        sum += determinant(f[0], f[1], f[2]);
    return sum / 6.0;
}

double windingNumber(const std::vector<Face>& faces, const Point& x)
{
    const auto dot = [](const Point& u, const Point& v) { return u[0] * v[0] + u[1] * v[1] + u[2] * v[2]; };
    double sum = 0.0;
    for (const Face& f : faces) {
        const Point p = minus(f[0], x), q = minus(f[1], x), r = minus(f[2], x);
        const double lp = std::sqrt(dot(p, p)), lq = std::sqrt(dot(q, q)), lr = std::sqrt(dot(r, r));
        sum += 2.0 * std::atan2(determinant(p, q, r),
                                lp * lq * lr + dot(p, q) * lr + dot(q, r) * lp + dot(r, p) * lq);
    }
    return sum / (4.0 * M_PI);
}

namespace {

double dot(const Point& u, const Point& v)
{
    return u[0] * v[0] + u[1] * v[1] + u[2] * v[2];
}

Point moved(const Point& p, double s, const Point& u)
{
    return {p[0] + s * u[0], p[1] + s * u[1], p[2] + s * u[2]};
}

Point nearestOnFace(const Face& f, const Point& x)
{
    const Point ab = minus(f[1], f[0]), ac = minus(f[2], f[0]), ax = minus(x, f[0]);
    const double d1 = dot(ab, ax), d2 = dot(ac, ax);
    if (d1 <= 0.0 && d2 <= 0.0)
        return f[0];
    const Point bx = minus(x, f[1]);
    const double d3 = dot(ab, bx), d4 = dot(ac, bx);
    if (d3 >= 0.0 && d4 <= d3)
        return f[1];
    const double vc = d1 * d4 - d3 * d2;
    if (vc <= 0.0 && d1 >= 0.0 && d3 <= 0.0)
        return moved(f[0], d1 / (d1 - d3), ab);
    const Point cx = minus(x, f[2]);
    const double d5 = dot(ab, cx), d6 = dot(ac, cx);
    if (d6 >= 0.0 && d5 <= d6)
        return f[2];
    const double vb = d5 * d2 - d1 * d6;
    if (vb <= 0.0 && d2 >= 0.0 && d6 <= 0.0)
        return moved(f[0], d2 / (d2 - d6), ac);
    const double va = d3 * d6 - d5 * d4;
    if (va <= 0.0 && d4 - d3 >= 0.0 && d5 - d6 >= 0.0)
        return moved(f[1], (d4 - d3) / ((d4 - d3) + (d5 - d6)), minus(f[2], f[1]));
    const double sum = va + vb + vc;
    return moved(moved(f[0], vb / sum, ab), vc / sum, ac);
}

} // namespace

Point nearest(const std::vector<Face>& faces, const Point& point)
{
    Point best = faces.front()[0];
    for (const Face& f : faces) {
        const Point p = nearestOnFace(f, point);
        const Point step = minus(p, point), bestStep = minus(best, point);
        if (dot(step, step) < dot(bestStep, bestStep))
            best = p;
    }
    return best;
}

Shape shapeOf(const std::vector<Face>& faces)
{
    Shape shape;
    std::map<Point, int> names;
    std::map<std::pair<int, int>, int> edges;
    for (const Face& f : faces) {
        std::array<int, 3> v;
        for (std::size_t i = 0; i < 3; ++i)
            v[i] = names.emplace(f[i], static_cast<int>(names.size())).first->second;
        for (std::size_t i = 0; i < 3; ++i)
            ++edges[{v[i], v[(i + 1) % 3]}];
    }
    shape.everyEdgeOnceEachWay = std::all_of(edges.begin(), edges.end(), [&](const auto& edge) {
        const auto& [ends, count] = edge;
        return count == 1 && edges.count({ends.second, ends.first}) == 1;
    });
    shape.euler =
        static_cast<int>(names.size()) - static_cast<int>(edges.size()) / 2 + static_cast<int>(faces.size());
    shape.volume = volume(faces);
    return shape;
}

double projectedArea(const std::vector<Face>& faces, double pitch)
{
    double low = 1e300, high = -1e300;
    for (const Face& f : faces)
        for (const Point& p : f) {
            low = std::min(low, p[2]);
            high = std::max(high, p[2]);
        }
    double area = 0.0;
    const int lines = static_cast<int>((high - low) / pitch) + 1;
    std::vector<std::vector<std::pair<double, double>>> intervals(static_cast<std::size_t>(lines));
    for (const Face& f : faces) {
        const auto [first, last] = std::minmax({f[0][2], f[1][2], f[2][2]});
        const int from = std::max(0, static_cast<int>(std::floor((first - low) / pitch - 0.5)));
        const int to = std::min(lines - 1, static_cast<int>(std::ceil((last - low) / pitch - 0.5)));
        for (int line = from; line <= to; ++line) {
            const double b = low + (line + 0.5) * pitch;
            double left = 1e300, right = -1e300;
            for (std::size_t i = 0; i < 3; ++i) {
                const Point& p = f[i];
                const Point& q = f[(i + 1) % 3];
                if ((p[2] < b) == (q[2] < b))
                    continue;
                const double a = p[1] + (b - p[2]) / (q[2] - p[2]) * (q[1] - p[1]);
                left = std::min(left, a);
                right = std::max(right, a);
            }
            if (left < right)
                intervals[static_cast<std::size_t>(line)].push_back({left, right});
        }
    }
    for (auto& line : intervals) {
        std::sort(line.begin(), line.end());
        double reached = -1e300;
        for (const auto& [left, right] : line) {
            area += std::max(0.0, right - std::max(left, reached)) * pitch;
            reached = std::max(reached, right);
        }
    }
    return area;
}

namespace {

// The section at one lightness as closed polygons. The pieces of a ring have exactly equal end points.
ClipperLib::Paths sectionAt(float L, const QList<QList<KVHull::Node>>& faces)
{
    const float plane[4] = {1.0f, 0.0f, 0.0f, -L};
    std::multimap<std::pair<float, float>, std::pair<float, float>> next;
    for (const auto& piece : KVGamut::computeRing(plane, faces))
        next.insert({{piece[0][1], piece[0][2]}, {piece[1][1], piece[1][2]}});
    constexpr double scale = 1e6;
    ClipperLib::Paths polygons;
    while (!next.empty()) {
        ClipperLib::Path polygon;
        auto at = next.begin();
        while (at != next.end()) {
            const auto [from, to] = *at;
            polygon.emplace_back(std::llround(double(from.first) * scale),
                                 std::llround(double(from.second) * scale));
            next.erase(at);
            at = next.find(to);
        }
        polygons.push_back(std::move(polygon));
    }
    return polygons;
}

} // namespace

double commonVolume(const KVGamut::GamutObject& first, const KVGamut::GamutObject& second, double pitch)
{
    const auto firstFaces = first.faces(), secondFaces = second.faces();
    double volume = 0.0;
    for (double L = -20.0 + 0.5 * pitch; L < 120.0; L += pitch) {
        ClipperLib::Clipper clipper;
        clipper.AddPaths(sectionAt(static_cast<float>(L), firstFaces), ClipperLib::ptSubject, true);
        clipper.AddPaths(sectionAt(static_cast<float>(L), secondFaces), ClipperLib::ptClip, true);
        ClipperLib::Paths both;
        clipper.Execute(ClipperLib::ctIntersection, both, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
        for (const auto& path : both)
            volume += ClipperLib::Area(path) * 1e-12 * pitch;
    }
    return volume;
}

} // namespace slow
