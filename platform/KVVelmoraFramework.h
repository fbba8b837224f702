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
#include <vector>

/// @file
/// The colour engine: ICC profiles become closed gamut surfaces in CIE L*a*b* (D50), with their
/// volume, outline, primaries, sections and point queries.
///
/// Lab triples are always in the order L*, a*, b*; distances are CIE 1976 colour differences (dE76),
/// volumes their cubes. Everything here is reentrant: different objects may be used from different
/// threads at the same time, one object from one thread at a time. Nothing throws on bad input;
/// what was wrong can be asked for afterwards.

// --- Profiles -------------------------------------------------------------------------------------

/// An opened profile: its bytes, known to be a readable ICC profile. Immutable, so that gamuts of one
/// profile can be computed on several threads at once. Made and destroyed by the functions below only.
struct KVProfile
{
    const QByteArray bytes; ///< the file, header and tags
};
/// Shared handle on an opened profile. Wrap what the functions below return at once:
/// `KVProfilePtr(KVProfileCreateWithPath(path), KVProfileRelease)`.
/// Known to the meta-type system as "KVProfilePtr", so that it travels in a QVariant.
using KVProfilePtr = QSharedPointer<KVProfile>;
Q_DECLARE_METATYPE(KVProfilePtr)

/// Opens a profile file. @p path is UTF-8 and NUL-terminated.
/// @return null when the file cannot be read or is no ICC profile; KVProfileError() says why.
KVVELMORA_EXPORT KVProfile* KVProfileCreateWithPath(const char* path);
/// Opens a profile from its bytes, which are copied.
/// @return null when they are no ICC profile; KVProfileError() says why.
KVVELMORA_EXPORT KVProfile* KVProfileCreateWithData(const void* data, int size);
/// Closes a profile; null is allowed.
KVVELMORA_EXPORT void KVProfileRelease(KVProfile* profile);
/// Why the last KVProfileCreate... call of the calling thread returned null, as one line for people;
/// empty when it succeeded.
KVVELMORA_EXPORT QString KVProfileError();
/// Why the last KVProfileCreate... call of the calling thread returned null; nullopt if it succeeded.
KVVELMORA_EXPORT std::optional<KVProblem> KVProfileProblem();

/// ICC rendering intents, with the values that profiles and host parameters use.
enum KVVMRenderType : int
{
    KVVMRenderPerceptual = 0,
    KVVMRenderRelativeColorimetric = 1,
    KVVMRenderSaturation = 2,
    KVVMRenderAbsoluteColorimetric = 3,
};

// --- Gamuts ---------------------------------------------------------------------------------------

namespace KVHull {

/// A corner of a gamut surface.
struct Node
{
    QList<float> device; ///< device coordinates, 0..1 per channel; empty where they are not known
    QList<float> lab;    ///< L*, a*, b*

    bool operator==(const Node&) const = default; ///< to the last bit
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

/// An indexed triangle mesh in Lab: the one form in which a gamut surface is made, compared, cut, drawn
/// and written.
struct Mesh
{
    using Triangle = std::array<int, 3>; ///< vertex indices, counter-clockwise seen from outside

    int channels = 0;                ///< device channels of each vertex
    std::vector<float> device;       ///< 0..1, `channels` values for each vertex; empty where unknown
    std::vector<LabPoint> lab;       ///< position of each vertex
    std::vector<Triangle> triangles; ///< right-handed in the order L*, a*, b*

    bool isEmpty() const { return triangles.empty(); } ///< no surface
    /// Device coordinates of a vertex, `channels` values. Only where device is not empty.
    const float* deviceOf(int vertex) const
    {
        return device.data() + static_cast<std::size_t>(vertex) * static_cast<std::size_t>(channels);
    }
};

/// How a gamut is computed from its profile.
struct Settings
{
    static constexpr float defaultMaxEdge = 40.0f;  ///< see GamutObject::init()
    static constexpr int defaultMaxRefinements = 2; ///< see GamutObject::init()
    static constexpr int engineChoosesGrid = -1;    ///< grid of the method's default size

    KVVMRenderType intent = KVVMRenderAbsoluteColorimetric; ///< from device to Lab
    bool blackPointCompensation = false;                    ///< no effect with the absolute intent
    int gridPoints = engineChoosesGrid;                     ///< samples along each device axis

    bool operator==(const Settings&) const = default; ///< all settings are equal
};

/// What two gamuts have in common. Eighteen floats in this order; volumes in dE76 cubed.
struct Comparison
{
    LabPoint whiteFirst;        ///< lightest neutral end of the first gamut
    LabPoint blackFirst;        ///< darkest neutral end of the first gamut
    LabPoint whiteSecond;       ///< lightest neutral end of the second gamut
    LabPoint blackSecond;       ///< darkest neutral end of the second gamut
    float volumeFirst = 0.0f;   ///< volume of the first gamut
    float volumeSecond = 0.0f;  ///< volume of the second gamut
    float intersection = 0.0f;  ///< volume of what both contain
    float unionVolume = 0.0f;   ///< volume of what either contains
    float secondCovered = 0.0f; ///< share of the second covered by the first, 0..1
    float firstCovered = 0.0f;  ///< share of the first covered by the second, 0..1
};
static_assert(sizeof(Comparison) == 18 * sizeof(float), "the order of the eighteen floats is the interface");

/// How far a colour is from a gamut's surface.
struct Nearest
{
    float distance = 0.0f; ///< dE76; negative inside the gamut
    LabPoint point;        ///< the point of the surface that is nearest
};

/// How a surface was found.
enum class Method
{
    None,           ///< there is no gamut
    DeviceMesh,     ///< image of the device cube's surface; exact for three channels that do not fold
    RadialHull,     ///< hull of samples of all faces of the device hypercube after radial compression
    LatticeSurface, ///< surface between the nodes of a lattice in Lab that the device reaches or not
};

/// What is known about a gamut and how it was found.
struct Report
{
    Method method = Method::None;                           ///< how the surface was found
    KVVMRenderType intent = KVVMRenderRelativeColorimetric; ///< as asked for
    bool blackPointCompensation = false;                    ///< as asked for
    int channels = 0;                                       ///< colorants of the device
    int gridPoints = 0;                                     ///< samples along each device axis
    int faceCount = 0;                                      ///< triangles of the surface
    double volume = 0.0;                                    ///< dE76 cubed
    double volumeUncertainty = 0.0; ///< the device's true volume lies within volume ± this
    double foldShare = 0.0; ///< share of a three-channel device that maps backwards, 0..0.5; 0 from four on
    LabPoint white;         ///< as GamutObject::whitePoint()
    LabPoint black;         ///< as GamutObject::blackPoint()
    double seconds = 0.0;   ///< time that the computation took
    QString reason;         ///< as GamutObject::reason()
};

class GamutData;

/// The gamut of a device: a closed, outward-oriented triangle mesh in Lab and what follows from it.
///
/// A value: copies share their data. A default-constructed gamut is empty: no faces, volume 0,
/// nothing is inside.
class KVVELMORA_EXPORT GamutObject
{
public:
    GamutObject();
    GamutObject(const GamutObject& other);                ///< shares the data of @p other
    GamutObject(GamutObject&& other) noexcept;            ///< leaves @p other fit for assignment only
    GamutObject& operator=(const GamutObject& other);     ///< shares the data of @p other
    GamutObject& operator=(GamutObject&& other) noexcept; ///< leaves @p other fit for assignment only
    ~GamutObject();

    /// Computes the gamut of @p profile.
    ///
    /// @param profile an opened profile; null gives false
    /// @param intent rendering intent from device to Lab
    /// @param blackPointCompensation maps the device's black to L* 0 (ignored by the absolute intent)
    /// @param withDecoration also compute the primaries and the ab outline
    /// @param maxEdge longest surface edge, in dE76, that is left as it is; not a number: any
    /// @param gridPoints samples along each device axis; below 2, or -1, means the method's default
    ///        (33; 17 from five channels on); held to 3..129 otherwise
    /// @param refinements how often at most edges longer than @p maxEdge are halved, as long as the
    ///        surface does not pass through itself then; held to 0..4
    /// @param protocol progress and cancellation; may be null or point to a null handle
    /// @return whether a gamut was computed. On false the object is empty and reason() says why.
    ///
    /// Runs on any thread; cancelling through @p protocol ends it early with false.
    bool init(KVProfilePtr profile, KVVMRenderType intent, bool blackPointCompensation, bool withDecoration,
              float maxEdge, int gridPoints, int refinements, KVCompletionProtocolPtr* protocol);

    /// Computes the gamut of @p profile as the viewer and the program show it: with primaries and
    /// outline, and with Settings::defaultMaxEdge and Settings::defaultMaxRefinements.
    bool init(KVProfilePtr profile, const Settings& settings, KVCompletionProtocolPtr* protocol = nullptr);

    /// The gamut as a hash of plain values that survives every QVariant serialization. It holds the
    /// key "Gamut", which marks it as a saved gamut.
    QHash<QString, QVariant> serialize() const;
    /// Restores what serialize() gave; the hash may also stand as a whole under its own key "Gamut".
    /// A damaged or foreign hash leaves an empty gamut, whose reason() says what was wrong.
    void deserialize(const QHash<QString, QVariant>& hash);

    /// The surface. Lives as long as this object or a copy of it; empty for an empty gamut.
    const Mesh& mesh() const;
    /// Faces of the surface, derived from mesh(), three nodes each, counter-clockwise seen from outside in a
    /// right-handed (L*, a*, b*) system. Shared, not copied; first call builds the list.
    QList<QList<KVHull::Node>> faces() const;
    int faceCount() const; ///< how many faces() there are
    /// Volume enclosed by the surface, dE76 cubed.
    float volume() const;

    /// Outline of the projection onto the ab plane, as segments of two nodes; they chain into closed
    /// loops. L* of a node is that of the surface point it stands for.
    QList<QList<KVHull::Node>> outline() const;
    /// Lab of the device colour without colorants, three values: black of an additive device, paper
    /// of a subtractive one. Empty for an empty gamut.
    QList<float> referenceLab() const;
    /// For each colorant channel its ramp from just above 0 to full, as Lab triples on the device's edge.
    QList<QList<QList<float>>> primaries() const;

    LabPoint whitePoint() const; ///< Lab of the device's white
    LabPoint blackPoint() const; ///< Lab of the device's black

    /// Whether the Lab triple @p lab lies inside the surface. False for values that are not finite.
    bool isInside(const float* lab) const;
    /// The point of the surface that is nearest to the Lab triple @p lab, and its distance: negative
    /// where isInside() is true, else positive, 0 on the surface. Where there is no answer - an empty
    /// gamut, null, values that are not finite - the distance is infinite and the point is not a number.
    Nearest nearest(const float* lab) const;
    /// Compares this gamut, the first, with @p other, the second.
    Comparison compare(const GamutObject& other) const;

    Method method() const; ///< how the surface was found
    /// Why there is no gamut, as one line for people; empty when there is one or when nothing was
    /// asked for yet.
    QString reason() const;
    /// Why there is no gamut; nullopt if there is one, or if nothing was computed yet.
    std::optional<KVProblem> problem() const;
    /// All of the above and more at once; of an empty gamut only the reason.
    Report report() const;

private:
    QSharedDataPointer<const GamutData> d;
    std::optional<KVProblem> m_problem;
};

/// Cuts a surface by a plane.
///
/// @param plane four coefficients {nL, na, nb, d}: the plane is nL·L + na·a + nb·b + d = 0
/// @param faces as GamutObject::faces() gives them
/// @return one piece for each face that the plane crosses: its two crossing points in Lab. The pieces
///         of a closed surface form closed rings, also for planes through nodes.
KVVELMORA_EXPORT QList<QList<QList<float>>> computeRing(const float* plane,
                                                        const QList<QList<KVHull::Node>>& faces);

/// A piece of a section: two points in Lab.
using RingPiece = std::array<LabPoint, 2>;
/// The same of a mesh: one piece for each triangle that the plane crosses, in the order of triangles.
KVVELMORA_EXPORT std::vector<RingPiece> computeRing(const float* plane, const Mesh& mesh);

/// @p mesh with vertices at the same place merged and the triangles that degenerate by that dropped; device
/// coordinates are those of the first of the merged vertices. The order of what stays is kept. Vertices are
/// compared exactly: they lie on a lattice of 2^-16 dE.
KVVELMORA_EXPORT Mesh weldedMesh(const Mesh& mesh);

} // namespace KVGamut

namespace KVColorConversionHelper {

/// sRGB values, 0..255 each, in which a screen shows a Lab (D50) colour.
///
/// A colour that sRGB cannot show is brought to the nearest one of the same hue (CIELAB hue angle)
/// that it can: lightness is held to 0..100, then the colour goes straight towards a grey a fifth
/// nearer to L* 50 until it fits. Chroma falls, lightness gives way a little, near colours stay near.
/// A triple with a missing or not finite value is no colour and answers {-1, -1, -1}.
/// Callable from any thread.
KVVELMORA_EXPORT QList<float> KVHLab2RGB(const QList<float>& lab);

} // namespace KVColorConversionHelper
