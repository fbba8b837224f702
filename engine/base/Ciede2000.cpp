// SPDX-License-Identifier: Apache-2.0
#include "Ciede2000.h"

#include <numbers>
#include <utility>

namespace velmora {
namespace {

using std::numbers::pi;

constexpr double degree = pi / 180.0;

// The names in the comments are those of G. Sharma, W. Wu, E. N. Dalal, "The CIEDE2000 color-difference
// formula: implementation notes, supplementary test data, and mathematical observations", Color Res. Appl.
// 30(1), 2005.

// C^7 / (C^7 + 25^7), for any chroma without overflow.
double saturation(double chroma)
{
    if (chroma <= 0.0)
        return 0.0;
    const double ratio = 25.0 / chroma;
    const double cubed = ratio * ratio * ratio;
    return 1.0 / (1.0 + cubed * cubed * ratio);
}

// 1 + G
double stretchOf(double meanChroma)
{
    return 1.5 - 0.5 * std::sqrt(saturation(meanChroma));
}

// S_L
double lightnessWeight(double meanL)
{
    const double squared = (meanL - 50.0) * (meanL - 50.0);
    return 1.0 + 0.015 * squared / std::sqrt(20.0 + squared);
}

// S_C
double chromaWeight(double meanChroma)
{
    return 1.0 + 0.045 * meanChroma;
}

// T
double hueFactor(double meanHue)
{
    return 1.0 - 0.17 * std::cos(meanHue - 30.0 * degree) + 0.24 * std::cos(2.0 * meanHue) +
           0.32 * std::cos(3.0 * meanHue + 6.0 * degree) - 0.20 * std::cos(4.0 * meanHue - 63.0 * degree);
}

// -R_T of two colours, from the angle between their mean hue and 275 degrees; 0 to 1.74
double coupling(double meanChroma, double fromBlue)
{
    const double ratio = fromBlue / (25.0 * degree);
    if (std::abs(ratio) > 6.0) // then it is less than 1e-15
        return 0.0;
    return 2.0 * std::sqrt(saturation(meanChroma)) * std::sin(60.0 * degree * std::exp(-ratio * ratio));
}

double angleFromBlue(double hue)
{
    return std::remainder(hue - 275.0 * degree, 2.0 * pi);
}

struct HuePair
{
    double difference; // from the first to the second
    double mean;
};

// Of opposite hues the mean is that of the angles from 0 to 360 degrees. Rounding does not decide which hues
// are opposite.
HuePair huesOf(double a1, double b1, double a2, double b2)
{
    const double across = a1 * b2 - b1 * a2;
    const double along = a1 * a2 + b1 * b2;
    const double first = std::atan2(b1, a1);
    double difference = std::atan2(across, along);
    if (along < 0.0 && std::abs(across) < -1e-13 * along)
        difference = first < 0.0 ? -pi : pi;
    return {difference, first + 0.5 * difference};
}

} // namespace

Vec3 ciede2000Residual(Vec3 p, Vec3 q)
{
    const double stretch = stretchOf(0.5 * (std::hypot(p.a, p.b) + std::hypot(q.a, q.b)));
    const double pa = stretch * p.a, qa = stretch * q.a;
    const double pc = std::sqrt(pa * pa + p.b * p.b), qc = std::sqrt(qa * qa + q.b * q.b);
    const double meanChroma = 0.5 * (pc + qc);
    const double lightness = (q.L - p.L) / lightnessWeight(0.5 * (p.L + q.L));
    const double chroma = (qc - pc) / chromaWeight(meanChroma);
    if (pc == 0.0 || qc == 0.0)
        return {lightness, chroma, 0.0};
    const HuePair hues = huesOf(pa, p.b, qa, q.b);
    const double hue = 2.0 * std::sqrt(pc) * std::sqrt(qc) * std::sin(0.5 * hues.difference) /
                       (1.0 + 0.015 * meanChroma * hueFactor(hues.mean));
    const double half = 0.5 * coupling(meanChroma, angleFromBlue(hues.mean));
    return {lightness, chroma - half * hue, std::sqrt(1.0 - half * half) * hue};
}

bool LchRange::hasEveryHue() const
{
    return halfWidth >= pi;
}

bool LchRange::containsHue(double angle) const
{
    return std::abs(std::remainder(angle - hue, 2.0 * pi)) <= halfWidth + 1e-9;
}

Ciede2000Bound::Ciede2000Bound(Vec3 colour) : m_colour(colour), m_chroma(std::hypot(colour.a, colour.b)) {}

double Ciede2000Bound::lightnessPart(const LchRange& range) const
{
    const double difference = std::max({0.0, range.lowL - m_colour.L, m_colour.L - range.highL});
    const double weight = std::max(lightnessWeight(0.5 * (range.lowL + m_colour.L)),
                                   lightnessWeight(0.5 * (range.highL + m_colour.L)));
    return difference / weight;
}

// The chroma of a unit vector is a concave function of the squared stretch, with a second derivative of at
// least -1/4. So are the ends of the difference, up to the sign: between the two stretches they lie at most
// span^2 / 32 times the chroma beyond the values at these.
Ciede2000Bound::Chromas Ciede2000Bound::chromasOf(const LchRange& range) const
{
    const Interval stretch{stretchOf(0.5 * (m_chroma + range.highC)),
                           stretchOf(0.5 * (m_chroma + range.lowC))};
    Interval cosine{0.0, 1.0}; // squared
    if (range.halfWidth < 0.5 * pi) {
        const double fromA = std::abs(std::remainder(range.hue, pi)); // 0 on the a* axis, pi/2 on the b* axis
        const double nearest = std::max(0.0, fromA - range.halfWidth);
        const double farthest = std::min(0.5 * pi, fromA + range.halfWidth);
        cosine = {std::cos(farthest) * std::cos(farthest), std::cos(nearest) * std::cos(nearest)};
    }
    const auto stretched = [](double chroma, double squaredCosine, double factor) {
        return chroma * std::sqrt(1.0 + (factor * factor - 1.0) * squaredCosine);
    };
    const auto own = [&](double factor) {
        return std::sqrt(factor * factor * m_colour.a * m_colour.a + m_colour.b * m_colour.b);
    };
    const double lowAtLow = stretched(range.lowC, cosine.low, stretch.low);
    const double lowAtHigh = stretched(range.lowC, cosine.low, stretch.high);
    const double highAtLow = stretched(range.highC, cosine.high, stretch.low);
    const double highAtHigh = stretched(range.highC, cosine.high, stretch.high);
    const double span = stretch.high * stretch.high - stretch.low * stretch.low;
    const double bend = std::max(m_chroma, range.highC) * span * span / 32.0;
    const Interval ownChroma{own(stretch.low), own(stretch.high)};
    return {stretch,
            {std::min(lowAtLow - ownChroma.low, lowAtHigh - ownChroma.high) - bend,
             std::max(highAtLow - ownChroma.low, highAtHigh - ownChroma.high) + bend},
            ownChroma,
            {lowAtLow, highAtHigh}};
}

// -2 pi to 2 pi. The hue angle is a monotone function of the unstretched one, and as a function of the
// stretch its second derivative is at most 0.65. So the difference of two lies at most span^2 * 2 * 0.65 / 8
// beyond the values at the two stretches.
Ciede2000Bound::Interval Ciede2000Bound::hueDifferences(const LchRange& range, Interval stretch) const
{
    if (range.halfWidth >= 0.5 * pi || m_chroma == 0.0)
        return {-pi, pi};
    const double low = range.hue - range.halfWidth, high = range.hue + range.halfWidth;
    const double lowA = std::cos(low), lowB = std::sin(low), highA = std::cos(high), highB = std::sin(high);
    const auto between = [](double a1, double b1, double a2, double b2) {
        return std::atan2(a1 * b2 - b1 * a2, a1 * a2 + b1 * b2);
    };
    const auto ends = [&](double factor) -> Interval {
        const double from = between(factor * m_colour.a, m_colour.b, factor * lowA, lowB);
        const double width = between(factor * lowA, lowB, factor * highA, highB);
        return {from, from + (width < 0.0 ? width + 2.0 * pi : width)};
    };
    const Interval p = ends(stretch.low);
    Interval q = ends(stretch.high);
    const double turn = std::round((p.low - q.low) / (2.0 * pi)) * 2.0 * pi;
    q = {q.low + turn, q.high + turn};
    const double span = stretch.high - stretch.low;
    const double bend = 0.17 * span * span + 1e-12;
    return {std::min(p.low, q.low) - bend, std::max(p.high, q.high) + bend};
}

Ciede2000Bound::Hues Ciede2000Bound::huesOf(Interval difference, Interval stretch) const
{
    const double first = std::atan2(m_colour.b, stretch.low * m_colour.a);
    const double last = std::atan2(m_colour.b, stretch.high * m_colour.a);
    return {difference, first + 0.25 * (difference.low + difference.high),
            std::abs(std::remainder(last - first, 2.0 * pi)) + 0.25 * (difference.high - difference.low)};
}

namespace {

struct Couplings
{
    double low;
    double high;
};

// The smallest u^2 + v^2 - coupling * u * v of a rectangle.
double smallestForm(double lowU, double highU, double lowV, double highV, double coupling)
{
    const auto form = [coupling](double u, double v) { return u * u + v * v - coupling * u * v; };
    const auto alongU = [&](double v) { return form(std::clamp(0.5 * coupling * v, lowU, highU), v); };
    const auto alongV = [&](double u) { return form(u, std::clamp(0.5 * coupling * u, lowV, highV)); };
    return std::min({alongU(lowV), alongU(highV), alongV(lowU), alongV(highU)});
}

// The smallest for all couplings: the largest one where u and v have the same sign, else the smallest one.
double smallestForm(double lowU, double highU, double lowV, double highV, Couplings coupling)
{
    if (lowU <= 0.0 && highU >= 0.0 && lowV <= 0.0 && highV >= 0.0)
        return 0.0;
    const bool canAgree = (highU > 0.0 && highV > 0.0) || (lowU < 0.0 && lowV < 0.0);
    const bool canDiffer = (highU > 0.0 && lowV < 0.0) || (lowU < 0.0 && highV > 0.0);
    const double differing = smallestForm(lowU, highU, lowV, highV, coupling.low);
    if (!canAgree)
        return differing;
    const double agreeing = smallestForm(lowU, highU, lowV, highV, coupling.high);
    return canDiffer ? std::min(differing, agreeing) : agreeing;
}

} // namespace

double Ciede2000Bound::squaredHuePart(const Chromas& chromas, const Hues& hues)
{
    const double meanHigh = 0.5 * (chromas.own.high + chromas.other.high);
    constexpr double maxHueFactor = 1.93, maxSlope = 2.41; // sums of the absolute coefficients
    const double factor = std::min(maxHueFactor, hueFactor(hues.middle) + maxSlope * hues.halfWidth);
    const double hueWeight = 1.0 + 0.015 * meanHigh * factor;
    const double weight = chromaWeight(meanHigh);
    const double fromBlue = std::abs(angleFromBlue(hues.middle));
    const double meanLow = 0.5 * (chromas.own.low + chromas.other.low);
    const Couplings coupled{coupling(meanLow, fromBlue + hues.halfWidth),
                            coupling(meanHigh, std::max(0.0, fromBlue - hues.halfWidth))};

    // Divided by the largest weight where this makes it smaller, else by 1, which no weight is below.
    const auto lowest = [](double value, double largest) { return value > 0.0 ? value / largest : value; };
    const double lowU = lowest(chromas.difference.low, weight);
    const double highU = -lowest(-chromas.difference.high, weight);
    const double least = 2.0 * std::sqrt(chromas.own.low * chromas.other.low);
    const double most = 2.0 * std::sqrt(chromas.own.high * chromas.other.high);
    const auto scaled = [&](double sine) { return sine > 0.0 ? least * sine / hueWeight : most * sine; };
    return smallestForm(lowU, highU, scaled(std::sin(0.5 * hues.difference.low)),
                        -scaled(-std::sin(0.5 * hues.difference.high)), coupled);
}

// A range with opposite hues has two parts: the mean hue is on one side or on the other.
double Ciede2000Bound::operator()(const LchRange& range) const
{
    const double lightness = lightnessPart(range);
    const Chromas chromas = chromasOf(range);
    const auto part = [&](double low, double high) {
        return squaredHuePart(chromas, huesOf({low, high}, chromas.stretch));
    };
    const auto [low, high] = hueDifferences(range, chromas.stretch);
    double others = 0.0;
    if (low < -pi)
        others = std::min(part(low + 2.0 * pi, pi), part(-pi, high));
    else if (high > pi)
        others = std::min(part(low, pi), part(-pi, high - 2.0 * pi));
    else
        others = part(low, high);
    return std::sqrt(lightness * lightness + others);
}

bool Ciede2000Bound::hasStep(const LchRange& range) const
{
    const auto [low, high] = hueDifferences(range, chromasOf(range).stretch);
    return low < -pi || high > pi;
}

} // namespace velmora
