// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"
#include "commands/options/PointColourOptions.h"
#include "model/slices/SliceDrawing.h"

#include <QtCore/QSize>
#include <QtCore/QStringList>
#include <QtGui/QColor>

#include <optional>

class SliceReport;

/// `kvgamut slice`: gamuts cut by a plane, or their gamut rings, as data or as a drawing.
class SliceCommand : public Command
{
public:
    explicit SliceCommand(CLI::App& program);

    Files files() const override { return {m_names + m_pointFiles + m_colours.files(), m_output}; }
    int run(Arguments arguments) override;

private:
    void declareWhat();
    void declareOutput();
    void declareDrawing();
    void check();
    bool addPoints(SliceReport& report, const KVGamut::GamutObject& gamut) const;
    bool isDrawing() const;
    int report() const;
    QByteArray fileOf(const SliceReport& report) const;

    QStringList m_names;
    KVGamut::Settings m_settings;
    std::optional<SlicePlane> m_plane; ///< nullopt: gamut rings
    bool m_rings = false;
    QString m_format; ///< csv, json, svg, png or pdf; set after parsing
    QString m_output = QStringLiteral("-");
    QSize m_size{1000, 750};
    QList<QColor> m_colors;
    SliceDrawing::Fill m_fill = SliceDrawing::Fill::Tint;
    QStringList m_pointFiles;
    PointColourOptions m_colours;           ///< of these files
    double m_within = defaultPointDistance; ///< distance of points from the plane, dE76
};
