// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointColourOptions.h"
#include "model/pictures/LossMap.h"
#include "model/points/ZoneMarker.h"

#include <KVGamut3DViewer.h>

#include <QtCore/QMap>

#include <CLI/CLI.hpp>

/// Markers, points and a line at positions from files.
struct ItemOptions
{
    QString markers;
    KVGamut3DViewer::MarkerType markerType = KVGamut3DViewer::Sphere;
    float markerSize = 6.0f; ///< diameter, Lab units
    float markerAmbient = ZoneMarker::ambient;
    QString points;
    float pointSize = 4.0f;
    bool zones = false;     ///< colour and shape of points by their side of a gamut's surface
    bool distances = false; ///< colour of points by the distance by which they lie outside a gamut
    float tolerance = 1.0f; ///< dE76 from the surface that count as its edge
    QString line;           ///< drawn through its positions in order
    float lineWidth = 2.0f;
    PointColourOptions colours; ///< of all three

    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);

    QStringList files() const { return QStringList{markers, points, line} + colours.files(); }

    /// Reads the files and adds their positions to @p viewer, except points by zones. Prints what cannot be
    /// read.
    /// @return whether everything was read
    bool addTo(KVGamut3DViewer& viewer) const;
    /// The same for points by zones of @p gamut: spheres inside, cubes at the edge, stars outside.
    bool addZones(KVGamut3DViewer& viewer, const KVGamut::GamutObject& gamut) const;
    /// The points that are to be coloured by distance. @param allRead set to false if not everything is read
    std::vector<KVGamut::LabPoint> pointsToMeasure(bool& allRead) const;
    /// Adds these points with the colours of their distances: spheres inside, cubes up to the threshold,
    /// stars farther outside.
    /// @param edge colour of the cubes: they are lines, which the pale colour of the scale would hide
    void addMeasured(KVGamut3DViewer& viewer, const std::vector<KVGamut::LabPoint>& points,
                     const std::vector<float>& losses, const LossScale& scale, const QColor& edge) const;

private:
    using Positions = QList<KVGamut3DViewer::ColoredPosition>;
    void addShapes(KVGamut3DViewer& viewer, const QMap<Side, Positions>& zones) const;
};
