// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QVariant>

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
    };
    using Row = QVariantList; ///< one value for each column, in order

    QList<Column> columns;
    QList<Row> rows;
    QString summary;     ///< last line of the text
    bool blocks = false; ///< in text, a block for each row, with its first value as heading

    enum class Format
    {
        Text, ///< aligned columns for people
        Csv,  ///< RFC 4180 with line feeds; a colour has three columns: key_L, key_a, key_b
        Json, ///< an array with an object for each row; a colour is an array of three numbers
    };
    QByteArray printed(Format format) const;

    /// The value of a cell in a column of colours.
    static QVariant colour(const KVGamut::LabPoint& lab) { return QVariant::fromValue(lab); }

    /// Adds a column; @p key and @p title are UTF-8.
    void add(const char* key, const char* title, Kind kind, int decimals = 0, int textDecimals = 0);
};
