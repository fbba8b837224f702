// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Table.h"

#include <memory>

/// A table in one format, in parts. The functions may be called on several threads at the same time.
class TablePrinter
{
public:
    /// A printer for @p table, to which it keeps a reference.
    static std::unique_ptr<TablePrinter> create(const Table& table, Table::Format format);
    virtual ~TablePrinter() = default;
    Q_DISABLE_COPY_MOVE(TablePrinter)

    virtual QByteArray head() const { return {}; }
    /// The rows first .. end - 1.
    virtual QByteArray rows(qsizetype first, qsizetype end) const = 0;
    virtual QByteArray tail() const { return {}; }

protected:
    explicit TablePrinter(const Table& table) : m_table(table) {}
    const Table& m_table;

private:
    static std::unique_ptr<TablePrinter> csv(const Table& table);
    static std::unique_ptr<TablePrinter> json(const Table& table);
    static std::unique_ptr<TablePrinter> jsonLines(const Table& table);
    static std::unique_ptr<TablePrinter> text(const Table& table);
};
