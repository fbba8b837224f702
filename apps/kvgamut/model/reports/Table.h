// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <functional>

/// The results of a command: rows with named columns.
///
/// Numbers are rounded to the decimals of their column, so that equal results print the same everywhere. The
/// decimal separator is a point in every locale.
struct Table
{
    /// The type of a column. An invalid QVariant means that the value is unknown.
    enum class Kind
    {
        Word,    ///< QString
        Words,   ///< QStringList
        Flag,    ///< bool
        Whole,   ///< int
        Number,  ///< double
        Share,   ///< double, 0..1; a percentage in text
        Colour,  ///< made by colour()
        Numbers, ///< QVariantList of double
    };
    struct Column
    {
        QString key;   ///< in CSV and JSON
        QString title; ///< in text; if empty the column is not shown there
        Kind kind = Kind::Word;
        int decimals = 0;     ///< in CSV and JSON
        int textDecimals = 0; ///< in text
        bool inCsv = true;    ///< whether CSV has the column
        bool inJson = true;   ///< whether JSON has it
        QVariant same = {};   ///< if valid, the value of every row, whatever the rows contain
    };
    using Row = QVariantList; ///< one value for each column, in order; values at the end may be missing

    /// Rows that exist only while they are printed, so that a million of them needs no memory.
    struct MadeRows
    {
        qsizetype count = 0;
        std::function<Row(qsizetype)> row; ///< called on several threads, and more than once for a row
    };

    QList<Column> columns;
    QList<Row> rows;
    MadeRows made;       ///< printed instead of @ref rows if there are any
    QString summary;     ///< last line of the text
    bool blocks = false; ///< in text, a block for each row, with its first value as heading

    qsizetype rowCount() const { return made.count > 0 ? made.count : rows.size(); }
    Row row(qsizetype index) const { return made.count > 0 ? made.row(index) : rows.at(index); }

    enum class Format
    {
        Text,      ///< aligned columns for people
        Csv,       ///< RFC 4180 with line feeds; a colour has three columns: key_L, key_a, key_b
        Json,      ///< an array with an object for each row; a colour is an array of three numbers
        JsonLines, ///< the same objects, each on its own line, without the array
    };
    QByteArray printed(Format format) const;
    /// Gives the text of printed() in parts to @p write.
    /// @return false if @p write has returned false, which ends the printing
    bool print(Format format, const std::function<bool(const QByteArray&)>& write) const;

    /// The value of a cell in a column of colours.
    static QVariant colour(const KVGamut::LabPoint& lab) { return QVariant::fromValue(lab); }

    /// The value of a cell that has no value where @p text is empty.
    static QVariant unlessEmpty(const QString& text) { return text.isEmpty() ? QVariant() : QVariant(text); }

    /// Adds a column; @p key and @p title are UTF-8.
    void add(const char* key, const char* title, Kind kind, int decimals = 0, int textDecimals = 0);
    /// Sets the value of all rows in the column @p key.
    void setSame(const char* key, const QVariant& value);
    /// Adds a column that only JSON has.
    void addToJson(const char* key, Kind kind, int decimals = 0);
};
