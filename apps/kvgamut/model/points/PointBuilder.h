// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointSet.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

#include <QtCore/QStringList>

#include <vector>

/// Gathers the colours of one file in any of their spaces, and converts them to Lab relative to D50 when all
/// are known: only then it is clear, for example, whether RGB values end at 1 or at 255.
class PointBuilder
{
public:
    /// What the file says about its values.
    struct Declared
    {
        QString space;       ///< of its RGB values: a built-in profile
        QString white;       ///< one of PointWhite::names(); empty if it says nothing
        double whiteY = 0.0; ///< Y of white in its XYZ values; 0 if it says nothing
        double maxRgb = 0.0; ///< of its RGB values: 1, 100 or 255; 0 if it says nothing
        double maxCmyk = 0.0;
        double maxReflectance = 0.0; ///< 1 or 100; 0 if it says nothing
        QList<double> wavelengths;   ///< of its spectra
        bool areNumbered = false;    ///< the colours have numbers, not lines
        QString observer;            ///< "2" or "10"
        QString deviceClass;         ///< as in PointReading
        int inks = 0;                ///< as in PointReading
    };

    PointBuilder(const PointOptions& options, KVCompletionProtocolPtr task)
        : m_options(options), m_task(std::move(task))
    {
    }

    Declared declared;

    /// Adds a colour as PointColumns::pointOf() gives it.
    /// @param line of the file, or the number of the colour if the file has no lines
    /// @return fails with TooManyPoints or Cancelled
    Result<void> add(MeasuredPoint point, PointSpace space, int line);

    /// Leaves a row or a colour out; finish() says so.
    void leaveOut(const Problem& why, int line);

    /// Adds a note about the file.
    void note(const Problem& note) { m_set.notes.append(note); }

    /// The number of colours that were added.
    qsizetype count() const { return m_set.points.size(); }

    /// All that were added, in Lab. Fails if none is left although there were some, or because of the space
    /// of device values.
    Result<PointSet> finish();

private:
    struct Row
    {
        int line;
        PointSpace space;
    };

    bool has(PointSpace space) const;
    QString white() const;
    void convertLab();
    Result<void> convertXyz();
    void convertSpectra();
    Result<void> convertDevice(PointSpace space);
    std::vector<std::size_t> rowsOf(PointSpace space) const;
    double scaleDevice(PointSpace space, const std::vector<std::size_t>& rows);
    void dropImpossible();
    void describe();
    Result<PointSet> noted();

    const PointOptions m_options;
    const KVCompletionProtocolPtr m_task;
    PointSet m_set;
    std::vector<Row> m_rows; ///< one for each point
    qsizetype m_leftOut = 0;
    std::optional<Problem> m_firstLeftOut;
    QStringList m_leftOutLines; ///< the first ones
};
