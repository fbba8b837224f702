// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Names of values in reports about gamuts, and how volumes are rounded.
namespace GamutWords {

/// Decimals of all volumes and their uncertainties, in dE76 cubed, that are written for other programs.
constexpr int volumeDecimals = 1;
/// Rounded to volumeDecimals, so that every command writes the same number.
double writtenVolume(double volume);

QString intent(KVVMRenderType intent); ///< "absolute"...: as on the command line
/// "device mesh", "radial hull", "lattice surface", "given surface" or "convex hull".
QString method(KVGamut::Method method);

/// Whether a gamut comes from a profile, so that it has a rendering intent.
bool hasIntent(const KVGamut::Report& report);
/// The intent of a gamut; "none" if it has none.
QString intent(const KVGamut::Report& report);
/// "absolute intent"; the method of a gamut that has no intent.
QString basis(const KVGamut::Report& report);

/// "full", "none" or "none-d65": as on the command line.
QString adaptation(KVGamut::Adaptation adaptation);
/// The tag from which the adaptation is known, "chad" or "wtpt"; empty if the profile contains none.
QString adaptedBy(KVGamut::AdaptationSource source);
/// "BT.2020 primaries, PQ, full range": the encoding that the tag "cicp" names.
QString encoding(const KVGamut::CodePoints& cicp);
/// Whether a transfer characteristic is one of high dynamic range: PQ or HLG.
bool isHighDynamicRange(const KVGamut::CodePoints& cicp);
/// The engine looks for colours of mixtures beyond those that a method samples with up to this many channels.
constexpr int maxSearchedChannels = 12;
/// Whether a gamut has more, so that its uncertainty does not include what may have been missed.
bool missesMixtures(const KVGamut::Report& report);
/// Sentences about the conversion from device to Lab that a reader of the volume should know.
QStringList notes(const KVGamut::Report& report);

/// Whether black-point compensation was applied. The absolute intent ignores that setting.
bool blackPointCompensated(const KVGamut::Report& report);

} // namespace GamutWords
