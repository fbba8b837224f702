// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QLocale>
#include <QtCore/QTranslator>

#include <memory>

/// The language of the window as long as the object exists: the first of the user's languages that is
/// translated. English is built in; the others are embedded as ":/translations/kvgamut_<language>.qm".
///
/// Numbers have the format of the system, or of that language where the system's locale is C.
///
/// Create and destroy it on the GUI thread, while the QApplication exists and before any widget.
class Translations
{
    Q_DISABLE_COPY_MOVE(Translations)
public:
    /// @param wanted languages in order of preference, in the format of QLocale::uiLanguages()
    explicit Translations(const QStringList& wanted = QLocale::system().uiLanguages());
    ~Translations();

    /// The code in the name of the embedded file, such as "de"; "en" without a translation.
    QString language() const { return m_language; }
    /// The languages of the embedded translations.
    static QStringList embedded();

private:
    QString m_language;
    QLocale m_numbersBefore;
    QTranslator m_words;                      ///< texts of the program
    std::unique_ptr<QTranslator> m_wordsOfQt; ///< Qt's texts for dialogs and keys; null if not installed
};
