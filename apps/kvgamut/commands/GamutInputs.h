// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "commands/process/Progress.h"
#include "model/inputs/GamutSource.h"

/// The inputs of a command that prints numbers.
struct GamutInputs
{
    struct Input
    {
        QString name;                       ///< as on the command line
        Result<GamutSource> source;         ///< or why it could not be opened
        Result<KVGamut::GamutObject> gamut; ///< or why it could not be computed

        bool isSaved() const { return source && source->isSaved(); }
    };
    QList<Input> all; ///< in the order of the command line

    /// Opens @p names and computes their gamuts.
    /// @param reading of files of colours among them
    static GamutInputs compute(const QStringList& names, const KVGamut::Settings& settings,
                               const PointOptions& reading, Progress& progress,
                               KVGamut::Construction construction = KVGamut::Construction::Accurate);

    /// The inputs that have a gamut.
    QList<Input> usable() const;
    /// A line for each of @p inputs that is neither a profile, a chart nor a saved gamut: what it is.
    static QStringList kindLines(const QList<Input>& inputs);
    /// Prints which inputs have no gamut, and why. @return whether all have one
    bool sayProblems() const;
};
