// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QStringList>

#include <initializer_list>
#include <optional>

/// The names of the columns of a table, which it finds again in any of their usual spellings. Spaces and the
/// characters _ - . : / do not count, nor does what is in parentheses; the case counts only where a table has
/// names that differ in nothing else, such as "B" and "b".
class ColumnNames
{
public:
    explicit ColumnNames(const QStringList& names);

    qsizetype count() const { return m_plain.size(); }
    /// The name of @p column without the characters that do not count.
    const QString& at(qsizetype column) const { return m_plain[column]; }

    /// The first column, by order of @p wanted, that has one of these names; -1 if none has.
    qsizetype find(std::initializer_list<const char*> wanted) const;

    /// The columns that have one of each list of names; nullopt if one is missing or one would be found
    /// twice.
    std::optional<QList<qsizetype>>
    findAll(std::initializer_list<std::initializer_list<const char*>> wanted) const;

    /// The columns with the channels of @p space, such as "sRGB_R", and so on; nullopt if there are none.
    std::optional<QList<qsizetype>> findChannels(const QString& space, const QString& channels) const;

    /// The wavelength in nm of a column of reflectances, such as "SPECTRAL_NM400", "400 nm" or "400"; nullopt
    /// if it is none.
    std::optional<double> wavelengthOf(qsizetype column) const;

private:
    qsizetype find(const QString& wanted) const;

    QStringList m_plain; ///< without the characters that do not count
};
