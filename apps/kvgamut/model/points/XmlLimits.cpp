// SPDX-License-Identifier: Apache-2.0
#include "XmlLimits.h"

#include "model/inputs/InputLimits.h"

#include <algorithm>
#include <optional>

namespace {

/// One pass over the bytes. The zero bytes of UTF-16 are skipped.
class Scan
{
public:
    explicit Scan(const QByteArray& xml) : m_xml(xml) {}

    Result<void> run()
    {
        while (const auto c = next()) {
            if (*c != '<')
                continue;
            if (const Result<void> done = markup(); !done)
                return done;
        }
        return {};
    }

private:
    std::optional<char> next()
    {
        while (m_at < m_xml.size()) {
            const char c = m_xml[m_at++];
            m_line += c == '\n' ? 1 : 0;
            if (c != '\0')
                return c;
        }
        return {};
    }

    /// What follows a "<".
    Result<void> markup()
    {
        const auto first = next();
        if (first == '?')
            skipPast("?>");
        else if (first == '!')
            return declaration();
        else if (first == '/')
            m_depth -= 1;
        else
            return element();
        return {};
    }

    Result<void> declaration()
    {
        const auto first = next();
        if (first == '-')
            skipPast("-->");
        else if (first == '[')
            skipPast("]]>");
        else
            return failure(ProblemCode::XmlHasDocumentType, {QString::number(m_line)});
        return {};
    }

    /// A start tag; its values may contain ">".
    Result<void> element()
    {
        if (++m_depth > InputLimits::maxXmlDepth)
            return refused(ProblemCode::XmlTooDeep, InputLimits::maxXmlDepth);
        char last = '\0';
        int attributes = 0;
        while (const auto c = next()) {
            if (*c == '>')
                break;
            if (*c == '"' || *c == '\'') {
                if (++attributes > InputLimits::maxXmlAttributes)
                    return refused(ProblemCode::XmlTooManyAttributes, InputLimits::maxXmlAttributes);
                skipTo(*c);
            }
            last = *c;
        }
        m_depth -= last == '/' ? 1 : 0;
        return {};
    }

    void skipTo(char end)
    {
        while (const auto c = next())
            if (*c == end)
                return;
    }

    void skipPast(const char* end)
    {
        const QByteArrayView wanted(end);
        QByteArray last;
        while (const auto c = next()) {
            last = last.right(wanted.size() - 1) + *c;
            if (last == wanted)
                return;
        }
    }

    tl::unexpected<Problem> refused(ProblemCode code, int limit) const
    {
        return failure(code, {QString::number(m_line), QString::number(limit)});
    }

    const QByteArray& m_xml;
    qsizetype m_at = 0;
    int m_line = 1;
    int m_depth = 0;
};

} // namespace

Result<void> checkXml(const QByteArray& xml)
{
    return Scan(xml).run();
}
