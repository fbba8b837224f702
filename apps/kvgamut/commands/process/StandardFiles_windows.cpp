// SPDX-License-Identifier: Apache-2.0
#include "StandardFiles.h"

#include <fcntl.h>
#include <io.h>

// The C library of Windows keeps the descriptors 0 to 2 occupied if the process starts without standard
// files.
void StandardFiles::occupyClosed() {}

void StandardFiles::ignoreBrokenPipes() {}

void StandardFiles::passBytes()
{
    for (int file = 0; file <= 1; ++file)
        _setmode(file, _O_BINARY);
}
