// SPDX-License-Identifier: Apache-2.0
#include "ToolBar.h"

#include "desktop/panels/MenuCommands.h"

#include <QtWidgets/QMenuBar>

#include <algorithm>
#include <array>

namespace {

struct Tool
{
    const char* action; ///< its object name
    const char* text;
};

/// One without a name is a separator.
constexpr std::array tools{
    Tool{"open", QT_TRANSLATE_NOOP("ToolBar", "Open")},
    Tool{"", ""},
    Tool{"frame", QT_TRANSLATE_NOOP("ToolBar", "Frame")},
    Tool{"annotate", QT_TRANSLATE_NOOP("ToolBar", "Legend")},
    Tool{"solo", QT_TRANSLATE_NOOP("ToolBar", "Only active")},
    Tool{"", ""},
    Tool{"cut", QT_TRANSLATE_NOOP("ToolBar", "Cut")},
    Tool{"showSection", QT_TRANSLATE_NOOP("ToolBar", "Section")},
    Tool{"cursor", QT_TRANSLATE_NOOP("ToolBar", "Cursor")},
    Tool{"", ""},
    Tool{"present", QT_TRANSLATE_NOOP("ToolBar", "Present")},
    Tool{"findCommand", QT_TRANSLATE_NOOP("ToolBar", "Find…")},
};

} // namespace

ToolBar::ToolBar(const QMenuBar& menuBar, QWidget* parent) : QToolBar(tr("Tools"), parent)
{
    setObjectName(QStringLiteral("tools"));
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    const QList<MenuCommand> commands = MenuCommands::of(menuBar);
    for (const Tool& tool : tools) {
        if (!*tool.action) {
            addSeparator();
            continue;
        }
        const auto found =
            std::find_if(commands.begin(), commands.end(), [&tool](const MenuCommand& command) {
                return command.action->objectName() == QLatin1String(tool.action);
            });
        if (found == commands.end())
            continue;
        found->action->setIconText(tr(tool.text)); // tools show this text
        addAction(found->action);
    }
}
