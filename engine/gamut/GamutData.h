// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/LchIndex.h>
#include <engine/mesh/NearestIndex.h>
#include <engine/mesh/WindingIndex.h>
#include <engine/surface/GamutRecord.h>

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QSharedData>

#include <mutex>

/// The shared data of a gamut and its copies.
///
/// Immutable, except for the caches, which are each built once by the first call. Reentrant and thread-safe:
/// copies of a gamut may be used on different threads.
class KVGamut::GamutData : public QSharedData
{
public:
    /// If @p task is cancelled, this object is to be destroyed.
    explicit GamutData(velmora::GamutRecord record, const velmora::Task& task = {});
    Q_DISABLE_COPY_MOVE(GamutData)

    const velmora::GamutRecord record;
    const double surfaceVolume; ///< enclosed by the mesh, dE76 cubed

    const QList<QList<KVHull::Node>>& faces() const; ///< as GamutObject::faces()
    /// As GamutObject::outline(). If @p task is cancelled, this object is to be destroyed.
    const QList<QList<KVHull::Node>>& outline(const velmora::Task& task = {}) const;
    const velmora::WindingIndex& index() const;        ///< for isInside()
    const velmora::NearestIndex& nearestIndex() const; ///< for nearest()
    const velmora::LchIndex& lchIndex() const;         ///< for nearestByCiede2000() and nearestAtHue()

private:
    mutable std::once_flag m_facesOnce;
    mutable QList<QList<KVHull::Node>> m_faces;
    mutable std::once_flag m_outlineOnce;
    mutable QList<QList<KVHull::Node>> m_outline;
    mutable std::once_flag m_indexOnce;
    mutable velmora::WindingIndex m_index;
    mutable std::once_flag m_nearestOnce;
    mutable velmora::NearestIndex m_nearest;
    mutable std::once_flag m_lchOnce;
    mutable velmora::LchIndex m_lch;
};
