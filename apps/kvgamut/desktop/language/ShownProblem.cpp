// SPDX-License-Identifier: Apache-2.0
#include "ShownProblem.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>

#include <array>

namespace {

// In the order in which they are tried: what matches anything comes last.
constexpr std::array sentences{
    // profiles
    QT_TRANSLATE_NOOP("Problem", "no file was named"),
    QT_TRANSLATE_NOOP("Problem", "there is no file '%1'"),
    QT_TRANSLATE_NOOP("Problem", "'%1' is not a file"),
    QT_TRANSLATE_NOOP("Problem", "'%1' is too large for a profile"),
    QT_TRANSLATE_NOOP("Problem", "'%1' cannot be read: %2"),
    QT_TRANSLATE_NOOP("Problem", "the profile has no bytes"),
    QT_TRANSLATE_NOOP("Problem", "too large for a profile"),
    QT_TRANSLATE_NOOP("Problem", "this is no ICC profile"),
    QT_TRANSLATE_NOOP("Problem", "this is no usable ICC profile: %1"),
    QT_TRANSLATE_NOOP("Problem", "the profile's list of tags is damaged"),
    QT_TRANSLATE_NOOP("Problem", "the table of tag '%1' declares more than the tag holds or a device needs"),
    QT_TRANSLATE_NOOP("Problem", "this is neither an ICC profile, nor a PNG, JPEG or TIFF picture, "
                                 "nor a saved gamut"),
    // gamuts
    QT_TRANSLATE_NOOP("Problem", "there is no profile"),
    QT_TRANSLATE_NOOP("Problem", "there is no rendering intent %1"),
    QT_TRANSLATE_NOOP("Problem", "the profile gives values that are no colours"),
    QT_TRANSLATE_NOOP("Problem", "the profile has no usable transform from device to Lab: %1"),
    QT_TRANSLATE_NOOP("Problem", "the profile has no usable transform from device to Lab"),
    QT_TRANSLATE_NOOP("Problem", "a device link has no gamut of its own"),
    QT_TRANSLATE_NOOP("Problem", "an abstract profile has no device and so no gamut"),
    QT_TRANSLATE_NOOP("Problem", "a list of named colours has no gamut surface"),
    QT_TRANSLATE_NOOP("Problem", "profiles of class '%1' have no gamut"),
    QT_TRANSLATE_NOOP("Problem", "%1 is no device space and has no gamut"),
    QT_TRANSLATE_NOOP("Problem", "a gamut needs at least three channels, grey has one"),
    QT_TRANSLATE_NOOP("Problem", "a gamut needs at least three channels, this profile has two"),
    QT_TRANSLATE_NOOP("Problem", "device space '%1' is not known"),
    QT_TRANSLATE_NOOP("Problem", "the colours of the profile span no volume"),
    QT_TRANSLATE_NOOP("Problem", "the solid of this device has hollows, which are not found with so "
                                 "many channels"),
    QT_TRANSLATE_NOOP("Problem", "the surface found for this device passes through itself"),
    QT_TRANSLATE_NOOP("Problem", "the device's colours overlap too often for a surface to be found"),
    QT_TRANSLATE_NOOP("Problem", "the gamut is flat: it has a volume of less than 1 cubic dE"),
    QT_TRANSLATE_NOOP("Problem", "the surface has no faces"),
    QT_TRANSLATE_NOOP("Problem", "the surface has corners that are no colours"),
    QT_TRANSLATE_NOOP("Problem", "the surface's faces name corners that it does not have"),
    QT_TRANSLATE_NOOP("Problem", "the surface is not closed"),
    QT_TRANSLATE_NOOP("Problem", "the surface touches itself"),
    QT_TRANSLATE_NOOP("Problem", "the surface is inside out"),
    QT_TRANSLATE_NOOP("Problem", "no gamut could be computed"),
    QT_TRANSLATE_NOOP("Problem", "not enough memory"),
    // saved gamuts
    QT_TRANSLATE_NOOP("Problem", "this is no saved gamut"),
    QT_TRANSLATE_NOOP("Problem", "the saved gamut is of version '%1', which is not known"),
    QT_TRANSLATE_NOOP("Problem", "the saved gamut is of version %1, which is not known"),
    QT_TRANSLATE_NOOP("Problem", "the saved gamut is damaged: %1"),
    QT_TRANSLATE_NOOP("Problem", "the saved gamut is damaged"),
    QT_TRANSLATE_NOOP("Problem", "the saved gamut holds values that no gamut has"),
    QT_TRANSLATE_NOOP("Problem", "the saved gamut's faces lie too close to each other to be checked"),
    QT_TRANSLATE_NOOP("Problem", "the saved gamut's surface passes through itself"),
    // pictures
    QT_TRANSLATE_NOOP("Problem", "this %1 picture is damaged: %2"),
    QT_TRANSLATE_NOOP("Problem", "this %1 picture has no embedded profile"),
    QT_TRANSLATE_NOOP("Problem", "'%1' has no profile: its colours count as sRGB"),
    QT_TRANSLATE_NOOP("Problem", "its profile cannot be read"),
    QT_TRANSLATE_NOOP("Problem", "only the pixels of RGB and grey pictures can be shown"),
    QT_TRANSLATE_NOOP("Problem", "its profile gives no colours"),
    QT_TRANSLATE_NOOP("Problem", "all of it is transparent"),
    // points
    QT_TRANSLATE_NOOP("Problem", "expected numbers in the columns of the colour"),
    QT_TRANSLATE_NOOP("Problem", "expected L*, a*, b* and perhaps a colour"),
    QT_TRANSLATE_NOOP("Problem", "%1: no positions in it"),
    QT_TRANSLATE_NOOP("Problem", "%1: this CGATS file has no columns LAB_L, LAB_A, LAB_B or XYZ_X, "
                                 "XYZ_Y, XYZ_Z (spectra are not read)"),
    QT_TRANSLATE_NOOP("Problem", "%1: this CGATS file cannot be read%2"),
    QT_TRANSLATE_NOOP("Problem", "%1: this is XML, but no CxF"),
    QT_TRANSLATE_NOOP("Problem", "%1: %2 of %3 objects have no CIELAB or XYZ for D50 (spectra are not read)"),
    // sessions; what stands in quotes is named so in the file
    QT_TRANSLATE_NOOP("Problem", "it is no session of this program"),
    QT_TRANSLATE_NOOP("Problem", "true or false"),
    QT_TRANSLATE_NOOP("Problem", "a number from %1 to %2"),
    QT_TRANSLATE_NOOP("Problem", "a name"),
    QT_TRANSLATE_NOOP("Problem", "a colour like \"#40c0ff\""),
    QT_TRANSLATE_NOOP("Problem", "three numbers"),
    QT_TRANSLATE_NOOP("Problem", "one of %1"),
    QT_TRANSLATE_NOOP("Problem", "a list of files"),
    QT_TRANSLATE_NOOP("Problem", "a list"),
    QT_TRANSLATE_NOOP("Problem", "a group of values"),
    QT_TRANSLATE_NOOP("Problem", "another point than \"lookAt\""),
    // what is written, and the clipboard
    QT_TRANSLATE_NOOP("Problem", "'%1' cannot be written: %2"),
    QT_TRANSLATE_NOOP("Problem", "sections are saved as .svg or .pdf"),
    QT_TRANSLATE_NOOP("Problem",
                      "There is no picture to save: nothing is shown, or memory does not suffice."),
    QT_TRANSLATE_NOOP("Problem", "The clipboard holds no camera. One looks like this: %1"),
    // the reasons of the system and of Qt that are common
    QT_TRANSLATE_NOOP("Problem", "Permission denied"),
    QT_TRANSLATE_NOOP("Problem", "No such file or directory"),
    QT_TRANSLATE_NOOP("Problem", "No space left on device"),
    QT_TRANSLATE_NOOP("Problem", "Too many open files"),
    QT_TRANSLATE_NOOP("Problem", "Read-only file system"),
    QT_TRANSLATE_NOOP("Problem", "Filename refers to a directory"),
    QT_TRANSLATE_NOOP("Problem", "file to open is a directory"),
    QT_TRANSLATE_NOOP("Problem", "Unsupported image format"),
    QT_TRANSLATE_NOOP("Problem", "Unable to read image data"),
    // a reason and what it is about
    QT_TRANSLATE_NOOP("Problem", "cannot be read: %1"),
    QT_TRANSLATE_NOOP("Problem", "'%1': %2"),
    QT_TRANSLATE_NOOP("Problem", "gamut %1: \"%2\" should be %3"),
    QT_TRANSLATE_NOOP("Problem", "view: \"%1\" should be %2"),
    QT_TRANSLATE_NOOP("Problem", "\"%1\" should be %2"),
    QT_TRANSLATE_NOOP("Problem", "%1, data set %2: %3"),
    QT_TRANSLATE_NOOP("Problem", "%1, line %2: %3"),
    QT_TRANSLATE_NOOP("Problem", "%1: %2"),
};

/// Matches what was said with @p sentence; what differs is captured, in the order of %1, %2.
QRegularExpression formOf(const QString& sentence)
{
    static const QRegularExpression place(QStringLiteral("%\\d"));
    const QStringList fixed = sentence.split(place);
    QStringList escaped;
    for (const QString& part : fixed)
        escaped.append(QRegularExpression::escape(part));
    return QRegularExpression(QRegularExpression::anchoredPattern(escaped.join(QStringLiteral("(.*?)"))),
                              QRegularExpression::DotMatchesEverythingOption);
}

/// Puts @p parts where %1, %2... stand in @p sentence. One pass: parts may hold such signs themselves.
QString filled(const QString& sentence, const QStringList& parts)
{
    QString result;
    for (qsizetype i = 0; i < sentence.size(); ++i) {
        const int number = sentence[i] == QLatin1Char('%') ? QStringView(sentence).mid(i + 1, 1).toInt() : 0;
        if (number > 0)
            result += parts.value(number - 1);
        else
            result += sentence[i];
        i += number > 0 ? 1 : 0;
    }
    return result;
}

} // namespace

QString shownProblem(const QString& problem)
{
    for (const char* sentence : sentences) {
        const auto match = formOf(QLatin1String(sentence)).match(problem);
        if (!match.hasMatch())
            continue;
        QStringList parts = match.capturedTexts().sliced(1);
        // what ends a sentence is a reason, the others are names
        if (!parts.isEmpty() && match.capturedEnd(match.lastCapturedIndex()) == problem.size())
            parts.last() = shownProblem(parts.last());
        return filled(QCoreApplication::translate("Problem", sentence), parts);
    }
    return problem;
}

QStringList knownProblems()
{
    QStringList known;
    for (const char* sentence : sentences)
        known.append(QLatin1String(sentence));
    return known;
}
