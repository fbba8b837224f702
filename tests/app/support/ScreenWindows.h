// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>

/// The windows of other programs on the X display of the test. Titles are regular expressions; what is
/// meant is the first visible window whose title matches, windows inside windows included.
namespace kvtest {

/// Where on the screen the window is; empty while there is none.
QRect placeOnScreen(const QString& title);

/// Whether the keys go to the window, or to one inside it.
bool hasKeyboard(const QString& title);

/// Asks the window manager to close the window, as its close button does.
void askToClose(const QString& title);

} // namespace kvtest
