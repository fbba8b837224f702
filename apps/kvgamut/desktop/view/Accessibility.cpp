// SPDX-License-Identifier: Apache-2.0
#include "Accessibility.h"

#include <QtCore/QObject>
#include <QtCore/QVariant>
#include <QtWidgets/QAccessibleWidget>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>

namespace {

constexpr const char* property = "kvgamutAccessibleRole";

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object)
{
    auto* widget = qobject_cast<QWidget*>(object);
    const QVariant role = widget ? widget->property(property) : QVariant();
    return role.isValid() ? new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()))
                          : nullptr;
}

} // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role)
{
    QAccessible::installFactory(makeInterface); // once, however often it is called
    widget.setProperty(property, static_cast<int>(role));
}

void setUnseenLabel(QComboBox& box, const QString& words)
{
    auto* label = new QLabel(words, box.parentWidget());
    label->setBuddy(&box);
    label->hide();
}
