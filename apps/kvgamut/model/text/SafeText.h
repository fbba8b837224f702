// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Texts from files, made safe to show: descriptions of profiles, names of points, gamuts and files. Their
/// control characters could move the cursor of a terminal, change its title or make it answer as if someone
/// typed; marks of writing direction could reverse what surrounds them; and XML must not contain them.
namespace SafeText {

constexpr qsizetype maxLength = 1000; ///< of a text that is shown; the maximum path is four times as long
constexpr qsizetype maxPathLength = 4096;

/// @p text on one line, as people see it on a terminal, in a window, in a table or in a drawing. White space
/// becomes spaces. Control characters (C0, DEL, C1), marks of writing direction, noncharacters and lone
/// surrogates become \x1b, \u202e...; a byte of a file name that is not UTF-8 becomes \xe9. A longer text
/// than
/// @p max is cut and ends with an ellipsis.
QString shown(const QString& text, qsizetype max = maxLength);

/// @p text for a string of JSON: the same value, with lone surrogates, which JSON cannot contain, as above.
QString forJson(const QString& text);
/// A JSON document with every control character in its strings written as \uXXXX, which is the same value.
QByteArray escapedJson(const QByteArray& document);

/// shown() for a cell of CSV, which keeps its line breaks. A text that a spreadsheet would take as a formula,
/// because it begins with = + - or @ and is no number, gets an apostrophe in front, which spreadsheets hide.
QString forCsv(const QString& text);

/// shown() for a tool tip, which would otherwise take a text with tags as HTML.
QString forToolTip(const QString& text);

} // namespace SafeText
