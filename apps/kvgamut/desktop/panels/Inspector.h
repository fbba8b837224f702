// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutListModel.h"
#include "desktop/models/PointLayer.h"
#include "desktop/view/Picker.h"

#include <QtCore/QCoreApplication>

#include <optional>

/// Finds and says what lies under the pointer: a point of the point layer, or the surface of a gamut.
class Inspector
{
    Q_DECLARE_TR_FUNCTIONS(Inspector)
public:
    struct Finding
    {
        QString name; ///< of the point, or the gamut's title
        QVector3D lab;
        QString text; ///< name, Lab and LCh, and how far it is from the gamuts' surfaces, in lines
    };

    Inspector(const GamutListModel& gamuts, const PointLayer& points, KVGamut3DViewer& viewer)
        : m_gamuts(gamuts), m_points(points), m_viewer(viewer)
    {
    }

    /// What @p ray meets first of what is shown; nothing when it meets nothing.
    std::optional<Finding> look(const Picker::Ray& ray) const;

private:
    struct Met
    {
        float distance = 0.0f;
        QVector3D lab;
        QString name;
        int gamut = -1; ///< row of the gamut whose surface it is; -1: a point
    };

    std::optional<Met> surface(const Picker::Ray& ray) const;
    std::optional<Met> point(const Picker::Ray& ray) const;
    QString describe(const Met& met) const;

    const GamutListModel& m_gamuts;
    const PointLayer& m_points;
    KVGamut3DViewer& m_viewer;
};
