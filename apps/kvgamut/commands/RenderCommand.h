// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"
#include "commands/options/ItemOptions.h"
#include "commands/options/LookOptions.h"
#include "commands/options/PictureReference.h"
#include "commands/options/ProfileOptions.h"
#include "model/problems/Problem.h"

#include <QtGui/QImage>

/// `kvgamut render`: draws gamuts into a PNG file. Needs no display.
class RenderCommand : public Command
{
public:
    explicit RenderCommand(CLI::App& program);

    Files files() const override
    {
        return {m_profiles.profiles + QStringList{m_reference.name()} + m_items.files(), m_output};
    }
    int run(Arguments arguments) override;

private:
    int draw();
    QImage pictureOf(KVGamutView& view) const;
    std::optional<Problem> write(const QImage& picture) const;

    ProfileOptions m_profiles;
    LookOptions m_look;
    ItemOptions m_items;
    PictureReference m_reference;
    bool m_transparent = false;
    QString m_output; ///< empty: only compare the picture
};
