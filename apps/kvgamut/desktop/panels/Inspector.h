// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutListModel.h"
#include "desktop/models/PointLayer.h"

#include <KVGamutView.h>

#include <QtCore/QCoreApplication>

#include <optional>

/// Describes what was clicked: a point of the point layer, or the surface of a gamut.
class Inspector
{
    Q_DECLARE_TR_FUNCTIONS(Inspector)
public:
    struct Finding
    {
        QString name; ///< of the point, or the gamut's title
        QVector3D lab;
        QString text; ///< name, Lab, LCh and distances to the gamuts' surfaces, a line each
    };

    Inspector(const GamutListModel& gamuts, const PointLayer& points) : m_gamuts(gamuts), m_points(points) {}

    /// nullopt if @p hit is neither a gamut of the list nor a point of the layer.
    std::optional<Finding> describe(const KVHit& hit) const;

private:
    QString nameOf(const KVHit& hit) const;
    QString textOf(const KVHit& hit, const QString& name) const;

    const GamutListModel& m_gamuts;
    const PointLayer& m_points;
};
