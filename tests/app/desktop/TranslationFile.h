// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>

#include <map>

/// The translation files of the window. Each file is a language: the tests that read them need no list of the
/// languages. KVGAMUT_TRANSLATIONS is their folder.
namespace kvtest {

struct TranslatedText
{
    QString source;
    QStringList translations; ///< one, or one for each form of the plural
    bool isPlural = false;
    QString state; ///< empty: finished
};

/// The texts of a .ts file by their context and source.
inline std::map<QString, TranslatedText> textsOfFile(const QString& name)
{
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    std::map<QString, TranslatedText> texts;
    QXmlStreamReader xml(&file);
    QString context;
    TranslatedText text;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::EndElement && xml.name() == QLatin1String("message"))
            texts.emplace(context + QLatin1Char('|') + text.source, text);
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("message")) {
            text = TranslatedText();
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

/// The file of a language, such as "de".
inline QString translationFile(const QString& language)
{
    return QStringLiteral(KVGAMUT_TRANSLATIONS "/kvgamut_%1.ts").arg(language);
}

/// The languages that have a file, except English, whose file could only contain plural forms.
inline QStringList translatedLanguages()
{
    QStringList languages;
    const QStringList files = QDir(QStringLiteral(KVGAMUT_TRANSLATIONS))
                                  .entryList({QStringLiteral("kvgamut_*.ts")}, QDir::Files, QDir::Name);
    for (const QString& file : files)
        languages.append(file.sliced(8).chopped(3));
    languages.removeAll(QStringLiteral("en"));
    return languages;
}

/// For the names of cases.
inline std::string nameOfLanguage(const testing::TestParamInfo<QString>& language)
{
    return language.param.toStdString();
}

} // namespace kvtest
