// SPDX-License-Identifier: Apache-2.0
#include "PointBuilder.h"
#include "PointColumns.h"
#include "PointReaders.h"
#include "PointWhite.h"
#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/InputLimits.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// The separator of the fields of @p line: semicolon, tab or comma, in order of preference, else space.
QChar separatorOf(const QString& line)
{
    static const QRegularExpression quoted(QStringLiteral("\"[^\"]*\""));
    const QString bare = line.contains(QLatin1Char('"')) ? QString(line).remove(quoted) : line;
    for (const char separator : {';', '\t', ','})
        if (bare.contains(QLatin1Char(separator)))
            return QLatin1Char(separator);
    return QLatin1Char(' ');
}

/// @p field without its quotes; a doubled quote inside them is one quote.
QString unquoted(const QString& field)
{
    static const QLatin1Char quote('"');
    QString word = field.trimmed();
    if (word.size() < 2 || !word.startsWith(quote) || !word.endsWith(quote))
        return word;
    return word.mid(1, word.size() - 2).replace(QStringLiteral("\"\""), QString(quote));
}

QStringList fieldsOf(const QString& line, QChar separator)
{
    QStringList fields;
    if (!line.contains(QLatin1Char('"'))) {
        for (const QStringView field : QStringView(line).tokenize(separator))
            if (separator != QLatin1Char(' ') || !field.trimmed().isEmpty())
                fields.append(field.trimmed().toString());
        return fields;
    }
    QString field;
    bool inQuotes = false;
    for (const QChar c : line) {
        inQuotes = inQuotes != (c == QLatin1Char('"'));
        if (c == separator && !inQuotes)
            fields.append(unquoted(std::exchange(field, QString())));
        else
            field.append(c);
    }
    fields.append(unquoted(field));
    if (separator == QLatin1Char(' '))
        fields.removeAll(QString()); // consecutive spaces are one separator
    return fields;
}

bool isNumber(const QString& field)
{
    return numberOf(field).has_value();
}

bool isHexColor(const QString& field)
{
    return (field.size() == 7 || field.size() == 4) && field.startsWith(QLatin1Char('#')) &&
           QColor(field).isValid();
}

/// Whether @p fields are wavelengths, with at most a word before them: the heading of a table of spectra.
bool areWavelengths(const QStringList& fields)
{
    constexpr qsizetype minBands = 10;
    constexpr float min = 300.0f, max = 900.0f;
    float last = min;
    for (qsizetype i = isNumber(fields.value(0)) ? 0 : 1; i < fields.size(); ++i) {
        const auto number = numberOf(fields[i]);
        if (!number || *number <= last || *number > max)
            return false;
        last = *number;
    }
    return fields.size() >= minBands;
}

/// The rows of a table without a heading: three numbers, and beside them a name, a colour or both.
namespace bareRow {

/// Takes @p text as the colour if it is one and stands after the numbers, else as the name.
bool takeText(MeasuredPoint& point, const QString& text, bool isAfter)
{
    const QColor color(isAfter ? text : QString());
    if (color.isValid() && !point.color.isValid()) {
        point.color = color;
        return true;
    }
    return std::exchange(point.name, text).isEmpty();
}

/// nullopt if @p fields are anything else
std::optional<MeasuredPoint> pointOf(const QStringList& fields)
{
    MeasuredPoint point;
    QList<float> numbers;
    for (const QString& field : fields) {
        if (field.isEmpty())
            continue;
        if (const auto number = numberOf(field))
            numbers.append(*number);
        else if (!takeText(point, field, numbers.size() == 3))
            return {};
    }
    if (numbers.size() != 3)
        return {};
    point.lab = {numbers[0], numbers[1], numbers[2]};
    return point;
}

/// The first value that is outside of the ranges of Lab; nullopt if there is none.
std::optional<float> strangeValue(const KVGamut::LabPoint& lab)
{
    constexpr float maxL = 100.0f, maxAb = 128.0f;
    if (lab.L < 0.0f || lab.L > maxL)
        return lab.L;
    if (std::fabs(lab.a) > maxAb)
        return lab.a;
    return std::fabs(lab.b) > maxAb ? std::optional(lab.b) : std::nullopt;
}

} // namespace bareRow

/// The lines of a text, without the line breaks.
class Lines
{
public:
    explicit Lines(const QByteArray& utf8) : m_text(QString::fromUtf8(utf8)) {}

    bool atEnd() const { return m_at >= m_text.size(); }
    /// Number of the line that next() has returned, from 1 on.
    int number() const { return m_number; }

    QStringView next()
    {
        const qsizetype end = m_text.indexOf(QLatin1Char('\n'), m_at);
        const QStringView line = QStringView(m_text).sliced(m_at, (end < 0 ? m_text.size() : end) - m_at);
        m_at += line.size() + 1;
        ++m_number;
        return line;
    }

private:
    QString m_text;
    qsizetype m_at = 0;
    int m_number = 0;
};

/// What comments declare, as in "# space: sRGB", "# white: D65" and "# white-y: 1".
Result<void> takeDeclaration(const QString& comment, int line, PointBuilder::Declared& declared)
{
    static const QRegularExpression form(QStringLiteral("^#+\\s*(space|white|white-y)\\s*[:=]\\s*(\\S+)$"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(comment);
    if (!match.hasMatch())
        return {};
    const QString key = match.captured(1).toLower(), value = match.captured(2);
    const bool isSpace = key == QLatin1String("space"), isWhite = key == QLatin1String("white");
    const QStringList known = isSpace   ? BuiltInProfiles::names()
                              : isWhite ? PointWhite::names()
                                        : QStringList{QStringLiteral("1"), QStringLiteral("100")};
    const auto found = std::find_if(known.cbegin(), known.cend(), [&value](const QString& word) {
        return word.compare(value, Qt::CaseInsensitive) == 0;
    });
    if (found == known.cend())
        return failure(ProblemCode::PointWordUnknown,
                       {QString::number(line), value, known.join(QStringLiteral(", "))});
    if (isSpace)
        declared.space = *found;
    else if (isWhite)
        declared.white = *found;
    else
        declared.whiteY = found->toDouble();
    return {};
}

class CsvReader
{
public:
    CsvReader(const QByteArray& text, const PointOptions& options, const KVCompletionProtocolPtr& task)
        : m_lines(text), m_builder(options, task)
    {
    }

    Result<PointSet> read()
    {
        while (!m_lines.atEnd()) {
            const QStringView line = m_lines.next();
            if (line.size() > InputLimits::maxLineLength)
                return refused(ProblemCode::LineTooLong, InputLimits::maxLineLength);
            const QString content = line.trimmed().toString();
            if (content.isEmpty() || content.startsWith(QLatin1String("sep="), Qt::CaseInsensitive))
                continue;
            if (const Result<void> taken = takeLine(content); !taken)
                return failure(taken.error());
        }
        if (m_isBare)
            m_builder.note(Problem(ProblemCode::NumbersTakenAsLab));
        return m_builder.finish();
    }

private:
    Result<void> takeLine(const QString& line)
    {
        const QChar separator = separatorOf(line);
        const QStringList fields = fieldsOf(line, separator);
        // a row of hexadecimal colours begins like a comment
        const bool isHex = m_columns && m_columns->space == PointSpace::Hex && isHexColor(fields.value(0));
        if (line.startsWith(QLatin1Char('#')) && !isHex)
            return takeDeclaration(line, m_lines.number(), m_builder.declared);
        if (fields.size() > InputLimits::maxColumns)
            return refused(ProblemCode::TooManyColumns, InputLimits::maxColumns);
        const bool isFirst = std::exchange(m_first, false);
        if (isFirst && (std::none_of(fields.cbegin(), fields.cend(), isNumber) || areWavelengths(fields)))
            return takeHeading(fields);
        return m_columns ? takeRow(fields) : takeBareRow(fields);
    }

    Result<void> takeHeading(const QStringList& names)
    {
        m_columns = PointColumns::named(names);
        m_names = names;
        if (!m_columns)
            return failure(ProblemCode::ColumnsUnknown,
                           {QString::number(m_lines.number()), names.join(QStringLiteral(", "))});
        if (m_columns->problem)
            return failure(*m_columns->problem);
        if (m_builder.declared.space.isEmpty())
            m_builder.declared.space = m_columns->declared;
        m_builder.declared.wavelengths = m_columns->wavelengths;
        m_builder.declared.inks = m_columns->inks;
        return {};
    }

    Result<void> takeRow(QStringList fields)
    {
        while (fields.size() > m_names.size() && fields.last().isEmpty())
            fields.removeLast();
        if (!std::exchange(m_nameIsFound, true)) {
            m_columns->findName(fields);
            noteIgnored();
        }
        const int line = m_lines.number();
        if (fields.size() > m_names.size()) // the meaning of the other values is unknown
            return add(
                failure(ProblemCode::RowTooLong, {QString::number(line), QString::number(fields.size()),
                                                  QString::number(m_names.size())}));
        return add(m_columns->pointOf(fields, line));
    }

    void noteIgnored()
    {
        QStringList ignored;
        for (const qsizetype column : std::as_const(m_columns->unknown))
            ignored.append(m_names[column]);
        if (!ignored.isEmpty())
            m_builder.note(Problem(ProblemCode::ColumnsIgnored, {ignored.join(QStringLiteral(", "))}));
    }

    Result<void> takeBareRow(const QStringList& fields)
    {
        const QString line = QString::number(m_lines.number());
        const auto point = bareRow::pointOf(fields);
        if (!point)
            return add(failure(ProblemCode::RowNotLab, {line}));
        if (const auto strange = bareRow::strangeValue(point->lab))
            return failure(ProblemCode::HeadingNeeded, {line, QString::number(double(*strange))});
        m_isBare = true;
        return add(*point);
    }

    Result<void> add(const Result<MeasuredPoint>& point)
    {
        if (point)
            return m_builder.add(*point, m_columns ? m_columns->space : PointSpace::Lab, m_lines.number());
        m_builder.leaveOut(point.error(), m_lines.number());
        return {};
    }

    tl::unexpected<Problem> refused(ProblemCode code, qsizetype limit) const
    {
        return failure(code, {QString::number(m_lines.number()), QString::number(limit)});
    }

    Lines m_lines;
    PointBuilder m_builder;
    std::optional<PointColumns> m_columns; ///< nullopt without a heading
    QStringList m_names;                   ///< of the columns
    bool m_first = true;                   ///< no line with fields has been read yet
    bool m_nameIsFound = false;
    bool m_isBare = false;
};

} // namespace

Result<PointSet> PointReaders::readCsv(const QByteArray& text, const PointOptions& options,
                                       const KVCompletionProtocolPtr& task)
{
    return CsvReader(text, options, task).read();
}
