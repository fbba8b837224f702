// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LabGeometry.h"

namespace velmora {

/// The colour difference CIEDE2000 as a vector: its length is the difference. It consists of the differences
/// of lightness, chroma and hue in units of their weights; the term that couples chroma and hue is removed by
/// a linear change of the two. It has bends at neutral colours and a step where the hues are opposite;
/// elsewhere it is smooth.
[[nodiscard]] Vec3 ciede2000Residual(Vec3 p, Vec3 q);

/// All colours with values in these ranges.
struct LchRange
{
    double lowL = 0.0;
    double highL = 0.0;
    double lowC = 0.0;
    double highC = 0.0;
    double hue = 0.0;       ///< middle of the hue angles, in radians
    double halfWidth = 4.0; ///< of the hue angles; every hue from pi on

    [[nodiscard]] bool hasEveryHue() const;
    [[nodiscard]] bool containsHue(double angle) const; ///< rounding may make the range a little wider
};

/// Bounds of CIEDE2000 from one colour.
class Ciede2000Bound
{
public:
    explicit Ciede2000Bound(Vec3 colour);

    /// No colour of @p range differs less. The bound is exact in the limit of small ranges.
    [[nodiscard]] double operator()(const LchRange& range) const;
    /// Whether hues of @p range are opposite to that of the colour: there the difference has a step.
    [[nodiscard]] bool hasStep(const LchRange& range) const;

private:
    struct Interval
    {
        double low = 0.0;
        double high = 0.0;
    };
    struct Hues
    {
        Interval difference; // of the hue angles, as seen from the colour; -pi to pi
        double middle = 0.0; // of the mean hue angles
        double halfWidth = 0.0;
    };
    struct Chromas
    {
        Interval stretch; // the factor of a*
        Interval difference;
        Interval own;
        Interval other;
    };

    [[nodiscard]] double lightnessPart(const LchRange& range) const;
    [[nodiscard]] Chromas chromasOf(const LchRange& range) const;
    [[nodiscard]] Interval hueDifferences(const LchRange& range, Interval stretch) const;
    [[nodiscard]] Hues huesOf(Interval difference, Interval stretch) const;
    [[nodiscard]] static double squaredHuePart(const Chromas& chromas, const Hues& hues);

    Vec3 m_colour;
    double m_chroma;
};

} // namespace velmora
