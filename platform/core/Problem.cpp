// SPDX-License-Identifier: Apache-2.0
#include <platform/KVProblem.h>

// The English words of every failure, in one place. A switch without default: the compiler names a code
// that has no sentence.
const char* KVProblem::sentence(KVProblemCode code)
{
    switch (code) {
    case KVProblemCode::Cancelled:
        return QT_TRANSLATE_NOOP("Problem", "cancelled");
    case KVProblemCode::OutOfMemory:
        return QT_TRANSLATE_NOOP("Problem", "not enough memory");
    case KVProblemCode::NoFileName:
        return QT_TRANSLATE_NOOP("Problem", "the file name is empty");
    case KVProblemCode::FileNotFound:
        return QT_TRANSLATE_NOOP("Problem", "no such file");
    case KVProblemCode::NotAFile:
        return QT_TRANSLATE_NOOP("Problem", "not a regular file");
    case KVProblemCode::FileUnreadable:
        return QT_TRANSLATE_NOOP("Problem", "cannot be read: %1");
    case KVProblemCode::FileTooLarge:
        return QT_TRANSLATE_NOOP("Problem", "the file is too large to be an ICC profile");
    case KVProblemCode::EmptyData:
        return QT_TRANSLATE_NOOP("Problem", "the profile is empty");
    case KVProblemCode::DataTooLarge:
        return QT_TRANSLATE_NOOP("Problem", "too large to be an ICC profile");
    case KVProblemCode::NotAProfile:
        return QT_TRANSLATE_NOOP("Problem", "not an ICC profile");
    case KVProblemCode::UnusableProfile:
        return QT_TRANSLATE_NOOP("Problem", "not a usable ICC profile: %1");
    case KVProblemCode::DamagedTagTable:
        return QT_TRANSLATE_NOOP("Problem", "the profile's tag table is damaged");
    case KVProblemCode::DamagedTag:
        return QT_TRANSLATE_NOOP("Problem",
                                 "the tag '%1' declares more data than it holds or than a device needs");
    case KVProblemCode::NoProfile:
        return QT_TRANSLATE_NOOP("Problem", "there is no profile");
    case KVProblemCode::NoSource:
        return QT_TRANSLATE_NOOP("Problem", "the request names no profile and no saved gamut");
    case KVProblemCode::UnknownIntent:
        return QT_TRANSLATE_NOOP("Problem", "%1 is not a rendering intent");
    case KVProblemCode::UnknownSetting:
        return QT_TRANSLATE_NOOP("Problem", "'%1' is not a setting");
    case KVProblemCode::DeviceLink:
        return QT_TRANSLATE_NOOP("Problem", "a device link has no gamut of its own");
    case KVProblemCode::AbstractProfile:
        return QT_TRANSLATE_NOOP("Problem", "an abstract profile has no device and so no gamut");
    case KVProblemCode::NamedColorProfile:
        return QT_TRANSLATE_NOOP("Problem", "a list of named colours has no gamut surface");
    case KVProblemCode::UnsupportedClass:
        return QT_TRANSLATE_NOOP("Problem", "profiles of class '%1' have no gamut");
    case KVProblemCode::NotADeviceSpace:
        return QT_TRANSLATE_NOOP("Problem", "%1 is not a device colour space and has no gamut");
    case KVProblemCode::OneChannel:
        return QT_TRANSLATE_NOOP("Problem", "a gamut needs at least three channels; grey has one");
    case KVProblemCode::TwoChannels:
        return QT_TRANSLATE_NOOP("Problem", "a gamut needs at least three channels; this profile has two");
    case KVProblemCode::UnknownDeviceSpace:
        return QT_TRANSLATE_NOOP("Problem", "the device colour space '%1' is unknown");
    case KVProblemCode::NoTransform:
        return QT_TRANSLATE_NOOP("Problem", "the profile has no usable transform from device to Lab");
    case KVProblemCode::NoTransformBecause:
        return QT_TRANSLATE_NOOP("Problem", "the profile has no usable transform from device to Lab: %1");
    case KVProblemCode::LabOutOfRange:
        return QT_TRANSLATE_NOOP("Problem", "the profile gives Lab values that are NaN or out of range");
    case KVProblemCode::NoVolume:
        return QT_TRANSLATE_NOOP("Problem", "the colours of the profile span no volume");
    case KVProblemCode::TooSmall:
        return QT_TRANSLATE_NOOP("Problem", "the gamut's volume is less than 1 cubic dE");
    case KVProblemCode::UnresolvedConcavity:
        return QT_TRANSLATE_NOOP("Problem",
                                 "the gamut is concave, which cannot be resolved with so many channels");
    case KVProblemCode::SurfaceSelfIntersects:
        return QT_TRANSLATE_NOOP("Problem", "the surface found for this device self-intersects");
    case KVProblemCode::TooManyOverlaps:
        return QT_TRANSLATE_NOOP("Problem",
                                 "the device's colours overlap too often for a surface to be found");
    case KVProblemCode::NoFaces:
        return QT_TRANSLATE_NOOP("Problem", "the surface has no faces");
    case KVProblemCode::VertexOutOfRange:
        return QT_TRANSLATE_NOOP("Problem", "the surface has vertices that are NaN or out of range");
    case KVProblemCode::VertexIndexOutOfRange:
        return QT_TRANSLATE_NOOP("Problem", "the surface's faces refer to vertices that do not exist");
    case KVProblemCode::SurfaceNotClosed:
        return QT_TRANSLATE_NOOP("Problem", "the surface is not closed");
    case KVProblemCode::SurfaceNotManifold:
        return QT_TRANSLATE_NOOP("Problem", "the surface is not manifold");
    case KVProblemCode::SurfaceInsideOut:
        return QT_TRANSLATE_NOOP("Problem", "the surface is inside out");
    case KVProblemCode::NotASavedGamut:
        return QT_TRANSLATE_NOOP("Problem", "not a saved gamut");
    case KVProblemCode::UnknownSavedVersion:
        return QT_TRANSLATE_NOOP("Problem", "the saved gamut has the unknown version '%1'");
    case KVProblemCode::SavedGamutDamaged:
        return QT_TRANSLATE_NOOP("Problem", "the saved gamut is damaged");
    case KVProblemCode::SavedGamutInvalidValues:
        return QT_TRANSLATE_NOOP("Problem", "the saved gamut contains invalid values");
    case KVProblemCode::SavedGamutTooClose:
        return QT_TRANSLATE_NOOP(
            "Problem", "the saved gamut's faces are too close together to be checked for self-intersection");
    case KVProblemCode::SavedGamutSelfIntersects:
        return QT_TRANSLATE_NOOP("Problem", "the saved gamut's surface self-intersects");
    }
    return "";
}

QString KVProblem::text() const
{
    QString words = QString::fromLatin1(sentence(code));
    if (!arguments.isEmpty())
        words = words.arg(arguments.first());
    return subject.isEmpty() ? words : QStringLiteral("'%1': %2").arg(subject, words);
}
