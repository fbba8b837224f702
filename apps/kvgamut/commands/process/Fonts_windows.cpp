// SPDX-License-Identifier: Apache-2.0
#include "Fonts.h"

// On Windows Qt asks the system for fonts.
void loadFonts() {}
