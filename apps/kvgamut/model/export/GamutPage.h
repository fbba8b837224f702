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
    QColor darkKey;      ///< the same on a dark ground
    KVGamut::GamutObject gamut;
    bool visible = true;
    float opacity = 1.0f; ///< 0..1
};

/// The description of the profile for a page; empty for a saved gamut.
QString descriptionOf(const GamutSource& source);

/// Opacity of gamuts inside which others are seen.
constexpr float translucent = 0.35f;
/// Opacity of gamuts that contain translucent ones.
constexpr float faint = 0.15f;

/// Gives each gamut without a key colour those of its position, which every eye can tell apart, see
/// PictureStyle.
void chooseKeys(QList<Gamut>& gamuts);
/// Makes gamuts translucent or faint if others are inside them, see bodyLooks(), and the others opaque.
void chooseOpacities(QList<Gamut>& gamuts);

/// Called after each comparison with the share of the work that is done.
using Shown = std::function<void(float share)>;

/// The page. Equal gamuts give equal bytes.
[[nodiscard]] QByteArray of(const QList<Gamut>& gamuts, const Shown& shown = {});

} // namespace GamutPage
