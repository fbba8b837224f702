// SPDX-License-Identifier: Apache-2.0
#include "OptionValues.h"

#include "model/inputs/FileName.h"
#include "model/text/NearWord.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr int minSide = 16;
constexpr int maxSide = 8192;

[[noreturn]] void refuse(const std::string& word, const QString& expected)
{
    throw CLI::ValidationError("'" + word + "' is not " + expected.toStdString());
}

QStringList partsOf(const std::string& word)
{
    return QString::fromStdString(word).split(QLatin1Char(','));
}

} // namespace

QString OptionValues::file(const std::string& word)
{
    return FileName::decoded(QByteArray::fromStdString(word));
}

QSize OptionValues::size(const std::string& word)
{
    static const QRegularExpression form(QStringLiteral("\\A([0-9]{1,5})[xX]([0-9]{1,5})\\z"));
    const auto match = form.match(QString::fromStdString(word));
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const auto fits = [](int side) { return side >= minSide && side <= maxSide; };
    if (!match.hasMatch() || !fits(size.width()) || !fits(size.height()))
        refuse(word, QStringLiteral("a size like 1024x768 (%1 to %2 each)").arg(minSide).arg(maxSide));
    return size;
}

std::function<void(const std::string&)>
OptionValues::named(const std::string& option, const std::function<void(const std::string&)>& take)
{
    return [option, take](const std::string& word) {
        try {
            take(word);
        } catch (const CLI::ValidationError& refusal) {
            throw CLI::ValidationError(option, refusal.what());
        }
    };
}

std::string OptionValues::notOneOf(const std::string& word, const std::vector<std::string>& words)
{
    QStringList known;
    for (const std::string& each : words)
        known.append(QString::fromStdString(each));
    const QString near = nearWord(QString::fromStdString(word), known);
    std::string text = "'" + word + "' is not " + (known.size() > 1 ? "one of " : "") +
                       known.join(QStringLiteral(", ")).toStdString();
    if (!near.isEmpty())
        text += "; did you mean " + near.toStdString() + "?";
    return text;
}

CLI::Validator OptionValues::oneOf(const std::vector<std::string>& words)
{
    const auto check = [words](std::string& word) {
        const auto isSame = [&word](const std::string& known) {
            return CLI::detail::to_lower(known) == CLI::detail::to_lower(word);
        };
        const auto found = std::find_if(words.cbegin(), words.cend(), isSame);
        if (found == words.cend())
            return notOneOf(word, words);
        word = *found;
        return std::string();
    };
    // without a description, which --help would show as the type; the name is free, and none has a space
    return CLI::Validator(check, "", CLI::detail::join(words, " "));
}

CLI::Validator OptionValues::oneOf(std::initializer_list<std::string> words)
{
    return oneOf(std::vector<std::string>(words));
}

std::vector<std::string> OptionValues::wordsOf(CLI::Option& option)
{
    try {
        const std::string& name = option.get_validator(0)->get_name();
        return name.empty() ? std::vector<std::string>() : CLI::detail::split(name, ' ');
    } catch (const CLI::OptionNotFound&) {
        return {};
    }
}

QVector3D OptionValues::lab(const std::string& word)
{
    QVector3D point;
    const QStringList parts = partsOf(word);
    bool ok = parts.size() == 3;
    for (int i = 0; ok && i < 3; ++i) {
        point[i] = parts[i].toFloat(&ok);
        ok = ok && std::isfinite(point[i]);
    }
    if (!ok)
        refuse(word, QStringLiteral("a colour like 50,-20,35 (L*,a*,b*)"));
    return point;
}

double OptionValues::real(const std::string& word, double min, double max)
{
    bool ok = false;
    const double value = QString::fromStdString(word).toDouble(&ok);
    if (!ok || !(value >= min && value <= max)) // also NaN
        refuse(word, QStringLiteral("a number from %1 to %2").arg(min).arg(max));
    return value;
}

float OptionValues::number(const std::string& word, float min, float max)
{
    return static_cast<float>(real(word, double(min), double(max)));
}

QList<float> OptionValues::shares(const std::string& word)
{
    QList<float> shares;
    const QStringList parts = partsOf(word);
    for (const QString& part : parts)
        shares.append(number(part.toStdString(), 0.0f, 1.0f));
    return shares;
}

QColor OptionValues::color(const std::string& word)
{
    const QColor color(QString::fromStdString(word));
    if (!color.isValid())
        refuse(word, QStringLiteral("a colour like red or #40c0ff"));
    return color;
}

QList<QColor> OptionValues::colors(const std::string& word)
{
    QList<QColor> colors;
    const QStringList parts = partsOf(word);
    for (const QString& part : parts)
        colors.append(color(part.toStdString()));
    return colors;
}
