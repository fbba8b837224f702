// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceRoundTrip.h"
#include "model/points/MeasuredPoint.h"

#include <platform/KVVelmoraFramework.h>

#include <functional>
#include <memory>
#include <vector>

/// Whether a device can make a colour, and what it makes instead.
struct ColorCheck
{
    Side zone = Side::Outside;      ///< on the edge: at most the tolerance (CIEDE2000) outside
    double de76 = 0.0;              ///< to the nearest colour of the gamut; 0 inside
    double de00 = 0.0;              ///< to the colour of the gamut with the smallest CIEDE2000; 0 inside
    KVGamut::LabPoint nearest;      ///< that colour; the colour itself inside
    KVGamut::LabPoint nearestAtHue; ///< the nearest colour with the same hue angle; NaN if there is none
    double de00AtHue = 0.0;         ///< to it
    std::vector<double> device;     ///< what the profile makes of the colour, in percent; empty if it cannot
    KVGamut::LabPoint made;         ///< the colour of these device values, by the profile; NaN without
    double madeDe00 = 0.0;          ///< to it
    std::vector<double>
        inverted;              ///< device values by inversion of the profile's way to Lab; empty if it cannot
    double invertedDe00 = 0.0; ///< to the colour that they give
};

/// Checks colours with a profile and its gamut. Colours are Lab (D50).
class ColorChecker
{
public:
    /// @param profile null for a gamut without one: then there are no device values
    ColorChecker(const KVGamut::GamutObject& gamut, const KVProfilePtr& profile);

    /// @param tolerance CIEDE2000
    ColorCheck check(const KVGamut::LabPoint& lab, double tolerance) const;
    /// The same for many colours, on all cores.
    /// @param progress called a few times each second with the share that is done, 0..1
    std::vector<ColorCheck> checkAll(const std::vector<KVGamut::LabPoint>& colors, double tolerance,
                                     const std::function<void(float)>& progress = {}) const;

private:
    ColorCheck againstGamut(const KVGamut::LabPoint& lab, double tolerance) const;
    void addDevice(ColorCheck& check, const KVGamut::LabPoint& lab) const;

    const KVGamut::GamutObject m_gamut;
    const std::shared_ptr<const DeviceRoundTrip> m_device; ///< may be null
};
