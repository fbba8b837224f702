// SPDX-License-Identifier: Apache-2.0
#include <scene/PageReturn.h>

// The heap of Windows returns large blocks at once when they are freed.
void kvReturnPages(std::span<std::byte>) {}
