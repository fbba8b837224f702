// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// The word of @p known that the user may have meant by @p word; empty if none is near.
///
/// Compared are letters and digits in any case. A word is near if it has few insertions, deletions,
/// replacements and exchanges of neighbours (at most one for each three letters), or if one of the two is the
/// beginning or the end of the other: "Intnet" is near "intent", "P3" near "DisplayP3", "AdobeRGB1998" near
/// "AdobeRGB". Of several the nearest is returned, the first of equals.
QString nearWord(const QString& word, const QStringList& known);
