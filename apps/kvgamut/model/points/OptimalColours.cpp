// SPDX-License-Identifier: Apache-2.0
#include "OptimalColours.h"

#include "SpectralWeights.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int ringCount = 109, directionCount = 144;
constexpr int firstStep = 380, lastStep = 780, stepWidth = 5;

using Xyz = std::array<double, 3>;

struct Ab
{
    double a = 0.0, b = 0.0;
};

double cross(const Ab& p, const Ab& q)
{
    return p.a * q.b - p.b * q.a;
}

Xyz mixed(const Xyz& p, const Xyz& q, double share)
{
    Xyz result;
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = p[i] + (q[i] - p[i]) * share;
    return result;
}

/// The light that is reflected up to a wavelength. After the last step the first one follows again, for
/// reflectances that are 1 at both ends of the spectrum.
class ReflectedLight
{
public:
    ReflectedLight()
    {
        QList<double> wavelengths;
        for (int nm = firstStep; nm <= lastStep; nm += stepWidth)
            wavelengths.append(nm);
        const auto weights = SpectralWeights::of(wavelengths);
        m_steps = static_cast<std::size_t>(wavelengths.size());
        m_upTo.resize(2 * m_steps + 1);
        std::vector<float> single(m_steps);
        for (std::size_t i = 0; i < 2 * m_steps; ++i) {
            single[i % m_steps] = 1.0F;
            const auto xyz = weights->xyzOf(single);
            single[i % m_steps] = 0.0F;
            for (std::size_t k = 0; k < 3; ++k)
                m_upTo[i + 1][k] = m_upTo[i][k] + double(xyz[k]);
        }
    }

    std::size_t steps() const { return m_steps; }
    const Xyz& upTo(std::size_t step) const { return m_upTo[step]; }
    Xyz white() const { return m_upTo[m_steps]; }

    /// The light up to the wavelength up to which it has the Y @p y, 0 to twice that of white.
    Xyz upToY(double y) const
    {
        const auto above = std::upper_bound(m_upTo.begin() + 1, m_upTo.end() - 1, y,
                                            [](double value, const Xyz& xyz) { return value < xyz[1]; });
        const Xyz& low = *(above - 1);
        return mixed(low, *above, (y - low[1]) / ((*above)[1] - low[1]));
    }

private:
    std::size_t m_steps = 0;
    std::vector<Xyz> m_upTo;
};

double lightness(double share)
{
    constexpr double limit = 216.0 / 24389.0, slope = 24389.0 / 27.0;
    return share > limit ? std::cbrt(share) : (slope * share + 16.0) / 116.0;
}

double shareOf(double L)
{
    constexpr double limit = 8.0, slope = 24389.0 / 27.0;
    return L > limit ? std::pow((L + 16.0) / 116.0, 3.0) : L / slope;
}

/// The colours of the lightness @p L with two transitions, one of them between two steps, in their order.
std::vector<Ab> ringOf(const ReflectedLight& light, double L)
{
    const Xyz white = light.white();
    const double y = shareOf(L) * white[1];
    std::vector<double> starts; // as the Y of the light up to the first transition
    for (std::size_t step = 0; step < light.steps(); ++step) {
        const double at = light.upTo(step)[1];
        starts.push_back(at);
        starts.push_back(at >= y ? at - y : at - y + white[1]);
    }
    std::sort(starts.begin(), starts.end());
    std::vector<Ab> ring;
    for (const double start : starts) {
        const Xyz from = light.upToY(start), to = light.upToY(start + y);
        std::array<double, 3> f{};
        for (std::size_t i = 0; i < f.size(); ++i)
            f[i] = lightness(std::max(0.0, to[i] - from[i]) / white[i]);
        ring.push_back({500.0 * (f[0] - f[1]), 200.0 * (f[1] - f[2])});
    }
    return ring;
}

/// Where the ray from the grey axis in direction @p towards leaves @p ring.
Ab outermost(const std::vector<Ab>& ring, const Ab& towards)
{
    double distance = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Ab& p = ring[i];
        const Ab& q = ring[(i + 1) % ring.size()];
        const double left = cross(towards, p), right = cross(towards, q);
        if ((left > 0.0) == (right > 0.0))
            continue;
        const double share = left / (left - right);
        distance = std::max(distance, (p.a + share * (q.a - p.a)) * towards.a +
                                          (p.b + share * (q.b - p.b)) * towards.b);
    }
    return {distance * towards.a, distance * towards.b};
}

/// Closer together at both ends, where the solid is pointed.
double lightnessOf(int ring)
{
    return 50.0 * (1.0 - std::cos(M_PI * (ring + 1) / (ringCount + 1)));
}

int indexOf(int ring, int direction)
{
    if (ring < 0)
        return 0;
    return ring == ringCount ? 1 + ringCount * directionCount
                             : 1 + ring * directionCount + direction % directionCount;
}

} // namespace

OptimalColours OptimalColours::create()
{
    const ReflectedLight light;
    OptimalColours result;
    result.points.push_back({0.0F, 0.0F, 0.0F});
    for (int ring = 0; ring < ringCount; ++ring) {
        const double L = lightnessOf(ring);
        const std::vector<Ab> edge = ringOf(light, L);
        for (int i = 0; i < directionCount; ++i) {
            const double angle = 2.0 * M_PI * i / directionCount;
            const Ab point = outermost(edge, {std::cos(angle), std::sin(angle)});
            result.points.push_back({float(L), float(point.a), float(point.b)});
        }
    }
    result.points.push_back({100.0F, 0.0F, 0.0F});
    for (int ring = 0; ring <= ringCount; ++ring)
        for (int i = 0; i < directionCount; ++i) {
            const int below = indexOf(ring - 1, i), above = indexOf(ring, i);
            const int nextBelow = indexOf(ring - 1, i + 1), nextAbove = indexOf(ring, i + 1);
            if (ring > 0)
                result.faces.push_back({below, nextBelow, nextAbove});
            if (ring < ringCount)
                result.faces.push_back({below, nextAbove, above});
        }
    return result;
}
