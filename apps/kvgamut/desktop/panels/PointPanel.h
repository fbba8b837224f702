// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/PointLayer.h"

#include <QtWidgets/QWidget>

class QTreeView;

/// The files of points with how they lie to the active gamut, and the tolerance that makes an edge.
class PointPanel : public QWidget
{
    Q_OBJECT
public:
    explicit PointPanel(PointLayer& points, QWidget* parent = nullptr);

    /// After the layer's tolerance was set by somebody else.
    void showTolerance();

Q_SIGNALS:
    void openRequested();

private:
    PointLayer& m_points;
    QTreeView* m_list;
    class QDoubleSpinBox* m_tolerance;
};
