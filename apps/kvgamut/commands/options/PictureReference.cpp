// SPDX-License-Identifier: Apache-2.0
#include "PictureReference.h"

#include "OptionValues.h"
#include "commands/process/Say.h"
#include "model/pictures/PictureDifference.h"
#include "model/pictures/PngPicture.h"

#include <cmath>

namespace {

constexpr int digits = 4; // of the printed difference

/// Rounded up, so that a difference above the threshold is not printed as one within it.
QString percent(double value)
{
    const double unit = std::pow(10.0, digits);
    return QString::number(std::ceil(value * unit) / unit, 'f', digits);
}

} // namespace

void PictureReference::declare(CLI::App& parser)
{
    CLI::Option* reference =
        parser
            .add_option_function<std::string>(
                "--reference", [this](const std::string& word) { m_name = OptionValues::file(word); },
                "Compare the picture with this one; exit code 4 when they differ by more than the threshold")
            ->type_name("PICTURE.png");
    parser
        .add_option_function<std::string>(
            "--reference-threshold",
            OptionValues::named("--reference-threshold",
                                [this](const std::string& word) {
                                    m_threshold = double(OptionValues::number(word, 0.0f, 100.0f));
                                }),
            "Accepted difference in percent: the root mean square over all pixels and channels "
            "(0.5). 0: equal; 0.1: a slightly changed light; 0.3: half as many samples; 1: no grid; 2: no "
            "antialiasing, another graphics driver; 5: coloured light; 9: another profile; 15: another "
            "view; 100: black instead of white")
        ->type_name("T")
        ->needs(reference);
}

bool PictureReference::load()
{
    const Result<QImage> picture = readPng(m_name);
    if (picture)
        m_reference = *picture;
    else
        say(picture.error());
    return picture.has_value();
}

bool PictureReference::matches(const QImage& picture) const
{
    const auto sizeOf = [](const QImage& image) {
        return QStringLiteral("%1x%2").arg(image.width()).arg(image.height());
    };
    const auto difference = pictureDifference(picture, m_reference);
    if (!difference)
        say(Problem(ProblemCode::ReferenceSizeDiffers, {sizeOf(picture), sizeOf(m_reference)}, m_name));
    else if (*difference > m_threshold)
        say(Problem(ProblemCode::ReferenceDiffers, {percent(*difference), QString::number(m_threshold)},
                    m_name));
    return difference && *difference <= m_threshold;
}
