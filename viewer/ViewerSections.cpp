// SPDX-License-Identifier: Apache-2.0
#include <viewer/GamutViewPrivate.h>

#include <glwindow/ContextScope.h>
#include <viewer/GroupNames.h>

#include <cmath>

void ViewerScene::applyClipping()
{
    const auto profiles = group(GroupNames::profiles());
    if (!profiles)
        return;
    const ContextScope scope(widget);
    const QStringList ids = itemsOf(GroupNames::profiles());
    for (const QString& id : ids)
        if (const auto object = gamut(id))
            applyClippingTo(*object);
        else if (const auto other = profiles->child(id))
            other->setClip(appliedClipping());
}

void ViewerScene::applyClippingTo(KV3DGamutObject& object)
{
    object.setClip(appliedClipping());
    applySectionTo(object);
}

void ViewerScene::applySectionTo(KV3DGamutObject& object)
{
    const float cut = appliedClipping();
    object.setLid(m_section.lids && cut < nothingCut ? std::optional(cut) : std::nullopt);
    const bool isDrawn =
        m_section.plane && (m_section.lids ? *m_section.plane < cut : *m_section.plane <= cut);
    object.setPlane(isDrawn ? m_section.plane : std::nullopt); // not twice in the same place
    object.setLeaf(m_section.hue ? std::optional(HueLeaf{*m_section.hue, cut}) : std::nullopt);
}

void ViewerScene::setSection(const KVSection& section)
{
    const auto isUsable = [](const std::optional<float>& value) { return !value || std::isfinite(*value); };
    if (section == m_section || !isUsable(section.plane) || !isUsable(section.hue))
        return;
    m_section = section;
    const ContextScope scope(widget);
    const QStringList ids = itemsOf(GroupNames::profiles());
    for (const QString& id : ids)
        if (const auto object = gamut(id))
            applySectionTo(*object);
}

void KVGamutView::setSection(const KVSection& section)
{
    if (ViewerScene* scene = d->scene())
        scene->setSection(section);
}

KVSection KVGamutView::section() const
{
    const ViewerScene* scene = d->scene();
    return scene ? scene->section() : KVSection();
}
