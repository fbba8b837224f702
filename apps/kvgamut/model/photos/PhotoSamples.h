// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PhotoFile.h"

#include <algorithm>
#include <cmath>

/// The samples of a pixel, at most four channels, as words. Bytes stay bytes.
class SampleReader
{
public:
    explicit SampleReader(const PhotoFacts& facts) : m_facts(facts) {}

    std::uint32_t at(const std::byte* row, qsizetype sample) const
    {
        switch (m_facts.sample) {
        case PhotoFacts::Sample::Byte:
            return std::to_integer<std::uint32_t>(row[sample]);
        case PhotoFacts::Sample::Word:
            return reinterpret_cast<const quint16*>(row)[sample];
        case PhotoFacts::Sample::Float:
            break;
        }
        const float value = floatAt(row, sample);
        return value > 0.0f ? static_cast<std::uint32_t>(std::lround(std::min(value, 1.0f) * 65535.0f)) : 0;
    }
    bool isOutside(const std::byte* row, qsizetype sample) const
    {
        if (m_facts.sample != PhotoFacts::Sample::Float)
            return false;
        const float value = floatAt(row, sample);
        return !(value >= 0.0f && value <= 1.0f);
    }
    float floatAt(const std::byte* row, qsizetype sample) const
    {
        return reinterpret_cast<const float*>(row)[sample];
    }
    bool isTransparent(const std::byte* row, qsizetype first) const
    {
        return m_facts.alpha >= 0 && at(row, first + m_facts.alpha) == 0;
    }

private:
    const PhotoFacts& m_facts;
};
