// SPDX-License-Identifier: Apache-2.0
#include "desktop/files/Session.h"
#include "desktop/language/ShownProblem.h"
#include "desktop/language/Translations.h"
#include "model/export/OutputFile.h"
#include "model/inputs/GamutSource.h"
#include "model/points/PointFile.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

namespace {

/// @p sentence as somebody says it: with a number for what differs.
QString said(const QString& sentence)
{
    static const QRegularExpression place(QStringLiteral("%\\d"));
    return QString(sentence).replace(place, QStringLiteral("7"));
}

/// @p text without the file that it is about: "'7': reason", or ": reason" before which the file comes.
QString bare(const QString& text)
{
    static const QRegularExpression about(QStringLiteral("^(?:'7')?: "));
    return QString(text).remove(about);
}

/// Whether @p text could have been said with @p sentence, which holds more than places and signs.
bool isOf(const QString& text, const QString& sentence)
{
    static const QRegularExpression place(QStringLiteral("%\\d"));
    static const QRegularExpression letter(QStringLiteral("[a-z]"));
    const QStringList fixed = sentence.split(place);
    if (!fixed.join(QString()).contains(letter))
        return false;
    QStringList escaped;
    for (const QString& part : fixed)
        escaped.append(QRegularExpression::escape(part));
    const QRegularExpression form(QRegularExpression::anchoredPattern(escaped.join(QStringLiteral("(.*)"))));
    return form.match(text).hasMatch();
}

/// The sentences in the C++ files of @p folder whose names match @p names: all texts of several words.
QStringList sentencesIn(const QString& folder, const QStringList& names)
{
    static const QRegularExpression literal(
        QStringLiteral("QStringLiteral\\(\\s*((?:\"(?:[^\"\\\\]|\\\\.)*\"\\s*)+)\\)"));
    static const QRegularExpression seam(QStringLiteral("\"\\s*\""));
    const QDir dir(QStringLiteral(KVGAMUT_SOURCES "/") + folder);
    QStringList sentences;
    QStringList files;
    for (QDirIterator it(dir.path(), names, QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
        files.append(it.next());
    EXPECT_FALSE(files.isEmpty()) << folder.toStdString();
    for (const QString& name : files) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        for (auto match = literal.globalMatch(QString::fromUtf8(file.readAll())); match.hasNext();) {
            QString text = match.next().captured(1).trimmed();
            text =
                text.sliced(1).chopped(1).remove(seam).replace(QStringLiteral("\\\""), QStringLiteral("\""));
            if (text.contains(QRegularExpression(QStringLiteral("[a-z] [a-z0-9%'(]"))))
                sentences.append(text);
        }
    }
    return sentences;
}

QStringList sentencesOfTheProgram()
{
    return sentencesIn(QStringLiteral("engine"), {QStringLiteral("*.cpp")}) +
           sentencesIn(QStringLiteral("apps/kvgamut/model"),
                       {QStringLiteral("GamutSource.cpp"), QStringLiteral("Picture*.cpp"),
                        QStringLiteral("Point*.cpp"), QStringLiteral("SavedGamut.cpp"),
                        QStringLiteral("OutputFile.cpp")}) +
           sentencesIn(QStringLiteral("apps/kvgamut/desktop"),
                       {QStringLiteral("Session.cpp"), QStringLiteral("MainWindow.cpp"),
                        QStringLiteral("SlicePanel.cpp")});
}

TEST(ShownProblem, knowsEverySentenceThatIsSaid)
{
    // no problems: what differs is put into them, or they are part of a file
    const QStringList others{QStringLiteral("standard output"), QStringLiteral("%1\"%2\" should be %3"),
                             QStringLiteral("gamut %1: ")};
    const QStringList known = knownProblems();
    const QStringList sentences = sentencesOfTheProgram();
    EXPECT_GT(sentences.size(), 50);
    for (const QString& sentence : sentences) {
        const bool isKnown = std::any_of(known.begin(), known.end(), [&](const QString& one) {
            return isOf(bare(said(sentence)), one) || isOf(said(sentence), one);
        });
        EXPECT_TRUE(isKnown || others.contains(sentence)) << sentence.toStdString();
    }
}

TEST(ShownProblem, leavesEnglishAsItIs)
{
    const QStringList known = knownProblems();
    for (const QString& sentence : known)
        EXPECT_EQ(shownProblem(said(sentence)), said(sentence));
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

    QTemporaryDir folder;
    Translations german{{QStringLiteral("de")}};
};

TEST_F(GermanProblem, saysEverySentenceInGerman)
{
    const QStringList known = knownProblems();
    const QRegularExpression word(QStringLiteral("[a-z]{2}"));
    for (const QString& sentence : known)
        EXPECT_TRUE(!sentence.contains(word) || shownProblem(said(sentence)) != said(sentence))
            << sentence.toStdString();
}

TEST_F(GermanProblem, tellsWhatAGamutLacks)
{
    const QString missing = path(QStringLiteral("größe 1.icc"));
    EXPECT_EQ(shownProblem(GamutSource::open(missing).problem()),
              QStringLiteral("Es gibt keine Datei „%1“").arg(missing));
    const QString text =
        write(QStringLiteral("words.icc"), "hello, this is not any profile at all, only words");
    EXPECT_EQ(
        shownProblem(GamutSource::open(text).problem()),
        QStringLiteral("„%1“: das ist weder ein ICC-Profil noch ein PNG-, JPEG- oder TIFF-Bild noch ein "
                       "gespeicherter Gamut")
            .arg(text));
}

TEST_F(GermanProblem, tellsWhatAFileOfPointsLacks)
{
    const QString csv = write(QStringLiteral("p.csv"), "50,0,0\n50,0\n");
    EXPECT_EQ(shownProblem(PointFile::read(csv).problem),
              csv + QStringLiteral(", Zeile 2: erwartet werden L*, a*, b* und eventuell eine Farbe"));
    const QString empty = write(QStringLiteral("e.csv"), "\n");
    EXPECT_EQ(shownProblem(PointFile::read(empty).problem),
              empty + QStringLiteral(": keine Farborte enthalten"));
    const QString cxf = write(QStringLiteral("c.cxf"), "<CxF><Object Name=\"1\"/><Object Name=\"2\"/></CxF>");
    EXPECT_EQ(shownProblem(PointFile::read(cxf).problem),
              cxf + QStringLiteral(": ohne CIELAB oder XYZ für D50: 2 von 2 Objekten (Spektren werden nicht "
                                   "gelesen)"));
}

TEST_F(GermanProblem, tellsWhyAFileCannotBeUsed)
{
    const QString nowhere = path(QStringLiteral("no/where"));
    EXPECT_EQ(shownProblem(PointFile::read(nowhere).problem),
              nowhere + QStringLiteral(": Datei oder Verzeichnis nicht gefunden"));
    // what goes to standard error stays English
    EXPECT_EQ(writeOutput(nowhere, "x"),
              QStringLiteral("'%1' cannot be written: No such file or directory").arg(nowhere));
    EXPECT_EQ(
        shownProblem(writeOutput(nowhere, "x")),
        QStringLiteral("„%1“ ist nicht beschreibbar: Datei oder Verzeichnis nicht gefunden").arg(nowhere));
}

TEST_F(GermanProblem, tellsWhichValueOfASessionIsWrong)
{
    QString problem;
    const auto saidOf = [&problem](const QByteArray& json) {
        Session::fromJson(json, QDir(QStringLiteral("/")), problem);
        return shownProblem(QStringLiteral("'a.kvsession': ") + problem);
    };
    EXPECT_EQ(saidOf("hello"), QStringLiteral("„a.kvsession“: das ist keine Sitzung dieses Programms"));
    EXPECT_EQ(saidOf(R"({"kvgamutSession": 1, "gamuts": [{"input": "sRGB", "opacity": 7}]})"),
              QStringLiteral("„a.kvsession“: Gamut 1: für \"opacity\" wird erwartet: eine Zahl von 0 bis 1"));
    EXPECT_EQ(saidOf(R"({"kvgamutSession": 1, "view": {"eye": 7}})"),
              QStringLiteral("„a.kvsession“: Ansicht: für \"eye\" wird erwartet: drei Zahlen"));
    EXPECT_EQ(saidOf(R"({"kvgamutSession": 1, "tolerance": -1})"),
              QStringLiteral("„a.kvsession“: für \"tolerance\" wird erwartet: eine Zahl von 0 bis 100"));
}

TEST_F(GermanProblem, leavesNamesAndUnknownReasonsAlone)
{
    EXPECT_EQ(shownProblem(QStringLiteral("'%1 %2.icc': some library's reason")),
              QStringLiteral("„%1 %2.icc“: some library's reason"));
    EXPECT_EQ(shownProblem(QStringLiteral("there is no file 'a name'")),
              QStringLiteral("Es gibt keine Datei „a name“"));
    EXPECT_EQ(shownProblem(QString()), QString());
    EXPECT_EQ(shownProblem(QStringLiteral("words")), QStringLiteral("words"));
}

} // namespace
