// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "engine/TestProfiles.h"

#include <QtGui/QVector3D>

#include <algorithm>
#include <cmath>

/// Devices whose gamuts are boxes in Lab, so that expected results can be computed by hand: the three
/// channels run along L*, a* and b*.
struct Box
{
    QVector3D low, high; ///< L*, a*, b*

    /// A profile with two nodes per channel, exact except for rounding to 16 bits: steps of 0.002 (L*) and
    /// 0.004.
    QByteArray profile() const { return testprofiles::tableProfile(cmsSigRgbData, 2, map()); }

    /// The first three channels run along L*, a* and b*; further channels have no effect.
    testprofiles::DeviceMap map() const
    {
        const QVector3D from = low, to = high;
        return [from, to](const std::vector<double>& device) {
            testprofiles::Lab lab{};
            for (std::size_t i = 0; i < 3; ++i) {
                const auto axis = static_cast<int>(i);
                lab[i] = double(from[axis]) + device[i] * (double(to[axis]) - double(from[axis]));
            }
            return lab;
        };
    }

    double volume() const
    {
        const QVector3D size = high - low;
        if (size.x() <= 0 || size.y() <= 0 || size.z() <= 0)
            return 0.0;
        return double(size.x()) * double(size.y()) * double(size.z());
    }

    Box common(const Box& other) const
    {
        Box result;
        for (int i = 0; i < 3; ++i) {
            result.low[i] = std::max(low[i], other.low[i]);
            result.high[i] = std::min(high[i], other.high[i]);
        }
        return result;
    }

    bool contains(const QVector3D& p) const
    {
        return low.x() <= p.x() && p.x() <= high.x() && low.y() <= p.y() && p.y() <= high.y() &&
               low.z() <= p.z() && p.z() <= high.z();
    }

    /// The point of the surface that is nearest to @p p.
    QVector3D nearest(const QVector3D& p) const
    {
        QVector3D result;
        for (int i = 0; i < 3; ++i)
            result[i] = std::clamp(p[i], low[i], high[i]);
        if (!contains(p))
            return result;
        float minDistance = INFINITY;
        QVector3D best = p;
        for (int i = 0; i < 3; ++i)
            for (const float wall : {low[i], high[i]})
                if (std::abs(p[i] - wall) < minDistance) {
                    minDistance = std::abs(p[i] - wall);
                    best = p;
                    best[i] = wall;
                }
        return best;
    }
};
