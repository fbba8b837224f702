// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>

/// What the values of a colour are.
enum class PointSpace
{
    Lab,
    LCh,
    Xyz,
    Spectrum, ///< reflectances at equal steps of wavelength
    Rgb,
    Hex, ///< RGB as in "#40c0ff"
    Cmyk,
};

/// How colours are read of which the file does not say it itself.
struct PointOptions
{
    QString space; ///< of RGB and CMYK values: a built-in profile, or the name of an ICC file; may be empty
    KVVMRenderType intent = KVVMRenderAbsoluteColorimetric; ///< from device values to Lab
    QString white;       ///< of Lab, LCh and XYZ values, see PointWhite::names(); empty: of the file, or D50
    double whiteY = 0.0; ///< Y of white in XYZ values, 1 or 100; 0: as the values show
};

/// In which way the colours of a file were read. Fixed English words, for reports; empty if unknown.
struct PointReading
{
    QString values;      ///< "Lab", "LCh", "XYZ", "spectra", "RGB" or "CMYK"; joined with "+" if several
    QString space;       ///< the profile of RGB or CMYK values
    QString intent;      ///< of that profile
    QString white;       ///< to which Lab, LCh and XYZ refer, or for which a spectrum was computed: "D50"
    QString observer;    ///< "2" or "10", in degrees
    int inks = 0;        ///< of device values that are not read because there are more than four; otherwise 0
    QString deviceClass; ///< of the device that was measured: "DISPLAY", "OUTPUT", "INPUT"...
};
