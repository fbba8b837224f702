// SPDX-License-Identifier: Apache-2.0
#include "VirtualScreen.h"

VirtualScreen::~VirtualScreen() = default;

VirtualScreen::Outcome VirtualScreen::start()
{
    return {Outcome::Kind::NoDisplay};
}
