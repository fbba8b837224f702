#pragma once

#include "Command.h"
#include "ItemOptions.h"
#include "LookOptions.h"
#include "ProfileOptions.h"

#include <QtGui/QImage>

/// `kvgamut render`: gamuts as a picture in a file. Needs no display.
class RenderCommand : public Command
{
public:
    explicit RenderCommand(CLI::App& program);

    int run(Arguments arguments) override;

private:
    int draw();
    QImage pictureOf(KVGamut3DViewer& viewer) const;

    ProfileOptions m_profiles;
    LookOptions m_look;
    ItemOptions m_items;
    QString m_output;
};
