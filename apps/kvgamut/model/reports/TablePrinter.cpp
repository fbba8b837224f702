// SPDX-License-Identifier: Apache-2.0
#include "TablePrinter.h"

#include "model/jobs/Jobs.h"

#include <algorithm>

std::unique_ptr<TablePrinter> TablePrinter::create(const Table& table, Table::Format format)
{
    switch (format) {
    case Table::Format::Text:
        return text(table);
    case Table::Format::Csv:
        return csv(table);
    case Table::Format::Json:
        return json(table);
    case Table::Format::JsonLines:
        return jsonLines(table);
    }
    return {};
}

bool Table::print(Format format, const std::function<bool(const QByteArray&)>& write) const
{
    constexpr qsizetype rowsInPart = 4096;
    const auto printer = TablePrinter::create(*this, format);
    const qsizetype count = rowCount(), parts = (count + rowsInPart - 1) / rowsInPart;
    const auto part = [&](qsizetype i) {
        return printer->rows(i * rowsInPart, std::min(count, (i + 1) * rowsInPart));
    };
    return write(printer->head()) && (parts == 1 ? write(part(0)) : Jobs::inOrder(parts, part, write)) &&
           write(printer->tail());
}

QByteArray Table::printed(Format format) const
{
    QByteArray all;
    print(format, [&all](const QByteArray& part) {
        all += part;
        return true;
    });
    return all;
}
