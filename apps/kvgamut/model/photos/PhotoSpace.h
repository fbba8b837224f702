// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PhotoFile.h"

#include <platform/KVVelmoraFramework.h>

#include <memory>
#include <span>

/// The conversion of a photo's device values to Lab (D50), by its ICC profile.
class PhotoSpace
{
public:
    /// The profile in the bytes @p icc, opened and checked by the engine: Little CMS alone would open a small
    /// profile whose conversion takes hours. Fails unless it is for the kind of colour @p space; for grey an
    /// RGB profile does, too, whose three values are then equal.
    /// @param absolute with the absolute colorimetric intent, otherwise with the relative colorimetric one
    static Result<PhotoSpace> open(const QByteArray& icc, PhotoFacts::Space space, bool absolute);

    int channels() const;
    /// @param device values 0..1, channels() for each colour
    /// @param lab as many colours; NaN where the profile gives NaN or values far out of range
    void convert(std::span<const double> device, std::span<KVGamut::LabPoint> lab) const;

private:
    struct Private;
    std::shared_ptr<const Private> d;
};
