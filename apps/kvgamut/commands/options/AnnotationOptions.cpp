// SPDX-License-Identifier: Apache-2.0
#include "AnnotationOptions.h"

#include "OptionValues.h"

#include <string>
#include <vector>

namespace {

std::vector<std::string> styleNames()
{
    std::vector<std::string> names;
    for (const PictureStyle& style : PictureStyle::all())
        names.push_back(style.name.toStdString());
    return names;
}

} // namespace

void AnnotationOptions::declare(CLI::App& parser)
{
    parser
        .add_option_function<std::string>(
            "--style",
            [this](const std::string& word) { style = &PictureStyle::named(QString::fromStdString(word)); },
            "Ground, key colours and size of text: screen (the default), paper, slide or dark")
        ->transform(OptionValues::oneOf(styleNames()))
        ->type_name("STYLE");
    parser
        .add_option_function<std::string>(
            "--annotate",
            [this](const std::string& word) {
                scales = word == "all" || word == "scales";
                legend = word == "all" || word == "legend";
            },
            "Numbered scales instead of the axes, and a legend (with outlines in its key colours, and the "
            "scale bar of "
            "--loss): all (the "
            "default), scales, legend or none")
        ->transform(OptionValues::oneOf({"all", "scales", "legend", "none"}))
        ->type_name("WHAT");
    parser
        .add_option_function<std::string>(
            "--caption", [this](const std::string& text) { caption = QString::fromStdString(text); },
            "A line of text at the bottom")
        ->type_name("TEXT");
    parser
        .add_option_function<std::string>(
            "--look", [this](const std::string& word) { lines = word == "lines"; },
            "auto: the innermost gamuts solid, those around them translucent, further ones as lines (the "
            "default, except with --alpha or --mode); lines: all gamuts as lines at round lightnesses and "
            "hues. --verbose says what was chosen")
        ->transform(OptionValues::oneOf({"auto", "lines"}))
        ->type_name("LOOK");
    part.declare(parser, "Show a body between two gamuts, which are faint then");
    loss.declare(parser);
}

KVViewTheme AnnotationOptions::theme() const
{
    KVViewTheme theme;
    theme.background = style->background;
    theme.grid = style->grid;
    theme.axes = theme.labels = style->ink;
    if (style->ink != theme.section && style->ink == QColor(Qt::white))
        theme.section = style->ink;
    return theme;
}

KVAnnotations AnnotationOptions::annotations() const
{
    KVAnnotations annotations;
    annotations.scales = scales;
    annotations.caption = caption;
    annotations.textScale = style->textScale;
    return annotations;
}
