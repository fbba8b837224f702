// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

/// Numbers as reports write them, the same in every locale. Rounding never leaves -0.
namespace NumberText {

double rounded(double value, int decimals);

/// Appends @p value with exactly @p decimals decimals: "2.00"; "inf", "-inf" or "nan" if it is no number.
void appendFixed(QByteArray& text, double value, int decimals);

/// Appends @p value, rounded, as JSON writes it, without superfluous zeros; "null" if it is not finite.
void appendJson(QByteArray& text, double value, int decimals);

} // namespace NumberText
