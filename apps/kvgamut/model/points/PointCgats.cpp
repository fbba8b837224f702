// SPDX-License-Identifier: Apache-2.0
#include "PointColumns.h"
#include "PointReaders.h"
#include "model/inputs/LittleCms.h"

// Little CMS reads CGATS.17, IT8.7 and related formats.

using LittleCms::Context;
using LittleCms::Sheet;

namespace {

/// Stores the first error message in the context's user data, a text.
void keepError(cmsContext context, cmsUInt32Number, const char* message)
{
    auto& kept = *static_cast<QString*>(cmsGetContextUserData(context));
    if (kept.isEmpty())
        kept = QString::fromUtf8(message).simplified();
}

/// Little CMS begins its message with the name of the file, which is empty here.
QString withoutName(const QString& message)
{
    return message.startsWith(QLatin1String(": ")) ? message.mid(2) : message;
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

Result<PointSet> pointsOf(const Sheet& sheet, const PointColumns& columns, qsizetype columnCount)
{
    PointSet set;
    const int rows = static_cast<int>(cmsIT8GetPropertyDbl(sheet.get(), "NUMBER_OF_SETS"));
    for (int row = 0; row < rows; ++row) {
        const auto point = columns.pointOf(rowOf(sheet, row, columnCount));
        if (!point)
            return failure(ProblemCode::NotAColorDataSet, {QString::number(row + 1)});
        set.points.append(*point);
    }
    return set;
}

} // namespace

Result<PointSet> PointReaders::readCgats(const QByteArray& text)
{
    QString error;
    const Context context(cmsCreateContext(nullptr, &error));
    cmsSetLogErrorHandlerTHR(context.get(), keepError);
    const Sheet sheet(
        cmsIT8LoadFromMem(context.get(), text.constData(), static_cast<cmsUInt32Number>(text.size())));
    if (!sheet)
        return failure(Problem(ProblemCode::CgatsInvalid)
                           .because(Problem(ProblemCode::OtherReason, {withoutName(error)})));
    const auto tables = static_cast<int>(cmsIT8TableCount(sheet.get()));
    for (int table = 0; table < tables; ++table) {
        cmsIT8SetTable(sheet.get(), static_cast<cmsUInt32Number>(table));
        const QStringList names = columnsOf(sheet);
        if (const auto columns = PointColumns::named(names))
            return pointsOf(sheet, *columns, names.size());
    }
    return failure(ProblemCode::CgatsWithoutColor);
}
