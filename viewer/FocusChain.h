// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QKeyEvent>
#include <QtGui/QWindow>

/// Whether the event is Tab or Shift+Tab.
bool kvIsTab(const QKeyEvent& event);

/// Passes Tab on to the window around @p viewer, whose widgets then continue their focus chain. Does nothing
/// if the viewer has no parent or does not have the focus. The viewer may be destroyed inside the call.
void kvLeaveByTab(QWindow& viewer, const QKeyEvent& event);
