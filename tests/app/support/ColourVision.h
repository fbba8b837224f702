// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <lcms2.h>

#include <QtGui/QColor>

#include <algorithm>
#include <array>
#include <cmath>

/// Simulated colour vision: G. M. Machado, M. M. Oliveira, L. A. F. Fernandes, "A physiologically-based model
/// for simulation of color vision deficiency", IEEE Trans. Vis. Comput. Graph. 15(6), 2009, severity 1.
namespace kvtest {

using Matrix = std::array<std::array<double, 3>, 3>;

struct ColourVision
{
    const char* name;
    Matrix matrix; ///< of linear red, green, blue
};

inline const std::array<ColourVision, 4>& colourVisions()
{
    static const std::array<ColourVision, 4> all{{
        {"normal", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
        {"protanopia",
         {{{0.152286, 1.052583, -0.204868},
           {0.114503, 0.786281, 0.099216},
           {-0.003882, -0.048116, 1.051998}}}},
        {"deuteranopia",
         {{{0.367322, 0.860646, -0.227968},
           {0.280085, 0.672501, 0.047413},
           {-0.011820, 0.042940, 0.968881}}}},
        {"tritanopia",
         {{{1.255528, -0.076749, -0.178779},
           {-0.078411, 0.930809, 0.147602},
           {0.004733, 0.691367, 0.303900}}}},
    }};
    return all;
}

/// The Lab, relative to D65, that a colour of sRGB appears to have.
inline cmsCIELab seen(const QColor& color, const ColourVision& vision)
{
    const auto linear = [](double v) {
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    const std::array<double, 3> rgb{linear(color.redF()), linear(color.greenF()), linear(color.blueF())};
    std::array<double, 3> s{};
    for (std::size_t i = 0; i < 3; ++i)
        s[i] = std::clamp(vision.matrix[i][0] * rgb[0] + vision.matrix[i][1] * rgb[1] +
                              vision.matrix[i][2] * rgb[2],
                          0.0, 1.0);
    const cmsCIEXYZ xyz{0.4124564 * s[0] + 0.3575761 * s[1] + 0.1804375 * s[2],
                        0.2126729 * s[0] + 0.7151522 * s[1] + 0.0721750 * s[2],
                        0.0193339 * s[0] + 0.1191920 * s[1] + 0.9503041 * s[2]};
    const cmsCIEXYZ white{0.95047, 1.0, 1.08883};
    cmsCIELab lab;
    cmsXYZ2Lab(&white, &lab, &xyz);
    return lab;
}

/// CIEDE2000 between what is seen of two colours.
inline double seenDifference(const QColor& p, const QColor& q, const ColourVision& vision)
{
    const cmsCIELab first = seen(p, vision), second = seen(q, vision);
    return cmsCIE2000DeltaE(&first, &second, 1.0, 1.0, 1.0);
}

} // namespace kvtest
