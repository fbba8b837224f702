// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QAccessible>

class QComboBox;
class QWidget;

/// Says what a widget of our own is for screen readers, which skip widgets without a role. To be called in
/// its constructor, before its accessible name is set.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

/// Labels a combo box that has no visible label. On Linux its accessible name is not read, because the chosen
/// entry takes its place. To be called when it is in its layout.
void setUnseenLabel(QComboBox& box, const QString& words);
