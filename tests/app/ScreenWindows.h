#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>

/// The windows of other programs on the X display of the test.
namespace kvtest {

/// Where on the screen the first visible window is whose title matches the regular expression @p title,
/// windows inside windows included; empty while there is none.
QRect placeOnScreen(const QString& title);

} // namespace kvtest
