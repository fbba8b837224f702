// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"
#include "GamutInputs.h"

#include <QtCore/QStringList>

/// `kvgamut export`: a gamut's surface in a file of another program, or saved to be loaded again.
class ExportCommand : public Command
{
public:
    explicit ExportCommand(CLI::App& program);

    int run(Arguments arguments) override;

private:
    QByteArray fileOf(const GamutInputs::Input& input) const;

    QStringList m_names; ///< one
    GamutSettings m_settings;
    QString m_format; ///< a suffix; when all options were read
    QString m_output;
    bool m_quiet = false;
};
