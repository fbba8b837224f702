// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"
#include "GamutInputs.h"
#include "commands/options/PointColourOptions.h"
#include "commands/options/ReportOptions.h"
#include "model/checks/CheckReport.h"
#include "model/photos/PhotoReading.h"

#include <optional>

/// `kvgamut check`: whether photos and colours fit a device, and what is lost.
class CheckCommand : public Command
{
public:
    explicit CheckCommand(CLI::App& program);

    Files files() const override;
    int run(Arguments arguments) override;

private:
    /// Settings with the intent of the command line, or else @p intent.
    KVGamut::Settings settingsWith(KVVMRenderType intent) const;
    void checkPhotos(const GamutInputs& gamuts, Table& table, Progress& progress);
    void declareMarks(CLI::Option* photos);
    void checkMarks() const;
    /// Writes the pictures of the photo that show what is lost.
    void writeMarks(const GamutInputs::Input& input, const PhotoReading& reading);
    void checkColors(const GamutInputs& gamuts, Table& table, Progress& progress);
    QString summary() const;
    void addToReport(const QString& name, bool pass, const PhotoColors& colors, const PhotoCheck& check,
                     const GamutInputs::Input& input, const PhotoReading& reading);
    void noteInputs(const GamutInputs& gamuts);
    void writeReport();
    int check();

    QStringList m_profiles;
    QStringList m_photos;
    QStringList m_colorFiles;
    QString m_photoProfile;
    QString m_mask, m_map; ///< names of pictures; empty if not wanted
    QString m_reportFile;  ///< empty if not wanted
    float m_mapMax = 20.0f;
    PointColourOptions m_colours;
    KVGamut::Settings m_settings;
    CLI::Option* m_intent = nullptr;
    CLI::Option* m_toleranceOption = nullptr;
    double m_tolerance = 1.0;
    std::optional<double> m_maxOutside; ///< share, 0..1
    ReportOptions m_report;

    QStringList m_kinds; ///< what inputs without a profile are
    CheckReport m_page;
    bool m_allRead = true;
    bool m_allWritten = true;
    bool m_passed = true;
    int m_photosChecked = 0, m_photosFitting = 0;
    int m_colorsChecked = 0, m_colorsPassed = 0;
};
