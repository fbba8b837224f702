// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <span>
#include <vector>

/// Questions about many colours and one gamut, answered on all cores. Colours are Lab (D50); the results are
/// in their order. A cancellation through the task, which may be null, ends them early: the result then has
/// no meaning.
namespace PointQueries {

/// A difference of two colours.
enum class Metric
{
    De76, ///< CIE 1976, the distance in Lab
    De00, ///< CIEDE2000
};

/// For each colour 1 if it is inside the gamut, else 0, see KVGamut::GamutObject::isInside().
std::vector<unsigned char> inside(const KVGamut::GamutObject& gamut, std::span<const KVGamut::LabPoint> lab,
                                  const KVCompletionProtocolPtr& task = {});

/// The nearest point of the surface and the distance from it, see KVGamut::GamutObject::nearest() and
/// nearestByCiede2000().
std::vector<KVGamut::Nearest> nearest(const KVGamut::GamutObject& gamut,
                                      std::span<const KVGamut::LabPoint> lab, Metric metric,
                                      const KVCompletionProtocolPtr& task = {});

} // namespace PointQueries
