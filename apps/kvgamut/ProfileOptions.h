#pragma once

#include <platform/KVVelmoraFramework.h>

#include <CLI/CLI.hpp>

#include <QtCore/QStringList>

/// Which profiles, and how their gamuts are computed: the options that all commands share.
struct ProfileOptions
{
    QStringList profiles;
    KVVMRenderType intent = KVVMRenderAbsoluteColorimetric;
    bool blackPointCompensation = false;
    int gridPoints = -1; ///< samples along each device axis; -1: the engine chooses
    bool verbose = false;

    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);
};
