// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/inputs/GamutSource.h"

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QColor>

#include <functional>

/// A page to send: one HTML file that shows gamuts in 3D and states their numbers. It opens from disk and
/// loads nothing from a network.
namespace GamutPage {

/// A gamut of the page, and how it looks when the page opens.
struct Gamut
{
    QString name;        ///< as gamutTitles()
    QString description; ///< of the profile; may be empty
    QColor key;          ///< identifies the gamut in the legend, on the floor and in sections
    KVGamut::GamutObject gamut;
    bool visible = true;
    float opacity = 1.0f; ///< 0..1
};

/// The description of the profile for a page; empty for a saved gamut.
QString descriptionOf(const GamutSource& source);

/// Opacity of gamuts through which others are seen.
constexpr float translucent = 0.35f;

/// Makes the gamut with the smallest volume opaque and the others translucent, so that it is seen inside
/// them.
void chooseOpacities(QList<Gamut>& gamuts);

/// Called after each comparison with the share of the work that is done.
using Shown = std::function<void(float share)>;

/// The page. Equal gamuts give equal bytes.
[[nodiscard]] QByteArray of(const QList<Gamut>& gamuts, const Shown& shown = {});

} // namespace GamutPage
