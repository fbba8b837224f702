// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"
#include "commands/options/PointColourOptions.h"
#include "commands/options/ReportOptions.h"

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QStringList>

/// `kvgamut compare`: volumes, intersection, union and coverage of pairs of gamuts.
class CompareCommand : public Command
{
public:
    explicit CompareCommand(CLI::App& program);

    Files files() const override { return {m_names + m_colours.files(), m_report.output}; }
    int run(Arguments arguments) override;

private:
    QStringList m_names;
    KVGamut::Settings m_settings;
    PointColourOptions m_colours; ///< of files of colours among the inputs
    ReportOptions m_report;
    bool m_pairs = false;  ///< all pairs, not only those with the first
    bool m_matrix = false; ///< the coverages of all pairs as a matrix
};
