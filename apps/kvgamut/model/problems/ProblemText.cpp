// SPDX-License-Identifier: Apache-2.0
#include "ProblemText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaEnum>

#include <functional>

namespace {

// A switch without default: the compiler names a code that has no sentence. Reasons of the operating system
// have the words of the C library, which people look up.
const char* programSentence(ProblemCode code)
{
    switch (code) {
    case ProblemCode::NoSuchFile:
        return QT_TRANSLATE_NOOP("Problem", "No such file or directory");
    case ProblemCode::PermissionDenied:
        return QT_TRANSLATE_NOOP("Problem", "Permission denied");
    case ProblemCode::IsDirectory:
        return QT_TRANSLATE_NOOP("Problem", "Is a directory");
    case ProblemCode::NoSpaceLeft:
        return QT_TRANSLATE_NOOP("Problem", "No space left on device");
    case ProblemCode::ReadOnlyFileSystem:
        return QT_TRANSLATE_NOOP("Problem", "Read-only file system");
    case ProblemCode::TooManyOpenFiles:
        return QT_TRANSLATE_NOOP("Problem", "Too many open files");
    case ProblemCode::BrokenPipe:
        return QT_TRANSLATE_NOOP("Problem", "Broken pipe");
    case ProblemCode::InvalidDescriptor:
        return QT_TRANSLATE_NOOP("Problem", "Bad file descriptor");
    case ProblemCode::OtherReason:
        return QT_TRANSLATE_NOOP("Problem", "%1");
    case ProblemCode::CannotRead:
        return QT_TRANSLATE_NOOP("Problem", "cannot be read");
    case ProblemCode::CannotWrite:
        return QT_TRANSLATE_NOOP("Problem", "cannot be written");
    case ProblemCode::UnknownFormat:
        return QT_TRANSLATE_NOOP(
            "Problem", "neither an ICC profile, nor a PNG, JPEG or TIFF picture, nor a saved gamut");
    case ProblemCode::PictureDamaged:
        return QT_TRANSLATE_NOOP("Problem", "the %1 picture is damaged");
    case ProblemCode::PictureWithoutProfile:
        return QT_TRANSLATE_NOOP("Problem", "the %1 picture has no embedded profile");
    case ProblemCode::PictureFormatUnknown:
        return QT_TRANSLATE_NOOP("Problem", "unsupported picture format");
    case ProblemCode::PictureDataInvalid:
        return QT_TRANSLATE_NOOP("Problem", "the picture cannot be decoded");
    case ProblemCode::PictureTooLarge:
        return QT_TRANSLATE_NOOP("Problem", "the picture is too large for the memory");
    case ProblemCode::NotAPng:
        return QT_TRANSLATE_NOOP("Problem", "not a readable PNG picture");
    case ProblemCode::PictureProfileInvalid:
        return QT_TRANSLATE_NOOP("Problem", "the embedded profile cannot be read");
    case ProblemCode::PictureSpaceUnknown:
        return QT_TRANSLATE_NOOP("Problem", "only the pixels of RGB and grey pictures can be shown");
    case ProblemCode::PictureProfileHasNoLab:
        return QT_TRANSLATE_NOOP("Problem", "the embedded profile has no usable transform to Lab");
    case ProblemCode::PictureTransparent:
        return QT_TRANSLATE_NOOP("Problem", "every pixel is transparent");
    case ProblemCode::PictureTakenAsSrgb:
        return QT_TRANSLATE_NOOP("Problem", "no embedded profile; the colours are taken as sRGB");
    case ProblemCode::NotColorColumns:
        return QT_TRANSLATE_NOOP("Problem", "line %1: expected numbers in the colour columns");
    case ProblemCode::NotAPoint:
        return QT_TRANSLATE_NOOP("Problem", "line %1: expected L*, a*, b* and optionally a colour");
    case ProblemCode::NotAColorDataSet:
        return QT_TRANSLATE_NOOP("Problem", "data set %1: expected numbers in the colour columns");
    case ProblemCode::NoPositions:
        return QT_TRANSLATE_NOOP("Problem", "the file contains no positions");
    case ProblemCode::CgatsInvalid:
        return QT_TRANSLATE_NOOP("Problem", "the CGATS file cannot be read");
    case ProblemCode::CgatsWithoutColor:
        return QT_TRANSLATE_NOOP("Problem", "the CGATS file has no columns LAB_L, LAB_A, LAB_B or XYZ_X, "
                                            "XYZ_Y, XYZ_Z (spectra are not read)");
    case ProblemCode::NotCxf:
        return QT_TRANSLATE_NOOP("Problem", "the XML is not CxF");
    case ProblemCode::XmlInvalid:
        return QT_TRANSLATE_NOOP("Problem", "line %1: the XML is invalid");
    case ProblemCode::ObjectsWithoutLab:
        return QT_TRANSLATE_NOOP(
            "Problem", "%1 of %2 objects have no CIELAB or XYZ values for D50 (spectra are not read)");
    case ProblemCode::NotASession:
        return QT_TRANSLATE_NOOP("Problem", "not a session of this program");
    case ProblemCode::SessionNotBool:
        return QT_TRANSLATE_NOOP("Problem", "\"%1\" must be true or false");
    case ProblemCode::SessionNotInRange:
        return QT_TRANSLATE_NOOP("Problem", "\"%1\" must be a number from %2 to %3");
    case ProblemCode::SessionNotName:
        return QT_TRANSLATE_NOOP("Problem", "\"%1\" must be a name");
    case ProblemCode::SessionNotColor:
        return QT_TRANSLATE_NOOP("Problem", "\"%1\" must be a colour such as \"#40c0ff\"");
    case ProblemCode::SessionNotThreeValues:
        return QT_TRANSLATE_NOOP("Problem", "\"%1\" must be three numbers");
    case ProblemCode::SessionNotOneOf:
        return QT_TRANSLATE_NOOP("Problem", "\"%1\" must be one of %2");
    case ProblemCode::SessionNotFileList:
        return QT_TRANSLATE_NOOP("Problem", "\"%1\" must be a list of files");
    case ProblemCode::SessionNotList:
        return QT_TRANSLATE_NOOP("Problem", "\"%1\" must be a list");
    case ProblemCode::SessionNotGroup:
        return QT_TRANSLATE_NOOP("Problem", "\"%1\" must be a group of values");
    case ProblemCode::SessionSamePoint:
        return QT_TRANSLATE_NOOP("Problem", "\"%1\" and \"%2\" must be different points");
    case ProblemCode::SectionFormatUnknown:
        return QT_TRANSLATE_NOOP("Problem", "sections are saved as .svg or .pdf");
    case ProblemCode::NoPictureToSave:
        return QT_TRANSLATE_NOOP(
            "Problem", "there is no picture to save: nothing is shown, or the memory does not suffice");
    case ProblemCode::NoCameraInClipboard:
        return QT_TRANSLATE_NOOP("Problem", "the clipboard holds no camera; an example: %1");
    case ProblemCode::NoDisplayForWindow:
        return QT_TRANSLATE_NOOP("Problem",
                                 "there is no display to open a window on; 'kvgamut render' needs none");
    case ProblemCode::NoVirtualDisplay:
        return QT_TRANSLATE_NOOP("Problem", "xvfb-run gave no display");
    case ProblemCode::NoXvfb:
        return QT_TRANSLATE_NOOP("Problem",
                                 "there is no display, and xvfb-run, which provides a virtual one, is not "
                                 "installed (Debian, Ubuntu: apt-get install xvfb xauth)");
    case ProblemCode::XvfbFailed:
        return QT_TRANSLATE_NOOP("Problem", "there is no display, and xvfb-run does not start");
    case ProblemCode::NoOpenGL:
        return QT_TRANSLATE_NOOP(
            "Problem", "this display has no OpenGL (Debian, Ubuntu: apt-get install libgl1-mesa-dri)");
    case ProblemCode::NothingDrawn:
        return QT_TRANSLATE_NOOP("Problem", "nothing was drawn: the display shows no window, or the memory "
                                            "does not suffice for a picture of %1x%2 pixels");
    case ProblemCode::ReferenceSizeDiffers:
        return QT_TRANSLATE_NOOP("Problem", "the picture is %1 pixels large, the reference %2");
    case ProblemCode::ReferenceDiffers:
        return QT_TRANSLATE_NOOP("Problem",
                                 "the picture differs from the reference by %1 percent; the threshold is %2");
    }
    return "";
}

/// Replaces %1, %2... in one pass, since arguments may hold such signs themselves.
QString filled(const QString& sentence, const QStringList& arguments)
{
    QString result;
    for (qsizetype i = 0; i < sentence.size(); ++i) {
        const int number = sentence[i] == QLatin1Char('%') ? QStringView(sentence).mid(i + 1, 1).toInt() : 0;
        if (number > 0)
            result += arguments.value(number - 1);
        else
            result += sentence[i];
        i += number > 0 ? 1 : 0;
    }
    return result;
}

/// @p inWords makes words of an English sentence.
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
