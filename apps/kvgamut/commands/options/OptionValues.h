// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QSize>
#include <QtGui/QColor>
#include <QtGui/QVector3D>

#include <string>

/// Words of the command line as values. A word that is none throws CLI::ValidationError, which says
/// what was expected.
namespace OptionValues {

/// "1024x768"; either side from 16 to 8192.
QSize size(const std::string& word);
/// "50,-20,3.5": L*, a*, b*.
QVector3D lab(const std::string& word);
/// "1,0.35": shares from 0 to 1.
QList<float> shares(const std::string& word);
/// "red,#40c0ff": names that SVG knows, or hexadecimal.
QList<QColor> colors(const std::string& word);
QColor color(const std::string& word);
/// A finite number from @p least to @p most.
double real(const std::string& word, double least, double most);
/// The same, of single precision.
float number(const std::string& word, float least, float most);

} // namespace OptionValues
