// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "commands/options/AnnotationOptions.h"
#include "commands/options/LookOptions.h"
#include "commands/options/ProfileOptions.h"
#include "model/inputs/GamutSource.h"
#include "model/pictures/BodyLooks.h"

#include <QtCore/QObject>

/// The gamuts of a command line in a viewer.
///
/// Must not outlive the view.
class GamutScene
{
public:
    GamutScene(KVGamutView& view, const ProfileOptions& profiles, const LookOptions& look,
               const AnnotationOptions& annotations);

    /// Loads all inputs and runs the event loop until the last load has ended. Prints what fails.
    /// @param reading of files of colours among them
    void load(const PointOptions& reading);

    /// After load(): chooses solid, translucent and lines by what is inside what, unless the command line
    /// says it, and adds scales, legend and key colours.
    void explain();

    /// Distances of points, and the scale that they share with surfaces.
    struct PointLoss
    {
        std::vector<float> losses;
        LossScale scale;
    };
    /// After explain(): colours the surfaces by the distance outside another gamut and adds a scale bar, if
    /// the command line asks for it; the scale is also for @p points, which may be none. Prints why that
    /// fails.
    /// @return the distances of the points; nullopt if it fails
    std::optional<PointLoss> showLoss(const std::vector<KVGamut::LabPoint>& points);

    /// After explain(): shows a part of the first gamut as a body, if the command line asks for it. Prints
    /// why that fails. @return whether it succeeded
    bool showPart();

    /// The first gamut that is shown; empty if there is none.
    KVGamut::GamutObject firstGamut() const;
    int shownCount() const { return count(Shown); }
    int failedCount() const { return count(Failed); }
    /// The profiles of the gamuts that are shown, as PictureNote lists them.
    QStringList profileLines() const;

private:
    enum State
    {
        Waiting,
        Shown,
        Failed
    };
    struct Gamut
    {
        QString id;
        Result<GamutSource> source;
        State state;
    };

    /// A gamut that is shown.
    struct Explained
    {
        qsizetype position; ///< on the command line
        KVGamut::GamutObject gamut;
        QString title;
        QColor key;
        std::optional<BodyLook> look; ///< nullopt: as the command line says
    };

    int count(State state) const;
    void open();
    void start(qsizetype position, const std::function<void()>& ended);
    void applyLooks();
    QList<Explained> explained() const;
    void showBody(const Explained& gamut);
    KVLegendEntry entryOf(const Explained& gamut) const;
    bool showAndWait(const QString& id, const KVGamut::GamutObject& gamut, const std::vector<float>& values,
                     const QList<std::pair<float, QRgb>>& stops);
    bool showColored(const QString& id, const std::vector<float>& values, const LossScale& scale);
    bool showLosses(const QMap<QString, std::vector<float>>& losses, const LossScale& scale);
    void addScaleBar(const LossScale& scale);

    KVGamutView& m_view;
    const ProfileOptions& m_profiles;
    const LookOptions& m_look;
    const AnnotationOptions& m_annotations;
    PointOptions m_reading;
    QList<Gamut> m_gamuts; ///< in the order of the command line
    QObject m_context;     ///< ends the callbacks of loads with this object
};
