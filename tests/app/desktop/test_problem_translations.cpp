// SPDX-License-Identifier: Apache-2.0
#include "desktop/files/SessionFile.h"
#include "desktop/language/Translations.h"
#include "model/export/OutputFile.h"
#include "model/inputs/GamutSource.h"
#include "model/points/PointInput.h"
#include "model/problems/ProblemText.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

// The sentences of problems in every language of the window.

namespace {

QStringList placeholdersOf(const QString& sentence)
{
    static const QRegularExpression placeholder(QStringLiteral("%\\d"));
    QStringList found;
    for (auto match = placeholder.globalMatch(sentence); match.hasNext();)
        found.append(match.next().captured());
    found.sort();
    return found;
}

bool hasWords(const QString& sentence)
{
    static const QRegularExpression word(QStringLiteral("[A-Za-z]{2}"));
    return sentence.contains(word);
}

class ProblemInLanguage : public testing::TestWithParam<QString>
{
protected:
    Translations language{{GetParam()}};
};

INSTANTIATE_TEST_SUITE_P(Of, ProblemInLanguage, testing::ValuesIn(Translations::embedded()),
                         [](const auto& language) { return language.param.toStdString(); });

TEST_P(ProblemInLanguage, hasASentenceForEveryCode)
{
    const QList<Problem::Code> codes = ProblemText::allCodes();
    EXPECT_GT(codes.size(), 80);
    for (const Problem::Code& code : codes) {
        const QString english = QString::fromUtf8(ProblemText::sentence(code));
        const QString translated = QCoreApplication::translate("Problem", ProblemText::sentence(code));
        EXPECT_EQ(placeholdersOf(translated), placeholdersOf(english)) << english.toStdString();
        if (hasWords(english)) {
            EXPECT_NE(translated, english) << english.toStdString();
        }
    }
}

TEST_P(ProblemInLanguage, isShownWithItsArguments)
{
    const QStringList arguments{QStringLiteral("<1>"), QStringLiteral("<2>"), QStringLiteral("<3>")};
    const QList<Problem::Code> codes = ProblemText::allCodes();
    for (const Problem::Code& code : codes) {
        const QString english = ProblemText::english(Problem(code, arguments, QStringLiteral("a.icc")));
        const QString shown = ProblemText::translated(Problem(code, arguments, QStringLiteral("a.icc")));
        EXPECT_TRUE(shown.contains(QStringLiteral("a.icc"))) << shown.toStdString();
        for (const QString& argument : arguments)
            EXPECT_EQ(shown.contains(argument), english.contains(argument)) << shown.toStdString();
    }
}

class GermanProblem : public testing::Test
{
protected:
    QString path(const QString& name) const { return folder.filePath(name); }

    QString write(const QString& name, const QByteArray& bytes)
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path(name);
    }

    template <typename Value>
    static QString textOf(const Result<Value>& result)
    {
        EXPECT_FALSE(result);
        return result ? QString() : ProblemText::translated(result.error());
    }

    QTemporaryDir folder;
    Translations german{{QStringLiteral("de")}};
};

TEST_F(GermanProblem, saysWhyAGamutDoesNotOpen)
{
    const QString missing = path(QStringLiteral("größe 1.icc"));
    EXPECT_EQ(textOf(GamutSource::open(missing)), QStringLiteral("„%1“: Datei nicht gefunden").arg(missing));
    const QString text =
        write(QStringLiteral("words.icc"), "hello, this is not any profile at all, only words");
    EXPECT_EQ(textOf(GamutSource::open(text)),
              QStringLiteral("„%1“: weder ein ICC-Profil noch ein PNG-, JPEG- oder TIFF-Bild noch ein "
                             "gespeicherter Gamut noch eine Testtafel oder eine Liste von Farben")
                  .arg(text));
}

TEST_F(GermanProblem, saysWhyPointsCannotBeRead)
{
    const QString csv = write(QStringLiteral("p.csv"), "L,a,b\n50,0\n");
    EXPECT_EQ(textOf(readPoints(csv)), QStringLiteral("„%1“: Zeile 2: der Wert für b* fehlt").arg(csv));
    const QString empty = write(QStringLiteral("e.csv"), "\n");
    EXPECT_EQ(textOf(readPoints(empty)), QStringLiteral("„%1“: die Datei enthält keine Farborte").arg(empty));
    const QString cxf = write(QStringLiteral("c.cxf"), "<CxF><Object Name=\"1\"/><Object Name=\"2\"/></CxF>");
    EXPECT_EQ(
        textOf(readPoints(cxf)),
        QStringLiteral("„%1“: ohne CIELAB-, XYZ- oder Reflexionswerte für D50: 2 von 2 Objekten").arg(cxf));
}

TEST_F(GermanProblem, translatesReasonsOfTheOperatingSystem)
{
    const QString nowhere = path(QStringLiteral("no/where"));
    EXPECT_EQ(textOf(readPoints(nowhere)),
              QStringLiteral("„%1“: nicht lesbar: Datei oder Verzeichnis nicht gefunden").arg(nowhere));
    const auto failed = writeOutput(nowhere, "x");
    ASSERT_TRUE(failed);
    EXPECT_EQ(ProblemText::translated(*failed),
              QStringLiteral("„%1“: nicht beschreibbar: Datei oder Verzeichnis nicht gefunden").arg(nowhere));
    EXPECT_EQ(ProblemText::english(*failed), // for standard error
              QStringLiteral("'%1': cannot be written: No such file or directory").arg(nowhere));
}

TEST_F(GermanProblem, namesTheInvalidValueOfASession)
{
    const auto textOfSession = [this](const QByteArray& json) {
        return textOf(SessionFile::read(write(QStringLiteral("a.kvsession"), json)))
            .remove(path(QStringLiteral("a.kvsession")));
    };
    EXPECT_EQ(textOfSession("hello"), QStringLiteral("„“: keine Sitzung dieses Programms"));
    EXPECT_EQ(textOfSession(R"({"kvgamutSession": 1, "gamuts": [{"input": "sRGB", "opacity": 7}]})"),
              QStringLiteral("„“: „gamuts[0].opacity“ muss eine Zahl von 0 bis 1 sein"));
    EXPECT_EQ(textOfSession(R"({"kvgamutSession": 1, "view": {"eye": 7}})"),
              QStringLiteral("„“: „view.eye“ muss aus drei Zahlen bestehen"));
}

} // namespace
