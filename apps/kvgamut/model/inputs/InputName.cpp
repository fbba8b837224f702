// SPDX-License-Identifier: Apache-2.0
#include "InputName.h"

#include "BuiltInNames.h"
#include "FileName.h"
#include "model/reports/GamutWords.h"

#include <QtCore/QDir>
#include <QtCore/QStringList>

#include <array>

namespace {

/// The words for the parts, in their order after the usual one.
const QStringList partWords{QStringLiteral("pixels"), QStringLiteral("boundary")};

constexpr std::array intents{KVVMRenderAbsoluteColorimetric, KVVMRenderRelativeColorimetric,
                             KVVMRenderPerceptual, KVVMRenderSaturation};

bool isInput(const QString& name)
{
    return name == QLatin1String("-") || BuiltInNames::contains(name) || FileName::exists(name);
}

std::optional<KVVMRenderType> intentOf(const QString& word)
{
    for (const KVVMRenderType intent : intents)
        if (word.compare(GamutWords::intent(intent), Qt::CaseInsensitive) == 0)
            return intent;
    return {};
}

} // namespace

QString InputName::knownWords()
{
    QStringList words;
    for (const KVVMRenderType intent : intents)
        words.append(GamutWords::intent(intent));
    return (words + partWords).join(QStringLiteral(", "));
}

QString InputName::partOf(const QString& other) const
{
    return part == Part::Usual ? other
                               : other + QLatin1Char('@') + partWords[static_cast<qsizetype>(part) - 1];
}

Result<InputName> InputName::of(const QString& input)
{
    const qsizetype at = input.lastIndexOf(QLatin1Char('@'));
    const QString word = input.mid(at + 1);
    if (at <= 0 || QDir::fromNativeSeparators(word).contains(QLatin1Char('/')) || FileName::exists(input))
        return InputName{input, {}};
    const QString file = input.left(at);
    if (const auto intent = intentOf(word))
        return InputName{file, intent};
    if (const qsizetype place = partWords.indexOf(word.toLower()); place >= 0)
        return InputName{file, {}, static_cast<Part>(place + 1)};
    if (isInput(file))
        return failure(Problem(ProblemCode::InputSettingUnknown, {word, knownWords()}).about(input));
    return InputName{input, {}};
}
