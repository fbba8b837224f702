// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "commands/process/Progress.h"
#include "model/inputs/GamutSource.h"

/// The inputs of a command that computes numbers.
struct GamutInputs
{
    struct Input
    {
        QString name;                       ///< as on the command line
        Result<GamutSource> source;         ///< or why it did not open
        Result<KVGamut::GamutObject> gamut; ///< or why there is none

        bool isSaved() const { return source && source->isSaved(); }
    };
    QList<Input> all; ///< in the order of the command line

    /// Opens @p names and computes their gamuts.
    static GamutInputs compute(const QStringList& names, const KVGamut::Settings& settings,
                               Progress& progress);

    /// Those that have a gamut.
    QList<Input> usable() const;
    /// Prints which inputs have no gamut, and why. @return whether all have one
    bool sayProblems() const;
};
