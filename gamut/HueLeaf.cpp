// SPDX-License-Identifier: Apache-2.0
#include <gamut/GamutMeshes.h>
#include <gamut/HueLeaf.h>
#include <gamut/SectionLid.h>

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace {

using KVGamut::LabPoint;

/// A leaf as a plane with the coordinates C* (negative for the opposite hue) and L*.
class LeafPlane
{
public:
    explicit LeafPlane(const HueLeaf& leaf)
        : m_cos(std::cos(radians(leaf))), m_sin(std::sin(radians(leaf))), m_maxL(leaf.maxL)
    {
    }

    std::array<float, 4> coefficients() const { return {0.0f, float(-m_sin), float(m_cos), 0.0f}; }
    double chroma(const LabPoint& p) const { return m_cos * p.a + m_sin * p.b; }
    LabPoint at(double chroma, double L) const
    {
        return {float(L), float(chroma * m_cos), float(chroma * m_sin)};
    }
    double maxL() const { return m_maxL; }

private:
    static double radians(const HueLeaf& leaf) { return double(leaf.degrees) * std::numbers::pi / 180.0; }

    double m_cos, m_sin, m_maxL;
};

struct LeafPoint
{
    double chroma;
    double L;
};

LeafPoint between(const LeafPoint& p, const LeafPoint& q, double share)
{
    return {p.chroma + share * (q.chroma - p.chroma), p.L + share * (q.L - p.L)};
}

/// The part of a convex polygon where @p side is not negative.
template <typename Side>
std::vector<LeafPoint> cutOff(const std::vector<LeafPoint>& polygon, const Side& side)
{
    std::vector<LeafPoint> kept;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const LeafPoint &p = polygon[i], &q = polygon[(i + 1) % polygon.size()];
        const double ofP = side(p), ofQ = side(q);
        if (ofP >= 0.0)
            kept.push_back(p);
        if ((ofP > 0.0 && ofQ < 0.0) || (ofP < 0.0 && ofQ > 0.0))
            kept.push_back(between(p, q, ofP / (ofP - ofQ)));
    }
    return kept;
}

std::vector<LeafPoint> withinLeaf(const std::vector<LeafPoint>& polygon, const LeafPlane& plane)
{
    const auto outwards = cutOff(polygon, [](const LeafPoint& p) { return p.chroma; });
    return cutOff(outwards, [&plane](const LeafPoint& p) { return plane.maxL() - p.L; });
}

} // namespace

KVGamut::Mesh kvHueTriangles(const KVGamut::Mesh& surface, const HueLeaf& leaf)
{
    const LeafPlane plane(leaf);
    std::vector<KVGamut::SectionLoop> loops = KVGamut::sectionLoops(plane.coefficients().data(), surface);
    for (KVGamut::SectionLoop& loop : loops)
        for (LabPoint& p : loop)
            p = {0.0f, float(plane.chroma(p)), p.L}; // as a section at one lightness
    const KVGamut::Mesh both = kvSectionTriangles(loops, kvLidCell);
    KVGamut::Mesh mesh;
    for (const KVGamut::Mesh::Triangle& t : both.triangles) {
        std::vector<LeafPoint> polygon;
        for (const int v : t) {
            const LabPoint& p = both.lab[static_cast<std::size_t>(v)];
            polygon.push_back({p.a, p.b});
        }
        polygon = withinLeaf(polygon, plane);
        const int first = static_cast<int>(mesh.lab.size());
        if (polygon.size() < 3)
            continue;
        for (const LeafPoint& p : polygon)
            mesh.lab.push_back(plane.at(p.chroma, p.L));
        for (int i = 2; i < static_cast<int>(polygon.size()); ++i)
            mesh.triangles.push_back({first, first + i - 1, first + i});
    }
    return mesh;
}

GeometryData kvHueLid(const KVGamut::Mesh& surface, const HueLeaf& leaf)
{
    return kvUnshadedSurface(kvHueTriangles(surface, leaf));
}

QList<ColoredSegment> kvHueOutline(const KVGamut::Mesh& surface, const HueLeaf& leaf, const QColor& color)
{
    const LeafPlane plane(leaf);
    QList<ColoredSegment> segments;
    for (const auto& [from, to] : KVGamut::computeRing(plane.coefficients().data(), surface)) {
        std::vector<LeafPoint> piece{{plane.chroma(from), from.L}, {plane.chroma(to), to.L}};
        piece = withinLeaf(piece, plane); // closed, so a cut may add the same point twice
        if (piece.size() < 2)
            continue;
        const auto position = [&plane](const LeafPoint& p) {
            const LabPoint lab = plane.at(p.chroma, p.L);
            return QVector3D(lab.L, lab.a, lab.b);
        };
        segments.append({{color, position(piece[0])}, {color, position(piece[1])}});
    }
    return segments;
}
