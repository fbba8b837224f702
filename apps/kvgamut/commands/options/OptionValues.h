// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QSize>
#include <QtGui/QColor>
#include <QtGui/QVector3D>

#include <functional>
#include <string>

/// Values of options. Each function throws CLI::ValidationError if the argument does not parse; its message
/// says what was expected.
namespace OptionValues {

/// The name of a file, from the bytes of the command line.
QString file(const std::string& word);
/// "1024x768"; width and height from 16 to 8192.
QSize size(const std::string& word);
/// Wraps @p take so that the errors it throws name the option.
std::function<void(const std::string&)> named(const std::string& option,
                                              const std::function<void(const std::string&)>& take);

/// "50,-20,3.5": L*, a*, b*.
QVector3D lab(const std::string& word);
/// "1,0.35": numbers from 0 to 1.
QList<float> shares(const std::string& word);
/// "red,#40c0ff": SVG colour names, or hexadecimal.
QList<QColor> colors(const std::string& word);
QColor color(const std::string& word);
/// A finite number from @p min to @p max.
double real(const std::string& word, double min, double max);
/// The same in single precision.
float number(const std::string& word, float min, float max);

} // namespace OptionValues
