// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"
#include "commands/options/ReportOptions.h"
#include "model/inputs/GamutSettings.h"
#include "model/points/MeasuredPoint.h"

#include <optional>

/// `kvgamut inside`: which colours lie in a gamut, and how far from its surface.
class InsideCommand : public Command
{
public:
    explicit InsideCommand(CLI::App& program);

    int run(Arguments arguments) override;

private:
    void takeNumbers(const std::vector<std::string>& words);
    /// The points asked for; says what could not be read, and then turns @p allRead false.
    QList<MeasuredPoint> points(bool& allRead) const;

    QString m_name;
    QList<MeasuredPoint> m_points; ///< of the command line
    QString m_pointFile;
    std::optional<double> m_tolerance; ///< dE76; what is nearer to the surface is on the edge
    GamutSettings m_settings;
    ReportOptions m_report;
};
