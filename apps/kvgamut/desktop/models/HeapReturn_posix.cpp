// SPDX-License-Identifier: Apache-2.0
#include "HeapReturn.h"

#include <cstdlib> // defines __GLIBC__

#ifdef __GLIBC__
#include <malloc.h>

/// By default the C library keeps up to 64 MB for each thread as soon as large blocks were freed once.
void HeapReturn::keepLittle()
{
    constexpr int megabyte = 1 << 20;
    mallopt(M_MMAP_THRESHOLD, megabyte);
    mallopt(M_TRIM_THRESHOLD, megabyte);
}

bool HeapReturn::returnAll()
{
    return malloc_trim(0) != 0;
}
#else
void HeapReturn::keepLittle() {}

bool HeapReturn::returnAll()
{
    return false;
}
#endif
