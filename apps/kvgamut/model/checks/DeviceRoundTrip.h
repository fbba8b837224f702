// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <memory>
#include <vector>

/// What the profile of a device makes of a colour: from Lab (D50) to device values with an intent, and back
/// to the colour that they give, colorimetrically.
class DeviceRoundTrip
{
public:
    /// @param profile may be null
    /// @return null without a profile, and if the profile has no tables for both ways. Tables of processing
    /// elements
    ///         (multiProcessElement) count as none: they can be made so that one colour takes minutes.
    static std::shared_ptr<const DeviceRoundTrip> create(const KVProfilePtr& profile, KVVMRenderType intent);

    struct Made
    {
        std::vector<double> device; ///< in percent, 0..100
        KVGamut::LabPoint lab;
    };
    // The functions are not to be called on two threads at a time.

    Made made(const KVGamut::LabPoint& lab) const;
    /// The device values of made() without the colour that they give, which takes half the time.
    std::vector<double> device(const KVGamut::LabPoint& lab) const;
    /// Device values whose colour is as near to @p lab (dE76) as can be found from @p start on: the inverse
    /// of the profile's way to Lab, without its table from Lab. Of four and more inks only the first three
    /// change, so that black stays as the profile wants it. Levenberg's method.
    Made inverted(const KVGamut::LabPoint& lab, const Made& start) const;

private:
    KVGamut::LabPoint labOf(const std::vector<double>& percent) const;

    struct Private;
    std::shared_ptr<const Private> d;
};
