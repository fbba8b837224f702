// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "MeasuredPoint.h"
#include "PointReading.h"
#include "SpectralWeights.h"
#include "model/problems/Result.h"

#include <QtCore/QStringList>

#include <array>
#include <optional>

/// The columns of a table that hold the values of a point.
struct PointColumns
{
    PointSpace space = PointSpace::Lab;
    QList<qsizetype> values;        ///< in the order of the space: L*, a*, b*, or by wavelength
    QList<double> wavelengths;      ///< of spectra, in nm, ascending
    SpectralWeights weights;        ///< for them
    std::optional<Problem> problem; ///< why the spectra cannot be used
    QList<qsizetype> device;        ///< RGB or CMYK values beside others; may be empty
    int inks = 0;                   ///< as in PointReading; then there are no device values
    QString declared;               ///< the RGB space that the names of the columns declare; may be empty
    qsizetype color = -1;           ///< -1 if missing, as is the name
    qsizetype name = -1;
    QList<qsizetype> unknown; ///< columns whose names mean nothing here

    /// Finds the columns by their @p names. The first of these that is complete counts: Lab, LCh, XYZ,
    /// spectra, RGB, hexadecimal RGB, CMYK. nullopt if none is.
    static std::optional<PointColumns> named(const QStringList& names);

    /// Uses the only unknown column of text in @p row, the first one of the table, as the name if no column
    /// is known to be that. Also a column called "colour" whose text is something else.
    void findName(const QStringList& row);

    /// The point of one row. Lab and LCh values become its Lab. XYZ values are kept in place of Lab, as are
    /// those of a spectrum, computed with the weights; device values as they are in the row.
    /// @param line of the file, for the problem
    Result<MeasuredPoint> pointOf(const QStringList& row, int line) const;

private:
    Result<std::array<float, 3>> spectrumOf(const QStringList& row, int line) const;
};

/// The number in @p field, with a decimal point or comma; nullopt if it is none, or not finite.
std::optional<float> numberOf(const QString& field);

/// Lab of L*, C* and the angle h in degrees.
KVGamut::LabPoint labOfLCh(const std::array<float, 3>& values);

/// Whether @p lab can be that of a colour: L* from -10 to 150, a* and b* from -500 to 500.
bool isPossible(const KVGamut::LabPoint& lab);
