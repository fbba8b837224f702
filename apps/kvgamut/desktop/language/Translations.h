// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QLocale>
#include <QtCore/QTranslator>

#include <memory>

/// The language of the window, from its making to its end: the first of those that a person wants which
/// the program speaks. It speaks English, and what is embedded as ":/translations/kvgamut_<language>.qm".
///
/// Numbers in the window are written as the system has them, or, where it has no wish (the locale C), as
/// that language writes them.
///
/// Made and destroyed on the GUI thread, while the QApplication lives; before any widget is made.
class Translations
{
    Q_DISABLE_COPY_MOVE(Translations)
public:
    /// @param wanted languages in order of preference, as in QLocale::uiLanguages()
    explicit Translations(const QStringList& wanted = QLocale::system().uiLanguages());
    ~Translations();

    /// As it is found in the names of the embedded files, "de"; "en" where nothing is translated.
    QString language() const { return m_language; }
    /// The languages of the embedded translations.
    static QStringList embedded();

private:
    QString m_language;
    QLocale m_numbersBefore;
    QTranslator m_words;                      ///< of the program
    std::unique_ptr<QTranslator> m_wordsOfQt; ///< of dialogs and keys, where they are installed
};
