// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutListModel.h"
#include "desktop/models/PointLayer.h"
#include "model/checks/DeviceRoundTrip.h"

#include <KVGamutView.h>

#include <QtCore/QCoreApplication>

#include <functional>
#include <memory>
#include <optional>

/// Describes a colour that was chosen: a point of the point layer, or a place on the surface of a gamut.
class Inspector
{
    Q_DECLARE_TR_FUNCTIONS(Inspector)
public:
    struct Finding
    {
        QString name; ///< name of the point, or title of the gamut
        QVector3D lab;
        /// Lines: name, Lab, LCh, hexadecimal sRGB, differences to the gamuts, device values of the active
        /// one.
        QString text;
    };
    /// Gives the profile of the gamut with an id; null for a gamut without one.
    using ProfileOf = std::function<KVProfilePtr(const QString& id)>;

    /// @param profileOf for device values; without it there are none
    Inspector(const GamutListModel& gamuts, const PointLayer& points, ProfileOf profileOf = {})
        : m_gamuts(gamuts), m_points(points), m_profileOf(std::move(profileOf))
    {
    }

    /// nullopt if @p hit is neither on a gamut of the list nor a point of the layer.
    std::optional<Finding> describe(const KVHit& hit) const;
    /// @param place of a point of the layer
    Finding describe(const PointLayer::Place& place) const;
    /// Any colour, by its L*, a*, b*.
    Finding describe(const QVector3D& lab) const;

private:
    QString nameOf(const KVHit& hit) const;
    QStringList linesOf(const QVector3D& lab, const QString& except) const;
    QStringList differences(const QVector3D& lab, const GamutEntry& entry) const;
    QString deviceValues(const QVector3D& lab) const;

    const GamutListModel& m_gamuts;
    const PointLayer& m_points;
    const ProfileOf m_profileOf;
    mutable quint64 m_deviceOf = 0; ///< revision of the gamut
    mutable std::shared_ptr<const DeviceRoundTrip> m_device;
};
