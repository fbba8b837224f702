// SPDX-License-Identifier: Apache-2.0
#include "GamutInputs.h"

#include "commands/process/Say.h"
#include "commands/process/Steps.h"
#include "model/inputs/GamutBatch.h"
#include "model/text/SafeText.h"

#include <algorithm>
#include <iterator>

GamutInputs GamutInputs::compute(const QStringList& names, const KVGamut::Settings& settings,
                                 const PointOptions& reading, Progress& progress,
                                 KVGamut::Construction construction)
{
    QList<Result<GamutSource>> sources;
    for (const QString& name : names) {
        QElapsedTimer clock;
        clock.start();
        sources.append(GamutSource::open(name, {}, reading));
        Steps::read(name, sources.last(), clock);
    }
    const auto gamuts = GamutBatch::compute(
        sources, settings, [&progress](float share) { progress.show(share, QStringLiteral("gamuts")); },
        construction);

    GamutInputs inputs;
    for (qsizetype i = 0; i < sources.size(); ++i)
        inputs.all.append({names[i], sources[i], gamuts[i]});
    progress.clear();
    for (const Input& input : inputs.usable())
        Steps::computed(input.name, input.gamut->report());
    return inputs;
}

QList<GamutInputs::Input> GamutInputs::usable() const
{
    QList<Input> usable;
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(usable),
                 [](const Input& input) { return input.gamut.has_value(); });
    return usable;
}

QStringList GamutInputs::kindLines(const QList<Input>& inputs)
{
    QStringList lines;
    for (const Input& input : inputs)
        if (input.source && !input.source->profile() && !input.source->isSaved())
            lines.append(QStringLiteral("%1: %2.").arg(SafeText::shown(input.name, SafeText::maxPathLength),
                                                       input.source->kind()));
    lines.removeDuplicates();
    return lines;
}

bool GamutInputs::sayProblems() const
{
    for (const Input& input : all)
        if (!input.gamut)
            say(input.gamut.error());
    return std::all_of(all.cbegin(), all.cend(), [](const Input& input) { return input.gamut.has_value(); });
}
