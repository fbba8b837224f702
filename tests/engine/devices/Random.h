// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Points.h"

#include <random>
#include <vector>

namespace kvdevices {

/// Random numbers that are the same on every machine. The distributions of the standard library are not.
class Random
{
public:
    explicit Random(unsigned seed) : m_generator(seed) {}

    double between(double low, double high) { return low + (high - low) * (m_generator() / 4294967296.0); }
    /// Equally likely in each decade.
    double logBetween(double low, double high) { return std::exp(between(std::log(low), std::log(high))); }
    bool chance(double probability) { return between(0.0, 1.0) < probability; }
    std::size_t below(std::size_t count) { return m_generator() % count; }
    template <typename T>
    T oneOf(const std::vector<T>& choices)
    {
        return choices[below(choices.size())];
    }
    /// A vector of length 1.
    Point direction()
    {
        for (;;) {
            const Point p{between(-1, 1), between(-1, 1), between(-1, 1)};
            if (dot(p, p) > 0.01 && dot(p, p) <= 1.0)
                return (1.0 / length(p)) * p;
        }
    }

private:
    std::mt19937 m_generator;
};

} // namespace kvdevices
