// SPDX-License-Identifier: Apache-2.0
#include "TranslationFile.h"

#include "desktop/files/Session.h"
#include "desktop/language/ShownWords.h"
#include "desktop/language/Translations.h"
#include "model/pictures/CameraText.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

// Each language of the window is compared with the sources, and the choice of the language is tested.

namespace {

/// What the sources and the language require: the texts, and the number of their forms.
QStringList keysOf(const std::map<QString, kvtest::TranslatedText>& texts)
{
    QStringList keys;
    for (const auto& [key, text] : texts)
        keys.append(
            key + (text.isPlural ? QStringLiteral(" (%1 forms)").arg(text.translations.size()) : QString()));
    return keys;
}

/// The parts of @p text that a translation must keep: placeholders, file patterns, ellipses, surrounding
/// punctuation.
QStringList keptParts(const QString& text)
{
    static const QRegularExpression kept(
        QStringLiteral("%n|%\\d|\\*\\.\\w+|\\(\\*\\)|\\n|…$|[ :]+$|^[ ,]+|[LabC]\\*"));
    QStringList parts;
    for (auto match = kept.globalMatch(text); match.hasNext();)
        parts.append(match.next().captured());
    parts.sort();
    return parts;
}

/// The mnemonic letters of a text; "&&" is a literal ampersand.
qsizetype mnemonics(QString text)
{
    return text.remove(QStringLiteral("&&")).count(QLatin1Char('&'));
}

class Translation : public testing::TestWithParam<QString>
{
protected:
    const std::map<QString, kvtest::TranslatedText> texts =
        kvtest::textsOfFile(kvtest::translationFile(GetParam()));
};

INSTANTIATE_TEST_SUITE_P(Of, Translation, testing::ValuesIn(kvtest::translatedLanguages()),
                         kvtest::nameOfLanguage);

TEST_P(Translation, hasExactlyTheTextsOfTheSources)
{
    const QTemporaryDir folder;
    const QString fresh = folder.filePath(QStringLiteral("fresh.ts"));
    QProcess lupdate;
    lupdate.start(QStringLiteral(KVGAMUT_LUPDATE),
                  {QStringLiteral("-silent"), QStringLiteral("-locations"), QStringLiteral("none"),
                   QStringLiteral("-target-language"), GetParam(), QStringLiteral("-extensions"),
                   QStringLiteral("cpp,h"), QStringLiteral(KVGAMUT_DESKTOP),
                   QStringLiteral(KVGAMUT_SOURCES "/apps/kvgamut/model/problems/ProblemText.cpp"),
                   QStringLiteral(KVGAMUT_SOURCES "/platform/core/Problem.cpp"), QStringLiteral("-ts"),
                   fresh});
    ASSERT_TRUE(lupdate.waitForFinished(300000));
    EXPECT_EQ(lupdate.readAllStandardError(), ""); // for example about a text of unknown context
    EXPECT_EQ(keysOf(texts), keysOf(kvtest::textsOfFile(fresh))) << "run tools/refresh_translations.sh";
}

TEST_P(Translation, isFinished)
{
    for (const auto& [key, text] : texts) {
        EXPECT_EQ(text.state, QString()) << key.toStdString();
        for (const QString& translation : text.translations)
            EXPECT_FALSE(translation.isEmpty()) << key.toStdString();
    }
}

TEST_P(Translation, keepsPlaceholdersPatternsAndMnemonics)
{
    for (const auto& [key, text] : texts) {
        for (const QString& translation : text.translations) {
            EXPECT_EQ(keptParts(translation), keptParts(text.source)) << key.toStdString();
            EXPECT_EQ(mnemonics(translation), mnemonics(text.source)) << key.toStdString();
        }
    }
}

/// Terms and names can be the same in two languages, sentences cannot.
TEST_P(Translation, differsFromEnglishInTextsOfSeveralWords)
{
    static const QRegularExpression words(QStringLiteral("[a-z]{2,}[ ,:;]+[a-z]{2,}"));
    for (const auto& [key, text] : texts) {
        if (text.source.contains(words)) {
            EXPECT_FALSE(text.translations.contains(text.source)) << key.toStdString();
        }
    }
}

/// French has spaces before punctuation and inside quotation marks; lines must not break there.
TEST_P(Translation, hasNoBreakingSpaceBesidePunctuation)
{
    static const QRegularExpression breaking(QStringLiteral(" [:;!?»]|« "));
    for (const auto& [key, text] : texts)
        for (const QString& translation : text.translations)
            EXPECT_FALSE(translation.contains(breaking)) << key.toStdString();
}

TEST_P(Translation, isEmbedded)
{
    EXPECT_TRUE(Translations::embedded().contains(GetParam()));
}

TEST_P(Translation, isChosenForItsLanguage)
{
    const Translations chosen({QStringLiteral("cy"), GetParam()});
    EXPECT_EQ(chosen.language(), GetParam());
    EXPECT_EQ(QLocale().language(), QLocale(GetParam()).language()); // of numbers
    EXPECT_EQ(QLocale().decimalPoint(), QLocale(GetParam()).decimalPoint());
}

/// Also a language without a translation, whose numbers the system can ask for.
TEST(Translations, separateAllGroupsOfDigitsOrNone)
{
    const QByteArray all = qgetenv("LC_ALL");
    qunsetenv("LC_ALL");
    QStringList languages = kvtest::translatedLanguages();
    languages.append({QStringLiteral("pl"), QStringLiteral("pt_PT"), QStringLiteral("en_IN")});
    for (const QString& language : languages) {
        QLocale::setDefault(QLocale(language));
        qputenv("LC_NUMERIC", language.toUtf8());
        {
            const Translations chosen({QStringLiteral("en")});
            const QString shown = QLocale().toString(1234567);
            EXPECT_NE(shown.count(QLocale().groupSeparator()), 1) << shown.toStdString();
        }
        {
            const Translations chosen({language});
            const QString shown = QLocale().toString(1234567);
            EXPECT_NE(shown.count(QLocale().groupSeparator()), 1) << shown.toStdString();
        }
    }
    QLocale::setDefault(QLocale::c());
    qunsetenv("LC_NUMERIC");
    qputenv("LC_ALL", all);
}

TEST(Translations, chooseTheFirstLanguageThatIsTranslated)
{
    const auto chosen = [](const QStringList& wanted) { return Translations(wanted).language(); };
    EXPECT_EQ(chosen({QStringLiteral("de")}), QStringLiteral("de"));
    EXPECT_EQ(chosen({QStringLiteral("de-AT"), QStringLiteral("de")}), QStringLiteral("de"));
    EXPECT_EQ(chosen({QStringLiteral("de_CH.UTF-8")}), QStringLiteral("de"));
    EXPECT_EQ(chosen({QStringLiteral("cy-GB"), QStringLiteral("de-DE")}), QStringLiteral("de"));
    EXPECT_EQ(chosen({QStringLiteral("en-GB"), QStringLiteral("de-DE")}), QStringLiteral("en"));
    EXPECT_EQ(chosen({QStringLiteral("cy")}), QStringLiteral("en"));
    EXPECT_EQ(chosen({QStringLiteral("C")}), QStringLiteral("en"));
    EXPECT_EQ(chosen({}), QStringLiteral("en"));
}

TEST(Translations, areRemovedWithTheirObject)
{
    const QString english = ShownWords::intent(KVVMRenderSaturation);
    const QString number = QLocale().toString(1.5);
    {
        const Translations german({QStringLiteral("de")});
        EXPECT_EQ(ShownWords::intent(KVVMRenderSaturation), QStringLiteral("Sättigung"));
        EXPECT_EQ(QLocale().toString(1.5), QStringLiteral("1,5"));
    }
    EXPECT_EQ(english, QStringLiteral("Saturation"));
    EXPECT_EQ(ShownWords::intent(KVVMRenderSaturation), english);
    EXPECT_EQ(QLocale().toString(1.5), number);
}

TEST(Translations, formatNumbersAsTheSystemDoes)
{
    qputenv("LC_NUMERIC", "en_GB.UTF-8");
    const QByteArray all = qgetenv("LC_ALL");
    qunsetenv("LC_ALL");
    {
        const Translations german({QStringLiteral("de")});
        EXPECT_EQ(ShownWords::lab({50, 1.5f, 0}), QStringLiteral("L* 50.0   a* 1.5   b* 0.0"));
    }
    qunsetenv("LC_NUMERIC");
    qputenv("LC_ALL", all);
}

TEST(Translations, doNotChangeSessionsAndCameraText)
{
    Session session;
    session.tolerance = 2.5f;
    session.view.clipping = 62.5f;
    session.view.camera = {{1.5f, 2, 3}, {4, 5, 6.25f}, 30.5f, false};
    Session::Gamut gamut;
    gamut.input = QStringLiteral("sRGB");
    gamut.settings.intent = KVVMRenderSaturation;
    gamut.look.opacity = 0.5f;
    session.gamuts = {gamut};
    const QDir folder(QStringLiteral("/data"));
    const QByteArray english = session.toJson(folder);
    const QString camera = CameraText::write(session.view.camera);

    const Translations german({QStringLiteral("de")});
    EXPECT_EQ(session.toJson(folder), english);
    EXPECT_EQ(CameraText::write(session.view.camera), camera);
    EXPECT_EQ(Session::fromJson(english, folder).value(), session);
    EXPECT_EQ(CameraText::read(camera), session.view.camera);
}

} // namespace
