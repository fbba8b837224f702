// SPDX-License-Identifier: Apache-2.0
#include "GamutTitles.h"

#include "SafeText.h"

#include <QtCore/QFileInfo>

namespace {

QString folderName(const QString& input)
{
    return SafeText::shown(QFileInfo(QFileInfo(input).path()).fileName());
}

/// Numbers titles that are not unique: the second "x" is "x (2)".
QStringList numbered(const QStringList& titles)
{
    QStringList result;
    for (const QString& title : titles) {
        QString candidate = title;
        for (int number = 2; result.contains(candidate); ++number)
            candidate = QStringLiteral("%1 (%2)").arg(title).arg(number);
        result.append(candidate);
    }
    return result;
}

} // namespace

QStringList gamutTitles(const QStringList& inputs)
{
    QStringList names;
    for (const QString& input : inputs)
        names.append(SafeText::shown(QFileInfo(input).fileName()));

    QStringList titles;
    for (qsizetype i = 0; i < inputs.size(); ++i) {
        bool shared = false;
        for (qsizetype other = 0; other < inputs.size(); ++other)
            shared = shared || (names[other] == names[i] && inputs[other] != inputs[i]);
        const QString folder = folderName(inputs[i]);
        titles.append(shared && !folder.isEmpty() ? QStringLiteral("%1 - %2").arg(names[i], folder)
                                                  : names[i]);
    }
    return numbered(titles);
}
