// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/export/OutputFile.h"
#include "model/reports/Table.h"

#include <CLI/CLI.hpp>

#include <string>

/// Options of the commands that print numbers: --format, --output, --jobs.
struct ReportOptions
{
    Table::Format format = Table::Format::Text;
    QString output = QStringLiteral("-");

    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);

    /// Ends the help of @p parser with @p text and the exit codes of these commands.
    static void endHelp(CLI::App& parser, const std::string& text);

    /// Prints @p table, or why that fails.
    /// @param allInputsUsed whether all inputs of the command could be used
    /// @return the ExitCode of the command
    int print(const Table& table, bool allInputsUsed) const;

    /// print() in steps, for rows that are printed as they come: first each table, then the end.
    /// @return false if nothing more can be written
    bool printPart(const Table& table, OutputStream& file) const;
    int finish(OutputStream& file, bool allInputsUsed) const;
};
