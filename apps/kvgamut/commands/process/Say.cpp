// SPDX-License-Identifier: Apache-2.0
#include "Say.h"

#include "model/problems/ProblemText.h"
#include "model/text/SafeText.h"

#include <QtCore/QLoggingCategory>

#include <cstdio>

namespace {
constexpr qsizetype maxMessage = 4 * SafeText::maxPathLength;
}

void say(const QString& message)
{
    // file names, and arguments that the parser repeats, may contain anything
    const QByteArray line = SafeText::shown(message.simplified(), maxMessage).toUtf8();
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
                                                        "kv.viewer.warning=false\n"
                                                        "qt.gui.imageio*.warning=false\n" // damaged pictures
                                                        "qt.gui.icc.warning=false\n"
                                                        "default.warning=false"));
}
