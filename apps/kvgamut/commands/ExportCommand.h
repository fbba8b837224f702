// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"
#include "GamutInputs.h"

#include <QtCore/QStringList>

/// `kvgamut export`: writes a gamut's surface in a mesh format, or saves it to load it again.
class ExportCommand : public Command
{
public:
    explicit ExportCommand(CLI::App& program);

    Files files() const override { return {m_names, m_output}; }
    int run(Arguments arguments) override;

private:
    QByteArray fileOf(const GamutInputs::Input& input) const;

    QStringList m_names; ///< exactly one input
    KVGamut::Settings m_settings;
    QString m_format; ///< a file name suffix; set after parsing
    QString m_output;
    bool m_quiet = false;
};
