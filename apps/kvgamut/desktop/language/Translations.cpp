// SPDX-License-Identifier: Apache-2.0
#include "Translations.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QLibraryInfo>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr QLatin1String translationsFolder(":/translations");
constexpr QLatin1String prefix("kvgamut_");

/// Qt's translations, except for the reasons why a file cannot be used: these also appear on standard error,
/// which is always English. ProblemText::translated() translates them for the window.
class WordsOfQt : public QTranslator
{
public:
    QString translate(const char* context, const char* text, const char* disambiguation, int n) const override
    {
        constexpr std::array<const char*, 6> reasons{"QIODevice",    "QFile",        "QSaveFile",
                                                     "QImageReader", "QImageWriter", "QXmlStream"};
        const bool isReason = std::any_of(reasons.begin(), reasons.end(), [context](const char* reason) {
            return std::strcmp(context, reason) == 0;
        });
        return isReason ? QString() : QTranslator::translate(context, text, disambiguation, n);
    }
};

/// The language code of a locale name: "de" for "de-AT".
QString languageOf(const QString& name)
{
    return QLocale::languageToCode(QLocale(name).language());
}

/// The locale that the environment sets for numbers.
QLocale numbersOfSystem()
{
    for (const char* name : {"LC_ALL", "LC_NUMERIC", "LANG"})
        if (!qEnvironmentVariableIsEmpty(name))
            return QLocale(qEnvironmentVariable(name));
    return QLocale::c();
}

/// @p locale, without separators between groups of digits where Qt leaves out some of them: Qt 6.4 writes
/// "1234.567" in Spanish, which reads like a fraction.
QLocale withWholeGroups(QLocale locale)
{
    const qsizetype groups = locale.toString(1234567).count(locale.groupSeparator());
    if (groups == 1)
        locale.setNumberOptions(locale.numberOptions() | QLocale::OmitGroupSeparator);
    return locale;
}

} // namespace

Translations::Translations(const QStringList& wanted) : m_language(QStringLiteral("en"))
{
    const QStringList spoken = QStringList{m_language} + embedded();
    const auto first = std::find_if(wanted.begin(), wanted.end(), [&spoken](const QString& name) {
        return spoken.contains(languageOf(name));
    });
    if (first != wanted.end())
        m_language = languageOf(*first);
    const bool isTranslated = m_words.load(prefix + m_language, translationsFolder);
    QLocale numbers;
    if (isTranslated && numbersOfSystem().language() == QLocale::C) // the user chose no format
        numbers = QLocale(first != wanted.end() ? *first : m_language);
    QLocale::setDefault(withWholeGroups(numbers));
    if (!isTranslated)
        return; // English
    // Qt searches the translator that was installed last first
    auto wordsOfQt = std::make_unique<WordsOfQt>();
    if (wordsOfQt->load(QStringLiteral("qtbase_") + m_language,
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        m_wordsOfQt = std::move(wordsOfQt);
        QCoreApplication::installTranslator(m_wordsOfQt.get());
    }
    QCoreApplication::installTranslator(&m_words);
}

Translations::~Translations()
{
    QLocale::setDefault(m_numbersBefore);
    QCoreApplication::removeTranslator(&m_words);
    if (m_wordsOfQt)
        QCoreApplication::removeTranslator(m_wordsOfQt.get());
}

QStringList Translations::embedded()
{
    QStringList languages;
    const QStringList files =
        QDir(translationsFolder).entryList({prefix + QStringLiteral("*.qm")}, QDir::Files, QDir::Name);
    for (const QString& file : files)
        languages.append(file.sliced(prefix.size()).chopped(3));
    return languages;
}
