// SPDX-License-Identifier: Apache-2.0
#include "ThreadEnd.h"

#include <windows.h>

namespace velmora {

ThreadEnd::ThreadEnd(void (*atEnd)(void*))
{
    // the calling convention of x64 is that of all functions
    m_key = FlsAlloc(reinterpret_cast<PFLS_CALLBACK_FUNCTION>(atEnd));
    m_exists = m_key != FLS_OUT_OF_INDEXES;
}

bool ThreadEnd::ask(void* value) const
{
    return m_exists && FlsSetValue(m_key, value) != 0;
}

} // namespace velmora
