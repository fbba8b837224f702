// SPDX-License-Identifier: Apache-2.0
#include "ColumnNames.h"

namespace {

/// @p name without what does not count.
QString plain(const QString& name)
{
    QString result;
    int depth = 0;
    for (const QChar c : name) {
        depth += c == QLatin1Char('(') || c == QLatin1Char('[') ? 1 : 0;
        if (depth == 0 && !c.isSpace() && !QStringLiteral("_-.:/\"'").contains(c))
            result += c;
        depth -= (c == QLatin1Char(')') || c == QLatin1Char(']')) && depth > 0 ? 1 : 0;
    }
    return result;
}

} // namespace

ColumnNames::ColumnNames(const QStringList& names)
{
    for (const QString& name : names)
        m_plain.append(plain(name));
}

qsizetype ColumnNames::find(const QString& wanted) const
{
    const qsizetype exact = m_plain.indexOf(wanted);
    if (exact >= 0)
        return exact;
    for (qsizetype i = 0; i < m_plain.size(); ++i)
        if (m_plain[i].compare(wanted, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

qsizetype ColumnNames::find(std::initializer_list<const char*> wanted) const
{
    for (const char* name : wanted)
        if (const qsizetype column = find(QString::fromUtf8(name)); column >= 0)
            return column;
    return -1;
}

std::optional<QList<qsizetype>>
ColumnNames::findAll(std::initializer_list<std::initializer_list<const char*>> wanted) const
{
    QList<qsizetype> columns;
    for (const auto& names : wanted) {
        const qsizetype column = find(names);
        if (column < 0 || columns.contains(column))
            return {};
        columns.append(column);
    }
    return columns;
}

std::optional<QList<qsizetype>> ColumnNames::findChannels(const QString& space, const QString& channels) const
{
    QList<qsizetype> columns;
    for (const QChar channel : channels) {
        const qsizetype column = find(space + channel);
        if (column < 0)
            return {};
        columns.append(column);
    }
    return columns;
}

std::optional<double> ColumnNames::wavelengthOf(qsizetype column) const
{
    constexpr double min = 200.0, max = 2600.0;
    QString digits = m_plain[column].toUpper();
    for (const char* prefix : {"SPECTRALNM", "SPECTRAL", "SPECNM", "SPEC", "NM", "R", "LAMBDA"})
        if (digits.startsWith(QLatin1String(prefix))) {
            digits.remove(0, QLatin1String(prefix).size());
            break;
        }
    if (digits.endsWith(QLatin1String("NM")))
        digits.chop(2);
    bool ok = false;
    const double wavelength = digits.toDouble(&ok);
    if (!ok || wavelength < min || wavelength > max)
        return {};
    return wavelength;
}
