// SPDX-License-Identifier: Apache-2.0
#include "GamutInputs.h"

#include "commands/process/Say.h"
#include "model/inputs/GamutBatch.h"

#include <algorithm>
#include <functional>
#include <iterator>

QString GamutInputs::Input::problem() const
{
    if (hasGamut())
        return {};
    return source.isOpen() ? GamutSource::about(source.name(), gamut.reason()) : source.problem();
}

GamutInputs GamutInputs::compute(const QStringList& names, const GamutSettings& settings, Progress& progress)
{
    QList<GamutSource> sources;
    for (const QString& name : names)
        sources.append(GamutSource::open(name));
    const QList<KVGamut::GamutObject> gamuts = GamutBatch::compute(
        sources, settings, [&progress](float share) { progress.show(share, QStringLiteral("gamuts")); });

    GamutInputs inputs;
    for (qsizetype i = 0; i < sources.size(); ++i)
        inputs.all.append({sources[i], gamuts[i]});
    return inputs;
}

QList<GamutInputs::Input> GamutInputs::usable() const
{
    QList<Input> usable;
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(usable), std::mem_fn(&Input::hasGamut));
    return usable;
}

bool GamutInputs::sayProblems() const
{
    bool none = true;
    for (const Input& input : all) {
        if (input.hasGamut())
            continue;
        say(input.problem());
        none = false;
    }
    return none;
}
