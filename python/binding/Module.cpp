// SPDX-License-Identifier: Apache-2.0
// The module kvgamut._core: the program's model and the colour engine for Python. kvgamut/__init__.py
// documents it, and makes what it takes of what callers pass.

#include "Failures.h"
#include "GamutValue.h"
#include "Running.h"

PYBIND11_MODULE(_core, module)
{
    module.doc() = "The compiled part of kvgamut.";
    module.attr("__version__") = KVGAMUT_VERSION;
    Failures::addTo(module);
    Running::addTo(module);
    addGamutTo(module);
    addOpeningTo(module);
    addFilesTo(module);
}
