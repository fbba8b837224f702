// SPDX-License-Identifier: Apache-2.0
#include "InputLimits.h"

namespace {

constexpr qint64 mebi = qint64(1) << 20;

QString megabytes(InputKind kind)
{
    return QString::number(InputLimits::maxBytes(kind) / mebi);
}

InputLimits::Stated size(const char* what, InputKind kind)
{
    return {QString::fromLatin1(what), megabytes(kind) + QStringLiteral(" MiB"),
            Problem(ProblemCode::InputTooLarge, {megabytes(kind)})};
}

InputLimits::Stated number(const char* what, qint64 limit, ProblemCode code, const QStringList& before = {})
{
    return {QString::fromLatin1(what), QString::number(limit),
            Problem(code, before + QStringList(QString::number(limit)))};
}

} // namespace

qint64 InputLimits::maxBytes(InputKind kind)
{
    switch (kind) {
    case InputKind::Profile:
        return 256 * mebi;
    case InputKind::Picture:
        return 1024 * mebi;
    case InputKind::SavedGamut:
        return 256 * mebi;
    case InputKind::Points:
        return 64 * mebi;
    case InputKind::Session:
        return 16 * mebi;
    case InputKind::Reference:
        return 256 * mebi;
    case InputKind::Photo:
        return 8192 * mebi;
    case InputKind::Settings:
        return mebi;
    }
    return 0;
}

QList<InputLimits::Stated> InputLimits::all()
{
    const QString line = QStringLiteral("N");
    return {
        size("an ICC profile", InputKind::Profile),
        size("a picture", InputKind::Picture),
        size("a saved gamut", InputKind::SavedGamut),
        size("a file of points", InputKind::Points),
        size("a session", InputKind::Session),
        size("a reference picture", InputKind::Reference),
        number("points of a file", maxPoints, ProblemCode::TooManyPoints),
        number("different patches of a chart", maxPatches, ProblemCode::TooManyPatches),
        number("triangles of a surface", maxFaces, ProblemCode::TooManyFaces),
        number("columns of a table", maxColumns, ProblemCode::TooManyColumns, {line}),
        number("characters of a line of CSV, or of a value of CGATS", maxLineLength, ProblemCode::LineTooLong,
               {line}),
        number("nested elements of CxF", maxXmlDepth, ProblemCode::XmlTooDeep, {line}),
        number("attributes of an element of CxF", maxXmlAttributes, ProblemCode::XmlTooManyAttributes,
               {line}),
        size("a photo that is read in bands", InputKind::Photo),
        number("million pixels of a picture that is read in bands", maxPhotoMegapixels,
               ProblemCode::TooManyPixels),
        number("million pixels of a picture that is decoded as a whole", maxWholePhotoMegapixels,
               ProblemCode::TooManyPixelsAtOnce),
        number("gamuts, or files of points, of a session", maxSessionFiles, ProblemCode::SessionTooLong,
               {QStringLiteral("gamuts")}),
    };
}
