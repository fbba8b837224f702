// SPDX-License-Identifier: Apache-2.0
#include "PointColumns.h"
#include "PointReaders.h"
#include "model/inputs/LittleCms.h"

// Sheets are taken apart by Little CMS, which knows CGATS.17, IT8.7 and their relatives.

using LittleCms::Context;
using LittleCms::Sheet;

namespace {

/// Keeps the first complaint in the text that the context was made with.
void keepError(cmsContext context, cmsUInt32Number, const char* message)
{
    auto& kept = *static_cast<QString*>(cmsGetContextUserData(context));
    if (kept.isEmpty())
        kept = QString::fromUtf8(message).simplified();
}

QStringList columnsOf(const Sheet& sheet)
{
    char** names = nullptr;
    const int count = cmsIT8EnumDataFormat(sheet.get(), &names);
    QStringList columns;
    for (int i = 0; i < count; ++i)
        columns.append(QString::fromUtf8(names[i]));
    return columns;
}

QStringList rowOf(const Sheet& sheet, int row, qsizetype columns)
{
    QStringList fields;
    for (int column = 0; column < columns; ++column)
        fields.append(QString::fromUtf8(cmsIT8GetDataRowCol(sheet.get(), row, column)));
    return fields;
}

PointFile pointsOf(const Sheet& sheet, const PointColumns& columns, qsizetype columnCount)
{
    PointFile result;
    const int rows = static_cast<int>(cmsIT8GetPropertyDbl(sheet.get(), "NUMBER_OF_SETS"));
    for (int row = 0; row < rows; ++row) {
        const auto point = columns.pointOf(rowOf(sheet, row, columnCount));
        if (!point) {
            result.problem =
                QStringLiteral(", data set %1: expected numbers in the columns of the colour").arg(row + 1);
            return result;
        }
        result.points.append(*point);
    }
    return result;
}

} // namespace

PointFile PointReaders::readCgats(const QByteArray& text)
{
    PointFile result;
    QString error;
    const Context context(cmsCreateContext(nullptr, &error));
    cmsSetLogErrorHandlerTHR(context.get(), keepError);
    const Sheet sheet(
        cmsIT8LoadFromMem(context.get(), text.constData(), static_cast<cmsUInt32Number>(text.size())));
    if (!sheet) {
        result.problem = QStringLiteral(": this CGATS file cannot be read%1").arg(error);
        return result;
    }
    const auto tables = static_cast<int>(cmsIT8TableCount(sheet.get()));
    for (int table = 0; table < tables; ++table) {
        cmsIT8SetTable(sheet.get(), static_cast<cmsUInt32Number>(table));
        const QStringList names = columnsOf(sheet);
        if (const auto columns = PointColumns::named(names))
            return pointsOf(sheet, *columns, names.size());
    }
    result.problem =
        QStringLiteral(": this CGATS file has no columns LAB_L, LAB_A, LAB_B or XYZ_X, XYZ_Y, XYZ_Z"
                       " (spectra are not read)");
    return result;
}
