// SPDX-License-Identifier: Apache-2.0
#include "Say.h"

#include "model/problems/ProblemText.h"

#include <QtCore/QLoggingCategory>

#include <cstdio>

void say(const QString& message)
{
    const QByteArray line = message.simplified().toUtf8();
    std::fprintf(stderr, "kvgamut: %s\n", line.constData());
}

void say(const Problem& problem)
{
    say(ProblemText::english(problem));
}

void silenceLibraries(bool verbose)
{
    if (!verbose)
        QLoggingCategory::setFilterRules(QStringLiteral("kv.core.debug=false\n"
                                                        "default.warning=false"));
}
