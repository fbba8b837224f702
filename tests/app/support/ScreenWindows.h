// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>

/// The windows of other programs on the X display of the test. Titles are regular expressions; the
/// first visible window whose title matches is used, child windows included.
namespace kvtest {

/// The rectangle of the window on the screen; empty if there is no such window.
QRect placeOnScreen(const QString& title);

/// Whether the window or one of its child windows has the keyboard focus.
bool hasKeyboard(const QString& title);

/// Asks the window manager to close the window, as its close button does.
void askToClose(const QString& title);

} // namespace kvtest
