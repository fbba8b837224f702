// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>

#include <QtCore/QList>
#include <QtCore/QSize>
#include <QtGui/QColor>
#include <QtGui/QVector3D>

#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

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

/// A check that the value is one of @p words, in any case; the option then gets the word as it is in @p
/// words. Otherwise the message names the words, and the one that may have been meant.
CLI::Validator oneOf(const std::vector<std::string>& words);
CLI::Validator oneOf(std::initializer_list<std::string> words);
template <typename Value>
CLI::Validator oneOf(const std::map<std::string, Value>& values);
/// The words of oneOf() of @p option; empty without that check.
std::vector<std::string> wordsOf(CLI::Option& option);
/// Why @p word is refused where one of @p words is expected.
std::string notOneOf(const std::string& word, const std::vector<std::string>& words);

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

template <typename Value>
CLI::Validator oneOf(const std::map<std::string, Value>& values)
{
    std::vector<std::string> words;
    for (const auto& entry : values)
        words.push_back(entry.first);
    return oneOf(words);
}

} // namespace OptionValues
