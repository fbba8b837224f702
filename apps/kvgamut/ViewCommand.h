#pragma once

#include "Command.h"
#include "LookOptions.h"
#include "ProfileOptions.h"

/// `kvgamut view`: gamuts in a window, to be turned and zoomed.
class ViewCommand : public Command
{
public:
    explicit ViewCommand(CLI::App& program);

    int run(Arguments arguments) override;

private:
    ProfileOptions m_profiles;
    LookOptions m_look;
};
