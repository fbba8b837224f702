// SPDX-License-Identifier: Apache-2.0
#include "model/inputs/FileName.h"
#include "model/problems/ProblemText.h"
#include "model/reports/Table.h"
#include "model/text/SafeText.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace {

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

/// Every character below U+3000, and some above.
QList<char32_t> characters()
{
    QList<char32_t> all{0xD800, 0xDC1B, 0xDCFF, 0xDFFF, 0xFEFF, 0xFFFE, 0xFFFF, 0xE0041, 0x1FFFE};
    for (char32_t c = 0; c < 0x3000; ++c)
        all.append(c);
    return all;
}

QString stringOf(char32_t c)
{
    return c < 0x10000 ? QString(QChar(static_cast<char16_t>(c))) : QString::fromUcs4(&c, 1);
}

TEST(ShownText, keepsOrdinaryText)
{
    for (const char* words :
         {"", "plain", "Größe: 5 µm, ΔE*ab ≤ 2", "印刷 проба ✓ 🎨", "a  b", "-5", "back\\slash"})
        EXPECT_EQ(SafeText::shown(text(words)), text(words));
}

TEST(ShownText, escapesControlCharacters)
{
    EXPECT_EQ(SafeText::shown(text("\x1b]0;title\x07")), text("\\x1b]0;title\\x07"));
    EXPECT_EQ(SafeText::shown(text("\x7f \xC2\x9B"
                                   "31m")),
              text("\\x7f \\x9b31m"));
    EXPECT_EQ(SafeText::shown(text("a\xE2\x80\xAE"
                                   "b\xE2\x81\xA6")),
              text("a\\u202eb\\u2066"));
    EXPECT_EQ(SafeText::shown(text("a\nb\tc\r\xE2\x80\xA8")), text("a b c  "));
    EXPECT_EQ(SafeText::shown(FileName::decoded("caf\xE9")), text("caf\\xe9"));
}

TEST(ShownText, hasNoUnsafeCharacter)
{
    for (const char32_t c : characters())
        for (const QChar unit : SafeText::shown(stringOf(c))) {
            EXPECT_TRUE(unit.isPrint() || unit.isSurrogate() || unit.category() == QChar::Other_NotAssigned ||
                        unit.category() == QChar::Other_Format)
                << std::hex << static_cast<unsigned>(c);
            EXPECT_NE(unit.direction(), QChar::DirRLO);
            EXPECT_NE(unit.direction(), QChar::DirLRO);
        }
}

TEST(ShownText, isCutWithAnEllipsis)
{
    EXPECT_EQ(SafeText::shown(QString(1000, QLatin1Char('x'))).size(), 1000);
    EXPECT_EQ(SafeText::shown(QString(60'000'000, QLatin1Char('x'))),
              QString(999, QLatin1Char('x')) + QChar(0x2026));
    EXPECT_EQ(SafeText::shown(text("a🎨🎨"), 4), text("a🎨…"));
    EXPECT_EQ(SafeText::shown(text("🎨🎨"), 3), text("🎨…"));
}

TEST(SafeJson, hasTheSameValues)
{
    for (const char32_t c : characters()) {
        if (c >= 0xD800 && c <= 0xDFFF)
            continue; // not in JSON
        const QJsonArray value{text("<") + stringOf(c) + text(">")};
        const QByteArray safe = SafeText::escapedJson(QJsonDocument(value).toJson(QJsonDocument::Compact));
        EXPECT_EQ(QJsonDocument::fromJson(safe).array(), value) << static_cast<unsigned>(c);
        EXPECT_FALSE(safe.contains('\x1b') || safe.contains('\x7f') || safe.contains("\xC2\x9B"));
    }
    EXPECT_EQ(SafeText::escapedJson("[\"\xE2\x80\xAE\"]\n"), "[\"\\u202e\"]\n");
    EXPECT_EQ(SafeText::forJson(FileName::decoded("caf\xE9")), text("caf\\xe9"));
}

TEST(SafeCsv, neverBeginsLikeAFormula)
{
    for (const char* formula : {"=1+1", "+cmd", "-2+3", "@SUM(A1)", "=HYPERLINK(\"x\")"})
        EXPECT_EQ(SafeText::forCsv(text(formula)), text("'") + text(formula));
    for (const char* words : {"a=b", "-", "-5", "+1.5e3", "", "'x"})
        EXPECT_EQ(SafeText::forCsv(text(words)), text(words));
    EXPECT_EQ(SafeText::forCsv(text("\t=1+1")), text(" =1+1"));
    EXPECT_EQ(SafeText::forCsv(text("a\nb\x1b")), text("a\nb\\x1b"));
}

TEST(SafeToolTip, isNeverHtml)
{
    EXPECT_EQ(SafeText::forToolTip(text("/a <b>/c & d")), text("/a <b>/c & d").toHtmlEscaped());
    EXPECT_EQ(SafeText::forToolTip(text("/a & b")), text("/a & b"));
}

// --- Where it is used ---------------------------------------------------------------------------------

TEST(SafeTable, hasNoControlCharacterInAnyFormat)
{
    Table table;
    table.add("name", "name", Table::Kind::Word);
    table.add("words", "words", Table::Kind::Words);
    table.rows.append({text("=\x1b]0;x\x07"), QStringList{text("\xC2\x9B"), text("\xE2\x80\xAE")}});
    for (const bool blocks : {false, true}) {
        table.blocks = blocks;
        EXPECT_TRUE(table.printed(Table::Format::Text).contains("=\\x1b]0;x\\x07"));
        EXPECT_TRUE(table.printed(Table::Format::Text).contains("\\x9b, \\u202e") || blocks);
    }
    EXPECT_EQ(table.printed(Table::Format::Csv), "name,words\n'=\\x1b]0;x\\x07,\\x9b \\u202e\n");
    const QByteArray json = table.printed(Table::Format::Json);
    EXPECT_TRUE(json.contains("\\u202e") && json.contains("\\u009b") && json.contains("\\u001b"))
        << json.constData();
}

TEST(SafeProblem, escapesWhatComesFromFiles)
{
    const Problem cause(ProblemCode::OtherReason, {text("bad \x1b[31m")});
    const Problem problem = Problem(ProblemCode::CgatsInvalid, {}, text("a\xE2\x80\xAE.ti3")).because(cause);
    EXPECT_EQ(ProblemText::english(problem),
              text("'a\\u202e.ti3': the CGATS file cannot be read: bad \\x1b[31m"));
    EXPECT_EQ(ProblemText::translated(problem), ProblemText::english(problem));
}

} // namespace
