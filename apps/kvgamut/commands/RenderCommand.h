// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"
#include "commands/options/AnnotationOptions.h"
#include "commands/options/ItemOptions.h"
#include "commands/options/LookOptions.h"
#include "commands/options/PictureOutput.h"
#include "commands/options/PictureReference.h"
#include "commands/options/ProfileOptions.h"
#include "commands/options/SectionOptions.h"

#include <QtGui/QImage>

class QPainter;

/// `kvgamut render`: draws gamuts into a picture file. Needs no display.
class RenderCommand : public Command
{
public:
    explicit RenderCommand(CLI::App& program);

    Files files() const override
    {
        return {m_profiles.profiles + QStringList{m_reference.name(), m_annotations.loss.other} +
                    m_items.files(),
                m_output.name()};
    }
    bool drawsInOpenGL() const override { return true; }
    int run(Arguments arguments) override;

private:
    int draw();
    std::optional<Problem> drawPictures(KVGamutView& view, const QStringList& profiles,
                                        QImage& picture) const;
    Problem whyNothingIsDrawn(const KVGamutView& view) const;
    bool frame(KVGamutView& view) const;
    QImage pictureOf(KVGamutView& view) const;
    QImage transparentPicture(KVGamutView& view) const;
    void drawAnnotations(const KVGamutView& view, QPainter& painter) const;

    ProfileOptions m_profiles;
    LookOptions m_look;
    AnnotationOptions m_annotations;
    SectionOptions m_sections;
    ItemOptions m_items;
    PictureOutput m_output; ///< not given: only compare the picture
    PictureReference m_reference;
    bool m_transparent = false;
    std::optional<bool> m_isFramed; ///< nullopt: unless a camera is given
};
