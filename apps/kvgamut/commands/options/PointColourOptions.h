// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/points/PointSet.h"

#include <CLI/CLI.hpp>

#include <QtCore/QStringList>

#include <optional>

/// How the colours in files are read that do not say it themselves: --points-space, --points-intent,
/// --points-white and --points-white-y.
struct PointColourOptions
{
    PointOptions reading;

    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);

    /// The colours of @p file. Prints the notes about them; prints why if the file cannot be read, and then
    /// returns nullopt.
    /// @param picturesToo otherwise a picture cannot be read
    std::optional<PointSet> read(const QString& file, bool picturesToo = true) const;

    /// The file of the colour space; empty for a built-in one.
    QStringList files() const;
};
