// SPDX-License-Identifier: Apache-2.0
#include "model/problems/ProblemText.h"
#include "model/problems/SystemReason.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTranslator>

#include <cerrno>

namespace {

/// The number of arguments that the comment of each code lists. There is no `default` label, so that the
/// compiler warns about a new code.
int argumentCount(ProblemCode code)
{
    switch (code) {
    case ProblemCode::RowOutOfRange:
        return 5;
    case ProblemCode::RowLabImpossible:
    case ProblemCode::ColorLabImpossible:
    case ProblemCode::CgatsCountDiffers:
        return 4;
    case ProblemCode::RowNotNumber:
    case ProblemCode::RowTooLong:
    case ProblemCode::RowsLeftOut:
    case ProblemCode::ColorsLeftOut:
    case ProblemCode::PointWordUnknown:
    case ProblemCode::SpectrumUnusable:
    case ProblemCode::SpectraComputed:
    case ProblemCode::SessionNotInRange:
    case ProblemCode::NothingAtLightness:
        return 3;
    case ProblemCode::RowMissesValue:
    case ProblemCode::RowVertexUnknown:
    case ProblemCode::RowVertexTwice:
    case ProblemCode::InputSettingUnknown:
    case ProblemCode::NothingOutside:
    case ProblemCode::NothingInCommon:
    case ProblemCode::PaletteModelUnknown:
    case ProblemCode::PaletteValueInvalid:
    case ProblemCode::RowNotHex:
    case ProblemCode::RowNotColor:
    case ProblemCode::HeadingNeeded:
    case ProblemCode::ColumnsUnknown:
    case ProblemCode::DeviceScaleTaken:
    case ProblemCode::PointSpaceDiffers:
    case ProblemCode::TooManyColumns:
    case ProblemCode::LineTooLong:
    case ProblemCode::XmlTooDeep:
    case ProblemCode::XmlTooManyAttributes:
    case ProblemCode::SessionTooLong:
    case ProblemCode::CgatsIncludesFile:
    case ProblemCode::CgatsUnfinished:
    case ProblemCode::ObjectsWithoutLab:
    case ProblemCode::SessionNotOneOf:
    case ProblemCode::SessionSamePoint:
    case ProblemCode::NoPlatformPlugin:
    case ProblemCode::NothingDrawn:
    case ProblemCode::SessionNewer:
    case ProblemCode::ReferenceSizeDiffers:
    case ProblemCode::ReferenceDiffers:
        return 2;
    case ProblemCode::InputTooLarge:
    case ProblemCode::TooManyPixels:
    case ProblemCode::TooManyPoints:
    case ProblemCode::TooManyPatches:
    case ProblemCode::ChartTooSmall:
    case ProblemCode::SavedIntentDiffers:
    case ProblemCode::SurfaceTableMissing:
    case ProblemCode::SurfaceSpaceUnknown:
    case ProblemCode::TooManyFaces:
    case ProblemCode::BoundaryDamaged:
    case ProblemCode::ColorsWithoutVolume:
    case ProblemCode::InputWithoutIntent:
    case ProblemCode::NoSuchInput:
    case ProblemCode::XmlHasDocumentType:
    case ProblemCode::CgatsWithoutFormat:
    case ProblemCode::OtherReason:
    case ProblemCode::PictureDamaged:
    case ProblemCode::PictureWithoutProfile:
    case ProblemCode::RowNotLab:
    case ProblemCode::PaletteDamaged:
    case ProblemCode::NotColors:
    case ProblemCode::ColumnsIgnored:
    case ProblemCode::PointsAdapted:
    case ProblemCode::XyzScaleUnknown:
    case ProblemCode::PointSpaceNeeded:
    case ProblemCode::PointSpaceUnusable:
    case ProblemCode::CgatsWithoutColor:
    case ProblemCode::XmlInvalid:
    case ProblemCode::SessionNotBool:
    case ProblemCode::SessionNotName:
    case ProblemCode::SessionNotColor:
    case ProblemCode::SessionNotThreeValues:
    case ProblemCode::SessionNotFileList:
    case ProblemCode::SessionNotList:
    case ProblemCode::SessionNotGroup:
    case ProblemCode::NothingAtHue:
    case ProblemCode::NoCameraInClipboard:
    case ProblemCode::DisplayNotReachable:
    case ProblemCode::TooManyPixelsAtOnce:
    case ProblemCode::PictureManyPages:
    case ProblemCode::PictureValuesClamped:
        return 1;
    case ProblemCode::NoSuchFile:
    case ProblemCode::PermissionDenied:
    case ProblemCode::IsDirectory:
    case ProblemCode::NoSpaceLeft:
    case ProblemCode::ReadOnlyFileSystem:
    case ProblemCode::TooManyOpenFiles:
    case ProblemCode::BrokenPipe:
    case ProblemCode::InvalidDescriptor:
    case ProblemCode::NameNotUtf8:
    case ProblemCode::OutputIsInput:
    case ProblemCode::NotAFileOrPipe:
    case ProblemCode::BoundaryMissing:
    case ProblemCode::ChartWithoutWhite:
    case ProblemCode::NotText:
    case ProblemCode::CannotRead:
    case ProblemCode::CannotWrite:
    case ProblemCode::UnknownFormat:
    case ProblemCode::PictureFormatUnknown:
    case ProblemCode::PictureDataInvalid:
    case ProblemCode::PictureTooLarge:
    case ProblemCode::NotAPng:
    case ProblemCode::PictureProfileInvalid:
    case ProblemCode::NoPhotoLibrary:
    case ProblemCode::PictureSamplesUnknown:
    case ProblemCode::PictureNeedsProfile:
    case ProblemCode::PictureSpaceDiffers:
    case ProblemCode::PictureProfileHasNoLab:
    case ProblemCode::PictureTransparent:
    case ProblemCode::PictureTakenAsSrgb:
    case ProblemCode::NoPositions:
    case ProblemCode::CgatsInvalid:
    case ProblemCode::NumbersTakenAsLab:
    case ProblemCode::TextTakenAsLatin1:
    case ProblemCode::ObserverDiffers:
    case ProblemCode::NotCxf:
    case ProblemCode::NotASession:
    case ProblemCode::SectionFormatUnknown:
    case ProblemCode::PageFormatUnknown:
    case ProblemCode::MeshFormatUnknown:
    case ProblemCode::NoGamutToSave:
    case ProblemCode::NoPictureToSave:
    case ProblemCode::NoDisplayForWindow:
    case ProblemCode::NoVirtualDisplay:
    case ProblemCode::NoXvfb:
    case ProblemCode::XvfbFailed:
    case ProblemCode::NoOpenGL:
        return 0;
    }
    return -1;
}

int placeCount(const QString& text)
{
    static const QRegularExpression place(QStringLiteral("%[0-9]"));
    return static_cast<int>(text.count(place));
}

QString sentenceOf(const Problem::Code& code)
{
    return QString::fromUtf8(ProblemText::sentence(code));
}

/// The arguments "first", "second"... of @p code.
QStringList argumentsOf(const Problem::Code& code)
{
    const QStringList words{QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third"),
                            QStringLiteral("fourth"), QStringLiteral("fifth")};
    return words.first(placeCount(sentenceOf(code)));
}

TEST(ProblemText, hasADistinctSentenceForEveryCode)
{
    QSet<QString> sentences;
    const auto codes = ProblemText::allCodes();
    for (const Problem::Code& code : codes) {
        EXPECT_FALSE(sentenceOf(code).isEmpty()) << code.index() << " " << sentences.size();
        sentences.insert(sentenceOf(code));
    }
    EXPECT_EQ(sentences.size(), codes.size());
    EXPECT_TRUE(codes.contains(Problem::Code(KVProblemCode::Cancelled)));
    EXPECT_TRUE(codes.contains(Problem::Code(ProblemCode::ReferenceDiffers)));
}

TEST(ProblemText, hasAPlaceForEachArgument)
{
    for (const Problem::Code& code : ProblemText::allCodes()) {
        const auto* own = std::get_if<ProblemCode>(&code);
        if (own) {
            EXPECT_EQ(placeCount(sentenceOf(code)), argumentCount(*own)) << ProblemText::sentence(code);
        }
        for (int i = 1; i <= placeCount(sentenceOf(code)); ++i)
            EXPECT_EQ(sentenceOf(code).count(QStringLiteral("%%1").arg(i)), 1) << ProblemText::sentence(code);
    }
}

TEST(ProblemText, fillsInAllArguments)
{
    for (const Problem::Code& code : ProblemText::allCodes()) {
        const QString text = ProblemText::english(Problem(code, argumentsOf(code)));
        EXPECT_EQ(placeCount(text), 0) << text.toStdString();
        for (const QString& argument : argumentsOf(code))
            EXPECT_TRUE(text.contains(argument)) << text.toStdString();
    }
}

TEST(ProblemText, isOneLine)
{
    for (const Problem::Code& code : ProblemText::allCodes())
        EXPECT_FALSE(sentenceOf(code).contains(QLatin1Char('\n')));
}

TEST(ProblemText, namesSubjectAndCause)
{
    const Problem problem = Problem(ProblemCode::CannotWrite)
                                .about(QStringLiteral("out.csv"))
                                .because(Problem(ProblemCode::NoSpaceLeft));
    EXPECT_EQ(ProblemText::english(problem),
              QStringLiteral("'out.csv': cannot be written: No space left on device"));
}

TEST(ProblemText, leavesPlacesInNamesAlone)
{
    const Problem problem(ProblemCode::PictureDamaged, {QStringLiteral("%1 %2")},
                          QStringLiteral("%2 %1.png"));
    EXPECT_EQ(ProblemText::english(problem), QStringLiteral("'%2 %1.png': the %1 %2 picture is damaged"));
}

/// Translates every text of the context "Problem" into "<text>".
class Brackets : public QTranslator
{
public:
    Brackets() { QCoreApplication::installTranslator(this); }
    ~Brackets() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        return qstrcmp(context, "Problem") == 0 ? QStringLiteral("<%1>").arg(QString::fromUtf8(source))
                                                : QString();
    }
};

TEST(ProblemText, isTranslatedOnlyForTheWindow)
{
    const Brackets brackets;
    for (const Problem::Code& code : ProblemText::allCodes()) {
        const Problem problem(code, argumentsOf(code));
        EXPECT_EQ(ProblemText::translated(problem),
                  QStringLiteral("<%1>").arg(ProblemText::english(problem)));
    }
}

TEST(ProblemText, translatesTheCauseToo)
{
    const Brackets brackets;
    const Problem problem = Problem(ProblemCode::CannotRead)
                                .about(QStringLiteral("a"))
                                .because(Problem(ProblemCode::PermissionDenied));
    EXPECT_EQ(ProblemText::translated(problem),
              QStringLiteral("<<'a': <cannot be read>>: <Permission denied>>"));
}

TEST(SystemReason, knowsCommonErrors)
{
    EXPECT_EQ(SystemReason::ofErrno(ENOENT).code, Problem::Code(ProblemCode::NoSuchFile));
    EXPECT_EQ(SystemReason::ofErrno(EACCES).code, Problem::Code(ProblemCode::PermissionDenied));
    EXPECT_EQ(SystemReason::ofErrno(ENOSPC).code, Problem::Code(ProblemCode::NoSpaceLeft));
}

TEST(SystemReason, keepsTheWordsOfOtherErrors)
{
    const Problem reason = SystemReason::ofErrno(ENOTCONN);
    EXPECT_EQ(reason.code, Problem::Code(ProblemCode::OtherReason));
    EXPECT_EQ(reason.arguments, QStringList(qt_error_string(ENOTCONN)));
}

TEST(SystemReason, tellsWhyAFileDoesNotOpen)
{
    const QTemporaryDir folder;
    QFile missing(folder.filePath(QStringLiteral("missing")));
    EXPECT_FALSE(missing.open(QIODevice::ReadOnly));
    EXPECT_EQ(SystemReason::ofFile(missing).code, Problem::Code(ProblemCode::NoSuchFile));
    QFile directory(folder.path());
    EXPECT_FALSE(directory.open(QIODevice::ReadOnly));
    EXPECT_EQ(SystemReason::ofFile(directory).code, Problem::Code(ProblemCode::IsDirectory));
}

} // namespace
