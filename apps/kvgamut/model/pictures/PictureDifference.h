// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QImage>

#include <optional>

/// The difference of two pictures in percent: the root mean square, over all pixels, of the differences of
/// red, green and blue, relative to the maximum. Differences of opacity are added; the total is at most 100.
/// Colours are premultiplied: the colour of fully transparent pixels has no effect.
///
/// | percent | typical cause, in a picture of one gamut                   |
/// | ------- | ---------------------------------------------------------- |
/// | 0       | equal                                                      |
/// | 0.1     | ambient light changed by two hundredths                    |
/// | 0.3     | a surface with half as many samples                        |
/// | 1       | without the grid                                           |
/// | 2       | without antialiasing, as of another graphics driver        |
/// | 5       | in coloured light                                          |
/// | 9       | another profile                                            |
/// | 15      | another view                                               |
/// | 57      | on black instead of grey                                   |
/// | 100     | black instead of white                                     |
///
/// nullopt if the sizes differ or either image is null.
std::optional<double> pictureDifference(const QImage& one, const QImage& other);
