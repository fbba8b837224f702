// SPDX-License-Identifier: Apache-2.0
#include <platform/KVProblem.h>

#include <algorithm>
#include <iterator>

namespace {

struct Sentence
{
    KVProblemCode code;
    const char* words;
};

// The English text of every failure, in one place and in the order of the codes.
constexpr Sentence sentences[] = {
    {KVProblemCode::Cancelled, QT_TRANSLATE_NOOP("Problem", "cancelled")},
    {KVProblemCode::OutOfMemory, QT_TRANSLATE_NOOP("Problem", "not enough memory")},
    {KVProblemCode::EngineFailed, QT_TRANSLATE_NOOP("Problem", "the colour engine failed unexpectedly")},
    {KVProblemCode::NoFileName, QT_TRANSLATE_NOOP("Problem", "the file name is empty")},
    {KVProblemCode::FileNotFound, QT_TRANSLATE_NOOP("Problem", "no such file")},
    {KVProblemCode::NotAFile, QT_TRANSLATE_NOOP("Problem", "not a regular file")},
    {KVProblemCode::FileUnreadable, QT_TRANSLATE_NOOP("Problem", "cannot be read: %1")},
    {KVProblemCode::FileTooLarge, QT_TRANSLATE_NOOP("Problem", "the file is too large to be an ICC profile")},
    {KVProblemCode::EmptyData, QT_TRANSLATE_NOOP("Problem", "the profile is empty")},
    {KVProblemCode::DataTooLarge, QT_TRANSLATE_NOOP("Problem", "too large to be an ICC profile")},
    {KVProblemCode::NotAProfile, QT_TRANSLATE_NOOP("Problem", "not an ICC profile")},
    {KVProblemCode::UnusableProfile, QT_TRANSLATE_NOOP("Problem", "not a usable ICC profile: %1")},
    {KVProblemCode::DamagedTagTable, QT_TRANSLATE_NOOP("Problem", "the profile's tag table is damaged")},
    {KVProblemCode::DamagedTag,
     QT_TRANSLATE_NOOP("Problem", "the tag '%1' declares more data than it holds or than a device needs")},
    {KVProblemCode::NoProfile, QT_TRANSLATE_NOOP("Problem", "there is no profile")},
    {KVProblemCode::NoSource,
     QT_TRANSLATE_NOOP("Problem", "the request names no profile and no saved gamut")},
    {KVProblemCode::UnknownIntent, QT_TRANSLATE_NOOP("Problem", "%1 is not a rendering intent")},
    {KVProblemCode::UnknownSetting, QT_TRANSLATE_NOOP("Problem", "'%1' is not a setting")},
    {KVProblemCode::DeviceLink, QT_TRANSLATE_NOOP("Problem", "a device link has no gamut of its own")},
    {KVProblemCode::AbstractProfile,
     QT_TRANSLATE_NOOP("Problem", "an abstract profile has no device and so no gamut")},
    {KVProblemCode::NamedColorProfile,
     QT_TRANSLATE_NOOP("Problem", "a list of named colours has no gamut surface")},
    {KVProblemCode::UnsupportedClass, QT_TRANSLATE_NOOP("Problem", "profiles of class '%1' have no gamut")},
    {KVProblemCode::NotADeviceSpace,
     QT_TRANSLATE_NOOP("Problem", "%1 is not a device colour space and has no gamut")},
    {KVProblemCode::OneChannel,
     QT_TRANSLATE_NOOP("Problem", "a gamut needs at least three channels; grey has one")},
    {KVProblemCode::TwoChannels,
     QT_TRANSLATE_NOOP("Problem", "a gamut needs at least three channels; this profile has two")},
    {KVProblemCode::NotThreeChannels,
     QT_TRANSLATE_NOOP("Problem", "the 11-grid is defined for three channels; this profile has %1")},
    {KVProblemCode::UnknownDeviceSpace,
     QT_TRANSLATE_NOOP("Problem", "the device colour space '%1' is unknown")},
    {KVProblemCode::NoTransform,
     QT_TRANSLATE_NOOP("Problem", "the profile has no usable transform from device to Lab")},
    {KVProblemCode::NoTransformBecause,
     QT_TRANSLATE_NOOP("Problem", "the profile has no usable transform from device to Lab: %1")},
    {KVProblemCode::LabOutOfRange,
     QT_TRANSLATE_NOOP("Problem", "the profile gives Lab values that are NaN or out of range")},
    {KVProblemCode::NoVolume, QT_TRANSLATE_NOOP("Problem", "the colours of the profile span no volume")},
    {KVProblemCode::TooSmall, QT_TRANSLATE_NOOP("Problem", "the gamut's volume is less than 1 cubic dE")},
    {KVProblemCode::UnresolvedConcavity,
     QT_TRANSLATE_NOOP("Problem", "the gamut is concave, which cannot be resolved with so many channels")},
    {KVProblemCode::SurfaceSelfIntersects,
     QT_TRANSLATE_NOOP("Problem", "the surface found for this device self-intersects")},
    {KVProblemCode::TooManyOverlaps,
     QT_TRANSLATE_NOOP("Problem", "the device's colours overlap too often for a surface to be found")},
    {KVProblemCode::NoFaces, QT_TRANSLATE_NOOP("Problem", "the surface has no faces")},
    {KVProblemCode::VertexOutOfRange,
     QT_TRANSLATE_NOOP("Problem", "the surface has vertices that are NaN or out of range")},
    {KVProblemCode::VertexIndexOutOfRange,
     QT_TRANSLATE_NOOP("Problem", "the surface's faces refer to vertices that do not exist")},
    {KVProblemCode::SurfaceNotClosed, QT_TRANSLATE_NOOP("Problem", "the surface is not closed")},
    {KVProblemCode::SurfaceNotManifold, QT_TRANSLATE_NOOP("Problem", "the surface is not manifold")},
    {KVProblemCode::SurfaceInsideOut, QT_TRANSLATE_NOOP("Problem", "the surface is inside out")},
    {KVProblemCode::TooManyCrossings,
     QT_TRANSLATE_NOOP("Problem", "the surfaces of the gamuts cross too often for a body to be made")},
    {KVProblemCode::GivenSurfaceSelfIntersects, QT_TRANSLATE_NOOP("Problem", "the surface self-intersects")},
    {KVProblemCode::GivenSurfaceTooClose,
     QT_TRANSLATE_NOOP("Problem",
                       "the surface's faces are too close together to be checked for self-intersection")},
    {KVProblemCode::NotASavedGamut, QT_TRANSLATE_NOOP("Problem", "not a saved gamut")},
    {KVProblemCode::UnknownSavedVersion,
     QT_TRANSLATE_NOOP("Problem", "the saved gamut has the unknown version '%1'")},
    {KVProblemCode::SavedGamutDamaged, QT_TRANSLATE_NOOP("Problem", "the saved gamut is damaged")},
    {KVProblemCode::SavedGamutInvalidValues,
     QT_TRANSLATE_NOOP("Problem", "the saved gamut contains invalid values")},
    {KVProblemCode::SavedGamutTooClose,
     QT_TRANSLATE_NOOP("Problem",
                       "the saved gamut's faces are too close together to be checked for self-intersection")},
    {KVProblemCode::SavedGamutSelfIntersects,
     QT_TRANSLATE_NOOP("Problem", "the saved gamut's surface self-intersects")},
    {KVProblemCode::NoOpenGL, QT_TRANSLATE_NOOP("Problem", "the display has no OpenGL")},
    {KVProblemCode::OnlyOpenGLES,
     QT_TRANSLATE_NOOP("Problem", "the display has only OpenGL ES %1; desktop OpenGL 2.1 is needed")},
    {KVProblemCode::OpenGLTooOld,
     QT_TRANSLATE_NOOP("Problem", "the display has only OpenGL %1; version 2.1 is needed")},
    {KVProblemCode::OpenGLCoreOnly,
     QT_TRANSLATE_NOOP("Problem", "the display has only the core profile of OpenGL %1; "
                                  "the compatibility profile is needed")},
    {KVProblemCode::OpenGLWithoutShaders,
     QT_TRANSLATE_NOOP("Problem", "the display's OpenGL %1 has no shaders of version 1.20")},
    {KVProblemCode::OpenGLWithoutFramebuffers,
     QT_TRANSLATE_NOOP("Problem", "the display's OpenGL %1 has no framebuffers that can be copied")},
    {KVProblemCode::OpenGLNotUsable, QT_TRANSLATE_NOOP("Problem", "OpenGL cannot be used in the window")},
    {KVProblemCode::ShaderTooLarge, QT_TRANSLATE_NOOP("Problem", "the file is too large to be a shader")},
    {KVProblemCode::ShaderNotBuilt, QT_TRANSLATE_NOOP("Problem", "the shader cannot be built: %1")},
};

constexpr bool isInOrderOfCodes()
{
    int code = 0;
    return std::all_of(std::begin(sentences), std::end(sentences), [&code](const Sentence& sentence) {
        return static_cast<int>(sentence.code) == code++;
    });
}
static_assert(isInOrderOfCodes(), "the sentences are in the order of KVProblemCode");

} // namespace

const char* KVProblem::sentence(KVProblemCode code)
{
    const auto index = static_cast<std::size_t>(code);
    return index < std::size(sentences) ? sentences[index].words : "";
}

QString KVProblem::text() const
{
    QString words = QString::fromLatin1(sentence(code));
    if (!arguments.isEmpty())
        words = words.arg(arguments.first());
    return subject.isEmpty() ? words : QStringLiteral("'%1': %2").arg(subject, words);
}
