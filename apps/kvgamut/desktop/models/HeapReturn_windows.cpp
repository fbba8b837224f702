// SPDX-License-Identifier: Apache-2.0
#include "HeapReturn.h"

#include <malloc.h>

// The heap of Windows returns large blocks at once when they are freed.
void HeapReturn::keepLittle() {}

bool HeapReturn::returnAll()
{
    return _heapmin() == 0;
}
