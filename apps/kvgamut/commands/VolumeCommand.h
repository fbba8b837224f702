// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"
#include "commands/options/PointColourOptions.h"
#include "commands/options/ReportOptions.h"

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QStringList>

/// `kvgamut volume`: the volumes of gamuts.
class VolumeCommand : public Command
{
public:
    explicit VolumeCommand(CLI::App& program);

    Files files() const override { return {m_names + m_colours.files(), m_report.output}; }
    int run(Arguments arguments) override;

private:
    QStringList m_names;
    KVGamut::Settings m_settings;
    PointColourOptions m_colours; ///< of files of colours among the inputs
    KVGamut::Construction m_construction = KVGamut::Construction::Accurate;
    ReportOptions m_report;
};
