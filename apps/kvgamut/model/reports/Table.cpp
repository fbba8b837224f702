// SPDX-License-Identifier: Apache-2.0
#include "Table.h"

void Table::add(const char* key, const char* title, Kind kind, int decimals, int textDecimals)
{
    columns.append({QString::fromUtf8(key), QString::fromUtf8(title), kind, decimals, textDecimals});
}

void Table::setSame(const char* key, const QVariant& value)
{
    for (Column& column : columns)
        if (column.key == QLatin1String(key))
            column.same = value;
}

void Table::addToJson(const char* key, Kind kind, int decimals)
{
    columns.append({QString::fromUtf8(key), QString(), kind, decimals});
    columns.last().inCsv = false;
}
