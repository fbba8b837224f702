// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/// Writes @p bytes to the file @p name, completely or not at all: on failure an existing file keeps its
/// content. "-" is standard output.
/// @return CannotWrite, about the file, if that fails
[[nodiscard]] std::optional<Problem> writeOutput(const QString& name, const QByteArray& bytes);

/// OutputIsInput, about the input, if @p output is the same regular file as one of @p inputs, by whatever
/// names; else nullopt.
[[nodiscard]] std::optional<Problem> overwritesInput(const QString& output, const QStringList& inputs);
