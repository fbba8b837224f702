// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <CLI/CLI.hpp>

#include <optional>

/// How sections are shown in a 3D picture.
struct SectionOptions
{
    std::optional<bool> lids; ///< nullopt: in annotated pictures
    std::optional<float> plane;
    std::optional<float> hue; ///< degrees

    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);

    KVSection section(bool isAnnotated) const;
};
