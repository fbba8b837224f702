// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CieLab.h"
#include "IccTables.h"

#include <platform/KVVelmoraFramework.h>

#include <optional>

namespace velmora {

/// Rows of a matrix.
using Matrix3 = std::array<Xyz, 3>;

/// How a profile's colours were adapted from the white under which they were measured to D50.
struct WhiteAdaptation
{
    KVGamut::AdaptationSource source = KVGamut::AdaptationSource::None;
    Matrix3 undo{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}; ///< from D50 to the measured colours
};

/// From the tag "chad"; without it, for a display profile of version 2, from its media white by the linear
/// Bradford transform, which such profiles are made with.
/// @return fails with DamagedTag if the matrix has no inverse
[[nodiscard]] Result<WhiteAdaptation> whiteAdaptation(const IccTags& tags);

/// The tag "wtpt" as Lab relative to D50; nullopt if there is none.
[[nodiscard]] std::optional<KVGamut::LabPoint> mediaWhite(const IccTags& tags);

/// What is done with the Lab values that Little CMS returns.
class LabAdjustment
{
public:
    LabAdjustment() = default;

    /// Sets lightness below 0 to 0 and keeps a* and b*, as conversions with integers do.
    void clipBlack() { m_clipsBlack = true; }
    /// Multiplies the tristimulus values and computes Lab again, relative to @p white.
    void transform(const Matrix3& matrix, const Xyz& white);

    void apply(Vec3* lab, std::size_t count) const;

private:
    bool m_clipsBlack = false;
    std::optional<Matrix3> m_matrix;
    Xyz m_white = d50;
};

/// The adjustment for absolute colours; other intents have none.
/// @return fails as whiteAdaptation()
[[nodiscard]] Result<LabAdjustment> absoluteAdjustment(const IccTags& tags, const ColorTable& table,
                                                       KVGamut::Adaptation adaptation);

} // namespace velmora
