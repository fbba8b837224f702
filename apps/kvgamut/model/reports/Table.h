// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QVariant>

/// What a command found: a row for each of its answers, in named columns.
///
/// Numbers are rounded to the decimals of their column, so that the same answer is printed the same
/// everywhere; the decimal sign is a point in every locale.
struct Table
{
    /// What a column holds; a value that is not valid is one that is not known.
    enum class Kind
    {
        Word,   ///< QString
        Words,  ///< QStringList
        Flag,   ///< bool
        Whole,  ///< int
        Number, ///< double
        Share,  ///< double, 0..1; a percentage for people
        Colour, ///< QVector3D: L*, a*, b*
    };
    struct Column
    {
        QString key;   ///< in CSV and JSON
        QString title; ///< for people; empty: it is not shown to them
        Kind kind = Kind::Word;
        int decimals = 0;     ///< in CSV and JSON
        int textDecimals = 0; ///< for people
    };
    using Row = QVariantList; ///< a value for each column, in order

    QList<Column> columns;
    QList<Row> rows;
    QString summary;     ///< a last line for people
    bool blocks = false; ///< for people: a paragraph for each row, under the value of its first column

    enum class Format
    {
        Text, ///< for people
        Csv,  ///< RFC 4180 with bare line feeds; a colour takes three columns: key_L, key_a, key_b
        Json, ///< an array of an object for each row; a colour is an array of three
    };
    QByteArray printed(Format format) const;

    /// Adds a column; @p key and @p title are UTF-8.
    void add(const char* key, const char* title, Kind kind, int decimals = 0, int textDecimals = 0);
};
