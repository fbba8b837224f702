// SPDX-License-Identifier: Apache-2.0
#include "PageFile.h"

#include "model/export/OutputFile.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace {

float opacityOf(const KVGamutLook& look)
{
    const bool isSurface = look.mode == KVGamut3DViewer::Smooth;
    return isSurface ? look.opacity : std::min(look.opacity, GamutPage::translucent);
}

} // namespace

QList<GamutPage::Gamut> PageFile::gamutsOf(const GamutListModel& model, const GamutQueue& queue)
{
    QList<GamutPage::Gamut> gamuts;
    for (int row = 0; row < model.rowCount(); ++row) {
        const GamutEntry& entry = model.at(row);
        if (!entry.hasGamut())
            continue;
        const auto source = queue.source(entry.id);
        const bool isVisible = entry.look.visible && entry.look.surface;
        gamuts.append({entry.title,
                       source ? GamutPage::descriptionOf(*source) : QString(),
                       entry.look.color,
                       {},
                       entry.gamut,
                       isVisible,
                       opacityOf(entry.look)});
    }
    GamutPage::chooseKeys(gamuts);
    return gamuts;
}

std::optional<Problem> PageFile::write(const QString& file, const QList<GamutPage::Gamut>& gamuts)
{
    if (gamuts.isEmpty())
        return Problem(ProblemCode::NoGamutToSave);
    if (QFileInfo(file).suffix().compare(QLatin1String("html"), Qt::CaseInsensitive) != 0)
        return Problem(ProblemCode::PageFormatUnknown).about(file);
    return writeOutput(file, GamutPage::of(gamuts));
}
