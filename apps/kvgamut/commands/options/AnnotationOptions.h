// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "BodyOptions.h"
#include "LossOptions.h"
#include "model/pictures/PictureStyle.h"

#include <KVGamutView.h>

#include <CLI/CLI.hpp>

/// What explains a picture: its style, scales and legend, and lines instead of surfaces.
struct AnnotationOptions
{
    const PictureStyle* style = &PictureStyle::named({});
    bool scales = true;
    bool legend = true; ///< with outlines in the key colours
    QString caption;
    bool lines = false; ///< all gamuts as lines; otherwise what is inside what decides
    BodyOptions part;   ///< instead of surfaces; the gamuts are lines then
    LossOptions loss;

    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);

    /// The theme of the style.
    KVViewTheme theme() const;
    /// Scales and caption; the legend has no rows yet.
    KVAnnotations annotations() const;
};
