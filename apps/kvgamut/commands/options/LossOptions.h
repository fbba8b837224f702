// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/pictures/LossMap.h"

#include <QtCore/QString>

#include <CLI/CLI.hpp>

#include <optional>

/// Surfaces and points coloured by the distance by which they lie outside a gamut.
struct LossOptions
{
    QString other; ///< profile or saved gamut; empty: the surfaces have their own colours
    ColourMetric metric = ColourMetric::Ciede2000;
    float threshold = 1.0f;
    std::optional<float> largest; ///< nullopt: as large as the distances need

    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);
    /// Throws a CLI::ParseError if options contradict each other, or have no effect. Call it after all
    /// options are parsed.
    /// @param hasPoints points are coloured, too
    void check(const CLI::App& parser, bool hasPoints) const;

    /// The scale of these distances.
    LossScale scaleOf(const std::vector<float>& distances) const;
};
