// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/NearestIndex.h>
#include <engine/mesh/WindingIndex.h>
#include <engine/surface/GamutRecord.h>

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QSharedData>

#include <mutex>

/// The shared body of a gamut. Immutable but for what is built at the first request, once, whichever
/// of the copies' threads asks.
class KVGamut::GamutData : public QSharedData
{
public:
    explicit GamutData(velmora::GamutRecord record);
    Q_DISABLE_COPY_MOVE(GamutData)

    const velmora::GamutRecord record;
    const double volume;

    const QList<QList<KVHull::Node>>& faces() const;
    const QList<QList<KVHull::Node>>& outline() const;
    const velmora::WindingIndex& index() const;
    const velmora::NearestIndex& nearestIndex() const;

private:
    mutable std::once_flag m_facesOnce;
    mutable QList<QList<KVHull::Node>> m_faces;
    mutable std::once_flag m_outlineOnce;
    mutable QList<QList<KVHull::Node>> m_outline;
    mutable std::once_flag m_indexOnce;
    mutable velmora::WindingIndex m_index;
    mutable std::once_flag m_nearestOnce;
    mutable velmora::NearestIndex m_nearest;
};
