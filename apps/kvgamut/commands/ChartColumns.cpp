// SPDX-License-Identifier: Apache-2.0
#include "ChartColumns.h"

void ChartColumns::add(Table& table, ConversionColumns::Details details)
{
    using Kind = Table::Kind;
    const auto title = [details](const char* text) {
        return details == ConversionColumns::Details::Shown ? text : "";
    };
    table.add("chart_patches", title("patches"), Kind::Whole);
    table.add("chart_different", title("different"), Kind::Whole);
    table.add("chart_levels", title("levels"), Kind::Words);
    table.add("chart_missing_corners", title("open corners"), Kind::Whole);
    table.add("chart_uncovered", title("not enclosed"), Kind::Share, 4, 1);
    table.add("chart_largest_gap", title("largest gap"), Kind::Share, 4, 1);
    table.add("chart_error_median", title("median error"), Kind::Number, 3, 2);
    table.add("chart_error_p95", title("95 % error"), Kind::Number, 3, 2);
}

QVariantList ChartColumns::of(const std::optional<ChartFacts>& chart)
{
    if (!chart)
        return QVariantList(8);
    QStringList levels;
    for (const int count : chart->levels)
        levels.append(QString::number(count));
    return {static_cast<int>(chart->measured),
            static_cast<int>(chart->different),
            levels,
            chart->missingCorners,
            chart->uncoveredShare,
            chart->largestGap,
            chart->errorMedian,
            chart->errorP95};
}
