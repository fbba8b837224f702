// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutQueue.h"
#include "model/export/GamutPage.h"

/// Pages to send, as `kvgamut export` writes them.
namespace PageFile {

/// The gamuts of @p model that are computed, as they look in the window. Colours chosen by the user are key
/// colours; a wireframe, through which others are seen, is translucent in the page. @p queue computed them
/// and knows their profiles.
QList<GamutPage::Gamut> gamutsOf(const GamutListModel& model, const GamutQueue& queue);

/// Compares the gamuts and writes the page. Callable from any thread.
/// @return NoGamutToSave, or a problem about the file: PageFormatUnknown unless it ends with .html,
/// CannotWrite
[[nodiscard]] std::optional<Problem> write(const QString& file, const QList<GamutPage::Gamut>& gamuts);

} // namespace PageFile
