// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVCoreCommon.h>
#include <platform/KVExport.h>
#include <platform/KVProblem.h>

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QSharedDataPointer>
#include <QtCore/QSharedPointer>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

/// @file
/// The colour engine: ICC profiles become closed gamut surfaces in CIE L*a*b* (D50), with their
/// volume, outline, primaries, sections and point queries.
///
/// Lab triples are always in the order L*, a*, b*. Distances are CIE 1976 colour differences (dE76), volumes
/// are in dE76 cubed. Everything here is reentrant: different objects may be used on different threads at the
/// same time, one object on one thread at a time. Nothing throws; failures are reported as KVProblem.

// --- Profiles -------------------------------------------------------------------------------------

/// An opened profile: the bytes of a readable ICC profile. Immutable, so that gamuts of one profile can be
/// computed on several threads at once. Created and destroyed only by the functions below.
struct KVProfile
{
    const QByteArray bytes; ///< the file, header and tags
};
/// Shared handle of an opened profile. Wrap the result of the functions below immediately:
/// `KVProfilePtr(KVProfileCreateWithPath(path), KVProfileRelease)`. Registered with the meta-type system as
/// "KVProfilePtr", for use in a QVariant.
using KVProfilePtr = QSharedPointer<KVProfile>;
Q_DECLARE_METATYPE(KVProfilePtr)

/// Opens a profile file. @p path is UTF-8 and NUL-terminated.
/// @return null if the file cannot be read or is not an ICC profile; see KVProfileProblem()
KVVELMORA_EXPORT KVProfile* KVProfileCreateWithPath(const char* path);
/// Opens a profile from its bytes, which are copied.
/// @return null if they are not an ICC profile; see KVProfileProblem()
KVVELMORA_EXPORT KVProfile* KVProfileCreateWithData(const void* data, int size);
/// Closes a profile; null is allowed.
KVVELMORA_EXPORT void KVProfileRelease(KVProfile* profile);
/// Why the last KVProfileCreate... call of the calling thread returned null; nullopt if it succeeded.
[[nodiscard]] KVVELMORA_EXPORT std::optional<KVProblem> KVProfileProblem();

/// ICC rendering intents. If a profile has no table for an intent, that of another one is used: A2B0, or else
/// the matrix, or else any other table; see KVGamut::Conversion. The values are those of the ICC header.
enum KVVMRenderType : int
{
    KVVMRenderPerceptual = 0,
    KVVMRenderRelativeColorimetric = 1,
    KVVMRenderSaturation = 2,
    KVVMRenderAbsoluteColorimetric = 3,
};

/// Why the tables that @p intent uses are not safe to read: DamagedTag, UnknownIntent; nullopt if they are.
/// A profile opens if one intent has a table that is safe. Hosts that convert colours with a library of their
/// own should ask before, because a small file can declare tables that take hours or gigabytes.
[[nodiscard]] KVVELMORA_EXPORT std::optional<KVProblem> KVProfileTableProblem(const KVProfile& profile,
                                                                              KVVMRenderType intent);

// --- Gamuts ---------------------------------------------------------------------------------------

namespace KVHull {

/// A vertex of a gamut surface.
struct Node
{
    QList<float> device; ///< device coordinates, 0..1 for each channel; empty if unknown
    QList<float> lab;    ///< L*, a*, b*

    bool operator==(const Node&) const = default; ///< exact
};

} // namespace KVHull

namespace KVGamut {

/// A colour in CIE L*a*b*.
struct LabPoint
{
    float L = 0.0f; ///< lightness L*, 0 black, 100 white
    float a = 0.0f; ///< a*, red above 0, green below
    float b = 0.0f; ///< b*, yellow above 0, blue below

    bool operator==(const LabPoint&) const = default; ///< all values are equal
};

/// An indexed triangle mesh in Lab: the form in which gamut surfaces are computed, compared, cut, drawn and
/// exported.
struct Mesh
{
    using Triangle = std::array<int, 3>; ///< vertex indices, counter-clockwise seen from outside

    int channels = 0;                ///< device channels of each vertex
    std::vector<float> device;       ///< 0..1, `channels` values for each vertex; empty if unknown
    std::vector<LabPoint> lab;       ///< position of each vertex
    std::vector<Triangle> triangles; ///< right-handed in the order L*, a*, b*

    bool isEmpty() const { return triangles.empty(); } ///< whether there is no surface
    /// Device coordinates of a vertex, `channels` values. Must not be called if `device` is empty.
    const float* deviceOf(int vertex) const
    {
        return device.data() + static_cast<std::size_t>(vertex) * static_cast<std::size_t>(channels);
    }
};

/// What is done with the chromatic adaptation to D50 that a profile's colours contain. Only absolute colours
/// can be shown without it; the other intents map the media white to L* 100, a* 0 and b* 0 in any case.
enum class Adaptation : int
{
    Full = 0,    ///< kept: the white of a display is that of Lab, as ICC defines it
    None = 1,    ///< undone: the colours that are measured on the display, relative to D50
    NoneD65 = 2, ///< undone, and Lab relative to D65 (x 0.3127, y 0.3290)
};

/// How the surface of a gamut is made.
enum class Construction : int
{
    Accurate = 0, ///< with the method, the nodes and the checks that the engine chooses; for each device
    /// As in the display standard (IDMS): the 602 evenly spaced colours with 11 x 11 nodes on each face of
    /// the RGB cube. Each square is divided from the corner where one of its two channels is highest to the
    /// corner where the other is. Only for three channels. The volume is that of the mesh, without
    /// refinement, without a check for self-intersection or for colours outside of it. Its uncertainty is the
    /// difference to the mesh of 6 x 6 nodes.
    Grid11Falling = 1,
    Grid11Rising = 2, ///< the same with the other diagonals: from both channels lowest to both highest
};

/// How a gamut is computed from its profile.
struct Settings
{
    static constexpr float defaultMaxEdge = 40.0f;  ///< see GamutObject::init()
    static constexpr int defaultMaxRefinements = 2; ///< see GamutObject::init()
    static constexpr int engineChoosesGrid = -1;    ///< the default of the method

    KVVMRenderType intent = KVVMRenderAbsoluteColorimetric; ///< from device to Lab
    bool blackPointCompensation = false;                    ///< no effect with the absolute intent
    int gridPoints = engineChoosesGrid;                     ///< samples along each device axis
    Adaptation adaptation = Adaptation::Full;               ///< no effect with the other intents

    bool operator==(const Settings&) const = default; ///< all settings are equal
};

/// Comparison of two gamuts. Eighteen floats in this order; volumes in dE76 cubed.
struct Comparison
{
    LabPoint whiteFirst;        ///< whitePoint() of the first gamut
    LabPoint blackFirst;        ///< blackPoint() of the first gamut
    LabPoint whiteSecond;       ///< whitePoint() of the second gamut
    LabPoint blackSecond;       ///< blackPoint() of the second gamut
    float volumeFirst = 0.0f;   ///< volume of the first gamut
    float volumeSecond = 0.0f;  ///< volume of the second gamut
    float intersection = 0.0f;  ///< volume of the intersection
    float unionVolume = 0.0f;   ///< volume of the union
    float secondCovered = 0.0f; ///< share of the second covered by the first, 0..1
    float firstCovered = 0.0f;  ///< share of the first covered by the second, 0..1
};
static_assert(sizeof(Comparison) == 18 * sizeof(float), "the order of the eighteen floats is the interface");

/// How accurate the values of a Comparison are: the true value lies within value ± this.
struct ComparisonUncertainty
{
    double intersection = 0.0;  ///< dE76 cubed
    double unionVolume = 0.0;   ///< dE76 cubed
    double secondCovered = 0.0; ///< a share, 0..1
    double firstCovered = 0.0;  ///< a share, 0..1
};

/// A comparison of two gamuts, and how accurate it is.
struct ComparisonReport
{
    Comparison values;                 ///< as GamutObject::compare()
    ComparisonUncertainty uncertainty; ///< of the values; estimates
    std::optional<KVProblem> problem;  ///< Cancelled, or OutOfMemory: the other members have no meaning
};

/// A part of a gamut relative to another one.
enum class Body : int
{
    Outside = 0,      ///< what is outside the other gamut
    Intersection = 1, ///< what both have in common
};

/// Distance of a colour from a gamut's surface.
struct Nearest
{
    float distance = 0.0f; ///< dE76; negative inside the gamut
    LabPoint point;        ///< the point of the surface that is nearest
};

/// The method by which a surface was computed.
enum class Method
{
    None,           ///< there is no gamut
    DeviceMesh,     ///< image of the device cube's surface; for three channels whose map does not fold
    RadialHull,     ///< hull of samples of the device hypercube's faces after radial compression
    LatticeSurface, ///< surface that separates the lattice points in Lab inside the gamut from the others
    GivenSurface,   ///< computed elsewhere: GamutObject::initWithSurface()
    ConvexHull,     ///< convex hull of colours without device values: GamutObject::initWithColors()
};

/// Where a profile says how its colours were adapted to D50.
enum class AdaptationSource : int
{
    None = 0,       ///< nowhere: they were measured relative to D50, or the profile does not tell
    Tag = 1,        ///< in its tag "chad"
    MediaWhite = 2, ///< in its media white: a display profile of version 2, by the linear Bradford transform
};

/// The tag "cicp" of a profile: how pictures for the device are encoded (ITU-T H.273).
struct CodePoints
{
    int primaries = 0;      ///< ColourPrimaries: 1 BT.709, 9 BT.2020, 12 Display P3, ...
    int transfer = 0;       ///< TransferCharacteristics: 16 PQ, 18 HLG, ...
    int matrix = 0;         ///< MatrixCoefficients: 0 for RGB
    bool fullRange = false; ///< VideoFullRangeFlag

    bool operator==(const CodePoints&) const = default; ///< all values are equal
};

/// How the colours of a gamut were obtained from its profile.
struct Conversion
{
    QString table; ///< the tag that was used, such as "A2B0" or "D2B1", or "matrix"; empty if unknown
    bool tableIsFallback = false; ///< the profile has no table for the intent; that of another one was used
    Adaptation adaptation = Adaptation::Full; ///< as it was applied: Full unless the intent is absolute
    AdaptationSource adaptationSource = AdaptationSource::None; ///< what None and NoneD65 undo
    std::optional<LabPoint> mediaWhite;  ///< the tag "wtpt" relative to D50, if there is one
    std::optional<LabPoint> mappedBlack; ///< what black-point compensation mapped to L* 0
    std::optional<CodePoints> cicp;      ///< the tag "cicp", if there is one. It does not change the gamut.

    bool operator==(const Conversion&) const = default; ///< all values are equal
};

/// Data about a gamut and its computation.
struct Report
{
    Method method = Method::None;                           ///< as GamutObject::method()
    KVVMRenderType intent = KVVMRenderRelativeColorimetric; ///< as requested
    bool blackPointCompensation = false;                    ///< as requested
    int channels = 0;                                       ///< colorants of the device
    int gridPoints = 0;                                     ///< samples along each device axis
    int faceCount = 0;                                      ///< triangles of the surface
    double volume = 0.0;                                    ///< of all colours of the device, dE76 cubed
    double volumeUncertainty = 0.0; ///< estimate; the device's true volume lies within volume ± this
    double surfaceVolume = 0.0; ///< enclosed by the surface, which has a limited number of faces; dE76 cubed
    double foldShare = 0.0;     ///< share of reversed orientation in a three-channel map, 0..0.5; otherwise 0
    LabPoint white;             ///< as GamutObject::whitePoint()
    LabPoint black;             ///< as GamutObject::blackPoint()
    Conversion conversion;      ///< unknown for gamuts that were saved by earlier versions
    double seconds = 0.0;       ///< duration of the computation; not saved, so 0 for a restored gamut
    std::optional<KVProblem> problem; ///< as GamutObject::problem()
};

class GamutData;

/// The gamut of a device: a closed triangle mesh in Lab with outward orientation, and what is derived from
/// it.
///
/// A value; copies share their data. A default-constructed gamut is empty: no faces, volume 0, nothing is
/// inside.
class KVVELMORA_EXPORT GamutObject
{
public:
    GamutObject();
    GamutObject(const GamutObject& other);            ///< shares the data of @p other
    GamutObject(GamutObject&& other) noexcept;        ///< @p other may then only be assigned to or destroyed
    GamutObject& operator=(const GamutObject& other); ///< shares the data of @p other
    GamutObject&
    operator=(GamutObject&& other) noexcept; ///< @p other may then only be assigned to or destroyed
    ~GamutObject();

    /// Computes the gamut of @p profile.
    ///
    /// @param profile an opened profile; null fails with NoProfile
    /// @param intent rendering intent from device to Lab
    /// @param blackPointCompensation maps the device's black to L* 0, and clips darker colours to L* 0 with
    ///        unchanged a* and b*; ignored by the absolute intent
    /// @param withDecoration also compute the primaries and the ab outline
    /// @param maxEdge longest surface edge that is not split, in dE76; NaN disables refinement
    /// @param gridPoints samples along each device axis; values below 2, such as -1, mean the method's
    ///        default (33; 17 from five channels on); otherwise clamped to 3..129
    /// @param refinements how often edges longer than @p maxEdge are split at most; fewer if the surface
    ///        would self-intersect; clamped to 0..4
    /// @param protocol progress and cancellation; may be null or point to a null handle
    /// @return whether a gamut was computed. If not, the object is empty; see problem().
    ///
    /// Runs on any thread. Cancelling through @p protocol ends it early with false and Cancelled.
    bool init(KVProfilePtr profile, KVVMRenderType intent, bool blackPointCompensation, bool withDecoration,
              float maxEdge, int gridPoints, int refinements, KVCompletionProtocolPtr* protocol);

    /// Computes the gamut of @p profile with primaries and outline, Settings::defaultMaxEdge and
    /// Settings::defaultMaxRefinements, as the viewer and the program do. Otherwise as above.
    bool init(KVProfilePtr profile, const Settings& settings, KVCompletionProtocolPtr* protocol = nullptr);

    /// The same, with the surface made in another way than the viewer's. With a grid of 11 nodes
    /// Settings::gridPoints has no effect, and NotThreeChannels is a further problem.
    bool init(KVProfilePtr profile, const Settings& settings, Construction construction,
              KVCompletionProtocolPtr* protocol = nullptr);

    /// Makes a gamut of a surface that was computed elsewhere, without a profile: Method::GivenSurface.
    ///
    /// @param surface closed and manifold, facing either way. Device coordinates are ignored; vertices at the
    ///        same place (on the lattice of weldedMesh()) are merged.
    /// @param volumeUncertainty how sure the volume is, dE76 cubed; at most the volume, and 0 for NaN
    /// @param protocol progress and cancellation; may be null or point to a null handle
    /// @return whether there is a gamut. If not, the object is empty; see problem(): NoFaces,
    ///         VertexOutOfRange, VertexIndexOutOfRange, SurfaceNotClosed, SurfaceNotManifold, TooSmall,
    ///         GivenSurfaceSelfIntersects, GivenSurfaceTooClose, OutOfMemory or Cancelled
    ///
    /// The volume is that of the surface. White and black are the lightest and the darkest vertex. The
    /// reported intent is the absolute one; there are no channels and no primaries().
    bool initWithSurface(const Mesh& surface, double volumeUncertainty = 0.0,
                         KVCompletionProtocolPtr* protocol = nullptr);
    /// Makes a gamut of the convex hull of @p colors: Method::ConvexHull. That bridges all hollows, and lacks
    /// what is not among the colours. Otherwise as initWithSurface().
    /// @param colors at least four that are not in a plane
    /// @param colorUncertainty how far the true colours may be from these, dE76; the uncertainty of the
    ///        volume is this times the area of the hull. Negative values and NaN mean 0.
    /// @param protocol progress and cancellation; may be null or point to a null handle
    /// @return whether there is a gamut. If not, the object is empty; see problem(): VertexOutOfRange for a
    ///         colour that is NaN or out of range, TooSmall, OutOfMemory or Cancelled
    bool initWithColors(std::span<const LabPoint> colors, double colorUncertainty = 0.0,
                        KVCompletionProtocolPtr* protocol = nullptr);

    /// The gamut as a hash of plain values, which every QVariant serialization preserves; empty for an empty
    /// gamut. The key "Gamut" marks it as a saved gamut. The same profile and settings give the same values
    /// in each run.
    QHash<QString, QVariant> serialize() const;
    /// Restores the result of serialize(); the whole hash may also be stored as the value of its own key
    /// "Gamut". If the hash is damaged or not a saved gamut, the gamut is then empty; see problem().
    void deserialize(const QHash<QString, QVariant>& hash);
    /// The same. Cancelling through @p protocol (may be null) ends it early with an empty gamut and
    /// Cancelled. With a protocol it also computes the outline(), which cannot be cancelled later.
    void deserialize(const QHash<QString, QVariant>& hash, KVCompletionProtocolPtr* protocol);

    /// The surface; empty for an empty gamut. Valid as long as this object or a copy of it exists.
    [[nodiscard]] const Mesh& mesh() const;
    /// Faces of the surface, derived from mesh(): three nodes each, counter-clockwise seen from outside, in a
    /// right-handed (L*, a*, b*) system. The first call builds the list; copies share it.
    QList<QList<KVHull::Node>> faces() const;
    int faceCount() const; ///< number of faces()
    /// Volume of all colours of the device, dE76 cubed: the best estimate, see Report::volume. The surface
    /// encloses slightly more or less, see Report::surfaceVolume.
    float volume() const;

    /// Outline of the projection onto the ab plane, as segments of two nodes that form closed loops. L* of a
    /// node is that of the surface point.
    QList<QList<KVHull::Node>> outline() const;
    /// Lab of the device colour without colorants, three values: black of an additive device, paper white of
    /// a subtractive one. Empty for an empty gamut.
    QList<float> referenceLab() const;
    /// For each colorant channel a ramp from just above 0 to full, as Lab triples. Empty if the channels are
    /// not colorants, as in YCbCr or HSV.
    QList<QList<QList<float>>> primaries() const;

    LabPoint whitePoint() const; ///< Lab of the device's white; 0 for an empty gamut
    LabPoint blackPoint() const; ///< Lab of the device's black; 0 for an empty gamut

    /// Whether the Lab triple @p lab lies inside the surface. False for null, for values that are NaN or
    /// infinite, and for an empty gamut.
    bool isInside(const float* lab) const;
    /// The point of the surface that is nearest to the Lab triple @p lab, and its distance: negative if
    /// isInside() is true, positive outside, 0 on the surface. For an empty gamut, null, and values that are
    /// NaN or infinite the distance is infinite and the point is NaN.
    Nearest nearest(const float* lab) const;
    /// The point of the surface with the smallest colour difference CIEDE2000 to the Lab triple @p lab, and
    /// this difference instead of dE76: negative if isInside() is true, positive outside. For an empty gamut,
    /// null, and values that are NaN or infinite as nearest(). CIEDE2000 has several minima and a step at
    /// opposite hues; what is found is at most 0.005 above the smallest difference. Takes about a tenth of a
    /// millisecond.
    Nearest nearestByCiede2000(const float* lab) const;
    /// The same for many colours, in their order. Cancelling through @p protocol (may be null) ends it early;
    /// the result is then empty. Parts of a list can be computed on several threads, each with a copy of the
    /// gamut.
    [[nodiscard]] std::vector<Nearest> nearestByCiede2000(std::span<const LabPoint> lab,
                                                          KVCompletionProtocolPtr* protocol = nullptr) const;
    /// The point of the surface with the hue angle of the Lab triple @p lab that is nearest to it, and its
    /// distance (dE76): negative if isInside() is true, positive outside. It lies on the half-plane that ends
    /// at the L* axis and contains the colour. For a colour on the axis (a* and b* are 0) it is a point of
    /// the axis. If the surface does not meet the half-plane, and in the cases of nearest(), the distance is
    /// infinite and the point is NaN.
    Nearest nearestAtHue(const float* lab) const;
    /// Compares this gamut, the first, with @p other, the second. The intersection is that of the surfaces,
    /// with a correction for the difference between Report::volume and Report::surfaceVolume.
    Comparison compare(const GamutObject& other) const;
    /// The same, with the uncertainties. An empty gamut is exact. Cancelling through @p protocol (may be
    /// null) ends it early.
    [[nodiscard]] ComparisonReport compareWithUncertainty(const GamutObject& other,
                                                          KVCompletionProtocolPtr* protocol = nullptr) const;

    /// A part of this gamut as a gamut of its own, with a closed surface that is cut exactly along the curve
    /// where the surfaces meet. It may consist of several pieces, and may touch itself.
    ///
    /// Volume and uncertainty agree with compareWithUncertainty(): those of the intersection, or of the rest
    /// of the volume. Report::surfaceVolume is what the surface encloses. White, black and the settings in
    /// the report are those of this gamut; there are no device coordinates and no primaries().
    ///
    /// @return empty if there is no such part, and if it fails; then problem() is set: TooManyCrossings,
    ///         OutOfMemory, or Cancelled through @p protocol (may be null)
    [[nodiscard]] GamutObject body(const GamutObject& other, Body body,
                                   KVCompletionProtocolPtr* protocol = nullptr) const;

    Method method() const; ///< as GamutObject::method()
    /// Why there is no gamut; nullopt if there is one, or if nothing has been computed or restored yet.
    [[nodiscard]] std::optional<KVProblem> problem() const;
    /// Data about the gamut and its computation; for an empty gamut only the problem.
    Report report() const;

private:
    QSharedDataPointer<const GamutData> d;
    std::optional<KVProblem> m_problem;
};

/// The colour difference CIEDE2000 (ISO/CIE 11664-6) of two colours, with all parametric factors 1. The two
/// may be exchanged. Not a number for values that are NaN or infinite.
[[nodiscard]] KVVELMORA_EXPORT double ciede2000(const LabPoint& first, const LabPoint& second);

/// Intersects a surface with a plane.
///
/// @param plane four coefficients {nL, na, nb, d}: the plane is nL·L + na·a + nb·b + d = 0. For null, NaN and
///        infinite coefficients the result is empty.
/// @param faces as returned by GamutObject::faces(); faces that are not triangles are ignored
/// @return one piece for each face that the plane crosses: the two crossing points in Lab. The pieces of a
///         closed surface form closed rings, even if the plane passes through vertices.
KVVELMORA_EXPORT QList<QList<QList<float>>> computeRing(const float* plane,
                                                        const QList<QList<KVHull::Node>>& faces);

/// A piece of a section: two points in Lab.
using RingPiece = std::array<LabPoint, 2>;
/// The same for a mesh: one piece for each triangle that the plane crosses, in the order of the triangles.
/// Triangles with a vertex that is NaN or infinite are ignored.
[[nodiscard]] KVVELMORA_EXPORT std::vector<RingPiece> computeRing(const float* plane, const Mesh& mesh);

/// A closed polygon in Lab; the last point connects to the first, which is not repeated.
using SectionLoop = std::vector<LabPoint>;
/// The pieces of computeRing() joined into closed loops, from mesh edge to mesh edge: one point for each edge
/// that the plane crosses. Consecutive points coincide where the plane passes through a vertex. Chains that
/// end at a boundary of the mesh are left out; surfaces of gamuts have none.
[[nodiscard]] KVVELMORA_EXPORT std::vector<SectionLoop> sectionLoops(const float* plane, const Mesh& mesh);

/// @p mesh with coincident vertices merged. Triangles that become degenerate are removed; the order of the
/// others and of the vertices is kept. Device coordinates are those of the first of the merged vertices.
///
/// For meshes of gamuts, whose vertices lie on a lattice of 2^-16 dE and are compared exactly.
[[nodiscard]] KVVELMORA_EXPORT Mesh weldedMesh(const Mesh& mesh);

} // namespace KVGamut

namespace KVColorConversionHelper {

/// sRGB values, 0..255 each, of a Lab (D50) colour for display.
///
/// Colours outside sRGB are mapped into it at constant CIELAB hue: lightness is clamped to 0..100, then the
/// colour moves straight towards a grey that is a fifth nearer to L* 50, until it is in gamut. This lowers
/// the chroma, changes the lightness a little, and is continuous.
/// @return {-1, -1, -1} if @p lab has fewer than three values, or values that are NaN or infinite
/// Callable from any thread.
KVVELMORA_EXPORT QList<float> KVHLab2RGB(const QList<float>& lab);
/// The same for many colours, without allocating memory: rgb[i] receives the colour of lab[i]. If the spans
/// differ in length, the rest of the longer one is ignored.
KVVELMORA_EXPORT void KVHLab2RGB(std::span<const KVGamut::LabPoint> lab, std::span<std::array<float, 3>> rgb);

} // namespace KVColorConversionHelper
