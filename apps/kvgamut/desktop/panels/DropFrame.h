// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtWidgets/QWidget>

/// A frame around a widget that would take the files that are being dragged, in the colour of selections. It
/// lies on top of the widget, also where that contains a window of its own.
class DropFrame : public QObject
{
    Q_OBJECT
public:
    static constexpr int thickness = 5; ///< pixels

    /// @param target owns the frame
    explicit DropFrame(QWidget& target);

    void setShown(bool shown);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();

    QWidget& m_target;
    QList<QWidget*> m_sides; ///< top, bottom, left, right
};
