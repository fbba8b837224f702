// SPDX-License-Identifier: Apache-2.0
#include <scene/Finite.h>
#include <scene/Generators.h>
#include <scene/TriangleWriter.h>

#include <QtCore/QHashFunctions>

#include <algorithm>
#include <array>
#include <bit>
#include <cfloat>
#include <cmath>
#include <optional>
#include <vector>

namespace {

/// Segments and cross products with a squared length up to this are degenerate.
constexpr float degenerateSquaredLength = FLT_EPSILON;
/// Cosine of the largest turn that gets a mitre, 120°. The tip of a sharper one would be longer than twice
/// the width.
constexpr float minMitreCosine = -0.5f;
/// About a hundred microseconds.
constexpr int stepsBetweenChecks = 512;

/// The end points of a segment in a fixed order, to detect repetitions in either direction.
struct EdgeKey
{
    std::array<std::uint32_t, 6> bits;
    bool operator==(const EdgeKey&) const = default;
};

EdgeKey edgeKey(const QVector3D& p, const QVector3D& q)
{
    const auto bits = [](const QVector3D& v) {
        // + 0.0f turns a negative zero into a positive one
        return std::array{std::bit_cast<std::uint32_t>(v.x() + 0.0f),
                          std::bit_cast<std::uint32_t>(v.y() + 0.0f),
                          std::bit_cast<std::uint32_t>(v.z() + 0.0f)};
    };
    auto a = bits(p), b = bits(q);
    if (b < a)
        std::swap(a, b);
    return {{a[0], a[1], a[2], b[0], b[1], b[2]}};
}

/// Half the horizontal and vertical extent of the tube.
struct HalfSize
{
    float across, upright;
};

/// The four corners of the cross-section of the tube, in the order -s-u, +s-u, +s+u, -s+u.
using Section = std::array<QVector3D, 4>;

bool isFinite(const Section& section)
{
    return std::all_of(section.begin(), section.end(), kvIsFinite);
}

/// One straight piece of the ribbon: a segment with its direction d and the axes s and u of its
/// cross-section, s × d = u.
struct Stretch
{
    ColoredPoint from, to;
    QVector3D d, s, u;
    float length = 0.0f;
    bool joinsNext = false; ///< the next piece starts where this one ends
    bool mitresNext = false;
    bool mitresPrevious = false;
    Section start, end;
};

void chooseAxes(Stretch& x)
{
    // s is horizontal, so that two sides of the tube face up and down the L* axis. Figures in planes of
    // constant lightness then join without a twist.
    QVector3D s = QVector3D::crossProduct(x.d, QVector3D(1, 0, 0));
    if (s.lengthSquared() <= degenerateSquaredLength)
        s = QVector3D::crossProduct(x.d, QVector3D(0, 1, 0));
    x.s = s.normalized();
    x.u = QVector3D::crossProduct(x.s, x.d).normalized();
}

/// Parallel transport: @p v, perpendicular to @p from, rotated by the smallest rotation from direction @p
/// from to
/// @p to.
QVector3D transported(const QVector3D& v, const QVector3D& from, const QVector3D& to)
{
    const float c = QVector3D::dotProduct(from, to);
    return v - (from + to) * (QVector3D::dotProduct(to, v) / (1.0f + c));
}

Section sectionAt(const Stretch& x, const QVector3D& point, HalfSize half)
{
    const QVector3D s = x.s * half.across, u = x.u * half.upright;
    return {point - s - u, point + s - u, point + s + u, point - s + u};
}

/// The cross-section projected along the piece onto the bisecting plane at @p point between its direction and
/// @p next. The next piece, with transported axes, has the same cross-section there.
Section mitre(const Stretch& x, const QVector3D& point, const QVector3D& next, HalfSize half)
{
    const QVector3D m = (x.d + next).normalized();
    const float along = QVector3D::dotProduct(x.d, m);
    Section section = sectionAt(x, point, half);
    for (QVector3D& corner : section)
        corner -= x.d * (QVector3D::dotProduct(corner - point, m) / along);
    return section;
}

/// Whether a mitre between the two pieces is short enough compared with their lengths.
bool mitreFits(const Stretch& x, const Stretch& next, float half)
{
    const float c = QVector3D::dotProduct(x.d, next.d);
    if (c <= minMitreCosine)
        return false;
    const float tanHalfTurn = std::sqrt(std::max(0.0f, 1.0f - c) / (1.0f + c));
    const float reach = half * std::sqrt(2.0f) * tanHalfTurn;
    return reach <= 0.5f * std::min(x.length, next.length);
}

/// Takes the colours of a segment between the same two points.
void takeColors(Stretch& x, const ColoredSegment& segment)
{
    const bool reversed = x.from.second != segment.first.second;
    x.from.first = (reversed ? segment.second : segment.first).first;
    x.to.first = (reversed ? segment.first : segment.second).first;
}

/// The pieces found so far by their end points, as a hash table of indices. One block of memory, which is
/// released at once: a map with a node for each piece takes milliseconds to destroy.
class PieceTable
{
public:
    explicit PieceTable(std::size_t maxPieces)
        : m_slots(std::bit_ceil(2 * maxPieces + 1), 0u), m_mask(m_slots.size() - 1)
    {
    }

    /// The piece between the same two points. Null if there is none: then the next piece of @p stretches will
    /// be the one.
    Stretch* find(const QVector3D& p, const QVector3D& q, std::vector<Stretch>& stretches)
    {
        const EdgeKey key = edgeKey(p, q);
        std::size_t slot = qHashBits(key.bits.data(), sizeof key.bits) & m_mask;
        for (; m_slots[slot] != 0; slot = (slot + 1) & m_mask) {
            Stretch& known = stretches[m_slots[slot] - 1];
            if (edgeKey(known.from.second, known.to.second) == key)
                return &known;
        }
        m_slots[slot] = static_cast<std::uint32_t>(stretches.size() + 1);
        return nullptr;
    }

private:
    std::vector<std::uint32_t> m_slots; ///< index of a piece plus 1; 0: free
    std::size_t m_mask;
};

/// The segments that are finite and not degenerate. Those between the same two points become one piece, in
/// the colours of the last.
std::vector<Stretch> usableStretches(const QList<ColoredSegment>& segments, CancelPacer& pacer)
{
    std::vector<Stretch> stretches;
    stretches.reserve(static_cast<std::size_t>(segments.size()));
    PieceTable table(static_cast<std::size_t>(segments.size()));
    for (const ColoredSegment& segment : segments) {
        if (pacer.isCancelled())
            break;
        const QVector3D& p = segment.first.second;
        const QVector3D& q = segment.second.second;
        const QVector3D d = q - p;
        if (!kvIsFinite(p) || !kvIsFinite(q) || !kvIsFinite(d) ||
            !(d.lengthSquared() > degenerateSquaredLength))
            continue;
        if (Stretch* const known = table.find(p, q, stretches)) {
            takeColors(*known, segment);
            continue;
        }
        Stretch& x = stretches.emplace_back();
        x.from = segment.first;
        x.to = segment.second;
        x.d = d.normalized();
        x.length = d.length();
    }
    return stretches;
}

/// Whether the lightness is constant along the piece.
bool liesFlat(const Stretch& x)
{
    return std::abs(x.d.x()) <= 1e-4f;
}

void emitQuad(TriangleWriter& out, const ColoredPoint& a, const ColoredPoint& b, const ColoredPoint& c,
              const ColoredPoint& d)
{
    out.add(a, b, c);
    out.add(a, c, d);
}

void emitTube(TriangleWriter& out, const Stretch& x, bool startCap, bool endCap)
{
    const auto at = [](const ColoredPoint& p, const QVector3D& corner) {
        return ColoredPoint{p.first, corner};
    };
    for (std::size_t k = 0; k < 4; ++k) {
        const std::size_t l = (k + 1) % 4;
        emitQuad(out, at(x.from, x.start[k]), at(x.to, x.end[k]), at(x.to, x.end[l]), at(x.from, x.start[l]));
    }
    if (startCap)
        emitQuad(out, at(x.from, x.start[0]), at(x.from, x.start[1]), at(x.from, x.start[2]),
                 at(x.from, x.start[3]));
    if (endCap)
        emitQuad(out, at(x.to, x.end[3]), at(x.to, x.end[2]), at(x.to, x.end[1]), at(x.to, x.end[0]));
}

/// What applies to all pieces of a ribbon.
struct RibbonShape
{
    float reach;   ///< half the width of the tube
    bool closed;   ///< the last segment ends where the first one begins
    bool extended; ///< free ends are extended by half a width
    HalfSize half;
};

RibbonShape shapeOf(const QList<ColoredSegment>& segments, const std::vector<Stretch>& stretches,
                    bool closedHint, float width)
{
    const float reach = (width / 1.5f) * 0.5f;
    const bool closed = qFuzzyCompare(segments.last().second.second, segments.first().first.second);
    const bool band =
        closedHint && stretches.size() >= 3 && std::all_of(stretches.begin(), stretches.end(), liesFlat);
    return {.reach = reach,
            .closed = closed,
            .extended = width < 4.0f || closedHint || closed,
            .half = {.across = reach, .upright = band ? reach / 3.0f : reach}};
}

/// Chooses the axes of each piece, transported from the previous piece across a mitre, and decides how the
/// piece joins the next one.
void orient(std::vector<Stretch>& stretches, const RibbonShape& shape, CancelPacer& pacer)
{
    const std::size_t n = stretches.size();
    for (std::size_t i = 0; i < n && !pacer.isCancelled(); ++i) {
        Stretch& x = stretches[i];
        if (i > 0 && stretches[i - 1].mitresNext) {
            x.s = transported(stretches[i - 1].s, stretches[i - 1].d, x.d).normalized();
            x.u = QVector3D::crossProduct(x.s, x.d).normalized();
        } else {
            chooseAxes(x);
        }
        const bool isLast = i + 1 == n;
        if (n < 2 || (isLast && !shape.closed))
            continue;
        const Stretch& next = stretches[isLast ? 0 : i + 1];
        x.joinsNext = qFuzzyCompare(x.to.second, next.from.second);
        x.mitresNext = x.joinsNext && mitreFits(x, next, shape.reach);
        if (isLast && x.mitresNext) {
            // The axes of the first piece are already fixed: a mitre is possible only without a twist.
            const QVector3D arrived = transported(x.s, x.d, next.d);
            x.mitresNext = QVector3D::dotProduct(arrived, next.s) > 0.9999f;
        }
    }
}

/// Computes the cross-sections at both ends of each piece: mitred, extended or cut square.
void cutEnds(std::vector<Stretch>& stretches, const RibbonShape& shape, CancelPacer& pacer)
{
    const std::size_t n = stretches.size();
    for (std::size_t i = 0; i < n && !pacer.isCancelled(); ++i) {
        Stretch& x = stretches[i];
        const Stretch* previous =
            i > 0 ? &stretches[i - 1] : (n > 1 && shape.closed ? &stretches[n - 1] : nullptr);
        const Stretch& next = stretches[i + 1 < n ? i + 1 : 0];
        const bool joined = previous && previous->joinsNext;
        x.mitresPrevious = previous && previous->mitresNext;

        const QVector3D extension = x.d * shape.reach;
        if (x.mitresNext)
            x.end = mitre(x, x.to.second, next.d, shape.half);
        else
            x.end = sectionAt(x, x.to.second + (shape.extended || x.joinsNext ? extension : QVector3D()),
                              shape.half);
        if (!x.mitresPrevious)
            x.start = sectionAt(x, x.from.second - (shape.extended || joined ? extension : QVector3D()),
                                shape.half);
    }
}

/// Prepares the pieces of a ribbon.
std::vector<Stretch> ribbonPieces(const QList<ColoredSegment>& segments, bool closedHint, float width,
                                  CancelPacer& pacer)
{
    std::vector<Stretch> stretches = usableStretches(segments, pacer);
    const RibbonShape shape = shapeOf(segments, stretches, closedHint, width);
    orient(stretches, shape, pacer);
    cutEnds(stretches, shape, pacer);
    return stretches;
}

/// Writes the pieces @p begin to @p end.
void writePieces(TriangleWriter& writer, std::vector<Stretch>& stretches, std::size_t begin, std::size_t end)
{
    for (std::size_t i = begin; i < end; ++i) {
        Stretch& x = stretches[i];
        if (x.mitresPrevious)
            x.start =
                stretches[i > 0 ? i - 1 : stretches.size() - 1].end; // copied, so that they are identical
        if (isFinite(x.start) && isFinite(x.end))
            emitTube(writer, x, !x.mitresPrevious, !x.mitresNext);
    }
}

/// Faces of the tubes of all pieces: four sides and the caps, two triangles each. A few may be left out.
std::size_t maxTriangles(const std::vector<Stretch>& stretches)
{
    std::size_t count = 8 * stretches.size();
    for (const Stretch& x : stretches)
        count += (x.mitresPrevious ? 0u : 2u) + (x.mitresNext ? 0u : 2u);
    return count;
}

} // namespace

GeometryData kvSegments(const QList<ColoredSegment>& segments, bool closedHint, float width, float)
{
    GeometryData data;
    if (!segments.isEmpty() && width > FLT_EPSILON && std::isfinite(width)) {
        data.primitiveMode = KVPrimitiveTriangles;
        const KVCancelCheck never;
        CancelPacer pacer(never, stepsBetweenChecks);
        auto stretches = ribbonPieces(segments, closedHint, width, pacer);
        TriangleWriter writer(data.vertices, static_cast<qsizetype>(maxTriangles(stretches)));
        writePieces(writer, stretches, 0, stretches.size());
    } else {
        data.primitiveMode = KVPrimitiveLines;
        VertexWriter writer(data.vertices, 2 * segments.size());
        for (const auto& [from, to] : segments) {
            writer.add(from.first, from.second, QVector3D());
            writer.add(to.first, to.second, QVector3D());
        }
    }
    data.lineWidth = width;
    return data;
}

GeometryData kvSegmentRecords(const QList<ColoredSegment>& segments, bool closedHint, float width,
                              const VertexStyle& style, const KVCancelCheck& cancelled)
{
    constexpr std::size_t piecesAtOnce = 64; // as many as fit into the cache of a core
    GeometryData data;
    data.primitiveMode = KVPrimitiveTriangles;
    data.lineWidth = width;
    data.recordStyle = style;
    if (segments.isEmpty())
        return data;
    CancelPacer pacer(cancelled, stepsBetweenChecks);
    auto stretches = ribbonPieces(segments, closedHint, width, pacer);
    const bool complete = !(cancelled && cancelled());
    if (complete)
        data.records.reserve(static_cast<qsizetype>(3 * maxTriangles(stretches)) * kvVertexFloats);
    QList<float> vertices;
    for (std::size_t i = 0; complete && i < stretches.size() && !(cancelled && cancelled());
         i += piecesAtOnce) {
        vertices.resize(0);
        TriangleWriter writer(vertices, 12 * static_cast<qsizetype>(piecesAtOnce));
        writePieces(writer, stretches, i, std::min(i + piecesAtOnce, stretches.size()));
        kvExpandVertices({vertices.constData(), static_cast<std::size_t>(vertices.size())}, style,
                         kvAppendRecords(data.records, vertices.size() / GeometryData::floatsPerVertex));
    }
    kvDisposeOfElements(std::move(stretches));
    return data;
}
