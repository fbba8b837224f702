// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <optional>

/// A word of CGATS.17, IT8.7 and related formats: between white space, or quoted.
struct CgatsWord
{
    QByteArray text;
    int line = 0;
    bool quoted = false;

    /// Whether this is the keyword @p keyword, in any case. Quoted words are values.
    bool is(const char* keyword) const { return !quoted && text.compare(keyword, Qt::CaseInsensitive) == 0; }
    bool isDirective() const { return is(".INCLUDE") || is("$INCLUDE"); }
};

/// Splits a text of these formats into words. Comments from # to the end of the line are left out. A line
/// break ends a quoted word, too.
class CgatsWords
{
public:
    explicit CgatsWords(const QByteArray& text) : m_text(text) {}

    /// nullopt at the end of the text
    std::optional<CgatsWord> next()
    {
        skipSpace();
        if (m_at >= m_text.size())
            return {};
        const char first = m_text[m_at];
        const bool quoted = first == '"' || first == '\'';
        const int line = m_line;
        if (!quoted)
            return CgatsWord{taken([](char c) { return isSpace(c) || c == '#' || c == '"' || c == '\''; }),
                             line};
        ++m_at;
        const CgatsWord word{taken([first](char c) { return c == first || isLineBreak(c); }), line, true};
        if (isAt(m_at, first))
            ++m_at;
        return word;
    }

    /// Number of the line that is read.
    int line() const { return m_line; }

private:
    static bool isLineBreak(char c) { return c == '\n' || c == '\r'; }
    static bool isSpace(char c) { return c == ' ' || c == '\t' || isLineBreak(c); }

    bool isAt(qsizetype place, char c) const { return place < m_text.size() && m_text[place] == c; }

    void skipSpace()
    {
        bool comment = false;
        for (; m_at < m_text.size(); ++m_at) {
            const char c = m_text[m_at];
            comment = !isLineBreak(c) && (comment || c == '#');
            if (!comment && !isSpace(c))
                return;
            if (c == '\n' || (c == '\r' && !isAt(m_at + 1, '\n')))
                ++m_line;
        }
    }

    template <typename Ends>
    QByteArray taken(const Ends& ends)
    {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && !ends(m_text[m_at]))
            ++m_at;
        return m_text.mid(start, m_at - start);
    }

    const QByteArray& m_text;
    qsizetype m_at = 0;
    int m_line = 1;
};
