// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/charts/ChartFacts.h"
#include "model/inputs/GamutSource.h"

#include <platform/KVVelmoraFramework.h>

#include <pybind11/pybind11.h>

#include <memory>
#include <optional>
#include <vector>

/// A computed gamut, with what is known about its input. Never changes, so that several threads may use it.
struct GamutValue
{
    KVGamut::GamutObject gamut;
    QString name;        ///< of the input
    QString kind;        ///< of the input, as in reports
    QString description; ///< of the profile; may be empty
    QString hash;        ///< SHA-256 of the file; may be empty
    QStringList notes;   ///< about the input and its conversion
    std::optional<ChartFacts> chart;
    std::vector<double> vertices; ///< L*, a*, b* of each vertex of the mesh

    /// @p other is moved from.
    GamutValue(KVGamut::GamutObject&& other, const QString& itsName, const QString& itsKind);
    GamutValue(const GamutSource& source, KVGamut::GamutObject&& other);

    /// The content of a .kvgamut file.
    QByteArray saved() const;
};
using GamutPtr = std::shared_ptr<GamutValue>;

/// Facts about @p value as a dict of plain values.
pybind11::dict reportOf(const GamutValue& value);

/// Adds the class Gamut and what it can be asked.
void addGamutTo(pybind11::module_& module);
/// Adds the functions that make a Gamut.
void addOpeningTo(pybind11::module_& module);
/// Adds files and pages of gamuts.
void addFilesTo(pybind11::module_& module);
