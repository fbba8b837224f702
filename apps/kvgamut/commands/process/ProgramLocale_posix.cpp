// SPDX-License-Identifier: Apache-2.0
#include "ProgramLocale.h"

#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>

#include <clocale>
#include <cstring>
#include <langinfo.h>

namespace {

/// The locale of the user's messages; "C" if the environment names none.
QByteArray messageLocale()
{
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (!qEnvironmentVariableIsEmpty(name))
            return qgetenv(name);
    return QByteArrayLiteral("C");
}

void keepEnglish()
{
    std::setlocale(LC_MESSAGES, "C");
    std::setlocale(LC_NUMERIC, "C");
}
Q_COREAPP_STARTUP_FUNCTION(keepEnglish) // after QCoreApplication has set the environment's locale

} // namespace

void ProgramLocale::useUtf8()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0)
        return;
    const QByteArray locale = messageLocale();
    if (locale == "C" || locale == "POSIX")
        qunsetenv("LANGUAGE");
    else if (qEnvironmentVariableIsEmpty("LANGUAGE"))
        qputenv("LANGUAGE", locale);
    qputenv("LC_ALL", "C.UTF-8");
}
