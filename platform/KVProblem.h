// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVExport.h>

#include <QtCore/QMetaType>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// @file
/// Failures of the colour engine, of the viewer's loading and of its drawing, as values.

namespace KVProblemCodes {
Q_NAMESPACE_EXPORT(KVCORECOMMON_EXPORT)

/// What failed. The comment of each code names the arguments that KVProblem carries for it.
enum class KVProblemCode : int
{
    // any computation
    Cancelled,    ///< cancelled, or replaced by a newer request
    OutOfMemory,  ///< an allocation failed
    EngineFailed, ///< the colour engine threw an exception

    // profile files and profile bytes
    NoFileName,      ///< the path is empty
    FileNotFound,    ///< no such file
    NotAFile,        ///< the path names a folder, a pipe or a device
    FileUnreadable,  ///< the operating system refused; arguments: its reason, its errno
    FileTooLarge,    ///< larger than any ICC profile
    EmptyData,       ///< the profile has no bytes
    DataTooLarge,    ///< more bytes than any ICC profile has
    NotAProfile,     ///< the bytes are not an ICC profile
    UnusableProfile, ///< argument: the reason of the ICC library
    DamagedTagTable, ///< the profile's tag table is damaged
    DamagedTag,      ///< a tag declares more data than it holds, or than a device needs; argument: tag
    NoProfile,       ///< a null profile handle was passed
    NoSource,        ///< a load request names no profile and no saved gamut
    UnknownIntent,   ///< not a rendering intent; argument: the number
    UnknownSetting,  ///< a key that is not a setting; argument: the key

    // from a profile to its gamut
    DeviceLink,            ///< a device link has no gamut of its own
    AbstractProfile,       ///< an abstract profile describes no device
    NamedColorProfile,     ///< a list of named colours has no gamut surface
    UnsupportedClass,      ///< profiles of this class have no gamut; argument: class signature
    NotADeviceSpace,       ///< a PCS or another space without a device; argument: name of the space
    OneChannel,            ///< grey; a gamut needs three channels
    TwoChannels,           ///< a gamut needs three channels
    NotThreeChannels,      ///< a KVGamut::Construction needs exactly three; argument: their number
    UnknownDeviceSpace,    ///< argument: signature of the colour space
    NoTransform,           ///< no usable transform from device to Lab
    NoTransformBecause,    ///< the same; argument: the ICC library's reason
    LabOutOfRange,         ///< the profile gives Lab values that are NaN or out of range
    NoVolume,              ///< the profile's colours span no volume
    TooSmall,              ///< the gamut's volume is less than 1 cubic dE
    UnresolvedConcavity,   ///< a concave solid with too many channels to resolve
    SurfaceSelfIntersects, ///< the surface found for the device self-intersects
    TooManyOverlaps,       ///< the device's colours overlap too often for a surface to be found

    // surfaces
    NoFaces,                    ///< the surface has no faces
    VertexOutOfRange,           ///< a vertex is NaN or out of range
    VertexIndexOutOfRange,      ///< a face refers to a vertex that does not exist
    SurfaceNotClosed,           ///< the surface has a boundary
    SurfaceNotManifold,         ///< an edge or vertex is shared by too many faces
    SurfaceInsideOut,           ///< the faces point inwards
    TooManyCrossings,           ///< two surfaces cross or lie close together too often for a body to be made
    GivenSurfaceSelfIntersects, ///< a surface that was computed elsewhere self-intersects
    GivenSurfaceTooClose,       ///< its faces lie too close together to be checked for self-intersection

    // saved gamuts
    NotASavedGamut,           ///< the hash does not hold a saved gamut
    UnknownSavedVersion,      ///< argument: the version
    SavedGamutDamaged,        ///< the checksum does not match, or the text cannot be decoded
    SavedGamutInvalidValues,  ///< some values are not possible in a gamut
    SavedGamutTooClose,       ///< the faces lie too close together to be checked for self-intersection
    SavedGamutSelfIntersects, ///< the saved surface self-intersects

    // drawing; an argument "version" is the version of OpenGL that was found
    NoOpenGL,                  ///< no OpenGL context can be created
    OnlyOpenGLES,              ///< there is OpenGL ES, but no desktop OpenGL; argument: version
    OpenGLTooOld,              ///< older than OpenGL 2.1; argument: version
    OpenGLCoreOnly,            ///< a core profile, which lacks functions of OpenGL 1.2; argument: version
    OpenGLWithoutShaders,      ///< no shaders, or older than GLSL 1.20; argument: version
    OpenGLWithoutFramebuffers, ///< no framebuffer objects, or they cannot be copied; argument: version
    OpenGLNotUsable,           ///< a context exists, but it cannot be used with the window
    ShaderTooLarge,            ///< a shader file is larger than any shader
    ShaderNotBuilt,            ///< the graphics driver rejects a shader; argument: the first line of its log
};
Q_ENUM_NS(KVProblemCode)

} // namespace KVProblemCodes
using KVProblemCodes::KVProblemCode;

/// A failure: a code, its arguments, and the file that it is about. Programs should test the code. The
/// text is only for display; it is generated from the code and the arguments.
///
/// A value; may be used on any thread.
class KVCORECOMMON_EXPORT KVProblem
{
    Q_GADGET
    Q_PROPERTY(KVProblemCodes::KVProblemCode code MEMBER code)
    Q_PROPERTY(QStringList arguments MEMBER arguments)
    Q_PROPERTY(QString subject MEMBER subject)
    Q_PROPERTY(QString text READ text)
public:
    KVProblemCode code = KVProblemCode::Cancelled; ///< what failed
    QStringList arguments;                         ///< as the comment of the code says; may be empty
    QString subject;                               ///< the file that it is about; may be empty

    /// One line of plain English that names the subject and has the arguments filled in.
    QString text() const;
    /// The English sentence of a code, with %1 for its argument; never null. text() replaces %1 by the
    /// argument. Translations use the sentence as the source text, in the context "Problem".
    static const char* sentence(KVProblemCode code);

    bool operator==(const KVProblem&) const = default; ///< same code, arguments and subject
};
Q_DECLARE_METATYPE(KVProblem)
