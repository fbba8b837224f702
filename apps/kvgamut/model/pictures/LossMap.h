// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QList>
#include <QtGui/QColor>

#include <span>
#include <utility>
#include <vector>

/// Colour differences.
enum class ColourMetric
{
    DE76,      ///< CIE 1976
    Ciede2000, ///< CIEDE2000
};

/// How far each colour lies outside @p other; 0 inside. Runs on any thread. Empty if it was cancelled through
/// @p protocol, which may be null.
[[nodiscard]] std::vector<float> lossOf(std::span<const KVGamut::LabPoint> colors,
                                        const KVGamut::GamutObject& other, ColourMetric metric,
                                        KVCompletionProtocolPtr* protocol = nullptr);

/// The same for the vertices of a surface, but negative for those inside @p other that are beside one
/// outside: then the border is where a linear value is 0 within a triangle.
[[nodiscard]] std::vector<float> lossOnSurface(const KVGamut::Mesh& surface,
                                               const KVGamut::GamutObject& other, ColourMetric metric,
                                               KVCompletionProtocolPtr* protocol = nullptr);

/// The colours of distances: a neutral one up to a threshold, from there light yellow to dark purple.
///
/// For normal colour vision and for protanopia, deuteranopia and tritanopia the colours become darker with
/// the distance, and the neutral colour differs from all of them.
struct LossScale
{
    float threshold = 1.0f; ///< smaller distances count as inside
    float largest = 20.0f;  ///< the last colour, also for larger distances; above the threshold

    /// A scale for these distances: the largest one, rounded up to a whole number, but at least the threshold
    /// + 1.
    static LossScale forDistances(const std::vector<float>& distances, float threshold);

    [[nodiscard]] QColor colorOf(float distance) const;
    /// The same as distances with their colours, which are interpolated in between. The threshold, where the
    /// colour changes suddenly, is there twice.
    [[nodiscard]] QList<std::pair<float, QRgb>> stops() const;
    /// The colours from 0 to the largest distance, evenly spaced.
    [[nodiscard]] QList<QColor> colors() const;
};
