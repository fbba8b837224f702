// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "commands/process/Progress.h"
#include "model/inputs/GamutSource.h"

/// The inputs of a command that computes numbers.
struct GamutInputs
{
    struct Input
    {
        GamutSource source;
        KVGamut::GamutObject gamut; ///< empty where there is none

        bool hasGamut() const { return gamut.faceCount() > 0; }
        /// Why there is none, naming the input; one line.
        QString problem() const;
    };
    QList<Input> all; ///< in the order of the command line

    /// Opens @p names and computes their gamuts.
    static GamutInputs compute(const QStringList& names, const GamutSettings& settings, Progress& progress);

    /// Those that have a gamut.
    QList<Input> usable() const;
    /// Says which have no gamut, and why. @return whether all have one
    bool sayProblems() const;
};
