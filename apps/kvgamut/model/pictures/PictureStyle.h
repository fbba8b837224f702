// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtGui/QColor>

#include <array>
#include <span>

/// Ground, key colours and size of text that belong together: for a screen, for paper, for slides, and on a
/// dark ground.
///
/// The key colours of a style differ from each other and from its ground by more than 15 in CIEDE2000, for
/// normal colour vision and for protanopia, deuteranopia and tritanopia.
struct PictureStyle
{
    QString name; ///< as on the command line
    QColor background;
    QColor grid;
    QColor ink; ///< of axes and sections
    float textScale = 1.0f;
    std::array<QColor, 6> keys;

    static std::span<const PictureStyle> all();
    /// The first style if there is none of this name.
    static const PictureStyle& named(const QString& name);

    /// Key colour of the gamut at @p position; after the sixth they repeat.
    QColor key(qsizetype position) const;
};
