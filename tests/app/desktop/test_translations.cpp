// SPDX-License-Identifier: Apache-2.0
#include "desktop/files/Session.h"
#include "desktop/language/ShownWords.h"
#include "desktop/language/Translations.h"
#include "model/pictures/CameraText.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>

#include <map>

// Each language of the window is compared with the sources, and the choice of the language is tested.

namespace {

struct Text
{
    QString source;
    QStringList translations; ///< one, or one for each form of the plural
    bool isPlural = false;
    QString state; ///< empty: finished
};

/// The texts of a .ts file by their context and source.
std::map<QString, Text> textsOf(const QString& name)
{
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    std::map<QString, Text> texts;
    QXmlStreamReader xml(&file);
    QString context;
    Text text;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::EndElement && xml.name() == QLatin1String("message"))
            texts.emplace(context + QLatin1Char('|') + text.source, text);
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("message")) {
            text = Text();
            text.isPlural = xml.attributes().value(QLatin1String("numerus")) == QLatin1String("yes");
        } else if (xml.name() == QLatin1String("source")) {
            text.source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            text.state = xml.attributes().value(QLatin1String("type")).toString();
            if (!text.isPlural)
                text.translations = QStringList{xml.readElementText()};
        } else if (xml.name() == QLatin1String("numerusform")) {
            text.translations.append(xml.readElementText());
        }
    }
    EXPECT_FALSE(xml.hasError()) << name.toStdString() << ": " << xml.errorString().toStdString();
    EXPECT_FALSE(texts.empty()) << name.toStdString();
    return texts;
}

QStringList keysOf(const std::map<QString, Text>& texts)
{
    QStringList keys;
    for (const auto& [key, text] : texts)
        keys.append(key + (text.isPlural ? QStringLiteral(" (plural)") : QString()));
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
    QString file() const
    {
        return QStringLiteral(KVGAMUT_DESKTOP "/language/translations/kvgamut_%1.ts").arg(GetParam());
    }
};

QStringList translatedLanguages()
{
    QStringList languages;
    const QStringList files = QDir(QStringLiteral(KVGAMUT_DESKTOP "/language/translations"))
                                  .entryList({QStringLiteral("kvgamut_*.ts")}, QDir::Files, QDir::Name);
    for (const QString& file : files)
        languages.append(file.sliced(8).chopped(3));
    return languages;
}

INSTANTIATE_TEST_SUITE_P(Of, Translation, testing::ValuesIn(translatedLanguages()),
                         [](const auto& language) { return language.param.toStdString(); });

TEST_P(Translation, hasExactlyTheTextsOfTheSources)
{
    const QTemporaryDir folder;
    const QString fresh = folder.filePath(QStringLiteral("fresh.ts"));
    QProcess lupdate;
    lupdate.start(QStringLiteral(KVGAMUT_LUPDATE),
                  {QStringLiteral("-silent"), QStringLiteral("-locations"), QStringLiteral("none"),
                   QStringLiteral("-extensions"), QStringLiteral("cpp,h"), QStringLiteral(KVGAMUT_DESKTOP),
                   QStringLiteral(KVGAMUT_SOURCES "/apps/kvgamut/model/problems/ProblemText.cpp"),
                   QStringLiteral(KVGAMUT_SOURCES "/platform/core/Problem.cpp"), QStringLiteral("-ts"),
                   fresh});
    ASSERT_TRUE(lupdate.waitForFinished(300000));
    EXPECT_EQ(lupdate.readAllStandardError(), ""); // for example about a text of unknown context
    EXPECT_EQ(keysOf(textsOf(file())), keysOf(textsOf(fresh))) << "run tools/refresh_translations.sh";
}

TEST_P(Translation, isFinished)
{
    for (const auto& [key, text] : textsOf(file())) {
        EXPECT_EQ(text.state, QString()) << key.toStdString();
        for (const QString& translation : text.translations)
            EXPECT_FALSE(translation.isEmpty()) << key.toStdString();
    }
}

TEST_P(Translation, keepsPlaceholdersPatternsAndMnemonics)
{
    for (const auto& [key, text] : textsOf(file())) {
        for (const QString& translation : text.translations) {
            EXPECT_EQ(keptParts(translation), keptParts(text.source)) << key.toStdString();
            EXPECT_EQ(mnemonics(translation), mnemonics(text.source)) << key.toStdString();
        }
    }
}

TEST_P(Translation, isEmbedded)
{
    EXPECT_TRUE(Translations::embedded().contains(GetParam()));
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
