// SPDX-License-Identifier: Apache-2.0
#include "Fonts.h"

#include <fontconfig/fontconfig.h>

#include <memory>
#include <new>

void loadFonts()
{
    // without any file of settings there is a configuration, too: null is no memory
    const std::unique_ptr<FcConfig, decltype(&FcConfigDestroy)> fonts(FcInitLoadConfigAndFonts(),
                                                                      FcConfigDestroy);
    if (!fonts || !FcConfigSetCurrent(fonts.get()))
        throw std::bad_alloc();
}
