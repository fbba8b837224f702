// SPDX-License-Identifier: Apache-2.0
#include "Say.h"

#include "model/problems/ProblemText.h"
#include "model/text/SafeText.h"

#include <QtCore/QLoggingCategory>

#include <cstdio>

namespace {
constexpr qsizetype maxMessage = 4 * SafeText::maxPathLength;

Speech chosenSpeech = Speech::Usual;

/// Whether the reader of standard output has ended.
bool isReaderGone(const Problem& problem)
{
    return problem.code == Problem::Code(ProblemCode::CannotWrite) &&
           problem.subject == QLatin1String("standard output") && problem.cause &&
           problem.cause->code == Problem::Code(ProblemCode::BrokenPipe);
}
} // namespace

void setSpeech(Speech speech)
{
    chosenSpeech = speech;
}

Speech speech()
{
    return chosenSpeech;
}

void say(const QString& message)
{
    // file names, and arguments that the parser repeats, may contain anything
    const QByteArray line = SafeText::shown(message.simplified(), maxMessage).toUtf8();
    std::fprintf(stderr, "kvgamut: %s\n", line.constData());
}

void say(const Problem& problem)
{
    if (!isReaderGone(problem))
        say(ProblemText::english(problem));
}

void note(const Problem& problem)
{
    if (chosenSpeech != Speech::Quiet)
        say(problem);
}

void tell(const QString& message)
{
    if (chosenSpeech == Speech::Verbose)
        say(message);
}

void silenceLibraries()
{
    if (chosenSpeech != Speech::Verbose)
        QLoggingCategory::setFilterRules(QStringLiteral("kv.core.debug=false\n"
                                                        "kv.viewer.warning=false\n"
                                                        "qt.gui.imageio*.warning=false\n" // damaged pictures
                                                        "qt.gui.icc.warning=false\n"
                                                        "default.warning=false"));
}
