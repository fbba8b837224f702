// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QImage>

#include <optional>

/// How far two pictures are apart, in percent: the root mean square, over all pixels, of the differences
/// of red, green and blue, by the largest there is; differences of opacity add to them, to 100 at most.
/// Colours count by their opacity: what is fully transparent has none.
///
/// | percent | of a picture of one gamut                                  |
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
/// None of pictures of different size, or when there is none.
std::optional<double> pictureDifference(const QImage& one, const QImage& other);
