// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVProblem.h>

#include <QtCore/QMetaType>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <utility>
#include <variant>

namespace ProblemCodes {
Q_NAMESPACE

/// What failed, or was left out, in the program itself; what fails in the engine or the viewer has a
/// KVProblemCode. The comment of each code names its arguments in order. Sentences are in ProblemText.cpp.
enum class ProblemCode : int
{
    // reasons of the operating system and of libraries; causes of the problems below
    NoSuchFile,         ///< ENOENT
    PermissionDenied,   ///< EACCES, EPERM
    IsDirectory,        ///< EISDIR, or a directory where a file was expected
    NoSpaceLeft,        ///< ENOSPC
    ReadOnlyFileSystem, ///< EROFS
    TooManyOpenFiles,   ///< EMFILE, ENFILE
    BrokenPipe,         ///< EPIPE: the reader of a pipe has ended
    InvalidDescriptor,  ///< EBADF: the standard file is closed
    OtherReason,        ///< argument: the message of the operating system or of a library

    // files
    CannotRead,    ///< with a cause
    CannotWrite,   ///< with a cause
    UnknownFormat, ///< content that is neither a profile, nor a picture, nor a saved gamut

    InputTooLarge,       ///< argument: the limit in MiB
    NotAFileOrPipe,      ///< a device
    NotText,             ///< a text file with NUL characters
    NameNotUtf8,         ///< a cause: the name of an output is not UTF-8
    OutputIsInput,       ///< the output would overwrite an input
    InputSettingUnknown, ///< arguments: the word behind the @ of an input, the known words
    ColorsWithoutVolume, ///< colours whose hull is flat; argument: their number
    ChartTooSmall,       ///< argument: the number of patches with different device values
    ChartWithoutWhite,   ///< not even the lightest patch has light
    TooManyPatches,      ///< argument: the limit
    SavedIntentDiffers,  ///< argument: the intent of the saved gamut
    SurfaceTableMissing, ///< a file of a surface; argument: the columns of the table
    SurfaceSpaceUnknown, ///< coordinates that are not Lab; argument: what they are
    RowVertexUnknown,    ///< arguments: line, number of the vertex
    RowVertexTwice,      ///< arguments: line, number of the vertex
    TooManyFaces,        ///< argument: the limit
    BoundaryMissing,     ///< a profile without a gamut boundary
    BoundaryDamaged,     ///< argument: the tag
    InputWithoutIntent,  ///< an input that has no intents; argument: the one behind its @
    NoSuchInput,         ///< neither a file nor a built-in name; argument: the built-in name that is near

    // pictures
    PictureDamaged,        ///< argument: format, such as PNG; with a cause
    PictureWithoutProfile, ///< argument: format
    PictureFormatUnknown,  ///< Qt has no reader or writer for this format
    PictureDataInvalid,    ///< Qt cannot decode the picture
    PictureTooLarge,       ///< insufficient memory
    TooManyPixels,         ///< argument: the limit in millions
    TooManyPixelsAtOnce,   ///< argument: the limit in millions; progressive, or a format that is decoded as a
                           ///< whole
    NoPhotoLibrary,        ///< libvips is not installed
    PictureSamplesUnknown, ///< samples of a number, a type or a meaning that is not supported
    PictureNeedsProfile,   ///< without a profile, and neither RGB nor grey
    PictureSpaceDiffers,   ///< its profile is for another kind of colour than its pixels
    PictureManyPages,      ///< a note; argument: the number of pages
    PictureValuesClamped,  ///< a note; argument: the number of pixels with values outside 0 to 1
    NotAPng,               ///< with a cause
    PictureProfileInvalid, ///< the embedded profile is not a usable ICC profile
    PictureProfileHasNoLab, ///< the embedded profile has no transform to Lab
    PictureTransparent,     ///< every pixel is transparent
    PictureTakenAsSrgb,     ///< a note: no embedded profile

    // points
    RowMissesValue,       ///< arguments: line number, name of the value
    RowNotNumber,         ///< arguments: line number, name of the value, what was found
    RowOutOfRange,        ///< arguments: line number, name of the value, what was found, min, max
    RowNotHex,            ///< arguments: line number, what was found
    RowNotColor,          ///< arguments: line number, what was found
    RowTooLong,           ///< arguments: line number, number of values, number of columns
    RowNotLab,            ///< argument: line number; in a table without a heading
    RowLabImpossible,     ///< arguments: line number, L*, a*, b*
    RowsLeftOut,          ///< arguments: number left out, number of all, lines; with the cause of the first
    HeadingNeeded,        ///< arguments: line number, the first value that is not of Lab
    ColumnsUnknown,       ///< arguments: line number, the names of the columns
    ColumnsIgnored,       ///< a note; argument: the names of the columns
    NumbersTakenAsLab,    ///< a note: a table without a heading
    TextTakenAsLatin1,    ///< a note: neither UTF-8 nor UTF-16
    PointsAdapted,        ///< a note; argument: the white of the values, such as D65
    ObserverDiffers,      ///< a note: values for the 10 degree observer
    XyzScaleUnknown,      ///< argument: the largest value
    DeviceScaleTaken,     ///< a note; arguments: RGB or CMYK, the largest possible value
    PointSpaceNeeded,     ///< argument: RGB or CMYK
    PointSpaceDiffers,    ///< arguments: the profile, RGB or CMYK
    PointSpaceUnusable,   ///< argument: the profile; may have a cause
    PointWordUnknown,     ///< arguments: line number, the word, the words that are known
    SpectrumUnusable,     ///< arguments: number of reflectances, the first and the last wavelength
    SpectraComputed,      ///< a note; arguments: first and last wavelength, the reflectance of white
    ColorsLeftOut,        ///< arguments: number left out, number of all, their numbers; with a cause
    ColorLabImpossible,   ///< arguments: number of the colour, L*, a*, b*
    PaletteDamaged,       ///< argument: the format
    PaletteModelUnknown,  ///< arguments: number of the colour, the colour model
    PaletteValueInvalid,  ///< arguments: number of the colour, what was found
    NotColors,            ///< argument: the format of the file
    NoPositions,          ///< the file contains no point
    TooManyPoints,        ///< argument: the limit
    TooManyColumns,       ///< arguments: line number, the limit
    LineTooLong,          ///< arguments: line number, the limit in characters
    CgatsInvalid,         ///< with a cause
    CgatsIncludesFile,    ///< arguments: line number, the directive that names another file
    CgatsWithoutFormat,   ///< argument: line number of data whose columns have no names
    CgatsUnfinished,      ///< a cause; arguments: line number, the keyword that is missing
    CgatsCountDiffers,    ///< a cause; arguments: line number, keyword, declared number, number found
    CgatsWithoutColor,    ///< argument: the names of the columns
    NotCxf,               ///< XML of another kind
    XmlInvalid,           ///< argument: line number; with a cause
    XmlHasDocumentType,   ///< argument: line number
    XmlTooDeep,           ///< arguments: line number, the limit of nested elements
    XmlTooManyAttributes, ///< arguments: line number, the limit of an element
    ObjectsWithoutLab,    ///< arguments: number left out, number of all; a problem, or a note about a part

    // sections; notes about a gamut that the plane misses
    NothingAtLightness, ///< arguments: the lightness, the lowest and the highest of the gamut
    NothingAtHue,       ///< argument: the hue angle

    // bodies: parts of a gamut that do not exist
    NothingOutside,  ///< arguments: the gamut, the other one
    NothingInCommon, ///< arguments: the two gamuts

    // sessions; the first argument is the place of the value in the file, such as "gamuts[0].opacity"
    NotASession,           ///< no arguments
    SessionNewer,          ///< its version of the format, the newest one that can be read
    SessionNotBool,        ///< place
    SessionNotInRange,     ///< place, min, max
    SessionNotName,        ///< place
    SessionNotColor,       ///< place
    SessionNotThreeValues, ///< place
    SessionNotOneOf,       ///< place, words
    SessionNotFileList,    ///< place
    SessionNotList,        ///< place
    SessionNotGroup,       ///< place
    SessionSamePoint,      ///< place of the eye, place of the look-at point
    SessionTooLong,        ///< place, max

    // the window
    SectionFormatUnknown, ///< neither .svg nor .pdf
    PageFormatUnknown,    ///< not .html
    MeshFormatUnknown,    ///< none of the suffixes of gamuts
    NoGamutToSave,        ///< no gamut is computed
    NoPictureToSave,      ///< nothing is shown, or insufficient memory
    NoCameraInClipboard,  ///< argument: an example of a camera

    // displays and rendering
    NoDisplayForWindow,   ///< `kvgamut view` without a display
    DisplayNotReachable,  ///< argument: the displays that the environment names
    NoPlatformPlugin,     ///< arguments: name of Qt's plug-in, Debian package
    NoVirtualDisplay,     ///< no display, and Xvfb started but gave none
    NoXvfb,               ///< no display, and Xvfb is not installed
    XvfbFailed,           ///< no display, and Xvfb cannot be started; with a cause
    NoOpenGL,             ///< the display has no OpenGL
    NothingDrawn,         ///< arguments: width, height of the picture
    ReferenceSizeDiffers, ///< arguments: size of the picture, size of the reference
    ReferenceDiffers,     ///< arguments: difference, threshold; both in percent
};
Q_ENUM_NS(ProblemCode)

} // namespace ProblemCodes
using ProblemCodes::ProblemCode;

/// A failure, or a note about what was left out: a code with arguments, the subject and the cause.
/// The program makes decisions by the code. ProblemText.h makes the text where it is shown.
struct Problem
{
    using Code = std::variant<KVProblemCode, ProblemCode>;

    Code code = KVProblemCode::Cancelled;
    QStringList arguments;                ///< see the comment of the code
    QString subject;                      ///< the input or output, as the user named it; may be empty
    std::shared_ptr<const Problem> cause; ///< shown after the sentence; may be null

    Problem() = default;
    Problem(const KVProblem& p) : code(p.code), arguments(p.arguments), subject(p.subject) {}
    Problem(Code c, QStringList args = {}, QString about = {})
        : code(c), arguments(std::move(args)), subject(std::move(about))
    {
    }

    /// The same problem with the subject @p name.
    [[nodiscard]] Problem about(const QString& name) const
    {
        Problem result = *this;
        result.subject = name;
        return result;
    }
    /// The same problem with the cause @p reason.
    [[nodiscard]] Problem because(const Problem& reason) const
    {
        Problem result = *this;
        result.cause = std::make_shared<const Problem>(reason);
        return result;
    }

    bool isCancelled() const { return code == Code(KVProblemCode::Cancelled); }
};
Q_DECLARE_METATYPE(Problem)
