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
        QString name; ///< name of the point, or title of the gamut
        QVector3D lab;
        QString text; ///< lines: name, Lab, LCh, distances to the gamuts' surfaces
    };

    Inspector(const GamutListModel& gamuts, const PointLayer& points) : m_gamuts(gamuts), m_points(points) {}

    /// nullopt if @p hit is neither on a gamut of the list nor a point of the layer.
    std::optional<Finding> describe(const KVHit& hit) const;

private:
    QString nameOf(const KVHit& hit) const;
    QString textOf(const KVHit& hit, const QString& name) const;

    const GamutListModel& m_gamuts;
    const PointLayer& m_points;
};
