// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>
#include <QtGui/QVector3D>

/// Texts about gamuts in the language of the window.
namespace ShownWords {

QString intent(KVVMRenderType intent);
/// For example "relative colorimetric, black point compensated".
QString settings(const KVGamut::Settings& settings);
/// The settings; of a gamut that has none how its surface was made.
QString basis(const KVGamut::Settings& computedWith, KVGamut::Method method);
QString adaptation(KVGamut::Adaptation adaptation);
/// How the colours were obtained from the profile, as lines: the table, the media white, the adaptation, the
/// black that was mapped to L* 0, the encoding, and what was not looked for. Empty if nothing is known.
QString conversion(const KVGamut::Report& report);
/// For example "L* 53.2  a* 80.1  b* 67.2".
QString lab(const QVector3D& lab);
/// For example "L* 53.2  C* 104.4  h 40.0°".
QString lch(const QVector3D& lab);
/// For example "3.25 ΔE outside sRGB".
/// @param distance as in KVGamut::Nearest: negative inside
QString distance(float distance, const QString& gamut);

} // namespace ShownWords
