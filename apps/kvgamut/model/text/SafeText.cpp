// SPDX-License-Identifier: Apache-2.0
#include "SafeText.h"

#include <QtCore/QStringList>
#include <QtGui/QTextDocument>

#include <algorithm>
#include <utility>

namespace {

constexpr char32_t firstByteEscape = 0xDC80; // bytes of file names that are not UTF-8, see FileName.h
constexpr char32_t lastByteEscape = 0xDCFF;
constexpr char32_t byteEscapeBase = 0xDC00;

bool isLoneSurrogate(char32_t c)
{
    return c >= 0xD800 && c <= 0xDFFF;
}

bool isDirectionMark(char32_t c)
{
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

bool isControl(char32_t c)
{
    const bool isNonCharacter = (c & 0xFFFE) == 0xFFFE || (c >= 0xFDD0 && c <= 0xFDEF);
    const bool isTag = c >= 0xE0000 && c <= 0xE007F; // invisible letters
    return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0xFEFF || isDirectionMark(c) || isNonCharacter ||
           isTag;
}

bool isUnsafe(char32_t c)
{
    return isControl(c) || isLoneSurrogate(c);
}

QString escape(char32_t c)
{
    const bool isByte = c >= firstByteEscape && c <= lastByteEscape;
    const auto value = static_cast<uint>(isByte ? c - byteEscapeBase : c);
    if (value < 0x100)
        return QStringLiteral("\\x%1").arg(value, 2, 16, QLatin1Char('0'));
    return QStringLiteral("\\u%1").arg(value, 4, 16, QLatin1Char('0'));
}

/// The character at @p i and the number of units that it takes.
std::pair<char32_t, qsizetype> characterAt(const QString& text, qsizetype i)
{
    const QChar first = text[i];
    if (first.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
        return {QChar::surrogateToUcs4(first, text[i + 1]), 2};
    return {first.unicode(), 1};
}

template <typename Test>
QString escaped(const QString& text, const Test& test)
{
    QString result;
    for (qsizetype i = 0; i < text.size();) {
        const auto [c, size] = characterAt(text, i);
        result += test(c) ? escape(c) : text.mid(i, size);
        i += size;
    }
    return result;
}

QString cut(const QString& text, qsizetype max)
{
    if (text.size() <= max)
        return text;
    const qsizetype end = text[max - 2].isHighSurrogate() ? max - 2 : max - 1;
    return text.left(end) + QChar(0x2026);
}

} // namespace

QString SafeText::shown(const QString& text, qsizetype max)
{
    QString line = cut(text, max);
    std::replace_if(
        line.begin(), line.end(), [](QChar c) { return c.isSpace(); }, QLatin1Char(' '));
    return escaped(line, isUnsafe);
}

QString SafeText::forJson(const QString& text)
{
    return escaped(text, isLoneSurrogate);
}

QByteArray SafeText::escapedJson(const QByteArray& document)
{
    const QString text = QString::fromUtf8(document);
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        // line breaks are part of the document; those of its strings are escaped already
        if (c == QLatin1Char('\n') || c.isSurrogate() || !isControl(c.unicode()))
            result += c;
        else
            result += QStringLiteral("\\u%1").arg(static_cast<uint>(c.unicode()), 4, 16, QLatin1Char('0'));
    }
    return result.toUtf8();
}

QString SafeText::forCsv(const QString& text)
{
    QStringList lines;
    for (const QString& line : cut(text, maxPathLength).split(QLatin1Char('\n')))
        lines.append(shown(line, maxPathLength));
    const QString safe = lines.join(QLatin1Char('\n'));
    bool isNumber = false;
    safe.toDouble(&isNumber);
    const bool isFormula = safe.size() > 1 && QStringLiteral("=+-@").contains(safe[0]) && !isNumber;
    return isFormula ? QLatin1Char('\'') + safe : safe;
}

QString SafeText::forToolTip(const QString& text)
{
    const QString safe = shown(text, maxPathLength);
    return Qt::mightBeRichText(safe) ? safe.toHtmlEscaped() : safe;
}
