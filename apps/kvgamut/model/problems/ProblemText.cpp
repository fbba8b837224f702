// SPDX-License-Identifier: Apache-2.0
#include "ProblemText.h"

#include "model/text/SafeText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaEnum>

#include <algorithm>
#include <functional>
#include <iterator>

namespace {

struct Sentence
{
    ProblemCode code;
    const char* words;
};

// In the order of the codes. Reasons of the operating system use the texts of the C library, so that people
// can look them up.
constexpr Sentence sentences[] = {
    {ProblemCode::NoSuchFile, QT_TRANSLATE_NOOP("Problem", "No such file or directory")},
    {ProblemCode::PermissionDenied, QT_TRANSLATE_NOOP("Problem", "Permission denied")},
    {ProblemCode::IsDirectory, QT_TRANSLATE_NOOP("Problem", "Is a directory")},
    {ProblemCode::NoSpaceLeft, QT_TRANSLATE_NOOP("Problem", "No space left on device")},
    {ProblemCode::ReadOnlyFileSystem, QT_TRANSLATE_NOOP("Problem", "Read-only file system")},
    {ProblemCode::TooManyOpenFiles, QT_TRANSLATE_NOOP("Problem", "Too many open files")},
    {ProblemCode::BrokenPipe, QT_TRANSLATE_NOOP("Problem", "Broken pipe")},
    {ProblemCode::InvalidDescriptor, QT_TRANSLATE_NOOP("Problem", "Bad file descriptor")},
    {ProblemCode::OtherReason, QT_TRANSLATE_NOOP("Problem", "%1")},
    {ProblemCode::CannotRead, QT_TRANSLATE_NOOP("Problem", "cannot be read")},
    {ProblemCode::CannotWrite, QT_TRANSLATE_NOOP("Problem", "cannot be written")},
    {ProblemCode::UnknownFormat,
     QT_TRANSLATE_NOOP("Problem",
                       "neither an ICC profile, nor a PNG, JPEG or TIFF picture, nor a saved gamut, "
                       "nor a chart or a list of colours")},
    {ProblemCode::InputTooLarge,
     QT_TRANSLATE_NOOP("Problem", "larger than %1 MiB, the limit for files of this kind")},
    {ProblemCode::NotAFileOrPipe, QT_TRANSLATE_NOOP("Problem", "neither a regular file nor a pipe")},
    {ProblemCode::NotText, QT_TRANSLATE_NOOP("Problem", "not a text file")},
    {ProblemCode::NameNotUtf8, QT_TRANSLATE_NOOP("Problem", "the name is not UTF-8")},
    {ProblemCode::OutputIsInput,
     QT_TRANSLATE_NOOP("Problem", "the output would overwrite this input; choose another name")},
    {ProblemCode::InputSettingUnknown,
     QT_TRANSLATE_NOOP("Problem", "unknown setting '%1' behind the @ (known: %2)")},
    {ProblemCode::ColorsWithoutVolume,
     QT_TRANSLATE_NOOP("Problem", "the hull of the %1 colours encloses less than 1 cubic dE; a gamut needs "
                                  "colours of different lightness, hue and chroma")},
    {ProblemCode::ChartTooSmall,
     QT_TRANSLATE_NOOP("Problem",
                       "the chart has too few patches: %1 with different device values, or a channel that "
                       "varies by less than 50 %")},
    {ProblemCode::ChartWithoutWhite, QT_TRANSLATE_NOOP("Problem", "all patches of the chart are black")},
    {ProblemCode::TooManyPatches,
     QT_TRANSLATE_NOOP("Problem", "more than %1 different patches, the limit of a chart")},
    {ProblemCode::SavedIntentDiffers,
     QT_TRANSLATE_NOOP("Problem", "a saved gamut keeps its intent, which is %1")},
    {ProblemCode::SurfaceTableMissing, QT_TRANSLATE_NOOP("Problem", "the surface has no table of %1")},
    {ProblemCode::SurfaceSpaceUnknown,
     QT_TRANSLATE_NOOP("Problem", "the surface is in '%1'; only Lab and XYZ are supported")},
    {ProblemCode::RowVertexUnknown, QT_TRANSLATE_NOOP("Problem", "line %1: there is no vertex %2")},
    {ProblemCode::RowVertexTwice, QT_TRANSLATE_NOOP("Problem", "line %1: vertex %2 occurs twice")},
    {ProblemCode::TooManyFaces,
     QT_TRANSLATE_NOOP("Problem", "more than %1 triangles, the limit of a surface")},
    {ProblemCode::BoundaryMissing,
     QT_TRANSLATE_NOOP("Problem", "the profile has no gamut boundary (a tag gbd0 to gbd3)")},
    {ProblemCode::BoundaryDamaged, QT_TRANSLATE_NOOP("Problem", "the tag '%1' is damaged")},
    {ProblemCode::InputWithoutIntent,
     QT_TRANSLATE_NOOP("Problem", "this gamut has no rendering intents; leave out '@%1'")},
    {ProblemCode::NoSuchInput, QT_TRANSLATE_NOOP("Problem", "no such file; did you mean %1?")},
    {ProblemCode::PictureDamaged, QT_TRANSLATE_NOOP("Problem", "the %1 picture is damaged")},
    {ProblemCode::PictureWithoutProfile,
     QT_TRANSLATE_NOOP("Problem", "the %1 picture has no embedded profile; the colours of its pixels, taken "
                                  "as sRGB, are a gamut with @pixels after the name")},
    {ProblemCode::PictureFormatUnknown, QT_TRANSLATE_NOOP("Problem", "unsupported picture format")},
    {ProblemCode::PictureDataInvalid, QT_TRANSLATE_NOOP("Problem", "the picture cannot be decoded")},
    {ProblemCode::PictureTooLarge, QT_TRANSLATE_NOOP("Problem", "the picture is too large for the memory")},
    {ProblemCode::TooManyPixels,
     QT_TRANSLATE_NOOP("Problem", "the picture has more than %1 million pixels, the limit")},
    {ProblemCode::TooManyPixelsAtOnce,
     QT_TRANSLATE_NOOP("Problem",
                       "the picture is progressive, interlaced or of a format that is decoded as a whole, "
                       "and has more than %1 million pixels, the limit; save it as TIFF")},
    {ProblemCode::NoPhotoLibrary,
     QT_TRANSLATE_NOOP("Problem", "pictures cannot be read; install libvips (Debian package libvips42)")},
    {ProblemCode::PictureSamplesUnknown,
     QT_TRANSLATE_NOOP("Problem",
                       "the number or the type of the values of a pixel is not supported; grey, RGB, CMYK "
                       "and Lab with 8 or 16 bits or floating point are")},
    {ProblemCode::PictureNeedsProfile,
     QT_TRANSLATE_NOOP("Problem",
                       "CMYK and floating-point pictures need a profile: embed it, or name it with "
                       "--photo-profile, after @pixels with --points-space")},
    {ProblemCode::PictureSpaceDiffers,
     QT_TRANSLATE_NOOP("Problem", "the profile is for another kind of colour than the pixels")},
    {ProblemCode::PictureManyPages, QT_TRANSLATE_NOOP("Problem", "the first of %1 pages is read")},
    {ProblemCode::PictureValuesClamped,
     QT_TRANSLATE_NOOP("Problem", "%1 pixels have values below 0 or above 1, which were clamped")},
    {ProblemCode::NotAPng, QT_TRANSLATE_NOOP("Problem", "not a readable PNG picture")},
    {ProblemCode::PictureProfileInvalid, QT_TRANSLATE_NOOP("Problem", "the embedded profile cannot be read")},
    {ProblemCode::PictureProfileHasNoLab,
     QT_TRANSLATE_NOOP("Problem", "the embedded profile has no usable transform to Lab")},
    {ProblemCode::PictureTransparent, QT_TRANSLATE_NOOP("Problem", "every pixel is transparent")},
    {ProblemCode::PictureTakenAsSrgb,
     QT_TRANSLATE_NOOP("Problem", "no embedded profile; the colours are taken as sRGB")},
    {ProblemCode::RowMissesValue, QT_TRANSLATE_NOOP("Problem", "line %1: the value of %2 is missing")},
    {ProblemCode::RowNotNumber, QT_TRANSLATE_NOOP("Problem", "line %1: %2 is '%3', expected a number")},
    {ProblemCode::RowOutOfRange, QT_TRANSLATE_NOOP("Problem", "line %1: %2 is %3, expected %4 to %5")},
    {ProblemCode::RowNotHex, QT_TRANSLATE_NOOP("Problem", "line %1: '%2', expected a colour such as 40c0ff")},
    {ProblemCode::RowNotColor, QT_TRANSLATE_NOOP("Problem", "line %1: '%2' is not a colour")},
    {ProblemCode::RowTooLong, QT_TRANSLATE_NOOP("Problem", "line %1: %2 values for %3 columns")},
    {ProblemCode::RowNotLab,
     QT_TRANSLATE_NOOP("Problem", "line %1: expected L*, a*, b* and optionally a name and a colour; for "
                                  "anything else the first line must name the columns")},
    {ProblemCode::RowLabImpossible,
     QT_TRANSLATE_NOOP("Problem", "line %1: L* %2, a* %3, b* %4 is not a possible colour")},
    {ProblemCode::RowsLeftOut, QT_TRANSLATE_NOOP("Problem", "%1 of %2 colours are left out (lines: %3)")},
    {ProblemCode::HeadingNeeded,
     QT_TRANSLATE_NOOP("Problem", "line %1: %2 is not a value of L*, a*, b*; name the columns in the first "
                                  "line, for example L,a,b or R,G,B")},
    {ProblemCode::ColumnsUnknown,
     QT_TRANSLATE_NOOP("Problem", "line %1: unknown columns (%2); known are L, a, b; L, C, h; X, Y, Z; "
                                  "R, G, B; hex; C, M, Y, K, and reflectances such as 400 nm")},
    {ProblemCode::ColumnsIgnored, QT_TRANSLATE_NOOP("Problem", "unknown columns are ignored: %1")},
    {ProblemCode::NumbersTakenAsLab,
     QT_TRANSLATE_NOOP("Problem", "no heading; the numbers are taken as L*, a*, b* for D50")},
    {ProblemCode::TextTakenAsLatin1,
     QT_TRANSLATE_NOOP("Problem", "neither UTF-8 nor UTF-16; the text is taken as Latin-1")},
    {ProblemCode::PointsAdapted,
     QT_TRANSLATE_NOOP("Problem", "the values for %1 are adapted to D50 (Bradford)")},
    {ProblemCode::ObserverDiffers,
     QT_TRANSLATE_NOOP("Problem", "the values are for the 10 degree observer, gamuts for the 2 degree "
                                  "observer; compare them with care")},
    {ProblemCode::XyzScaleUnknown,
     QT_TRANSLATE_NOOP("Problem", "the largest XYZ value is %1, so it is not clear whether white has Y 1 or "
                                  "Y 100; declare it: --points-white-y, or a line '# white-y: 1' in the "
                                  "file")},
    {ProblemCode::DeviceScaleTaken,
     QT_TRANSLATE_NOOP("Problem", "the %1 values are taken as numbers from 0 to %2")},
    {ProblemCode::PointSpaceNeeded,
     QT_TRANSLATE_NOOP("Problem", "%1 values without their colour space; declare it: --points-space with a "
                                  "built-in RGB space or an ICC profile, or for RGB a line '# space: sRGB' "
                                  "in the file")},
    {ProblemCode::PointSpaceDiffers, QT_TRANSLATE_NOOP("Problem", "'%1' is not a profile for %2 values")},
    {ProblemCode::PointSpaceUnusable,
     QT_TRANSLATE_NOOP("Problem", "the colours cannot be converted with the profile '%1'")},
    {ProblemCode::PointWordUnknown, QT_TRANSLATE_NOOP("Problem", "line %1: '%2' is not known; known are %3")},
    {ProblemCode::SpectrumUnusable,
     QT_TRANSLATE_NOOP("Problem", "%1 reflectances from %2 to %3 nm are not enough; needed are equal steps "
                                  "of at most 20 nm from 400 to 700 nm")},
    {ProblemCode::SpectraComputed,
     QT_TRANSLATE_NOOP("Problem", "the reflectances from %1 to %2 nm, taken as 0 to %3, are computed for the "
                                  "CIE 1931 2 degree observer and D50")},
    {ProblemCode::ColorsLeftOut, QT_TRANSLATE_NOOP("Problem", "%1 of %2 colours are left out (numbers: %3)")},
    {ProblemCode::ColorLabImpossible,
     QT_TRANSLATE_NOOP("Problem", "number %1: L* %2, a* %3, b* %4 is not a possible colour")},
    {ProblemCode::PaletteDamaged, QT_TRANSLATE_NOOP("Problem", "the %1 palette is damaged")},
    {ProblemCode::PaletteModelUnknown,
     QT_TRANSLATE_NOOP("Problem",
                       "number %1: the colour model '%2' is not known; known are RGB, CMYK and Lab")},
    {ProblemCode::PaletteValueInvalid, QT_TRANSLATE_NOOP("Problem", "number %1: %2, expected 0 to 1")},
    {ProblemCode::NotColors,
     QT_TRANSLATE_NOOP("Problem",
                       "not a file of colours, but %1; known are CSV, CGATS, CxF, ASE, ACB and GPL")},
    {ProblemCode::NoPositions, QT_TRANSLATE_NOOP("Problem", "the file contains no positions")},
    {ProblemCode::TooManyPoints, QT_TRANSLATE_NOOP("Problem", "more than %1 points, the limit of a file")},
    {ProblemCode::TooManyColumns,
     QT_TRANSLATE_NOOP("Problem", "line %1: more than %2 columns, the limit of a table")},
    {ProblemCode::LineTooLong, QT_TRANSLATE_NOOP("Problem", "line %1: longer than %2 characters, the limit")},
    {ProblemCode::CgatsInvalid, QT_TRANSLATE_NOOP("Problem", "the CGATS file cannot be read")},
    {ProblemCode::CgatsIncludesFile,
     QT_TRANSLATE_NOOP("Problem", "line %1: %2 reads another file, which is not allowed here; insert the "
                                  "content of that file instead")},
    {ProblemCode::CgatsWithoutFormat,
     QT_TRANSLATE_NOOP("Problem", "line %1: the data have no column names (BEGIN_DATA_FORMAT is missing)")},
    {ProblemCode::CgatsUnfinished, QT_TRANSLATE_NOOP("Problem", "Line %1: %2 is missing")},
    {ProblemCode::CgatsCountDiffers, QT_TRANSLATE_NOOP("Problem", "Line %1: %2 was %3, found %4")},
    {ProblemCode::CgatsWithoutColor,
     QT_TRANSLATE_NOOP("Problem", "the CGATS file has no known columns of colours (%1); known are Lab, LCh, "
                                  "XYZ, RGB and CMYK, and reflectances such as SPECTRAL_NM400")},
    {ProblemCode::NotCxf, QT_TRANSLATE_NOOP("Problem", "the XML is not CxF")},
    {ProblemCode::XmlInvalid, QT_TRANSLATE_NOOP("Problem", "line %1: the XML is invalid")},
    {ProblemCode::XmlHasDocumentType,
     QT_TRANSLATE_NOOP("Problem", "line %1: the XML declares a document type, which CxF does not have")},
    {ProblemCode::XmlTooDeep,
     QT_TRANSLATE_NOOP("Problem", "line %1: more than %2 nested elements, the limit of CxF")},
    {ProblemCode::XmlTooManyAttributes,
     QT_TRANSLATE_NOOP("Problem", "line %1: more than %2 attributes, the limit of an element of CxF")},
    {ProblemCode::ObjectsWithoutLab,
     QT_TRANSLATE_NOOP("Problem", "%1 of %2 objects have no CIELAB, XYZ or reflectance values for D50")},
    {ProblemCode::NothingAtLightness,
     QT_TRANSLATE_NOOP("Problem", "no colours at L* %1; the gamut reaches from L* %2 to %3")},
    {ProblemCode::NothingAtHue, QT_TRANSLATE_NOOP("Problem", "no colours at the hue %1")},
    {ProblemCode::NothingOutside, QT_TRANSLATE_NOOP("Problem", "no part of %1 is outside %2")},
    {ProblemCode::NothingInCommon, QT_TRANSLATE_NOOP("Problem", "%1 and %2 have nothing in common")},
    {ProblemCode::NotASession, QT_TRANSLATE_NOOP("Problem", "not a session of this program")},
    {ProblemCode::SessionNewer,
     QT_TRANSLATE_NOOP("Problem", "the session was saved by a newer version of this program (format %1; this "
                                  "version reads up to %2)")},
    {ProblemCode::SessionNotBool, QT_TRANSLATE_NOOP("Problem", "\"%1\" must be true or false")},
    {ProblemCode::SessionNotInRange, QT_TRANSLATE_NOOP("Problem", "\"%1\" must be a number from %2 to %3")},
    {ProblemCode::SessionNotName, QT_TRANSLATE_NOOP("Problem", "\"%1\" must be a name")},
    {ProblemCode::SessionNotColor,
     QT_TRANSLATE_NOOP("Problem", "\"%1\" must be a colour such as \"#40c0ff\"")},
    {ProblemCode::SessionNotThreeValues, QT_TRANSLATE_NOOP("Problem", "\"%1\" must be three numbers")},
    {ProblemCode::SessionNotOneOf, QT_TRANSLATE_NOOP("Problem", "\"%1\" must be one of %2")},
    {ProblemCode::SessionNotFileList, QT_TRANSLATE_NOOP("Problem", "\"%1\" must be a list of files")},
    {ProblemCode::SessionNotList, QT_TRANSLATE_NOOP("Problem", "\"%1\" must be a list")},
    {ProblemCode::SessionNotGroup, QT_TRANSLATE_NOOP("Problem", "\"%1\" must be a group of values")},
    {ProblemCode::SessionSamePoint,
     QT_TRANSLATE_NOOP("Problem", "\"%1\" and \"%2\" must be different points")},
    {ProblemCode::SessionTooLong,
     QT_TRANSLATE_NOOP("Problem", "\"%1\" has more than %2 entries, the limit of a session")},
    {ProblemCode::SectionFormatUnknown, QT_TRANSLATE_NOOP("Problem", "sections are saved as .svg or .pdf")},
    {ProblemCode::PageFormatUnknown, QT_TRANSLATE_NOOP("Problem", "pages to send are saved as .html")},
    {ProblemCode::MeshFormatUnknown,
     QT_TRANSLATE_NOOP("Problem",
                       "gamuts are saved as .ply, .obj, .stl, .gltf, .x3d, .json, .icc or .kvgamut")},
    {ProblemCode::NoGamutToSave,
     QT_TRANSLATE_NOOP("Problem", "there is no gamut to save; open a profile first")},
    {ProblemCode::NoPictureToSave,
     QT_TRANSLATE_NOOP("Problem",
                       "there is no picture to save: nothing is shown, or the memory does not suffice")},
    {ProblemCode::NoCameraInClipboard,
     QT_TRANSLATE_NOOP("Problem", "the clipboard holds no camera; an example: %1")},
    {ProblemCode::NoDisplayForWindow,
     QT_TRANSLATE_NOOP("Problem", "there is no display to open a window on; 'kvgamut render' needs none")},
    {ProblemCode::DisplayNotReachable,
     QT_TRANSLATE_NOOP("Problem", "no window can be opened: the display (%1) does not answer; name one that "
                                  "runs, or use 'kvgamut render', which needs none")},
    {ProblemCode::NoPlatformPlugin,
     QT_TRANSLATE_NOOP("Problem", "no window can be opened: Qt's plug-in '%1' for the display is missing or "
                                  "cannot be loaded (Debian, Ubuntu: apt-get install %2)")},
    {ProblemCode::NoVirtualDisplay, QT_TRANSLATE_NOOP("Problem", "there is no display, and Xvfb gave none")},
    {ProblemCode::NoXvfb,
     QT_TRANSLATE_NOOP("Problem", "there is no display, and Xvfb, which provides a virtual one, is not "
                                  "installed (Debian, Ubuntu: apt-get install xvfb)")},
    {ProblemCode::XvfbFailed,
     QT_TRANSLATE_NOOP("Problem", "there is no display, and Xvfb cannot be started")},
    {ProblemCode::NoOpenGL,
     QT_TRANSLATE_NOOP("Problem",
                       "this display has no OpenGL (Debian, Ubuntu: apt-get install libgl1-mesa-dri)")},
    {ProblemCode::NothingDrawn,
     QT_TRANSLATE_NOOP("Problem", "nothing was drawn: the display shows no window, or the memory "
                                  "does not suffice for a picture of %1x%2 pixels")},
    {ProblemCode::ReferenceSizeDiffers,
     QT_TRANSLATE_NOOP("Problem", "the picture is %1 pixels large, the reference %2")},
    {ProblemCode::ReferenceDiffers,
     QT_TRANSLATE_NOOP("Problem",
                       "the picture differs from the reference by %1 percent; the threshold is %2")},
};

constexpr bool isInOrderOfCodes()
{
    int code = 0;
    return std::all_of(std::begin(sentences), std::end(sentences), [&code](const Sentence& sentence) {
        return static_cast<int>(sentence.code) == code++;
    });
}
static_assert(isInOrderOfCodes(), "the sentences are in the order of ProblemCode");

const char* programSentence(ProblemCode code)
{
    const auto index = static_cast<std::size_t>(code);
    return index < std::size(sentences) ? sentences[index].words : "";
}

/// Replaces %1, %2... in one pass, because arguments may contain such placeholders themselves. They may also
/// come from a file.
QString filled(const QString& sentence, const QStringList& arguments)
{
    QString result;
    for (qsizetype i = 0; i < sentence.size(); ++i) {
        const int number = sentence[i] == QLatin1Char('%') ? QStringView(sentence).mid(i + 1, 1).toInt() : 0;
        if (number > 0)
            result += SafeText::shown(arguments.value(number - 1), SafeText::maxPathLength);
        else
            result += sentence[i];
        i += number > 0 ? 1 : 0;
    }
    return result;
}

/// @param inWords gives the text to show for an English sentence: itself, or a translation
QString line(const Problem& problem, const std::function<QString(const char*)>& inWords)
{
    QString text = filled(inWords(ProblemText::sentence(problem.code)), problem.arguments);
    if (!problem.subject.isEmpty())
        text = filled(inWords(QT_TRANSLATE_NOOP("Problem", "'%1': %2")), {problem.subject, text});
    if (problem.cause)
        text = filled(inWords(QT_TRANSLATE_NOOP("Problem", "%1: %2")), {text, line(*problem.cause, inWords)});
    return text;
}

template <typename Code>
void appendAll(QList<Problem::Code>& codes)
{
    const auto all = QMetaEnum::fromType<Code>();
    for (int i = 0; i < all.keyCount(); ++i)
        codes.append(static_cast<Code>(all.value(i)));
}

} // namespace

const char* ProblemText::sentence(const Problem::Code& code)
{
    if (const auto* engineCode = std::get_if<KVProblemCode>(&code))
        return KVProblem::sentence(*engineCode);
    return programSentence(std::get<ProblemCode>(code));
}

QString ProblemText::english(const Problem& problem)
{
    return line(problem, [](const char* sentence) { return QString::fromLatin1(sentence); });
}

QString ProblemText::translated(const Problem& problem)
{
    return line(problem,
                [](const char* sentence) { return QCoreApplication::translate("Problem", sentence); });
}

QList<Problem::Code> ProblemText::allCodes()
{
    QList<Problem::Code> codes;
    appendAll<KVProblemCode>(codes);
    appendAll<ProblemCode>(codes);
    return codes;
}
