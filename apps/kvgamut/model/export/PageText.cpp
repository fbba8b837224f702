// SPDX-License-Identifier: Apache-2.0
#include "PageText.h"

#include "model/text/SafeText.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QStringList>

#include <array>
#include <utility>

namespace {

QByteArray source(const QByteArray& content)
{
    return " 'sha256-" + QCryptographicHash::hash(content, QCryptographicHash::Sha256).toBase64() + '\'';
}

} // namespace

QByteArray PageText::html(const QString& text)
{
    QStringList lines;
    for (const QString& line : text.split(QLatin1Char('\n')))
        lines.append(SafeText::shown(line, SafeText::maxPathLength)
                         .toHtmlEscaped()
                         .replace(QLatin1Char('\''), QStringLiteral("&#39;")));
    return lines.join(QLatin1Char('\n')).toUtf8();
}

QByteArray PageText::jsonInScript(const QByteArray& document)
{
    // all of these appear in strings only
    static const std::array<std::pair<QByteArray, QByteArray>, 5> escapes{{{"<", "\\u003c"},
                                                                           {">", "\\u003e"},
                                                                           {"&", "\\u0026"},
                                                                           {"\xE2\x80\xA8", "\\u2028"},
                                                                           {"\xE2\x80\xA9", "\\u2029"}}};
    QByteArray result = SafeText::escapedJson(document);
    for (const auto& [character, escape] : escapes)
        result.replace(character, escape);
    return result;
}

QByteArray PageText::policy(const QByteArrayList& scripts, const QByteArray& style)
{
    QByteArray policy = "default-src 'none'; script-src";
    for (const QByteArray& script : scripts)
        policy += source(script);
    policy += "; style-src" + source(style);
    return policy + "; img-src data:; base-uri 'none'; form-action 'none'";
}

QByteArray PageText::filled(const QByteArray& page, const QMap<QByteArray, QByteArray>& values)
{
    QByteArray result;
    qsizetype at = 0;
    for (qsizetype begin = page.indexOf("{{"); begin >= 0; begin = page.indexOf("{{", at)) {
        const qsizetype end = page.indexOf("}}", begin);
        if (end < 0)
            break;
        const auto value = values.constFind(page.mid(begin + 2, end - begin - 2));
        result += page.mid(at, begin - at);
        result += value == values.constEnd() ? page.mid(begin, end + 2 - begin) : *value;
        at = end + 2;
    }
    return result + page.mid(at);
}
