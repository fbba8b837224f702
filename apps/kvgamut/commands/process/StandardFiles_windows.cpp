// SPDX-License-Identifier: Apache-2.0
#include "StandardFiles.h"

// The C library of Windows keeps the descriptors 0 to 2 occupied if the process starts without standard
// files.
void StandardFiles::occupyClosed() {}

void StandardFiles::ignoreBrokenPipes() {}
