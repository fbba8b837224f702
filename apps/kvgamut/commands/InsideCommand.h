// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"
#include "commands/options/PointColourOptions.h"
#include "commands/options/ReportOptions.h"
#include "model/points/PointSet.h"
#include "model/text/ListOf.h"

#include <optional>

/// `kvgamut inside`: which colours lie in a gamut, and how far from its surface.
class InsideCommand : public Command
{
public:
    explicit InsideCommand(CLI::App& program);

    Files files() const override
    {
        return {listOf(m_name, m_pointFile) + m_colours.files(), m_report.output};
    }
    int run(Arguments arguments) override;

private:
    void takeNumbers(const std::vector<std::string>& words);
    /// The points to judge. Prints what cannot be read and then sets @p allRead to false.
    PointSet points(bool& allRead) const;

    QString m_name;
    QList<MeasuredPoint> m_points; ///< given on the command line
    QString m_pointFile;
    PointColourOptions m_colours;
    std::optional<double> m_tolerance; ///< dE76; points nearer to the surface are on the edge
    KVGamut::Settings m_settings;
    ReportOptions m_report;
};
