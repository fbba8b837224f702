// SPDX-License-Identifier: Apache-2.0
#include "Say.h"

#include <QtCore/QLoggingCategory>

#include <cstdio>

void say(const QString& problem)
{
    const QByteArray line = problem.simplified().toUtf8();
    std::fprintf(stderr, "kvgamut: %s\n", line.constData());
}

void silenceLibraries(bool verbose)
{
    if (!verbose)
        QLoggingCategory::setFilterRules(QStringLiteral("kv.core.debug=false\n"
                                                        "default.warning=false"));
}
