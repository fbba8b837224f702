// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"
#include "commands/options/LookOptions.h"
#include "commands/options/ProfileOptions.h"

class MainWindow;

/// `kvgamut view`: shows gamuts in a window.
class ViewCommand : public Command
{
public:
    explicit ViewCommand(CLI::App& program);

    bool hasWindow() const override { return true; }
    bool drawsInOpenGL() const override { return true; }
    int run(Arguments arguments) override;

private:
    void show(MainWindow& window) const;
    void recall(MainWindow& window);

    ProfileOptions m_profiles;
    LookOptions m_look;
    QString m_session;
    bool m_stay = false;
    bool m_withoutSettings = false;
};
