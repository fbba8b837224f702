// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"
#include "GamutInputs.h"
#include "commands/options/BodyOptions.h"
#include "commands/options/PointColourOptions.h"

#include <QtCore/QStringList>

/// `kvgamut export`: writes a gamut's surface in a mesh format, saves it to load it again, or writes a page
/// that shows one or several gamuts.
class ExportCommand : public Command
{
public:
    explicit ExportCommand(CLI::App& program);

    Files files() const override { return {m_names + m_colours.files(), m_output}; }
    int run(Arguments arguments) override;

private:
    QByteArray fileOf(const GamutInputs::Input& input) const;
    QByteArray fileOf(const GamutInputs::Input& input, const KVGamut::GamutObject& gamut,
                      const QString& part) const;
    int writeBody(const QList<GamutInputs::Input>& inputs, Progress& progress) const;
    bool isPage() const;
    void checkFormat();
    int write(const QByteArray& bytes, int exitCode) const;

    QStringList m_names; ///< exactly one input, unless a page or a body is written
    KVGamut::Settings m_settings;
    PointColourOptions m_colours; ///< of files of colours among the inputs
    QString m_format;             ///< a file name suffix; set after parsing
    QString m_output;
    BodyOptions m_part;
};
