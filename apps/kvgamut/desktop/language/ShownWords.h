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
/// For example "L* 53.2  a* 80.1  b* 67.2".
QString lab(const QVector3D& lab);
/// For example "L* 53.2  C* 104.4  h 40.0°".
QString lch(const QVector3D& lab);

} // namespace ShownWords
