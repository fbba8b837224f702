// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "InputLimits.h"
#include "model/bodies/GivenGamut.h"
#include "model/charts/ChartFacts.h"
#include "model/points/PointReading.h"
#include "model/points/PointSet.h"
#include "model/problems/Result.h"

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>

#include <memory>
#include <optional>

/// An opened profile, saved gamut, chart, or body without a profile.
///
/// A value type; copies share the opened data and may be used on different threads.
class GamutSource
{
public:
    /// Opens @p name: a built-in profile, a reference body, or else a file. The content of the file decides
    /// what it is: an ICC profile, a PNG, JPEG or TIFF picture with an embedded profile, a saved gamut, or
    /// colours: of those with device values (CGATS, TI3, CxF, CSV) it makes a profile, of others (also
    /// palettes) the convex hull. To open a file that is named like a built-in one, write "./sRGB".
    /// "-" is standard input. Settings may follow the name, as in "printer.icc@relative"; "photo.tif@pixels"
    /// is the hull of a photo's colours. See InputName.
    /// @param task cancels reading; may be null
    /// @param reading of colours that do not say it themselves; its space is also that of photos' pixels
    /// without an embedded profile
    static Result<GamutSource> open(const QString& name, const KVCompletionProtocolPtr& task = {},
                                    const PointOptions& reading = {});
    /// Opens the content of a file that is already in memory, as open() does, with the same limits.
    /// @param name only names the source; settings in it have no effect
    static Result<GamutSource> ofContent(const QString& name, const QByteArray& content,
                                         const KVCompletionProtocolPtr& task = {},
                                         const PointOptions& reading = {});
    /// The chart that @p set is if its colours have device values, otherwise the hull of its colours.
    /// @return fails with TooManyPoints, or as ChartProfile and ColourHull
    static Result<GamutSource> ofPoints(const QString& name, const PointSet& set,
                                        const KVCompletionProtocolPtr& task = {});

    /// The name that was passed to open(), with its settings.
    QString name() const { return m_name; }

    /// Whether this is a saved gamut.
    bool isSaved() const { return !m_profile && m_title.isEmpty(); }
    /// The gamut of an input without a profile, such as a saved one, on which settings have no effect; empty
    /// for a profile.
    const KVGamut::GamutObject& givenGamut() const { return m_given; }
    /// The name of the profile that a saved gamut was computed from; empty if unknown.
    QString savedProfile() const { return m_savedProfile; }

    /// What the measurement tells about the device; nullopt if this is not a chart.
    const std::optional<ChartFacts>& chart() const { return m_chart; }
    /// The patches of the chart; null if this is not a chart.
    const std::shared_ptr<const DeviceChart>& measured() const { return m_measured; }
    /// "profile", "profile of a picture", "saved gamut", "print chart of 1617 patches" or the title of a
    /// GivenGamut.
    QString kind() const;
    /// Sentences about the input that a reader of the volume should know.
    QStringList notes() const { return m_notes; }

    /// The profile; null for a saved gamut and for other bodies without one.
    KVProfilePtr profile() const { return m_profile; }

    /// The SHA-256 of the file, as hexadecimal digits; for a picture that of its embedded profile, for its
    /// pixels that of the picture. Empty for a built-in profile or body.
    QString hash() const { return m_hash; }

    /// @p general, with those that are part of the name instead.
    KVGamut::Settings settings(const KVGamut::Settings& general) const;

    /// The gamut with primaries and outline: computed as in the viewer, or restored from the file. A problem
    /// names the input.
    /// @param general are used where the name has none
    Result<KVGamut::GamutObject>
    compute(const KVGamut::Settings& general, KVCompletionProtocolPtr* protocol = nullptr,
            KVGamut::Construction construction = KVGamut::Construction::Accurate) const;

private:
    explicit GamutSource(const QString& name) : m_name(name) {}

    Result<void> checkIntent(std::optional<KVVMRenderType> intent) const;

    static Result<GamutSource> openFile(const QString& name, const QString& file,
                                        const KVCompletionProtocolPtr& task, const PointOptions& options);
    static Result<GamutSource> ofProfile(const QString& name, const KVProfilePtr& profile);
    static Result<GamutSource> ofProfileData(const QString& name, const QByteArray& bytes);
    static Result<GamutSource> ofPicture(const QString& name, const QByteArray& bytes);
    static Result<GamutSource> ofPixels(const QString& name, const QString& file,
                                        const KVCompletionProtocolPtr& task, const PointOptions& options);
    static Result<GamutSource> ofChart(const QString& name, const QByteArray& bytes,
                                       const KVCompletionProtocolPtr& task, const PointOptions& options);
    static Result<GamutSource> ofSavedGamut(const QString& name, const QByteArray& bytes);
    static Result<GamutSource> ofBoundary(const QString& name, const QString& file,
                                          const KVCompletionProtocolPtr& task);
    static Result<GamutSource> ofKind(InputKind kind, const QString& name, const QByteArray& content,
                                      const KVCompletionProtocolPtr& task, const PointOptions& options);
    static Result<GamutSource> ofGiven(const QString& name, const Result<GivenGamut>& given,
                                       const QByteArray& bytes = {});

    QString m_name;
    KVProfilePtr m_profile;
    KVGamut::GamutObject m_given;
    QString m_title; ///< of an input that is neither a profile file nor saved
    QString m_savedProfile;
    QString m_hash;
    std::optional<ChartFacts> m_chart;
    std::shared_ptr<const DeviceChart> m_measured;
    QStringList m_notes;
    std::optional<KVVMRenderType> m_intent; ///< of the name
};
