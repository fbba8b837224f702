// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/PointLayer.h"

#include <QtWidgets/QWidget>

class QTreeView;

/// The files of points, their shares inside and outside the active gamut, and the tolerance of the edge.
class PointPanel : public QWidget
{
    Q_OBJECT
public:
    explicit PointPanel(PointLayer& points, QWidget* parent = nullptr);

    /// Updates the field after the layer's tolerance was changed from outside.
    void showTolerance();

Q_SIGNALS:
    void openRequested();
    void maskRequested(int row); ///< of a photo

private:
    void makeActions();

    PointLayer& m_points;
    QTreeView* m_list;
    class QDoubleSpinBox* m_tolerance;
};
